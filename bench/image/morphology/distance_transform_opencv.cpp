#include "bench/support/opencv.h"

namespace {

using bench::Image;

// Approximate distances by masks of 5 x 5 pixels, hence no common result.
bench::Task prepare(const Image<uint8_t>& from, int metric, int mask) {
  const Image<float> to(bench::kSize);
  return {[=] {
    cv::Mat dst = bench::viewOf(to);
    cv::distanceTransform(bench::viewOf(from), dst, metric, mask);
  }};
}

Image<uint8_t> almostAllSet() {
  const Image<uint8_t> image(bench::kSize);
  std::fill(image.pixels->begin(), image.pixels->end(), uint8_t{255});
  image.data()[image.bytes() / 2] = 0;
  return image;
}

const bench::OpenCvPeer operations[] = {
    {"distances, blobs", [] { return prepare(bench::smoothBlobMask(), cv::DIST_L2, cv::DIST_MASK_5); }},
    {"distances, one clear pixel", [] { return prepare(almostAllSet(), cv::DIST_L2, cv::DIST_MASK_5); }},
    {"distances, blobs, city block", [] { return prepare(bench::smoothBlobMask(), cv::DIST_L1, cv::DIST_MASK_3); }},
};

}  // namespace

#include "bench/support/opencv.h"

namespace {

using bench::Image;

// It erodes from all sides, hence no common result; and several iterations at once, hence only one here.
bench::Task prepare() {
  const Image<uint8_t> from = bench::smoothBlobMask();
  const Image<uint8_t> to(bench::kSize);
  return {[=] {
    cv::Mat dst = bench::viewOf(to);
    cv::erode(bench::viewOf(from), dst, cv::Mat());
  }};
}

const bench::OpenCvPeer operations[] = {{"erosion, 1 iteration", prepare}};

}  // namespace

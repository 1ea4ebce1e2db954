// The peer's filter works in place, and joins differences that are equal to the limit, too.
#include <opencv2/calib3d.hpp>

#include "bench/pcl/range/speckle_bench.h"
#include "bench/support/opencv.h"

namespace {

using bench::Image;

bench::Task prepare(const Image<int16_t>& from) {
  const Image<int16_t> to(bench::kSize);
  const auto buffer = std::make_shared<cv::Mat>();
  return {[=] {
            cv::Mat image = bench::viewOf(to);
            bench::viewOf(from).copyTo(image);
            cv::filterSpeckles(image, bench::kInvalid, bench::kMaxSpeckle, bench::kMaxDifference - 1, *buffer);
          },
          [=] { return bench::digest(to); }};
}

const bench::OpenCvPeer operations[] = {
    {"speckle filter, 16s, speckled surface", [] { return prepare(bench::speckledSurface()); }},
    {"speckle filter, 16s, noise", [] { return prepare(bench::noiseSurface()); }},
};

}  // namespace

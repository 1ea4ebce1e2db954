// The peer's filter works in place and also connects pixels whose difference equals the limit.
#include <opencv2/calib3d.hpp>

#include "bench/pcl/filter/speckle_bench.h"
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

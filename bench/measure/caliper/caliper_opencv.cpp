#include <cmath>
#include <memory>

#include "bench/measure/caliper/caliper_boxes.h"
#include "bench/support/opencv.h"

namespace {

// The profiles alone: a warped patch and the means of its columns.
bench::Task prepareProfiles(bool turned) {
  const auto image = bench::boxedImage();
  const auto boxes = std::make_shared<std::vector<CaliperBox>>(bench::boxes(turned));
  const auto patch = std::make_shared<cv::Mat>(), profile = std::make_shared<cv::Mat>();
  return {[=] {
    for (const CaliperBox& box : *boxes) {
      const double c = std::cos(box.angle), s = std::sin(box.angle), u = -bench::kBoxWidth / 2.0, v = -7.5;
      const cv::Matx23d toImage(c, -s, box.x + u * c - v * s, s, c, box.y + u * s + v * c);
      cv::warpAffine(bench::viewOf(image), *patch, toImage, cv::Size(bench::kBoxWidth, bench::kBoxHeight),
                     cv::INTER_LINEAR | cv::WARP_INVERSE_MAP, cv::BORDER_REPLICATE);
      cv::reduce(*patch, *profile, 0, cv::REDUCE_AVG, CV_32F);
    }
  }};
}

const bench::OpenCvPeer operations[] = {
    {"1000 calipers, 64 x 16, any direction", [] { return prepareProfiles(true); }},
    {"1000 calipers, 64 x 16, upright", [] { return prepareProfiles(false); }},
};

}  // namespace

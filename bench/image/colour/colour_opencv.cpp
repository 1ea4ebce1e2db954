#include "bench/image/colour/colour_opencv.h"

namespace {

bench::Task transform() {
  const bench::Image<uint8_t> from = bench::noise<uint8_t>({3 * bench::kSize.width, bench::kSize.height});
  const bench::Image<uint8_t> to(from.size);
  return {[=] {
            const cv::Matx34d matrix(0.25, 0.5, 0.25, 1, 0.5, 0.25, 0.25, 2, 0.25, 0.25, 0.5, 3);
            cv::Mat dst = bench::viewOf(to).reshape(3);
            cv::transform(bench::viewOf(from).reshape(3), dst, matrix);
          },
          nullptr};
}

const bench::OpenCvPeer operations[] = {
    {"RGB to YCbCr, 8u", [] { return bench::convertColour<uint8_t>(cv::COLOR_RGB2YCrCb, 3, 3); }},
    {"YCbCr to RGB, 8u", [] { return bench::convertColour<uint8_t>(cv::COLOR_YCrCb2RGB, 3, 3); }},
    {"RGB to HSV, 8u", [] { return bench::convertColour<uint8_t>(cv::COLOR_RGB2HSV_FULL, 3, 3); }},
    {"HSV to RGB, 8u", [] { return bench::convertColour<uint8_t>(cv::COLOR_HSV2RGB_FULL, 3, 3); }},
    {"RGB to HLS, 8u", [] { return bench::convertColour<uint8_t>(cv::COLOR_RGB2HLS_FULL, 3, 3); }},
    {"RGB to Lab, 8u", [] { return bench::convertColour<uint8_t>(cv::COLOR_RGB2Lab, 3, 3); }},
    {"RGB to Lab, 32f", [] { return bench::convertColour<float>(cv::COLOR_RGB2Lab, 3, 3); }},
    {"Lab to RGB, 8u", [] { return bench::convertColour<uint8_t>(cv::COLOR_Lab2RGB, 3, 3); }},
    {"RGB to XYZ, 32f", [] { return bench::convertColour<float>(cv::COLOR_RGB2XYZ, 3, 3); }},
    {"colour matrix, 8u", transform},
};

}  // namespace

#include "bench/support/opencv.h"

namespace {

using bench::Image;

bench::Task energy() {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<float> to(bench::kSize);
  return {[=] {
    cv::Mat dst = bench::viewOf(to), response, magnitude;
    const cv::Mat across = (cv::Mat_<float>(1, 5) << 1, 4, 6, 4, 1), down = (cv::Mat_<float>(1, 5) << -1, -2, 0, 2, 1);
    cv::sepFilter2D(bench::viewOf(from), response, CV_32F, across, down, cv::Point(-1, -1), 0, cv::BORDER_REPLICATE);
    magnitude = cv::abs(response);
    cv::blur(magnitude, dst, cv::Size(15, 15), cv::Point(-1, -1), cv::BORDER_REPLICATE);
  }};
}

const bench::OpenCvPeer operations[] = {{"Laws' energy, 15 x 15, 8u32f", energy}};

}  // namespace

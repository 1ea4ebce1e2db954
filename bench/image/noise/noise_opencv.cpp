#include "bench/support/opencv.h"

namespace {

using bench::Image;

volatile double taken;

// The same high-pass, and the sum of its magnitudes; nothing is left out.
template <class T>
bench::Task prepareImmerkaer(int depth) {
  const Image<T> from = bench::noise<T>();
  const auto response = std::make_shared<cv::Mat>();
  return {[=] {
    const cv::Matx<float, 3, 3> kernel(1, -2, 1, -2, 4, -2, 1, -2, 1);
    cv::filter2D(bench::viewOf(from), *response, depth, kernel);
    taken = cv::norm(*response, cv::NORM_L1);
  }};
}

bench::Task preparePair() {
  const Image<uint8_t> first = bench::noise<uint8_t>(), second = bench::noise<uint8_t>();
  return {[=] {
    const cv::Mat a = bench::viewOf(first), b = bench::viewOf(second);
    const double off = cv::sum(a)[0] - cv::sum(b)[0];
    taken = cv::norm(a, b, cv::NORM_L2SQR) - off * off;
  }};
}

const bench::OpenCvPeer operations[] = {
    {"noise, Immerkaer, 8u", [] { return prepareImmerkaer<uint8_t>(CV_16S); }},
    {"noise, Immerkaer, 16u", [] { return prepareImmerkaer<uint16_t>(CV_32F); }},
    {"noise of two frames, 8u", preparePair},
};

}  // namespace

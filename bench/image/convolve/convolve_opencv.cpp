#include "bench/support/opencv.h"

namespace {

using bench::Image;

template <class T, class D>
bench::Task prepare(int side) {
  const Image<T> from = bench::noise<T>();
  const Image<D> to(bench::kSize);
  cv::Mat weights(side, side, CV_32F);
  for (int i = 0; i < side * side; ++i) weights.at<float>(i / side, i % side) = static_cast<float>(i % 5);
  return {[=] {
    cv::Mat dst = bench::viewOf(to);
    cv::filter2D(bench::viewOf(from), dst, dst.depth(), weights, {-1, -1}, 0, cv::BORDER_REPLICATE);
  }};
}

bench::Task separable(int side) {
  const Image<float> from = bench::noise<float>(), to(bench::kSize);
  const cv::Mat weights(1, side, CV_32F, cv::Scalar(0.1));
  return {[=] {
    cv::Mat dst = bench::viewOf(to);
    cv::sepFilter2D(bench::viewOf(from), dst, CV_32F, weights, weights, {-1, -1}, 0, cv::BORDER_REPLICATE);
  }};
}

const bench::OpenCvPeer operations[] = {
    {"correlation 5 x 5, 8u16s", [] { return prepare<uint8_t, int16_t>(5); }},
    {"correlation 5 x 5, 32f", [] { return prepare<float, float>(5); }},
    {"separable correlation 9 x 9, 32f", [] { return separable(9); }},
};

}  // namespace

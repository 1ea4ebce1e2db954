#include "bench/support/opencv.h"

namespace {

using bench::Image;

// The peer's mean is rounded before it is compared, so results differ by a few pixels.
bench::Task prepareMean(int side, int method = cv::ADAPTIVE_THRESH_MEAN_C) {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<uint8_t> to(bench::kSize);
  return {
      [=] { cv::adaptiveThreshold(bench::viewOf(from), bench::viewOf(to), 255, method, cv::THRESH_BINARY, side, 0); }};
}

// x > m (1 + k (s / r - 1)), or x > m + k s, of box filters in single precision.
template <class T, bool isNiblack>
bench::Task prepareDeviation(int side) {
  const Image<T> from = bench::noise<T>();
  const Image<uint8_t> to(bench::kSize);
  return {[=] {
    cv::Mat mean, squares, variance, level, values;
    const cv::Mat src = bench::viewOf(from);
    cv::boxFilter(src, mean, CV_32F, {side, side}, {-1, -1}, true, cv::BORDER_REPLICATE);
    cv::sqrBoxFilter(src, squares, CV_32F, {side, side}, {-1, -1}, true, cv::BORDER_REPLICATE);
    cv::multiply(mean, mean, variance);
    cv::subtract(squares, variance, variance);
    cv::max(variance, 0, variance);
    cv::sqrt(variance, level);
    if (isNiblack) {
      cv::scaleAdd(level, 0.2, mean, level);
    } else {
      level.convertTo(level, CV_32F, 0.2 / 128, 0.8);
      cv::multiply(mean, level, level);
    }
    src.convertTo(values, CV_32F);
    cv::compare(values, level, bench::viewOf(to), cv::CMP_GE);
  }};
}

const bench::OpenCvPeer operations[] = {
    {"local threshold by the mean, 15 x 15, 8u", [] { return prepareMean(15); }},
    {"local threshold by the mean, 51 x 51, 8u", [] { return prepareMean(51); }},
    {"local threshold by the mean, 255 x 255, 8u", [] { return prepareMean(255); }},
    {"local threshold by a Gaussian mean, 15 x 15, 8u", [] { return prepareMean(15, cv::ADAPTIVE_THRESH_GAUSSIAN_C); }},
    {"local threshold by a Gaussian mean, 51 x 51, 8u", [] { return prepareMean(51, cv::ADAPTIVE_THRESH_GAUSSIAN_C); }},
    {"Sauvola's threshold, 15 x 15, 8u", [] { return prepareDeviation<uint8_t, false>(15); }},
    {"Sauvola's threshold, 51 x 51, 8u", [] { return prepareDeviation<uint8_t, false>(51); }},
    {"Sauvola's threshold, 255 x 255, 8u", [] { return prepareDeviation<uint8_t, false>(255); }},
    {"Niblack's threshold, 31 x 31, 8u", [] { return prepareDeviation<uint8_t, true>(31); }},
    {"Sauvola's threshold, 31 x 31, 16u", [] { return prepareDeviation<uint16_t, false>(31); }},
    {"Sauvola's threshold, 31 x 31, 32f", [] { return prepareDeviation<float, false>(31); }},
};

}  // namespace

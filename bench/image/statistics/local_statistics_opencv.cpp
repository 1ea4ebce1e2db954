#include "bench/support/opencv.h"

namespace {

using bench::Image;

bench::Task prepareMean(int side) {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<float> to(bench::kSize);
  return {[=] {
    cv::boxFilter(bench::viewOf(from), bench::viewOf(to), CV_32F, {side, side}, {-1, -1}, true, cv::BORDER_REPLICATE);
  }};
}

bench::Task prepareDeviation(int side) {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<float> to(bench::kSize);
  return {[=] {
    cv::Mat mean, squares;
    const cv::Mat src = bench::viewOf(from);
    cv::boxFilter(src, mean, CV_32F, {side, side}, {-1, -1}, true, cv::BORDER_REPLICATE);
    cv::sqrBoxFilter(src, squares, CV_32F, {side, side}, {-1, -1}, true, cv::BORDER_REPLICATE);
    cv::multiply(mean, mean, mean);
    cv::subtract(squares, mean, squares);
    cv::max(squares, 0, squares);
    cv::sqrt(squares, bench::viewOf(to));
  }};
}

bench::Task prepareRange(int side) {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<uint8_t> to(bench::kSize);
  return {[=] {
    const cv::Mat window = cv::getStructuringElement(cv::MORPH_RECT, {side, side});
    cv::morphologyEx(bench::viewOf(from), bench::viewOf(to), cv::MORPH_GRADIENT, window);
  }};
}

const bench::OpenCvPeer operations[] = {
    {"local mean, 31 x 31, 8u", [] { return prepareMean(31); }},
    {"local deviation, 9 x 9, 8u", [] { return prepareDeviation(9); }},
    {"local deviation, 31 x 31, 8u", [] { return prepareDeviation(31); }},
    {"local deviation, 127 x 127, 8u", [] { return prepareDeviation(127); }},
    {"local range, 31 x 31, 8u", [] { return prepareRange(31); }},
};

}  // namespace

#include "bench/support/opencv.h"

namespace {

using bench::Image;

volatile double taken;

template <class T>
bench::Task prepareTenengrad(int depth) {
  const Image<T> from = bench::noise<T>();
  const auto x = std::make_shared<cv::Mat>(), y = std::make_shared<cv::Mat>();
  return {[=] {
    cv::Sobel(bench::viewOf(from), *x, depth, 1, 0);
    cv::Sobel(bench::viewOf(from), *y, depth, 0, 1);
    taken = cv::norm(*x, cv::NORM_L2SQR) + cv::norm(*y, cv::NORM_L2SQR);
  }};
}

template <class T>
bench::Task prepareLaplacian(int depth) {
  const Image<T> from = bench::noise<T>();
  const auto response = std::make_shared<cv::Mat>();
  return {[=] {
    cv::Laplacian(bench::viewOf(from), *response, depth);
    cv::Scalar mean, deviation;
    cv::meanStdDev(*response, mean, deviation);
    taken = deviation[0];
  }};
}

bench::Task prepareBrenner() {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  return {[=] {
    const cv::Mat src = bench::viewOf(from);
    taken = cv::norm(src.colRange(2, src.cols), src.colRange(0, src.cols - 2), cv::NORM_L2SQR);
  }};
}

const bench::OpenCvPeer operations[] = {
    {"Tenengrad, 8u", [] { return prepareTenengrad<uint8_t>(CV_16S); }},
    {"Tenengrad, 16u", [] { return prepareTenengrad<uint16_t>(CV_32F); }},
    {"Laplacian variance, 8u", [] { return prepareLaplacian<uint8_t>(CV_16S); }},
    {"Laplacian variance, 32f", [] { return prepareLaplacian<float>(CV_32F); }},
    {"Brenner, 8u", prepareBrenner},
};

}  // namespace

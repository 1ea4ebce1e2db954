#include "bench/support/opencv.h"

namespace {

using bench::Image;

template <class T>
bench::Task prepare(double sigma, int side) {
  const Image<T> from = bench::noise<T>();
  const Image<T> to(bench::kSize);
  return {[=] {
    cv::Mat dst = bench::viewOf(to);
    cv::GaussianBlur(bench::viewOf(from), dst, {side, side}, sigma, sigma, cv::BORDER_REPLICATE);
  }};
}

const bench::OpenCvPeer operations[] = {
    {"Gaussian 5 x 5, sigma 1.1, 8u", [] { return prepare<uint8_t>(1.1, 5); }},
    {"Gaussian 25 x 25, sigma 3, 8u", [] { return prepare<uint8_t>(3, 25); }},
    {"Gaussian 81 x 81, sigma 10, 8u", [] { return prepare<uint8_t>(10, 81); }},
    {"Gaussian 5 x 5, sigma 1.1, 16u", [] { return prepare<uint16_t>(1.1, 5); }},
    {"Gaussian 25 x 25, sigma 3, 16u", [] { return prepare<uint16_t>(3, 25); }},
    {"Gaussian 81 x 81, sigma 10, 16u", [] { return prepare<uint16_t>(10, 81); }},
    {"Gaussian 5 x 5, sigma 1.1, 32f", [] { return prepare<float>(1.1, 5); }},
    {"Gaussian 25 x 25, sigma 3, 32f", [] { return prepare<float>(3, 25); }},
    {"Gaussian, recursive, sigma 10, 8u", [] { return prepare<uint8_t>(10, 81); }},
};

}  // namespace

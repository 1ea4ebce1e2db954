#include "bench/support/opencv.h"

namespace {

using bench::Image;

template <class T, class D>
bench::Task prepare(int dx, int side) {
  const Image<T> from = bench::noise<T>();
  const Image<D> to(bench::kSize);
  return {[=] {
            cv::Mat dst = bench::viewOf(to);
            cv::Sobel(bench::viewOf(from), dst, dst.depth(), dx, 1 - dx, side, 1, 0, cv::BORDER_REPLICATE);
          },
          [=] { return bench::digest(to); }};
}

bench::Task laplace() {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<int16_t> to(bench::kSize);
  return {[=] {
            cv::Mat dst = bench::viewOf(to);
            cv::Laplacian(bench::viewOf(from), dst, CV_16S, 1, 1, 0, cv::BORDER_REPLICATE);
          },
          [=] { return bench::digest(to); }};
}

bench::Task magDir() {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<float> mag(bench::kSize), dir(bench::kSize);
  return {[=] {
    cv::Mat x, y, magnitude = bench::viewOf(mag), direction = bench::viewOf(dir);
    cv::Sobel(bench::viewOf(from), x, CV_32F, 1, 0, 3, 1, 0, cv::BORDER_REPLICATE);
    cv::Sobel(bench::viewOf(from), y, CV_32F, 0, 1, 3, 1, 0, cv::BORDER_REPLICATE);
    cv::cartToPolar(x, y, magnitude, direction);
  }};
}

const bench::OpenCvPeer operations[] = {
    {"Sobel x 3 x 3, 8u16s", [] { return prepare<uint8_t, int16_t>(1, 3); }},
    {"Sobel y 3 x 3, 8u16s", [] { return prepare<uint8_t, int16_t>(0, 3); }},
    {"Sobel x 5 x 5, 8u16s", [] { return prepare<uint8_t, int16_t>(1, 5); }},
    {"Scharr x 3 x 3, 8u16s", [] { return prepare<uint8_t, int16_t>(1, cv::FILTER_SCHARR); }},
    {"Sobel x 3 x 3, 16u32f", [] { return prepare<uint16_t, float>(1, 3); }},
    {"Sobel x 3 x 3, 32f", [] { return prepare<float, float>(1, 3); }},
    {"Laplace of 4 neighbours, 8u16s", laplace},
    {"gradient magnitude and direction, 8u32f", magDir},
};

}  // namespace

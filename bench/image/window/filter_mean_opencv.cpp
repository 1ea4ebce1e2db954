#include "bench/support/opencv.h"

namespace {

using bench::Image;

// It rounds halves of means to even, hence no common result.
template <class T>
bench::Task prepare(int side) {
  const Image<T> from = bench::noise<T>();
  const Image<T> to(bench::kSize);
  return {[=] {
    cv::Mat dst = bench::viewOf(to);
    cv::blur(bench::viewOf(from), dst, cv::Size(side, side), cv::Point(-1, -1), cv::BORDER_REFLECT);
  }};
}

const bench::OpenCvPeer operations[] = {
    {"mean 3 x 3, 8u", [] { return prepare<uint8_t>(3); }},
    {"mean 15 x 15, 8u", [] { return prepare<uint8_t>(15); }},
    {"mean 63 x 63, 8u", [] { return prepare<uint8_t>(63); }},
    {"mean 255 x 255, 8u", [] { return prepare<uint8_t>(255); }},
    {"mean 15 x 15, 16u", [] { return prepare<uint16_t>(15); }},
    {"mean 255 x 255, 16u", [] { return prepare<uint16_t>(255); }},
    {"mean 15 x 15, 16s", [] { return prepare<int16_t>(15); }},
    {"mean 15 x 15, 32f", [] { return prepare<float>(15); }},
    {"mean 255 x 255, 32f", [] { return prepare<float>(255); }},
};

}  // namespace

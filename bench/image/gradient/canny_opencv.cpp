#include "bench/support/opencv.h"

namespace {

using bench::Image;

Image<uint8_t> texture() {
  const Image<uint8_t> from = bench::noise<uint8_t>(), to(bench::kSize);
  cv::Mat dst = bench::viewOf(to);
  cv::GaussianBlur(bench::viewOf(from), dst, {17, 17}, 2, 2, cv::BORDER_REPLICATE);
  return to;
}

bench::Task prepare(const Image<uint8_t>& from, double low, double high) {
  const Image<uint8_t> to(bench::kSize);
  return {[=] {
    cv::Mat dst = bench::viewOf(to);
    cv::Canny(bench::viewOf(from), dst, low, high, 3, false);
  }};
}

const bench::OpenCvPeer operations[] = {
    {"Canny, smoothed noise", [] { return prepare(texture(), 60, 90); }},
    {"Canny, noise", [] { return prepare(bench::noise<uint8_t>(), 300, 600); }},
};

}  // namespace

#include "bench/image/draw/draw_text_bench.h"
#include "bench/support/opencv.h"

namespace {

using bench::Image;
using bench::kSize;

// Capitals of the peer's plain font are 21 units high.
bench::Task prepare(double height, bool antialias) {
  const Image<uint8_t> picture(kSize);
  return {[=] {
    cv::Mat view = bench::viewOf(picture);
    const int thickness = antialias ? static_cast<int>(height / 10) : 1;
    for (int32_t y = bench::kFirstLine; y < kSize.height; y += bench::kLineStep) {
      cv::putText(view, bench::kText, {10, y}, cv::FONT_HERSHEY_SIMPLEX, height / 21, 255, thickness,
                  antialias ? cv::LINE_AA : cv::LINE_8);
    }
  }};
}

const bench::OpenCvPeer operations[] = {
    {"text of 10 pixels, anti-aliased, 8u", [] { return prepare(10, true); }},
    {"text of 20 pixels, anti-aliased, 8u", [] { return prepare(20, true); }},
    {"text of 40 pixels, anti-aliased, 8u", [] { return prepare(40, true); }},
    {"text of 20 pixels, 8u", [] { return prepare(20, false); }},
};

}  // namespace

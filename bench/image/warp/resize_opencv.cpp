#include "bench/image/warp/resize_bench.h"
#include "bench/support/opencv.h"

namespace {

using bench::Image;

bench::Task prepare(double factor, int interpolation) {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<uint8_t> result(bench::scaledSize(factor));
  return {[=] {
            cv::Mat dst = bench::viewOf(result);
            cv::resize(bench::viewOf(from), dst, dst.size(), 0, 0, interpolation);
          },
          nullptr};  // rounds positions and weights in another way
}

const bench::OpenCvPeer operations[] = {
    {"resize by 0.37, linear, 8u", [] { return prepare(0.37, cv::INTER_LINEAR); }},
    {"resize by 0.5, linear, 8u", [] { return prepare(0.5, cv::INTER_LINEAR); }},
    {"resize by 2.5, linear, 8u", [] { return prepare(2.5, cv::INTER_LINEAR); }},
    {"resize by 2.5, nearest, 8u", [] { return prepare(2.5, cv::INTER_NEAREST); }},
    {"resize by 2.5, cubic, 8u", [] { return prepare(2.5, cv::INTER_CUBIC); }},
    {"resize by 2.5, Lanczos, 8u", [] { return prepare(2.5, cv::INTER_LANCZOS4); }},
    {"resize by 0.37, area, 8u", [] { return prepare(0.37, cv::INTER_AREA); }},
};

}  // namespace

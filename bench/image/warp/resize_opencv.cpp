#include "bench/image/warp/resize_bench.h"
#include "bench/support/opencv.h"

namespace {

using bench::Image;

bench::Task prepare(DaxiSize to) {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<uint8_t> result(to);
  return {[=] {
            cv::Mat dst = bench::viewOf(result);
            cv::resize(bench::viewOf(from), dst, dst.size(), 0, 0, cv::INTER_LINEAR);
          },
          nullptr};  // rounds positions and weights in another way
}

const bench::OpenCvPeer operations[] = {
    {"resize by 0.37, linear, 8u", [] { return prepare(bench::scaledSize(0.37)); }},
    {"resize by 2.5, linear, 8u", [] { return prepare(bench::scaledSize(2.5)); }},
};

}  // namespace

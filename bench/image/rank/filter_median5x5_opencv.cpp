#include "bench/support/opencv.h"

namespace {

using bench::Image;

// Its edge is replicated, too.
template <class T>
bench::Task prepare() {
  const Image<T> from = bench::noise<T>();
  const Image<T> to(bench::kSize);
  return {[=] {
            cv::Mat dst = bench::viewOf(to);
            cv::medianBlur(bench::viewOf(from), dst, 5);
          },
          [=] { return bench::digest(to); }};
}

const bench::OpenCvPeer operations[] = {
    {"median 5 x 5, 8u", prepare<uint8_t>},
    {"median 5 x 5, 16u", prepare<uint16_t>},
    {"median 5 x 5, 16s", prepare<int16_t>},
    {"median 5 x 5, 32f", prepare<float>},
};

}  // namespace

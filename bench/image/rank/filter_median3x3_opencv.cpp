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
            cv::medianBlur(bench::viewOf(from), dst, 3);
          },
          [=] { return bench::digest(to); }};
}

const bench::OpenCvPeer operations[] = {
    {"median 3 x 3, 8u", prepare<uint8_t>},
    {"median 3 x 3, 16u", prepare<uint16_t>},
    {"median 3 x 3, 16s", prepare<int16_t>},
    {"median 3 x 3, 32f", prepare<float>},
};

}  // namespace

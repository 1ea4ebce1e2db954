#include "bench/support/opencv.h"

namespace {

using bench::Image;

// 8-bit images alone; its edge is replicated, too.
template <int side>
bench::Task prepare() {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<uint8_t> to(bench::kSize);
  return {[=] {
            cv::Mat dst = bench::viewOf(to);
            cv::medianBlur(bench::viewOf(from), dst, side);
          },
          [=] { return bench::digest(to); }};
}

const bench::OpenCvPeer operations[] = {
    {"median 7 x 7, 8u", prepare<7>},    {"median 9 x 9, 8u", prepare<9>},       {"median 15 x 15, 8u", prepare<15>},
    {"median 51 x 51, 8u", prepare<51>}, {"median 255 x 255, 8u", prepare<255>},
};

}  // namespace

#include "bench/support/opencv.h"

namespace {

using bench::Image;

// Sums of noise are integers; up to a radius of 31 single precision holds those from the edge on exactly.
constexpr int kMaxExact = 31;

template <class T, class Sum>
bench::Task prepare(int radius) {
  const Image<T> from = bench::noise<T>();
  const Image<Sum> to(bench::kSize);
  return {[=] {
            cv::Mat dst = bench::viewOf(to);
            const int side = 2 * radius + 1;
            cv::boxFilter(bench::viewOf(from), dst, dst.depth(), cv::Size(side, side), cv::Point(-1, -1), false,
                          cv::BORDER_CONSTANT);
          },
          radius > kMaxExact ? std::function<uint64_t()>() : [=] { return bench::digest(to); }};
}

const bench::OpenCvPeer operations[] = {
    {"box sum, 8u32s, r = 7", [] { return prepare<uint8_t, int32_t>(7); }},
    {"box sum, 16s32f, r = 7", [] { return prepare<int16_t, float>(7); }},
    {"box sum, 32f, r = 1", [] { return prepare<float, float>(1); }},
    {"box sum, 32f, r = 7", [] { return prepare<float, float>(7); }},
    {"box sum, 32f, r = 31", [] { return prepare<float, float>(31); }},
    {"box sum, 32f, r = 127", [] { return prepare<float, float>(127); }},
};

}  // namespace

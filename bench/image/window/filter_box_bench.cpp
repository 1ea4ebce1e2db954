#include "daxi/filter_box.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

template <class T, class Sum>
bench::Task prepare(DaxStatus (*box)(const T*, int32_t, Sum*, int32_t, DaxiSize, int32_t, void*), int32_t radius) {
  const Image<T> from = bench::noise<T>();
  const Image<Sum> to(kSize);
  uint64_t bytes = 0;
  bench::require(DAXI_FilterBoxBufferSize_32f(kSize, &bytes));
  const auto buffer = std::make_shared<std::vector<uint8_t>>(bytes);
  return {[=] { bench::require(box(from.data(), kSize.width, to.data(), kSize.width, kSize, radius, buffer->data())); },
          [=] { return bench::digest(to); }};
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize) * 4;

const bench::Own operations[] = {
    {"box sum, 8u32s, r = 7", kBytes, [] { return prepare(DAXI_FilterBox_8u32s_C1R, 7); }},
    {"box sum, 16s32f, r = 7", kBytes, [] { return prepare(DAXI_FilterBox_16s32f_C1R, 7); }},
    {"box sum, 32s, r = 7", kBytes, [] { return prepare(DAXI_FilterBox_32s_C1R, 7); }},
    {"box sum, 32f, r = 1", kBytes, [] { return prepare(DAXI_FilterBox_32f_C1R, 1); }},
    {"box sum, 32f, r = 7", kBytes, [] { return prepare(DAXI_FilterBox_32f_C1R, 7); }},
    {"box sum, 32f, r = 31", kBytes, [] { return prepare(DAXI_FilterBox_32f_C1R, 31); }},
    {"box sum, 32f, r = 127", kBytes, [] { return prepare(DAXI_FilterBox_32f_C1R, 127); }},
};

}  // namespace

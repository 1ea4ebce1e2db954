#include "daxi/filter_median5x5.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

template <class T>
bench::Task prepare(DaxStatus (*median)(const T*, int32_t, T*, int32_t, DaxiSize)) {
  const Image<T> from = bench::noise<T>();
  const Image<T> to(kSize);
  return {[=] { bench::require(median(from.data(), kSize.width, to.data(), kSize.width, kSize)); },
          [=] { return bench::digest(to); }};
}

template <class T>
constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize) * sizeof(T);

const bench::Own operations[] = {
    {"median 5 x 5, 8u", kBytes<uint8_t>, [] { return prepare(DAXI_FilterMedian5x5_8u_C1R); }},
    {"median 5 x 5, 16u", kBytes<uint16_t>, [] { return prepare(DAXI_FilterMedian5x5_16u_C1R); }},
    {"median 5 x 5, 16s", kBytes<int16_t>, [] { return prepare(DAXI_FilterMedian5x5_16s_C1R); }},
    {"median 5 x 5, 32f", kBytes<float>, [] { return prepare(DAXI_FilterMedian5x5_32f_C1R); }},
};

}  // namespace

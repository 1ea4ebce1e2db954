#include "daxi/filter_rank.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

template <class T>
using Median = DaxStatus (*)(const T*, int32_t, T*, int32_t, DaxiSize, DaxiSize, int32_t, T, void*);
using Query = DaxStatus (*)(DaxiSize, DaxiSize, uint64_t*);

template <class T>
bench::Task prepare(Query query, Median<T> median, int32_t side) {
  uint64_t bytes = 0;
  bench::require(query(kSize, {side, side}, &bytes));
  const auto buffer = std::make_shared<std::vector<double>>(bytes / sizeof(double) + 1);
  const Image<T> from = bench::noise<T>();
  const Image<T> to(kSize);
  return {[=] {
            bench::require(median(from.data(), kSize.width, to.data(), kSize.width, kSize, {side, side},
                                  DAXI_BORDER_REPLICATE, T(0), buffer->data()));
          },
          [=] { return bench::digest(to); }};
}

template <int32_t side>
bench::Task median8() {
  return prepare(DAXI_FilterMedianBufferSize_8u, DAXI_FilterMedian_8u_C1R, side);
}

template <int32_t side>
bench::Task median16() {
  return prepare(DAXI_FilterMedianBufferSize_16u, DAXI_FilterMedian_16u_C1R, side);
}

template <int32_t side>
bench::Task median32() {
  return prepare(DAXI_FilterMedianBufferSize_32f, DAXI_FilterMedian_32f_C1R, side);
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"median 7 x 7, 8u", kBytes, median8<7>},          {"median 9 x 9, 8u", kBytes, median8<9>},
    {"median 15 x 15, 8u", kBytes, median8<15>},       {"median 51 x 51, 8u", kBytes, median8<51>},
    {"median 255 x 255, 8u", kBytes, median8<255>},    {"median 7 x 7, 16u", 2 * kBytes, median16<7>},
    {"median 15 x 15, 16u", 2 * kBytes, median16<15>}, {"median 51 x 51, 16u", 2 * kBytes, median16<51>},
    {"median 7 x 7, 32f", 4 * kBytes, median32<7>},    {"median 15 x 15, 32f", 4 * kBytes, median32<15>},
};

}  // namespace

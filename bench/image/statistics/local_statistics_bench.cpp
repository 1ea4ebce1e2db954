#include "daxi/local_statistics.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

template <class T, class D, class Query, class Statistic>
bench::Task prepare(Query query, Statistic statistic, int32_t side) {
  const DaxiLocalStatisticsCfg cfg = {{side, side}, DAXI_BORDER_REPLICATE, 0, 0};
  uint64_t bytes = 0;
  bench::require(query(kSize, &cfg, &bytes));
  const auto buffer = std::make_shared<std::vector<double>>(bytes / sizeof(double) + 1);
  const Image<T> from = bench::noise<T>();
  const Image<D> to(kSize);
  return {[=] {
    bench::require(statistic(from.data(), kSize.width, to.data(), kSize.width, kSize, &cfg, buffer->data()));
  }};
}

template <int32_t side>
bench::Task deviation() {
  return prepare<uint8_t, float>(DAXI_LocalStdDevBufferSize_8u32f, DAXI_LocalStdDev_8u32f_C1R, side);
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"local mean, 31 x 31, 8u", kBytes,
     [] { return prepare<uint8_t, float>(DAXI_LocalMeanBufferSize_8u32f, DAXI_LocalMean_8u32f_C1R, 31); }},
    {"local deviation, 9 x 9, 8u", kBytes, deviation<9>},
    {"local deviation, 31 x 31, 8u", kBytes, deviation<31>},
    {"local deviation, 127 x 127, 8u", kBytes, deviation<127>},
    {"local entropy, 9 x 9, 8u", kBytes,
     [] { return prepare<uint8_t, float>(DAXI_LocalEntropyBufferSize_8u32f, DAXI_LocalEntropy_8u32f_C1R, 9); }},
    {"local range, 31 x 31, 8u", kBytes,
     [] { return prepare<uint8_t, uint8_t>(DAXI_LocalRangeBufferSize_8u, DAXI_LocalRange_8u_C1R, 31); }},
};

}  // namespace

#include "bench/support/image.h"
#include "bench/support/operation.h"
#include "daxi/filter_bilateral.h"
#include "daxi/filter_guided.h"

namespace {

using bench::Image;
using bench::kSize;

template <class T, class Query, class Filter>
bench::Task prepareGuided(Query query, Filter filter, const DaxiFilterGuidedCfg& cfg, bool isSelf) {
  uint64_t bytes = 0;
  bench::require(query(kSize, &cfg, &bytes));
  const auto buffer = std::make_shared<std::vector<double>>(bytes / sizeof(double) + 1);
  const Image<T> from = bench::noise<T>(), other = bench::noise<T>();
  const Image<T> guide = isSelf ? from : other;
  const Image<T> to(kSize);
  const int32_t step = kSize.width;
  return {[=] {
    bench::require(filter(from.data(), step, guide.data(), step, to.data(), step, kSize, &cfg, buffer->data()));
  }};
}

template <int32_t radius, int32_t subsample, bool isSelf>
bench::Task guidedBytes() {
  return prepareGuided<uint8_t>(DAXI_FilterGuidedBufferSize_8u, DAXI_FilterGuided_8u_C1R, {radius, subsample, 400},
                                isSelf);
}

bench::Task guidedFloats() {
  return prepareGuided<float>(DAXI_FilterGuidedBufferSize_32f, DAXI_FilterGuided_32f_C1R, {8, 1, 400}, true);
}

bench::Task bilateralBytes() {
  const DaxiFilterBilateralCfg cfg = {4, DAXI_BORDER_REPLICATE, 5, 30, 0};
  uint64_t bytes = 0;
  bench::require(DAXI_FilterBilateralBufferSize_8u(kSize, &cfg, &bytes));
  const auto buffer = std::make_shared<std::vector<double>>(bytes / sizeof(double) + 1);
  const Image<uint8_t> from = bench::noise<uint8_t>(), to(kSize);
  const int32_t step = kSize.width;
  return {[=] {
    bench::require(DAXI_FilterBilateral_8u_C1R(from.data(), step, to.data(), step, kSize, &cfg, buffer->data()));
  }};
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"guided filter by itself, radius 8, 8u", kBytes, guidedBytes<8, 1, true>},
    {"guided filter by itself, radius 60, 8u", kBytes, guidedBytes<60, 1, true>},
    {"guided filter by another, radius 8, 8u", kBytes, guidedBytes<8, 1, false>},
    {"guided filter by itself, every 4th pixel, 8u", kBytes, guidedBytes<8, 4, true>},
    {"guided filter by itself, radius 8, 32f", 4 * kBytes, guidedFloats},
    {"bilateral filter, radius 4, 8u", kBytes, bilateralBytes},
};

}  // namespace

#include "daxi/convolve.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

// Weights 1, 2, ..., that sum to less than 16 bits times pixels.
template <class T, class D, class Weight>
bench::Task prepare(DaxStatus (*filter)(const T*, int32_t, D*, int32_t, DaxiSize, const Weight*,
                                        const DaxiConvolveCfg*),
                    int32_t side) {
  const DaxiConvolveCfg cfg = {{side, side}, side / 2, side / 2, 0, DAXI_BORDER_REPLICATE, 0};
  std::vector<Weight> weights(static_cast<size_t>(side * side));
  for (size_t i = 0; i < weights.size(); ++i) weights[i] = static_cast<Weight>(i % 5);
  const Image<T> from = bench::noise<T>();
  const Image<D> to(kSize);
  return {
      [=] { bench::require(filter(from.data(), kSize.width, to.data(), kSize.width, kSize, weights.data(), &cfg)); }};
}

bench::Task separable(int32_t side) {
  const DaxiConvolveCfg cfg = {{side, side}, side / 2, side / 2, 0, DAXI_BORDER_REPLICATE, 0};
  const std::vector<float> weights(static_cast<size_t>(side), 0.1f);
  const Image<float> from = bench::noise<float>(), to(kSize);
  return {[=] {
    bench::require(DAXI_FilterSeparable_32f_C1R(from.data(), kSize.width, to.data(), kSize.width, kSize, weights.data(),
                                                weights.data(), &cfg));
  }};
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"correlation 5 x 5, 8u16s", 2 * kBytes, [] { return prepare(DAXI_Filter_8u16s_C1R, 5); }},
    {"correlation 5 x 5, 32f", 4 * kBytes, [] { return prepare(DAXI_Filter_32f_C1R, 5); }},
    {"separable correlation 9 x 9, 32f", 4 * kBytes, [] { return separable(9); }},
};

}  // namespace

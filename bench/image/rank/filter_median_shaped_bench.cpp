#include "bench/support/image.h"
#include "bench/support/operation.h"
#include "daxi/filter_median_hybrid5x5.h"
#include "daxi/filter_median_weighted3x3.h"

namespace {

using bench::Image;
using bench::kSize;

constexpr uint8_t kWeights[9] = {1, 2, 1, 2, 3, 2, 1, 2, 1};

template <class T, class Median, class... Parameter>
bench::Task prepare(Median median, Parameter... parameters) {
  const Image<T> from = bench::noise<T>();
  const Image<T> to(kSize);
  return {[=] {
            bench::require(median(from.data(), kSize.width, to.data(), kSize.width, kSize, parameters...,
                                  DAXI_BORDER_REPLICATE, T(0)));
          },
          [=] { return bench::digest(to); }};
}

template <class T, class Median>
bench::Task weighted(Median median) {
  return prepare<T>(median, +kWeights);
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"weighted median 3 x 3, 8u", kBytes, [] { return weighted<uint8_t>(DAXI_FilterMedianWeighted3x3_8u_C1R); }},
    {"weighted median 3 x 3, 16u", 2 * kBytes, [] { return weighted<uint16_t>(DAXI_FilterMedianWeighted3x3_16u_C1R); }},
    {"weighted median 3 x 3, 32f", 4 * kBytes, [] { return weighted<float>(DAXI_FilterMedianWeighted3x3_32f_C1R); }},
    {"hybrid median 5 x 5, 8u", kBytes, [] { return prepare<uint8_t>(DAXI_FilterMedianHybrid5x5_8u_C1R); }},
    {"hybrid median 5 x 5, 16u", 2 * kBytes, [] { return prepare<uint16_t>(DAXI_FilterMedianHybrid5x5_16u_C1R); }},
    {"hybrid median 5 x 5, 32f", 4 * kBytes, [] { return prepare<float>(DAXI_FilterMedianHybrid5x5_32f_C1R); }},
};

}  // namespace

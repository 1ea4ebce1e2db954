#include "daxi/extremes.h"
#include "daxi/histogram.h"
#include "daxi/integral.h"
#include "daxi/moments.h"
#include "daxi/norm.h"
#include "daxi/percentile.h"
#include "daxi/projection.h"
#include "daxi/sum.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

// A call that reads an image and writes numbers, which both implementations may claim to be the same.
template <class T, class Result, class Call>
bench::Task prepare(size_t results, Call call) {
  const Image<T> from = bench::noise<T>();
  const auto numbers = std::make_shared<std::vector<Result>>(results);
  return {[=] { bench::require(call(from.data(), kSize.width, kSize, numbers->data())); },
          [=] { return bench::digest(numbers->data(), results * sizeof(Result)); }};
}

template <class T, class D, class Call>
bench::Task prepareIntegral(Call call) {
  const Image<T> from = bench::noise<T>();
  const Image<D> to({kSize.width + 1, kSize.height + 1});
  return {[=] { bench::require(call(from.data(), kSize.width, to.data(), kSize.width + 1, kSize)); },
          [=] { return bench::digest(to); }};
}

bench::Task prepareMinMax() {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  return {[=] {
    uint8_t min, max;
    DaxiPoint32s minAt, maxAt;
    bench::require(DAXI_MinMax_8u_C1R(from.data(), kSize.width, kSize, &min, &max, &minAt, &maxAt));
  }};
}

template <class T>
bench::Task prepareMedian(DaxStatus (*query)(DaxiSize, uint64_t*),
                          DaxStatus (*median)(const T*, int32_t, DaxiSize, T*, void*)) {
  uint64_t bytes = 0;
  bench::require(query(kSize, &bytes));
  const auto buffer = std::make_shared<std::vector<uint64_t>>(bytes / sizeof(uint64_t));
  return prepare<T, T>(1, [=](auto... a) { return median(a..., buffer->data()); });
}

template <class T>
constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize) * sizeof(T);

const bench::Own operations[] = {
    {"sum, 8u", 0, [] { return prepare<uint8_t, double>(1, DAXI_Sum_8u_C1R); }},
    {"mean and deviation, 8u", 0,
     [] {
       return prepare<uint8_t, double>(2, [](auto src, auto step, auto size, double* both) {
         return DAXI_MeanStdDev_8u_C1R(src, step, size, both, both + 1);
       });
     }},
    {"sum, 32f", 0, [] { return prepare<float, double>(1, DAXI_Sum_32f_C1R); }},
    {"minimum and maximum, 8u", 0, prepareMinMax},
    {"norm L2, 8u", 0, [] { return prepare<uint8_t, double>(1, DAXI_NormL2_8u_C1R); }},
    {"norm L1, 16u", 0, [] { return prepare<uint16_t, double>(1, DAXI_NormL1_16u_C1R); }},
    {"histogram, 8u", 0,
     [] {
       return prepare<uint8_t, uint64_t>(256, [](auto src, auto step, auto size, uint64_t* counts) {
         return DAXI_HistogramEven_8u_C1R(src, step, size, 256, 0, 256, counts, nullptr);
       });
     }},
    {"median, 16u", 0, [] { return prepareMedian<uint16_t>(DAXI_MedianBufferSize_16u, DAXI_Median_16u_C1R); }},
    {"median, 32f", 0, [] { return prepareMedian<float>(DAXI_MedianBufferSize_32f, DAXI_Median_32f_C1R); }},
    {"integral, 8u", kBytes<uint32_t>, [] { return prepareIntegral<uint8_t, uint32_t>(DAXI_Integral_8u32u_C1R); }},
    {"integral, 32f", kBytes<double>, [] { return prepareIntegral<float, double>(DAXI_Integral_32f64f_C1R); }},
    {"sums of columns, 8u", 0,
     [] { return prepare<uint8_t, double>(static_cast<size_t>(kSize.width), DAXI_ProjectColumns_8u_C1R); }},
    {"moments, 8u", 0, [] { return prepare<uint8_t, DaxiMoments>(1, DAXI_Moments_8u_C1R); }},
};

}  // namespace

#include "daxi/filter_mean.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

template <class T>
bench::Task prepare(DaxStatus (*mean)(const T*, int32_t, T*, int32_t, DaxiSize, DaxiSize, void*), int32_t side) {
  const Image<T> from = bench::noise<T>();
  const Image<T> to(kSize);
  uint64_t bytes = 0;
  bench::require(DAXI_FilterMeanIntBufferSize_32f(kSize, &bytes));  // the largest of them
  const auto buffer = std::make_shared<std::vector<uint8_t>>(bytes);
  return {[=] {
    bench::require(mean(from.data(), kSize.width, to.data(), kSize.width, kSize, {side, side}, buffer->data()));
  }};
}

template <class T>
constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize) * sizeof(T);

const bench::Own operations[] = {
    {"mean 3 x 3, 8u", kBytes<uint8_t>, [] { return prepare(DAXI_FilterMean_8u_C1R, 3); }},
    {"mean 15 x 15, 8u", kBytes<uint8_t>, [] { return prepare(DAXI_FilterMean_8u_C1R, 15); }},
    {"mean 63 x 63, 8u", kBytes<uint8_t>, [] { return prepare(DAXI_FilterMean_8u_C1R, 63); }},
    {"mean 255 x 255, 8u", kBytes<uint8_t>, [] { return prepare(DAXI_FilterMean_8u_C1R, 255); }},
    {"mean 15 x 15, 16u", kBytes<uint16_t>, [] { return prepare(DAXI_FilterMean_16u_C1R, 15); }},
    {"mean 255 x 255, 16u", kBytes<uint16_t>, [] { return prepare(DAXI_FilterMean_16u_C1R, 255); }},
    {"mean 15 x 15, 16s", kBytes<int16_t>, [] { return prepare(DAXI_FilterMean_16s_C1R, 15); }},
    {"mean 15 x 15, 32f", kBytes<float>, [] { return prepare(DAXI_FilterMean_32f_C1R, 15); }},
    {"mean 255 x 255, 32f", kBytes<float>, [] { return prepare(DAXI_FilterMean_32f_C1R, 255); }},
    {"mean 15 x 15, inside only, 8u", kBytes<uint8_t>, [] { return prepare(DAXI_FilterMeanInt_8u_C1R, 15); }},
    {"mean 255 x 255, inside only, 8u", kBytes<uint8_t>, [] { return prepare(DAXI_FilterMeanInt_8u_C1R, 255); }},
    {"mean 15 x 15, inside only, 16u", kBytes<uint16_t>, [] { return prepare(DAXI_FilterMeanInt_16u_C1R, 15); }},
    {"mean 15 x 15, inside only, 32f", kBytes<float>, [] { return prepare(DAXI_FilterMeanInt_32f_C1R, 15); }},
};

}  // namespace

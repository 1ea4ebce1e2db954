#include "daxi/gauss.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"
#include "daxi/gauss_recursive.h"

namespace {

using bench::Image;
using bench::kSize;

template <class T>
using Filter = DaxStatus (*)(const T*, int32_t, T*, int32_t, DaxiSize, const DaxiGaussCfg*, void*);
using Query = DaxStatus (*)(DaxiSize, const DaxiGaussCfg*, uint64_t*);

template <class T>
bench::Task prepare(Query query, Filter<T> filter, double sigma, int32_t side) {
  const DaxiGaussCfg cfg = {sigma, {side, side}, DAXI_BORDER_REPLICATE, 0, 0};
  uint64_t bytes = 0;
  bench::require(query(kSize, &cfg, &bytes));
  const auto buffer = std::make_shared<std::vector<double>>(bytes / sizeof(double) + 1);
  const Image<T> from = bench::noise<T>();
  const Image<T> to(kSize);
  return {
      [=] { bench::require(filter(from.data(), kSize.width, to.data(), kSize.width, kSize, &cfg, buffer->data())); }};
}

template <int32_t sigma, int32_t side>
bench::Task gauss8() {
  return prepare(DAXI_FilterGaussBufferSize_8u, DAXI_FilterGauss_8u_C1R, sigma * 0.1, side);
}
template <int32_t sigma, int32_t side>
bench::Task gauss16() {
  return prepare(DAXI_FilterGaussBufferSize_16u, DAXI_FilterGauss_16u_C1R, sigma * 0.1, side);
}
template <int32_t sigma, int32_t side>
bench::Task gauss32() {
  return prepare(DAXI_FilterGaussBufferSize_32f, DAXI_FilterGauss_32f_C1R, sigma * 0.1, side);
}

template <int32_t sigma>
bench::Task recursive8() {
  const DaxiGaussRecursiveCfg cfg = {sigma, DAXI_BORDER_REPLICATE, 0, 0};
  uint64_t bytes = 0;
  bench::require(DAXI_FilterGaussRecursiveBufferSize_8u(kSize, &cfg, &bytes));
  const auto buffer = std::make_shared<std::vector<double>>(bytes / sizeof(double) + 1);
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<uint8_t> to(kSize);
  return {[=] {
    bench::require(DAXI_FilterGaussRecursive_8u_C1R(from.data(), kSize.width, to.data(), kSize.width, kSize, &cfg,
                                                    buffer->data()));
  }};
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"Gaussian 5 x 5, sigma 1.1, 8u", kBytes, gauss8<11, 5>},
    {"Gaussian 25 x 25, sigma 3, 8u", kBytes, gauss8<30, 25>},
    {"Gaussian 81 x 81, sigma 10, 8u", kBytes, gauss8<100, 81>},
    {"Gaussian 5 x 5, sigma 1.1, 16u", 2 * kBytes, gauss16<11, 5>},
    {"Gaussian 25 x 25, sigma 3, 16u", 2 * kBytes, gauss16<30, 25>},
    {"Gaussian 81 x 81, sigma 10, 16u", 2 * kBytes, gauss16<100, 81>},
    {"Gaussian 5 x 5, sigma 1.1, 32f", 4 * kBytes, gauss32<11, 5>},
    {"Gaussian 25 x 25, sigma 3, 32f", 4 * kBytes, gauss32<30, 25>},
    {"Gaussian, recursive, sigma 10, 8u", kBytes, recursive8<10>},
    {"Gaussian, recursive, sigma 40, 8u", kBytes, recursive8<40>},
};

}  // namespace

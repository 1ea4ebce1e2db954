#include "daxi/canny.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"
#include "daxi/gauss.h"

namespace {

using bench::Image;
using bench::kSize;

// Noise smoothed by 2 pixels: structures of all directions.
Image<uint8_t> texture() {
  const Image<uint8_t> from = bench::noise<uint8_t>(), to(kSize);
  const DaxiGaussCfg cfg = {2, {0, 0}, 0, 0, 0};
  uint64_t bytes = 0;
  bench::require(DAXI_FilterGaussBufferSize_8u(kSize, &cfg, &bytes));
  std::vector<double> buffer(bytes / sizeof(double) + 1);
  bench::require(DAXI_FilterGauss_8u_C1R(from.data(), kSize.width, to.data(), kSize.width, kSize, &cfg, buffer.data()));
  return to;
}

bench::Task prepare(const Image<uint8_t>& from, double low, double high) {
  const DaxiCannyCfg cfg = {0, low, high, DAXI_CANNY_L1, 3};
  uint64_t bytes = 0;
  bench::require(DAXI_CannyBufferSize_8u(kSize, &cfg, &bytes));
  const auto buffer = std::make_shared<std::vector<double>>(bytes / sizeof(double) + 1);
  const Image<uint8_t> to(kSize);
  return {[=] {
    bench::require(DAXI_Canny_8u_C1R(from.data(), kSize.width, to.data(), kSize.width, kSize, &cfg, buffer->data()));
  }};
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"Canny, smoothed noise", kBytes, [] { return prepare(texture(), 60, 90); }},
    {"Canny, noise", kBytes, [] { return prepare(bench::noise<uint8_t>(), 300, 600); }},
};

}  // namespace

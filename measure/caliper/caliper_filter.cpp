#include "measure/caliper/caliper_filter.h"

#include <algorithm>
#include <cmath>

#include "frame/dispatch.h"
#include "frame/math.h"
#include "measure/caliper/caliper_filter_neon.h"
#include "measure/caliper/caliper_filter_portable.h"

namespace dax {
namespace {

// The positive side of the fixed kernels of length 3 to 11, to seven digits; the negative side is its mirror image.
// They are central differences of a Gaussian, scaled to a sum of 1. The middle two of length 9 do differ in the last
// digit.
constexpr float kTables[5][5] = {{1.0f},
                                 {0.24073642f, 0.7592636f},
                                 {0.07841022f, 0.37582335f, 0.5457664f},
                                 {0.03946792f, 0.18096478f, 0.38978368f, 0.38978362f},
                                 {0.02483425f, 0.10302499f, 0.2375097f, 0.35154617f, 0.2830849f}};

void setAntisymmetric(float* kernel, int32_t half, int32_t place, float value) {
  kernel[place] = value;
  kernel[2 * half - place] = -value;
}

// Central differences, times 0.5, of a Gaussian whose sum is 1; one-sided at the ends, where the factor stays 0.5.
constexpr double kSigmaPerLength = 0.16667;  // of the kernel length - 1: the ends lie at three sigma
void makeKernel(float* kernel, int32_t half) {
  const double sigma = 2 * half * kSigmaPerLength, scale = -1 / (2 * sigma * sigma);
  const auto bell = [&](int32_t place) { return expExact(scale * (place - half) * (place - half)); };
  double sum = 1;
  for (int32_t i = 0; i < half; ++i) sum += 2 * bell(i);
  for (int32_t i = 0; i < half; ++i) {
    const double before = bell(i == 0 ? 0 : i - 1);
    setAntisymmetric(kernel, half, i, static_cast<float>((bell(i + 1) - before) / sum * 0.5));
  }
}

}  // namespace
}  // namespace dax

int32_t DAXI_CalipEdgeDetect_init_dog_kernel_32f(uint32_t halfWidth, int32_t n, float* kernel) {
  int32_t length = 2 * static_cast<int32_t>(halfWidth) + 1;
  if (length > n) length = std::max(n - (n + 1) % 2, 3);
  const int32_t half = (length - 1) / 2;
  kernel[half] = 0;
  if (half > 5) {
    dax::makeKernel(kernel, half);
  } else {
    for (int32_t i = 0; i < half; ++i) dax::setAntisymmetric(kernel, half, i, dax::kTables[half - 1][i]);
  }
  return length;
}

void _DAXI_Caliper_filter_32f(const float* in, int32_t n, const float* kernel, int32_t length, float* extended,
                              float* out, [[maybe_unused]] int32_t isa) {
  const int32_t half = length / 2;
  std::fill_n(extended, half, in[0]);
  std::copy_n(in, n, extended + half);
  std::fill_n(extended + half + n, half, in[n - 1]);
  if (dax::usesNeon(isa)) return dax::neon::filter(extended, kernel, length, n, out);
  dax::portable::filter(extended, kernel, length, n, out);
}

int32_t _DAXI_Caliper_dog_filter_32f(const float* in, int32_t n, uint32_t halfWidth, float* kernel, float* extended,
                                     float* out, int32_t isa) {
  const int32_t length = DAXI_CalipEdgeDetect_init_dog_kernel_32f(halfWidth, n, kernel);
  _DAXI_Caliper_filter_32f(in, n, kernel, length, extended, out, isa);
  return length;
}

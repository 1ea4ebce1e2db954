#include "daxi/sharpness.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

volatile double taken;

template <class T, class Call>
bench::Task prepare(Call call) {
  const Image<T> from = bench::noise<T>();
  return {[=] {
    double sharpness = 0;
    bench::require(call(from.data(), kSize.width, kSize, &sharpness));
    taken = sharpness;
  }};
}

const bench::Own operations[] = {
    {"Tenengrad, 8u", 0, [] { return prepare<uint8_t>(DAXI_SharpnessTenengrad_8u_C1R); }},
    {"Tenengrad, 16u", 0, [] { return prepare<uint16_t>(DAXI_SharpnessTenengrad_16u_C1R); }},
    {"Laplacian variance, 8u", 0, [] { return prepare<uint8_t>(DAXI_SharpnessLaplacianVariance_8u_C1R); }},
    {"Laplacian variance, 32f", 0, [] { return prepare<float>(DAXI_SharpnessLaplacianVariance_32f_C1R); }},
    {"Brenner, 8u", 0, [] { return prepare<uint8_t>(DAXI_SharpnessBrenner_8u_C1R); }},
};

}  // namespace

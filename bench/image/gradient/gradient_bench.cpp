#include "daxi/gradient.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"
#include "daxi/gradient_mag_dir.h"

namespace {

using bench::Image;
using bench::kSize;

template <class T, class D>
bench::Task prepare(DaxStatus (*filter)(const T*, int32_t, D*, int32_t, DaxiSize, int32_t, int32_t, double),
                    int32_t window) {
  const Image<T> from = bench::noise<T>();
  const Image<D> to(kSize);
  return {[=] {
            bench::require(
                filter(from.data(), kSize.width, to.data(), kSize.width, kSize, window, DAXI_BORDER_REPLICATE, 0));
          },
          [=] { return bench::digest(to); }};
}

bench::Task magDir() {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<float> mag(kSize), dir(kSize);
  return {[=] {
    bench::require(DAXI_GradientMagDir_8u32f_C1R(from.data(), kSize.width, mag.data(), kSize.width, dir.data(),
                                                 kSize.width, kSize, DAXI_GRADIENT_SOBEL, 3, DAXI_BORDER_REPLICATE, 0));
  }};
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"Sobel x 3 x 3, 8u16s", 2 * kBytes, [] { return prepare(DAXI_SobelX_8u16s_C1R, 3); }},
    {"Sobel y 3 x 3, 8u16s", 2 * kBytes, [] { return prepare(DAXI_SobelY_8u16s_C1R, 3); }},
    {"Sobel x 5 x 5, 8u16s", 2 * kBytes, [] { return prepare(DAXI_SobelX_8u16s_C1R, 5); }},
    {"Scharr x 3 x 3, 8u16s", 2 * kBytes, [] { return prepare(DAXI_ScharrX_8u16s_C1R, 3); }},
    {"Sobel x 3 x 3, 16u32f", 4 * kBytes, [] { return prepare(DAXI_SobelX_16u32f_C1R, 3); }},
    {"Sobel x 3 x 3, 32f", 4 * kBytes, [] { return prepare(DAXI_SobelX_32f_C1R, 3); }},
    {"Laplace of 4 neighbours, 8u16s", 2 * kBytes, [] { return prepare(DAXI_Laplace_8u16s_C1R, 4); }},
    {"gradient magnitude and direction, 8u32f", 8 * kBytes, magDir},
};

}  // namespace

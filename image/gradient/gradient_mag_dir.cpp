#include "daxi/gradient_mag_dir.h"

#include <cmath>
#include <numbers>

#include "frame/op2d.h"
#include "image/border/bordered_image.h"
#include "image/gradient/gradient.h"
#include "image/gradient/gradient_strips.h"

namespace dax {
namespace {

// The arc tangent of y / x in all quadrants, to 4e-7: minimax polynomial of the smaller by the larger. Selections only, no
// branches, so that loops become vectors.
float directionOf(float x, float y) {
  constexpr float kPolynomial[] = {0.9999993443489075f,   -0.33329859375953674f, 0.19946563243865967f,
                                   -0.13908620178699493f, 0.0964217558503151f,   -0.055912040174007416f,
                                   0.021862763911485672f, -0.004054515156894922f};
  constexpr float kPi = std::numbers::pi_v<float>;
  const float ax = std::fabs(x), ay = std::fabs(y);
  const bool isSteep = ay > ax;
  const float larger = isSteep ? ay : ax, smaller = isSteep ? ax : ay;
  const float t = smaller / (larger == 0 ? 1 : larger), s = t * t;
  float angle = kPolynomial[7];
  for (int k = 6; k >= 0; --k) angle = angle * s + kPolynomial[k];
  angle *= t;
  angle = isSteep ? kPi / 2 - angle : angle;
  angle = x < 0 ? kPi - angle : angle;
  return y < 0 ? -angle : angle;
}

template <auto kTaps, class Sum>
void magDirRow(const Sum* const (&planes)[2], float* __restrict mag, float* __restrict dir, int32_t count) {
  for (int32_t i = 0; i < count; ++i) {
    const Sum x = kTaps.template derived<Sum>(kTaps.derive, [&](int32_t dx) { return planes[0][i + dx]; });
    const Sum y = kTaps.template smoothed<Sum>(kTaps.smooth, [&](int32_t dx) { return planes[1][i + dx]; });
    const float gx = static_cast<float>(x) * kTaps.scale, gy = static_cast<float>(y) * kTaps.scale;
    mag[i] = std::sqrt(gx * gx + gy * gy);
    dir[i] = directionOf(gx, gy);
  }
}

template <auto kTaps, class T>
DaxStatus magDirRows(PoolThreads on, const BorderedImage<T>& image, Plane<float> mag, Plane<float> dir) {
  using Sum = std::conditional_t<std::is_same_v<T, uint8_t> && kTaps.scale != 1, int32_t, GradientSum<T>>;
  return runRows(on, image.size.height, [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) {
      float *const magRow = rowAt(mag.data, mag.step, y), *const dirRow = rowAt(dir.data, dir.step, y);
      GradientStrips<GradientColumns<kTaps>, T, Sum>(image, y).run([&](int64_t x, int32_t count, const auto& planes) {
        magDirRow<kTaps>(planes, magRow + x, dirRow + x, count);
      });
    }
  });
}

template <class Kernel, class T>
DaxStatus magDirOf(PoolThreads on, const BorderedImage<T>& image, Plane<float> mag, Plane<float> dir,
                   int32_t aperture) {
  return aperture == 3 ? magDirRows<Kernel::k3>(on, image, mag, dir) : magDirRows<Kernel::k5>(on, image, mag, dir);
}

template <class T>
DaxStatus gradientMagDir(PoolThreads on, const T* src, int32_t srcStep, float* magData, int32_t magStep, float* dirData,
                         int32_t dirStep, DaxiSize size, int32_t kernel, int32_t aperture, int32_t border,
                         double value) {
  const Plane from{src, srcStep};
  const Plane<float> mag{magData, magStep}, dir{dirData, dirStep};
  DAX_REQUIRE_OK(checkPlanes(size, 1, from, mag, dir));
  DAX_REQUIRE(kernel >= DAXI_GRADIENT_SOBEL && kernel <= DAXI_GRADIENT_SCHARR, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(aperture == 3 || aperture == 5, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(border >= DAXI_BORDER_REPLICATE && border <= DAXI_BORDER_IN_MEMORY, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::isfinite(value), DAX_STS_BAD_PARAM);
  const BorderedImage<T> image = {src, srcStep, size, border, borderPixel<T>(value)};
  switch (kernel) {
    case DAXI_GRADIENT_SOBEL:
      return magDirOf<SobelKernel>(on, image, mag, dir, aperture);
    case DAXI_GRADIENT_PREWITT:
      return magDirOf<PrewittKernel>(on, image, mag, dir, aperture);
    default:
      return magDirOf<ScharrKernel>(on, image, mag, dir, aperture);
  }
}

}  // namespace
}  // namespace dax

#define DAX_MAG_DIR(SUFFIX, T)                                                                                         \
  DaxStatus DAXI_GradientMagDir_##SUFFIX##_C1R(const T* src, int32_t srcStep, float* mag, int32_t magStep, float* dir, \
                                               int32_t dirStep, DaxiSize size, int32_t kernel, int32_t aperture,       \
                                               int32_t border, double value) {                                         \
    return dax::gradientMagDir({}, src, srcStep, mag, magStep, dir, dirStep, size, kernel, aperture, border, value);   \
  }                                                                                                                    \
  DaxStatus DAXI_GradientMagDir_##SUFFIX##_C1R_MT(                                                                     \
      void* pool, uint32_t threads, const T* src, int32_t srcStep, float* mag, int32_t magStep, float* dir,            \
      int32_t dirStep, DaxiSize size, int32_t kernel, int32_t aperture, int32_t border, double value) {                \
    return dax::gradientMagDir({pool, threads}, src, srcStep, mag, magStep, dir, dirStep, size, kernel, aperture,      \
                               border, value);                                                                         \
  }
DAX_MAG_DIR(8u32f, uint8_t)
DAX_MAG_DIR(16u32f, uint16_t)
DAX_MAG_DIR(32f, float)
#undef DAX_MAG_DIR

#include "daxi/polar.h"

#include <cmath>

#include "tests/image/warp/sampling_scene.h"

namespace dax::test {
namespace {

template <class T>
struct Polars;
#define DAX_POLARS(SUFFIX, T)                                               \
  template <>                                                               \
  struct Polars<T> {                                                        \
    static constexpr WarpExport<T, DaxiPolarCfg> kForward[] = {             \
        {DAXI_Polar_##SUFFIX##_C1R, DAXI_Polar_##SUFFIX##_C1R_MT},          \
        {DAXI_Polar_##SUFFIX##_C3R, DAXI_Polar_##SUFFIX##_C3R_MT}};         \
    static constexpr WarpExport<T, DaxiPolarCfg> kBack[] = {                \
        {DAXI_PolarBack_##SUFFIX##_C1R, DAXI_PolarBack_##SUFFIX##_C1R_MT},  \
        {DAXI_PolarBack_##SUFFIX##_C3R, DAXI_PolarBack_##SUFFIX##_C3R_MT}}; \
  };
DAX_POLARS(8u, uint8_t)
DAX_POLARS(16u, uint16_t)
DAX_POLARS(16s, int16_t)
DAX_POLARS(32f, float)
#undef DAX_POLARS

constexpr double kTurn = 6.283185307179586;

DaxiPolarCfg ring(double r0, double r1, double angle0, double span) {
  DaxiPolarCfg cfg;
  EXPECT_EQ(DAXI_PolarDefaultCfg(&cfg), DAX_STS_OK);
  cfg.cx = 20.3, cfg.cy = 14.9, cfg.r0 = r0, cfg.r1 = r1, cfg.angle0 = angle0, cfg.span = span;
  return cfg;
}

// Where pixel (x, y) of a polar image of that size lies.
Place inPicture(const DaxiPolarCfg& cfg, DaxiSize polar, int32_t x, int32_t y) {
  const double angle = cfg.angle0 + cfg.span * (x + 0.5) / polar.width, part = (y + 0.5) / polar.height;
  const double radius = cfg.log ? cfg.r0 * std::pow(static_cast<double>(cfg.r1) / cfg.r0, part)
                                : cfg.r0 + (static_cast<double>(cfg.r1) - cfg.r0) * part;
  return {cfg.cx + radius * std::cos(angle), cfg.cy + radius * std::sin(angle)};
}

// And where a pixel of the picture lies in the polar image, of the turns that the one nearest to its middle.
Place inPolar(const DaxiPolarCfg& cfg, DaxiSize polar, int32_t x, int32_t y) {
  const double dx = x - static_cast<double>(cfg.cx), dy = y - static_cast<double>(cfg.cy);
  const double radius = std::hypot(dx, dy), middle = cfg.angle0 + cfg.span / 2.0;
  const double offset = std::remainder(std::atan2(dy, dx) - middle, kTurn);
  const double part = cfg.log ? std::log(radius / cfg.r0) / std::log(static_cast<double>(cfg.r1) / cfg.r0)
                              : (radius - cfg.r0) / (static_cast<double>(cfg.r1) - cfg.r0);
  return {(0.5 + offset / cfg.span) * polar.width - 0.5, part * polar.height - 0.5};
}

template <class T>
void expectPolar(bool isBack, DaxiSize from, DaxiSize to, int32_t channels, const DaxiPolarCfg& cfg) {
  const TestImage<T> src = warpNoise<T>({from.width * channels, from.height}, 3);
  const WarpExport<T, DaxiPolarCfg>* const exports = isBack ? Polars<T>::kBack : Polars<T>::kForward;
  const WarpExport<T, DaxiPolarCfg>& e = exports[channels / 2];
  const DaxiRect rect = {2, 1, to.width - 3, to.height - 1};
  const auto run = [&](void* pool, T* dst, int32_t step) {
    if (!pool) return e.plain(src.data(), src.step(), from, dst, step, to, rect, &cfg);
    return e.pooled(pool, 3, src.data(), src.step(), from, dst, step, to, rect, &cfg);
  };
  oracle::Sampling how = samplingOf(cfg, kFraction<T>);
  how.wraps = isBack && std::fabs(cfg.span) > 6.28;
  expectSampled(src, channels, rect, how, run,
                [&](int32_t x, int32_t y) { return isBack ? inPolar(cfg, from, x, y) : inPicture(cfg, to, x, y); });
}

template <class T>
class Polar : public testing::Test {};
using PolarPixels = testing::Types<uint8_t, uint16_t, int16_t, float>;
TYPED_TEST_SUITE(Polar, PolarPixels);

TYPED_TEST(Polar, IsTheFormulaThereAndBack) {
  const double circle = 2 * M_PI;
  int i = 0;
  for (DaxiPolarCfg cfg :
       {ring(3, 17, 0.3, circle), ring(17, 2, -9, -circle), ring(0, 30, 2.5, 1.9), ring(5, 16, 1, -4)}) {
    for (const int32_t border : kWarpBorders) {
      cfg.border = border, cfg.interpolation = (i + i / 6) % 4, cfg.value = 91;
      cfg.log = cfg.r0 > 0 && i % 3 == 0;
      expectPolar<TypeParam>(false, {41, 29}, {140, 5}, 1 + 2 * (i % 2), cfg);
      expectPolar<TypeParam>(true, {60, 11}, {41, 19}, 1 + 2 * (i % 2), cfg);
      if (this->HasFatalFailure()) return;
      ++i;
    }
  }
}

// Smooth hills survive the way there and back, the seam and the start at any angle included.
TEST(PolarOfFloats, ThereAndBackIsThePicture) {
  const DaxiSize size = {101, 101}, polar = {720, 100};
  TestImage<float> picture(size), strip(polar), again(size);
  picture.fill([](int32_t x, int32_t y) { return 100 + 50 * std::sin(x / 9.0) * std::cos(y / 7.0); });
  DaxiPolarCfg cfg = ring(0, 50, 0.7, 2 * M_PI);
  cfg.cx = cfg.cy = 50, cfg.interpolation = DAXI_INTERPOLATION_CUBIC;
  ASSERT_EQ(DAXI_Polar_32f_C1R(picture.data(), 101, size, strip.data(), 720, polar, {0, 0, 720, 100}, &cfg),
            DAX_STS_OK);
  ASSERT_EQ(DAXI_PolarBack_32f_C1R(strip.data(), 720, polar, again.data(), 101, size, {0, 0, 101, 101}, &cfg),
            DAX_STS_OK);
  for (int32_t y = 0; y < 101; ++y) {
    for (int32_t x = 0; x < 101; ++x) {
      if (const double r = std::hypot(x - 50, y - 50); r > 2 && r < 48) {
        ASSERT_NEAR(again.at(x, y), picture.at(x, y), 0.05) << x << ", " << y;
      }
    }
  }
  for (double DaxiPolarCfg::*const field : {&DaxiPolarCfg::r0, &DaxiPolarCfg::span}) {
    DaxiPolarCfg wrong = cfg;
    wrong.*field = field == &DaxiPolarCfg::r0 ? wrong.r1 : 6.2832;
    EXPECT_EQ(DAXI_Polar_32f_C1R(picture.data(), 101, size, strip.data(), 720, polar, {0, 0, 720, 100}, &wrong),
              DAX_STS_BAD_PARAM);
  }
}

}  // namespace
}  // namespace dax::test

#include "daxi/warp.h"

#include <cmath>

#include "tests/image/warp/sampling_scene.h"

namespace dax::test {
namespace {

template <class T>
struct Warps;
#define DAX_WARPS(SUFFIX, T)                                                            \
  template <>                                                                           \
  struct Warps<T> {                                                                     \
    static constexpr WarpExport<T, DaxiWarpCfg> kAffine[] = {                           \
        {DAXI_WarpAffine_##SUFFIX##_C1R, DAXI_WarpAffine_##SUFFIX##_C1R_MT},            \
        {DAXI_WarpAffine_##SUFFIX##_C3R, DAXI_WarpAffine_##SUFFIX##_C3R_MT}};           \
    static constexpr WarpExport<T, DaxiWarpCfg> kPerspective[] = {                      \
        {DAXI_WarpPerspective_##SUFFIX##_C1R, DAXI_WarpPerspective_##SUFFIX##_C1R_MT},  \
        {DAXI_WarpPerspective_##SUFFIX##_C3R, DAXI_WarpPerspective_##SUFFIX##_C3R_MT}}; \
    static constexpr WarpExport<T, DaxiRotateCfg> kRotate[] = {                         \
        {DAXI_Rotate_##SUFFIX##_C1R, DAXI_Rotate_##SUFFIX##_C1R_MT},                    \
        {DAXI_Rotate_##SUFFIX##_C3R, DAXI_Rotate_##SUFFIX##_C3R_MT}};                   \
  };
DAX_WARPS(8u, uint8_t)
DAX_WARPS(16u, uint16_t)
DAX_WARPS(16s, int16_t)
DAX_WARPS(32f, float)
#undef DAX_WARPS

DaxiWarpCfg warpBy(std::array<double, 9> m, int32_t interpolation = DAXI_INTERPOLATION_LINEAR) {
  DaxiWarpCfg cfg;
  EXPECT_EQ(DAXI_WarpDefaultCfg(&cfg), DAX_STS_OK);
  std::copy(m.begin(), m.end(), cfg.m);
  cfg.interpolation = interpolation;
  return cfg;
}

// Where a pixel lies, with the matrix from the destination to the source in extended precision.
Place placeOf(const std::array<double, 9>& m, int32_t x, int32_t y) {
  const double w = m[6] * x + m[7] * y + m[8];
  if (!(w > 0)) return {NAN, NAN};
  return {(m[0] * x + m[1] * y + m[2]) / w, (m[3] * x + m[4] * y + m[5]) / w};
}

std::array<double, 9> inverseOf(const double (&m)[9]) {
  std::array<double, 9> inverse;
  double determinant = 0;
  const auto minor = [&](int i, int j) {
    const auto at = [&](int di, int dj) -> double { return m[(i + di) % 3 * 3 + (j + dj) % 3]; };
    return at(1, 1) * at(2, 2) - at(1, 2) * at(2, 1);
  };
  for (int j = 0; j < 3; ++j) determinant += m[j] * minor(0, j);
  for (int i = 0; i < 9; ++i) inverse[static_cast<size_t>(i)] = minor(i % 3, i / 3) / determinant;
  return inverse;
}

template <class T>
class Warp : public testing::Test {};
using WarpPixels = testing::Types<uint8_t, uint16_t, int16_t, float>;
TYPED_TEST_SUITE(Warp, WarpPixels);

template <class T, class Cfg>
void expectWarp(const WarpExport<T, Cfg>* exports, DaxiSize from, int32_t channels, const DaxiRect& rect,
                const Cfg& cfg, const std::array<double, 9>& back) {
  const TestImage<T> src = warpNoise<T>({from.width * channels, from.height}, 3);
  const DaxiSize to = {rect.x + rect.width + 5, rect.y + rect.height + 4};
  const WarpExport<T, Cfg>& e = exports[channels / 2];
  const auto run = [&](void* pool, T* dst, int32_t step) {
    if (!pool) return e.plain(src.data(), src.step(), from, dst, step, to, rect, &cfg);
    return e.pooled(pool, 3, src.data(), src.step(), from, dst, step, to, rect, &cfg);
  };
  expectSampled(src, channels, rect, samplingOf(cfg, kFraction<T>), run,
                [&](int32_t x, int32_t y) { return placeOf(back, x, y); });
}

TYPED_TEST(Warp, IsTheFormula) {
  using T = TypeParam;
  int i = 0;
  for (const DaxiSize from : {DaxiSize{5, 9}, {150, 20}}) {
    for (const int32_t border : kWarpBorders) {
      for (int32_t interpolation = 0; interpolation < 4; ++interpolation, ++i) {
        // Turned, sheared and mirrored; and one with the horizon across the picture, of either sign.
        DaxiWarpCfg affine = warpBy({0.8, -0.7, 9.3, 0.6, -0.9, 11.1, 0, 0, 1}, interpolation);
        DaxiWarpCfg perspective = warpBy({1.1, 0.2, 3, 0.1, -0.9, 12, 0.004, -0.03, 1}, interpolation);
        if (i % 2) std::for_each(perspective.m, perspective.m + 9, [](double& each) { each = -each; });
        for (DaxiWarpCfg* const cfg : {&affine, &perspective}) {
          if (cfg == &perspective && i % 3) continue;  // they differ in positions only
          cfg->border = border, cfg->value = 77.3, cfg->cubicA = -0.75;
          const bool isAffine = cfg == &affine;
          auto back = inverseOf(cfg->m);
          // What is seen has a positive denominator.
          const Place centre = {(from.width - 1) / 2.0, (from.height - 1) / 2.0};
          const double w = cfg->m[6] * centre[0] + cfg->m[7] * centre[1] + cfg->m[8];
          if (w < 0) std::for_each(back.begin(), back.end(), [](double& each) { each = -each; });
          const DaxiRect rect = i % 4 ? DaxiRect{7, 3, 20, 17} : DaxiRect{0, 0, 143, 9};
          expectWarp(isAffine ? Warps<T>::kAffine : Warps<T>::kPerspective, from, 1 + 2 * (i % 2), rect, *cfg, back);
          if (this->HasFatalFailure()) return;
        }
      }
    }
  }
}

// The inverse matrix given; entries whose terms pass 2^30, which are computed in doubles.
TYPED_TEST(Warp, BackwardAndFarAway) {
  using T = TypeParam;
  for (const double far : {1.0, 0x1p29}) {
    DaxiWarpCfg cfg = warpBy({far, 0.25, 3, -0.125, 1, 0.5, 0, 0, 1});
    cfg.inverse = 1, cfg.border = DAXI_BORDER_MIRROR, cfg.value = 9;
    std::array<double, 9> back;
    std::copy(cfg.m, cfg.m + 9, back.begin());
    const bool isNear = far == 1;
    expectWarp(Warps<T>::kAffine, {isNear ? 8 : 1, 7}, 1, isNear ? DaxiRect{0, 0, 30, 20} : DaxiRect{0, 0, 1, 20}, cfg,
               back);
    if (isNear) expectWarp(Warps<T>::kPerspective, {8, 7}, 3, {2, 1, 12, 9}, cfg, back);
  }
}

template <class T, class Cfg>
TestImage<T> warped(const WarpExport<T, Cfg>& e, const TestImage<T>& src, DaxiSize to, const Cfg& cfg) {
  TestImage<T> dst(to);
  EXPECT_EQ(e.plain(src.data(), src.step(), src.size(), dst.data(), dst.step(), to, {0, 0, to.width, to.height}, &cfg),
            DAX_STS_OK);
  return dst;
}

// A quarter turn is exact, and so is standing still, by any kernel.
TYPED_TEST(Warp, QuarterTurns) {
  using T = TypeParam;
  const TestImage<T> src = warpNoise<T>({150, 11}, 4);
  DaxiRotateCfg cfg;
  ASSERT_EQ(DAXI_RotateDefaultCfg(&cfg), DAX_STS_OK);
  for (int32_t interpolation = 0; interpolation < 4; ++interpolation) {
    cfg.interpolation = interpolation;
    cfg.angle = 0;
    ASSERT_TRUE(samePixels(warped(Warps<T>::kRotate[0], src, src.size(), cfg), src));
    cfg.angle = M_PI / 2;
    DaxiSize to;
    ASSERT_EQ(DAXI_RotateSize(src.size(), cfg.angle, &to), DAX_STS_OK);
    ASSERT_EQ(to.width, 11);
    ASSERT_EQ(to.height, 150);
    const TestImage<T> turned = warped(Warps<T>::kRotate[0], src, to, cfg);
    for (int32_t y = 0; y < 150; ++y) {
      for (int32_t x = 0; x < 11; ++x) ASSERT_EQ(turned.at(x, y), src.at(y, 10 - x)) << x << ", " << y;
    }
  }
}

// A ramp shifted by 1/4096 pixel follows; NaN does not reach what lies on a pixel beside it.
TEST(WarpOfFloats, FractionsAndNaN) {
  TestImage<float> ramp({200, 3});
  ramp.fill([](int32_t x, int32_t) { return x; });
  ramp.at(150, 1) = NAN;
  for (int k = 0; k < 40; ++k) {
    const auto moved = warped(Warps<float>::kAffine[0], ramp, {200, 3}, warpBy({1, 0, k / 4096.0, 0, 1, 0, 0, 0, 1}));
    ASSERT_EQ(moved.at(20, 1), static_cast<float>(20 - k / 4096.0)) << k;
    for (int32_t x = 10; x < 190; ++x) ASSERT_EQ(std::isnan(moved.at(x, 1)), x == 150 || (k && x == 151)) << x;
  }
}

// What is not finite has weight 0 beside a pixel that stands still, also among pixels that are interpolated in vectors.
TEST(WarpOfFloats, StandingStillKeepsEveryBit) {
  TestImage<float> src({90, 14});
  src.fill([](int32_t x, int32_t y) { return x == 40 ? NAN : x == 60 && y == 7 ? INFINITY : x * 0.37 - y; });
  for (int32_t interpolation = 0; interpolation < 4; ++interpolation) {
    const DaxiWarpCfg cfg = warpBy({1, 0, 0, 0, 1, 0, 0, 0, 1}, interpolation);
    ASSERT_TRUE(samePixels(warped(Warps<float>::kAffine[0], src, src.size(), cfg), src)) << interpolation;
  }
}

TEST(WarpOfBytes, HalvesGoToTheEven) {
  TestImage<uint8_t> src({200, 2});
  src.fill([](int32_t x, int32_t) { return x; });
  const auto moved = warped(Warps<uint8_t>::kAffine[0], src, {200, 1}, warpBy({1, 0, 0.5, 0, 1, 0, 0, 0, 1}));
  for (int32_t x = 1; x < 200; ++x) ASSERT_EQ(moved.at(x, 0), x % 2 ? x - 1 : x) << x;
}

// --- Matrices ---

void expectMaps(const double (&m)[9], const double* from, const double* to, int count) {
  for (int i = 0; i < count; ++i) {
    const double x = from[2 * i], y = from[2 * i + 1], w = m[6] * x + m[7] * y + m[8];
    EXPECT_NEAR((m[0] * x + m[1] * y + m[2]) / w, to[2 * i], 1e-6) << i;
    EXPECT_NEAR((m[3] * x + m[4] * y + m[5]) / w, to[2 * i + 1], 1e-6) << i;
  }
}

TEST(WarpMatrices, FromPoints) {
  double m[9];
  const double far = 1e6;
  const double from[8] = {far, far, far + 8, far + 1, far + 9, far + 7, far - 1, far + 6};
  const double to[8] = {0, 0, 100, 10, 80, 90, 5, 70};
  ASSERT_EQ(DAXI_AffineFrom3(from, to, m), DAX_STS_OK);
  expectMaps(m, from, to, 3);
  ASSERT_EQ(DAXI_PerspectiveFrom4(from, to, m), DAX_STS_OK);
  expectMaps(m, from, to, 4);
  const double unit[8] = {0, 0, 1, 0, 1, 1, 0, 1}, skew[8] = {2, 3, 7, 4, 8, 9, 3, 8};
  ASSERT_EQ(DAXI_PerspectiveFrom4(unit, skew, m), DAX_STS_OK);
  EXPECT_EQ((std::array{m[6], m[7], m[8]}), (std::array{0.0, 0.0, 1.0}));  // a parallelogram
  // On a line; crossed; concave; twice the same corner.
  const double line[8] = {0, 0, 1, 1, 2, 2, 0, 5}, crossed[8] = {0, 0, 1, 1, 1, 0, 0, 1};
  const double concave[8] = {0, 0, 4, 0, 1, 1, 0, 4}, twice[8] = {0, 0, 0, 0, 1, 1, 0, 1};
  EXPECT_EQ(DAXI_AffineFrom3(line, to, m), DAX_STS_DEGENERATE);
  for (const double* const bad : {line, crossed, concave, twice}) {
    EXPECT_EQ(DAXI_PerspectiveFrom4(unit, bad, m), DAX_STS_DEGENERATE);
    EXPECT_EQ(DAXI_PerspectiveFrom4(bad, unit, m), DAX_STS_DEGENERATE);
  }
  EXPECT_EQ(DAXI_PerspectiveFrom4(crossed, crossed, m), DAX_STS_OK);  // both crossed alike
}

TEST(WarpMatrices, RotationsAndBounds) {
  DaxiWarpCfg cfg = warpBy({1, 0, 0, 0, 1, 0, 0, 0, 1});
  ASSERT_EQ(DAXI_RotationMatrix(10, 20, M_PI / 2, 2, cfg.m), DAX_STS_OK);
  const double from[4] = {10, 20, 13, 20}, to[4] = {10, 20, 10, 26};  // from x to y
  expectMaps(cfg.m, from, to, 2);
  DaxiRect bound;
  const auto boundOf = [&](DaxiRect region) { return DAXI_WarpBound({40, 30}, region, &cfg, &bound); };
  // A quarter turn and twice the size about (10, 20): x in 10 - 2 (y - 20), y in 20 + 2 (x - 10), pixels with their areas.
  ASSERT_EQ(boundOf({0, 0, 40, 30}), DAX_STS_OK);
  EXPECT_EQ((std::array{bound.x, bound.y, bound.width, bound.height}), (std::array{-9, -1, 61, 81}));
  cfg.m[0] = cfg.m[4] = 1, cfg.m[1] = cfg.m[3] = 0, cfg.m[2] = 0.3, cfg.m[5] = -7;
  ASSERT_EQ(boundOf({3, 2, 5, 4}), DAX_STS_OK);
  EXPECT_EQ((std::array{bound.x, bound.y, bound.width, bound.height}), (std::array{3, -5, 5, 4}));
  cfg.m[6] = -1.0 / 30;  // the horizon at column 30
  EXPECT_EQ(boundOf({0, 0, 29, 30}), DAX_STS_OK);
  EXPECT_EQ(boundOf({0, 0, 31, 30}), DAX_STS_DEGENERATE);
  cfg = warpBy({1, 2, 3, 4, 5, 6, 7, 8, 9});
  EXPECT_EQ(boundOf({0, 0, 1, 1}), DAX_STS_INVERSION);
}

}  // namespace
}  // namespace dax::test

#include "daxi/remap.h"

#include <cmath>
#include <vector>

#include "tests/image/warp/sampling_scene.h"

namespace dax::test {
namespace {

template <class T>
struct Remaps;
#define DAX_REMAPS(SUFFIX, T)                                              \
  template <>                                                              \
  struct Remaps<T> {                                                       \
    static constexpr auto kPlain1 = DAXI_Remap_##SUFFIX##_C1R;             \
    static constexpr auto kPlain3 = DAXI_Remap_##SUFFIX##_C3R;             \
    static constexpr auto kPooled1 = DAXI_Remap_##SUFFIX##_C1R_MT;         \
    static constexpr auto kPooled3 = DAXI_Remap_##SUFFIX##_C3R_MT;         \
    static constexpr auto kPrepared1 = DAXI_RemapPrepared_##SUFFIX##_C1R;  \
    static constexpr auto kPrepared3 = DAXI_RemapPrepared_##SUFFIX##_C3R;  \
    static constexpr auto kOnPool1 = DAXI_RemapPrepared_##SUFFIX##_C1R_MT; \
    static constexpr auto kOnPool3 = DAXI_RemapPrepared_##SUFFIX##_C3R_MT; \
  };
DAX_REMAPS(8u, uint8_t)
DAX_REMAPS(16u, uint16_t)
DAX_REMAPS(16s, int16_t)
DAX_REMAPS(32f, float)
#undef DAX_REMAPS

DaxiRemapCfg remapBy(int32_t interpolation, int32_t border) {
  DaxiRemapCfg cfg;
  EXPECT_EQ(DAXI_RemapDefaultCfg(&cfg), DAX_STS_OK);
  cfg.interpolation = interpolation, cfg.border = border, cfg.value = 40.5;
  return cfg;
}

// Places in and around a picture, some on pixels, some nowhere.
struct Maps {
  Maps(DaxiSize size, DaxiSize of) : x(size, 1), y(size, 4) {
    Random random(9);
    const auto place = [&](int32_t side) {
      switch (random.below(12)) {
        case 0:
          return static_cast<float>(random.below(side));
        case 1:
          return random.below(3) ? -0.5f : NAN;
        case 2:
          return random.below(3) ? static_cast<float>(side) - 0.5f : 1e20f;
        default:
          return static_cast<float>(random.below(side * 5000)) / 4096 - 1;
      }
    };
    x.fill([&](int32_t, int32_t) { return place(of.width); });
    y.fill([&](int32_t, int32_t) { return place(of.height); });
  }
  TestImage<float> x, y;
};

std::vector<uint64_t> modelOf(const Maps& maps) {
  uint64_t bytes = 0;
  EXPECT_EQ(DAXI_RemapPrepareModelSize(maps.x.size(), &bytes), DAX_STS_OK);
  std::vector<uint64_t> model((bytes + 7) / 8);
  EXPECT_EQ(DAXI_RemapPrepare(maps.x.data(), maps.x.step(), maps.y.data(), maps.y.step(), maps.x.size(), model.data()),
            DAX_STS_OK);
  return model;
}

template <class T>
class Remap : public testing::Test {};
using RemapPixels = testing::Types<uint8_t, uint16_t, int16_t, float>;
TYPED_TEST_SUITE(Remap, RemapPixels);

TYPED_TEST(Remap, IsTheFormulaPlainAndPrepared) {
  using T = TypeParam;
  using R = Remaps<T>;
  const DaxiSize to = {150, 3};
  const DaxiRect all = {0, 0, to.width, to.height};
  int i = 0;
  for (const DaxiSize from : {DaxiSize{1, 2}, {20, 9}}) {
    for (const int32_t border : kWarpBorders) {
      for (int32_t interpolation = 0; interpolation < 4; ++interpolation, ++i) {
        const Maps maps(to, from);
        const DaxiRemapCfg cfg = remapBy(interpolation, border);
        const bool isColour = i % 2;
        const TestImage<T> src = warpNoise<T>({from.width * (isColour ? 3 : 1), from.height}, 3);
        const auto plain = [&](void* pool, T* dst, int32_t step) {
          const auto with = [&](auto function, auto... on) {
            return function(on..., src.data(), src.step(), from, maps.x.data(), maps.x.step(), maps.y.data(),
                            maps.y.step(), dst, step, to, &cfg);
          };
          if (!pool) return with(isColour ? R::kPlain3 : R::kPlain1);
          return with(isColour ? R::kPooled3 : R::kPooled1, pool, 3u);
        };
        const oracle::Sampling how = samplingOf(cfg, kFraction<T>);
        expectSampled(
            src, isColour ? 3 : 1, all, how, plain,
            [&](int32_t x, int32_t y) {
              return Place{maps.x.at(x, y), maps.y.at(x, y)};
            },
            0);
        if (i % 3) continue;  // prepared maps differ in positions only
        const std::vector<uint64_t> model = modelOf(maps);
        const auto prepared = [&](void* pool, T* dst, int32_t step) {
          const auto with = [&](auto function, auto... on) {
            return function(on..., src.data(), src.step(), from, model.data(), 8 * model.size(), dst, step, to, &cfg);
          };
          if (!pool) return with(isColour ? R::kPrepared3 : R::kPrepared1);
          return with(isColour ? R::kOnPool3 : R::kOnPool1, pool, 3u);
        };
        const auto rounded = [](float place) { return std::nearbyint(place * 4096.0) / 4096; };
        expectSampled(
            src, isColour ? 3 : 1, all, how, prepared,
            [&](int32_t x, int32_t y) {
              return Place{rounded(maps.x.at(x, y)), rounded(maps.y.at(x, y))};
            },
            0);
        if (this->HasFatalFailure()) return;
      }
    }
  }
}

TEST(RemapModel, DamageIsNoticedOrHarmless) {
  const Maps maps({9, 5}, {20, 9});
  std::vector<uint64_t> model = modelOf(maps);
  const auto check = [&] {
    DaxiSize size = {0, 0};
    const DaxStatus status = DAXI_RemapCheckModel(model.data(), 8 * model.size(), &size);
    EXPECT_EQ(size.width * size.height, status ? 0 : 45);
    return status;
  };
  const TestImage<uint8_t> src = warpNoise<uint8_t>({20, 9}, 3);
  TestImage<uint8_t> dst({9, 5});
  const DaxiRemapCfg cfg = remapBy(DAXI_INTERPOLATION_LANCZOS3, DAXI_BORDER_MIRROR);
  const auto use = [&](uint64_t bytes, DaxiSize to) {
    return DAXI_RemapPrepared_8u_C1R(src.data(), src.step(), src.size(), model.data(), bytes, dst.data(), dst.step(),
                                     to, &cfg);
  };
  EXPECT_EQ(check(), DAX_STS_OK);
  EXPECT_EQ(use(8 * model.size(), {9, 4}), DAX_STS_BAD_PARAM);
  EXPECT_EQ(use(8 * model.size() - 8, {9, 5}), DAX_STS_BAD_PARAM);
  Random random(2);
  for (int i = 0; i < 2000; ++i) {
    const auto bit = random.below(static_cast<int32_t>(64 * model.size()));
    uint64_t& word = model[static_cast<size_t>(bit / 64)];
    const uint64_t whole = word;
    word ^= uint64_t{1} << (bit % 64);
    EXPECT_NE(check(), DAX_STS_OK) << bit;
    use(8 * model.size(), {9, 5});  // within guarded memory
    word = whole;
  }
}

DaxStatus wave(void* user, double x, double y, double* sourceX, double* sourceY) {
  auto& left = *static_cast<int*>(user);
  *sourceX = x == 3 ? 1e300 : x + y / 4;
  *sourceY = y * 2;
  return left-- > 0 ? DAX_STS_OK : 77;
}

TEST(RemapMaps, FromFunctionsAndComposed) {
  TestImage<float> x({12, 7}, 2), y({12, 7});
  int left = 20;
  const auto make = [&] { return DAXI_MapFromFunction(wave, &left, x.data(), x.step(), y.data(), y.step(), x.size()); };
  EXPECT_EQ(make(), 77u);
  left = 12 * 7;
  ASSERT_EQ(make(), DAX_STS_OK);
  EXPECT_EQ(x.at(4, 5), 5.25f);
  EXPECT_EQ(y.at(4, 5), 10);
  EXPECT_TRUE(std::isnan(x.at(3, 0)));
  // outer: columns doubled and turned; inner: quarters of pixels, with the last column, beyond it, and nowhere.
  TestImage<float> outerX({4, 3}), outerY({4, 3}), innerX({5, 1}), innerY({5, 1}), mapX({5, 1}), mapY({5, 1});
  outerX.fill([](int32_t i, int32_t j) { return 2 * i - j; });
  outerY.fill([](int32_t i, int32_t j) { return i + 10 * j; });
  const float places[5] = {0.25f, 3, 3.25f, -0.25f, NAN};
  innerX.fill([&](int32_t i, int32_t) { return places[i]; });
  innerY.fill([](int32_t, int32_t) { return 2; });
  ASSERT_EQ(DAXI_MapCompose(outerX.data(), 4, outerY.data(), 4, {4, 3}, innerX.data(), 5, innerY.data(), 5, mapX.data(),
                            5, mapY.data(), 5, {5, 1}),
            DAX_STS_OK);
  EXPECT_EQ(mapX.at(0, 0), 0.5f - 2);
  EXPECT_EQ(mapY.at(0, 0), 20.25f);
  EXPECT_EQ(mapX.at(1, 0), 4);
  for (int32_t i = 2; i < 5; ++i) EXPECT_TRUE(std::isnan(mapX.at(i, 0)) && std::isnan(mapY.at(i, 0))) << i;
}

}  // namespace
}  // namespace dax::test

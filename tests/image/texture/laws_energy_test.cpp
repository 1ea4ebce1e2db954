#include "daxi/laws_energy.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/filter_scene.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

constexpr int kVectors[5][5] = {
    {1, 4, 6, 4, 1}, {-1, -2, 0, 2, 1}, {-1, 0, 2, 0, -1}, {-1, 2, 0, -2, 1}, {1, -4, 6, -4, 1}};

template <class T>
double response(const FilterScene<T>& s, const DaxiLawsEnergyCfg& cfg, int32_t x, int32_t y) {
  double sum = 0;
  for (int32_t k = 0; k < 25; ++k) {
    const auto v = static_cast<double>(s.pixel(x + k % 5 - 2, y + k / 5 - 2, cfg.border, cfg.value));
    sum += kVectors[cfg.across][k % 5] * kVectors[cfg.down][k / 5] * v;
  }
  return std::fabs(sum);
}

template <class T>
double energy(const FilterScene<T>& s, const DaxiLawsEnergyCfg& cfg, int32_t x, int32_t y) {
  const auto [width, height] = cfg.window;
  double sum = 0, count = 0;
  for (int32_t v = y - height / 2; v < y - height / 2 + height; ++v) {
    for (int32_t u = x - width / 2; u < x - width / 2 + width; ++u) {
      if (u < 0 || u >= s.size.width || v < 0 || v >= s.size.height) continue;
      sum += response(s, cfg, u, v), ++count;
    }
  }
  return sum / count;
}

template <class T>
struct Laws;
#define DAX_LAWS(T, SUFFIX)                                                       \
  template <>                                                                     \
  struct Laws<T> {                                                                \
    static constexpr auto kBytes = DAXI_LawsEnergyBufferSize_##SUFFIX;            \
    static constexpr auto kPooledBytes = DAXI_LawsEnergyBufferSize_##SUFFIX##_MT; \
    static constexpr auto kPlain = DAXI_LawsEnergy_##SUFFIX##_C1R;                \
    static constexpr auto kPooled = DAXI_LawsEnergy_##SUFFIX##_C1R_MT;            \
  };
DAX_LAWS(uint8_t, 8u32f)
DAX_LAWS(uint16_t, 16u32f)
DAX_LAWS(float, 32f)
#undef DAX_LAWS

template <class>
class LawsEnergy : public testing::Test {};
using EnergyPixels = testing::Types<uint8_t, uint16_t, float>;
TYPED_TEST_SUITE(LawsEnergy, EnergyPixels);

TYPED_TEST(LawsEnergy, IsTheMeanMagnitude) {
  using L = Laws<TypeParam>;
  Random random(2);
  for (int32_t round = 0; round < 25; ++round) {
    DaxiLawsEnergyCfg cfg;
    ASSERT_EQ(DAXI_LawsEnergyDefaultCfg(&cfg), DAX_STS_OK);
    cfg.across = round % 5, cfg.down = round / 5, cfg.border = round % 6, cfg.value = 100;
    cfg.window = {1 + random.below(7), 1 + random.below(6)};
    const DaxiSize size = {1 + random.below(30), 1 + random.below(9)};
    const FilterScene<TypeParam> s(size, cfg.border == DAXI_BORDER_IN_MEMORY ? 2 : 0, static_cast<uint64_t>(round));
    uint64_t bytes = 0, pooledBytes = 0;
    ASSERT_EQ(L::kBytes(size, &cfg, &bytes), DAX_STS_OK);
    ASSERT_EQ(L::kPooledBytes(size, &cfg, 3, &pooledBytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> buffer(bytes), slices(pooledBytes);
    TestImage<float> dst(size, 1), tiled(size);
    dst.remember();
    ASSERT_EQ(L::kPlain(s.data(), s.image.step(), dst.data(), dst.step(), size, &cfg, buffer.data()), DAX_STS_OK);
    ASSERT_TRUE(dst.paddingUntouched());
    for (int32_t y = 0; y < size.height; ++y) {
      for (int32_t x = 0; x < size.width; ++x) {
        ASSERT_EQ(dst.at(x, y), static_cast<float>(energy(s, cfg, x, y))) << x << ", " << y << " border " << cfg.border;
      }
    }
    MockPool pool;
    ASSERT_EQ(L::kPooled(&pool, 3, s.data(), s.image.step(), tiled.data(), tiled.step(), size, &cfg, slices.data()),
              DAX_STS_OK);
    ASSERT_TRUE(samePixels(dst, tiled)) << "on a pool";
  }
}

}  // namespace
}  // namespace dax::test

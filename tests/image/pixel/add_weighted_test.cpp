#include "daxi/add_weighted.h"

#include "image/pixel/add_weighted.h"
#include "tests/image/pixel/element_check.h"

namespace dax::test {
namespace {

// By nearbyint of the sum as a long double, which holds it.
template <class T>
T weighted(T a, T b, const DaxiAddWeightedCfg& cfg) {
  volatile double first = cfg.a * static_cast<double>(a), second = cfg.b * static_cast<double>(b);
  volatile double sum = first + second;
  sum = sum + cfg.c;
  if constexpr (std::is_floating_point_v<T>) return static_cast<T>(sum);
  if (sum != sum) return 0;
  const double low = std::numeric_limits<T>::min(), high = std::numeric_limits<T>::max();
  return static_cast<T>(std::nearbyint(sum < low ? low : sum > high ? high : sum));
}

template <class T, class Plain, class InPlace>
void checkWeighted(Plain plain, InPlace inPlace) {
  // Halves that are halves, and those that only nearly are; beyond all limits; infinities that cancel each other.
  const DaxiAddWeightedCfg weights[] = {{0.5, 0.5, 0},   {0.3, 0.7, 0},         {0.1, 0.2, 0.05},
                                        {-3, 1.5, 1e-9}, {1e300, -1e300, 1e10}, {1e308, -1e308, -0.5}};
  for (const DaxiAddWeightedCfg& cfg : weights) {
    const auto expected = [&](T a, T b) { return weighted(a, b, cfg); };
    checkExportOfTwo<T, T>([&](auto... a) { return plain(a..., &cfg); }, [&](auto... a) { return inPlace(a..., &cfg); },
                           expected);
    checkRowOfTwo<T, T>(
        [&](const T* a, const T* b, T* dst, int32_t count, int32_t isa) { addWeightedRow(a, b, dst, count, cfg, isa); },
        expected);
  }
}

#define CHECK_WEIGHTED(SUFFIX, T)                                                   \
  checkWeighted<T>([](auto... a) { return DAXI_AddWeighted_##SUFFIX##_C1R(a...); }, \
                   [](auto... a) { return DAXI_AddWeighted_##SUFFIX##_C1IR(a...); })

TEST(AddWeighted, ExportsAndRows) {
  CHECK_WEIGHTED(8u, uint8_t);
  CHECK_WEIGHTED(16u, uint16_t);
  CHECK_WEIGHTED(16s, int16_t);
  CHECK_WEIGHTED(32f, float);
}

TEST(AddWeighted, DefaultsAreTheMean) {
  DaxiAddWeightedCfg cfg;
  ASSERT_EQ(DAXI_AddWeightedDefaultCfg(&cfg), DAX_STS_OK);
  uint8_t first = 10, second = 13;
  ASSERT_EQ(DAXI_AddWeighted_8u_C1IR(&first, 1, &second, 1, {1, 1}, &cfg), DAX_STS_OK);
  EXPECT_EQ(second, 12);
}

}  // namespace
}  // namespace dax::test

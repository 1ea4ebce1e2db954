#include "frame/numeric/pcg32.h"

#include <gtest/gtest.h>

namespace dax::test {
namespace {

// What the generator's author publishes for seed 42 and stream 54.
TEST(Pcg32, PublishedNumbers) {
  Pcg32 random(42, 54);
  for (const uint32_t right : {0xA15C02B7u, 0x7B47F409u, 0xBA1D3330u, 0x83D2F293u, 0xBFA4784Bu, 0xCBED606Eu}) {
    EXPECT_EQ(random.next(), right);
  }
}

// For n = 3 2^30, a product without rejection would give multiples of 3 twice as often as the others.
TEST(Pcg32, BelowIsUniform) {
  constexpr uint32_t kDraws = 90000;
  for (const uint32_t n : {3u, 3u << 30}) {
    uint32_t counts[3] = {};
    Pcg32 random(1);
    for (uint32_t i = 0; i < kDraws; ++i) {
      const uint32_t value = random.below(n);
      ASSERT_LT(value, n);
      ++counts[value % 3];
    }
    for (const uint32_t count : counts) EXPECT_NEAR(count, kDraws / 3, 700) << n;  // five standard deviations
  }
  EXPECT_EQ(Pcg32(2).next(), Pcg32(2, 0).next());
  Pcg32 random(2);
  for (int i = 0; i < 100; ++i) EXPECT_EQ(random.below(1), 0u);
}

TEST(Pcg32, UnitIsUniform) {
  constexpr int kDraws = 90000;
  Pcg32 random(3, 7);
  double sum = 0, squares = 0;
  for (int i = 0; i < kDraws; ++i) {
    const double value = random.unit();
    ASSERT_GE(value, 0);
    ASSERT_LT(value, 1);
    sum += value;
    squares += value * value;
  }
  EXPECT_NEAR(sum / kDraws, 1.0 / 2, 0.005);
  EXPECT_NEAR(squares / kDraws, 1.0 / 3, 0.005);
}

}  // namespace
}  // namespace dax::test

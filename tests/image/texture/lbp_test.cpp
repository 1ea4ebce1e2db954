#include "daxi/lbp.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "tests/image/texture/lbp_oracle.h"
#include "tests/support/filter_scene.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

template <class T>
struct Patterns;
#define DAX_PATTERNS(T, BYTES, WORDS, SUFFIX)                                      \
  template <>                                                                      \
  struct Patterns<T> {                                                             \
    static constexpr auto kBytes = DAXI_LBP_##BYTES##_C1R;                         \
    static constexpr auto kPooledBytes = DAXI_LBP_##BYTES##_C1R_MT;                \
    static constexpr auto kWords = DAXI_LBP_##WORDS##_C1R;                         \
    static constexpr auto kPooledWords = DAXI_LBP_##WORDS##_C1R_MT;                \
    static constexpr auto kHistogram = DAXI_LBPHistogram_##SUFFIX##_C1R;           \
    static constexpr auto kPooledHistogram = DAXI_LBPHistogram_##SUFFIX##_C1R_MT;  \
    static constexpr auto kBufferSize = DAXI_LBPHistogramBufferSize_##SUFFIX##_MT; \
  };
DAX_PATTERNS(uint8_t, 8u, 8u16u, 8u)
DAX_PATTERNS(uint16_t, 16u8u, 16u, 16u)
DAX_PATTERNS(float, 32f8u, 32f16u, 32f)
#undef DAX_PATTERNS

template <class T>
void checkHistogram(const FilterScene<T>& s, const DaxiLbpCfg& cfg, const std::vector<uint64_t>& expected) {
  int32_t count = 0;
  ASSERT_EQ(DAXI_LBPCodeCount(&cfg, &count), DAX_STS_OK);
  ASSERT_EQ(static_cast<size_t>(count), expected.size());
  GuardedBuffer<uint64_t> counts(expected.size()), pooled(expected.size());
  ASSERT_EQ(Patterns<T>::kHistogram(s.data(), s.image.step(), s.size, &cfg, counts.data()), DAX_STS_OK);
  uint64_t bytes = 0;
  ASSERT_EQ(Patterns<T>::kBufferSize(&cfg, 3, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  MockPool pool;
  ASSERT_EQ(
      Patterns<T>::kPooledHistogram(&pool, 3, s.data(), s.image.step(), s.size, &cfg, pooled.data(), buffer.data()),
      DAX_STS_OK);
  for (size_t code = 0; code < expected.size(); ++code) {
    ASSERT_EQ(counts.data()[code], expected[code]) << code;
    ASSERT_EQ(pooled.data()[code], expected[code]) << code << " on a pool";
  }
}

template <class T, class D, class Plain, class Pooled>
void checkImage(const FilterScene<T>& s, const DaxiLbpCfg& cfg, Plain plain, Pooled pooled, bool withHistogram) {
  TestImage<D> dst(s.size, 2), tiled(s.size);
  dst.remember();
  ASSERT_EQ(plain(s.data(), s.image.step(), dst.data(), dst.step(), s.size, &cfg), DAX_STS_OK);
  ASSERT_TRUE(dst.paddingUntouched());
  const auto pixel = [&](int32_t x, int32_t y) { return s.pixel(x, y, cfg.border, cfg.value); };
  int32_t count = 0;
  ASSERT_EQ(DAXI_LBPCodeCount(&cfg, &count), DAX_STS_OK);
  std::vector<uint64_t> counts(static_cast<size_t>(count));
  for (int32_t y = 0; y < s.size.height; ++y) {
    for (int32_t x = 0; x < s.size.width; ++x) {
      const uint32_t code = oracle::lbpCode(pixel, x, y, cfg);
      ASSERT_EQ(uint32_t{dst.at(x, y)}, code)
          << x << ", " << y << " of " << s.size.width << " codes " << cfg.codes << " points " << cfg.points
          << " radius " << cfg.radius << " border " << cfg.border;
      ++counts[code];
    }
  }
  MockPool pool;
  ASSERT_EQ(pooled(&pool, 3, s.data(), s.image.step(), tiled.data(), tiled.step(), s.size, &cfg), DAX_STS_OK);
  ASSERT_TRUE(samePixels(dst, tiled)) << "on a pool";
  if (withHistogram) checkHistogram(s, cfg, counts);
}

template <class>
class LocalPatterns : public testing::Test {};
using PatternPixels = testing::Types<uint8_t, uint16_t, float>;
TYPED_TEST_SUITE(LocalPatterns, PatternPixels);

// Few levels, so that neighbours are often equal; widths around those of strips.
TYPED_TEST(LocalPatterns, EqualTheDefinition) {
  using P = Patterns<TypeParam>;
  Random random(3);
  for (int32_t round = 0; round < 72; ++round) {
    DaxiLbpCfg cfg;
    ASSERT_EQ(DAXI_LBPDefaultCfg(&cfg), DAX_STS_OK);
    cfg.codes = round % 3, cfg.border = round / 3 % 6, cfg.value = 2;
    const bool isWide = round % 2 != 0;
    if (round % 4 != 0) {
      cfg.radius = 0.5 + 0.25 * random.below(16);
      cfg.points = isWide ? 9 + random.below(cfg.codes == DAXI_LBP_UNIFORM ? 16 : 8) : 4 + random.below(5);
    }
    const DaxiSize size = {round < 6 ? 508 + 3 * round : 1 + random.below(40), 1 + random.below(9)};
    FilterScene<TypeParam> s(size, cfg.border == DAXI_BORDER_IN_MEMORY ? 6 : 0, static_cast<uint64_t>(round));
    s.image.fill([&](int32_t, int32_t) { return random.below(5); });
    checkImage<TypeParam, uint16_t>(s, cfg, P::kWords, P::kPooledWords, true);
    if (cfg.points <= 8 || cfg.codes == DAXI_LBP_UNIFORM) {
      checkImage<TypeParam, uint8_t>(s, cfg, P::kBytes, P::kPooledBytes, false);
    }
  }
}

TYPED_TEST(LocalPatterns, OfExtremesAndEvenAreas) {
  using P = Patterns<TypeParam>;
  const DaxiLbpCfg cfg = {DAXI_LBP_PLAIN, 8, 1, DAXI_BORDER_REPLICATE, 0, 0};
  FilterScene<TypeParam> s({40, 30}, 0, 4);
  const double greatest = std::is_floating_point_v<TypeParam> ? 1 : std::numeric_limits<TypeParam>::max();
  s.image.fill([&](int32_t x, int32_t y) { return (x * 7 + y * 3) % 5 < 2 ? greatest : 0; });
  checkImage<TypeParam, uint8_t>(s, cfg, P::kBytes, P::kPooledBytes, true);
  for (int32_t level = 0; level < 256; ++level) {
    TestImage<uint8_t> dst({5, 3});
    FilterScene<TypeParam> even({5, 3}, 0, 0);
    even.image.fill([&](int32_t, int32_t) { return level * greatest / 255; });
    ASSERT_EQ(P::kBytes(even.data(), even.image.step(), dst.data(), 5, {5, 3}, &cfg), DAX_STS_OK);
    for (int32_t i = 0; i < 15; ++i) ASSERT_EQ(dst.at(i % 5, i / 5), 255) << level;
  }
}

TEST(LocalPatterns, NanIsNotBright) {
  FilterScene<float> s({3, 3}, 0, 4);
  s.image.fill([](int32_t, int32_t) { return 7; });
  s.image.at(2, 1) = std::numeric_limits<float>::quiet_NaN();
  const DaxiLbpCfg cfg = {DAXI_LBP_PLAIN, 8, 0, DAXI_BORDER_REPLICATE, 0, 0};
  TestImage<uint8_t> dst({3, 3});
  ASSERT_EQ(DAXI_LBP_32f8u_C1R(s.data(), s.image.step(), dst.data(), 3, s.size, &cfg), DAX_STS_OK);
  EXPECT_EQ(dst.at(1, 1), 254);  // all but the east
  EXPECT_EQ(dst.at(2, 1), 0);
}

// Configurations that only some results can hold.
TEST(LocalPatterns, PointsOfACode) {
  const auto statusOf = [](DaxiLbpCfg cfg) {
    TestImage<uint8_t> image({2, 2}), bytes({2, 2});
    TestImage<uint16_t> words({2, 2});
    const DaxStatus narrow = DAXI_LBP_8u_C1R(image.data(), 2, bytes.data(), 2, {2, 2}, &cfg);
    const DaxStatus wide = DAXI_LBP_8u16u_C1R(image.data(), 2, words.data(), 2, {2, 2}, &cfg);
    return std::vector<bool>{narrow == DAX_STS_OK, wide == DAX_STS_OK};
  };
  using Taken = std::vector<bool>;
  EXPECT_EQ(statusOf({DAXI_LBP_PLAIN, 8, 2, 0, 0, 0}), (Taken{true, true}));
  EXPECT_EQ(statusOf({DAXI_LBP_PLAIN, 9, 2, 0, 0, 0}), (Taken{false, true}));
  EXPECT_EQ(statusOf({DAXI_LBP_ROTATION, 17, 2, 0, 0, 0}), (Taken{false, false}));
  EXPECT_EQ(statusOf({DAXI_LBP_UNIFORM, 24, 2, 0, 0, 0}), (Taken{true, true}));
  EXPECT_EQ(statusOf({DAXI_LBP_PLAIN, 7, 0, 0, 0, 0}), (Taken{false, false}));
}

}  // namespace
}  // namespace dax::test

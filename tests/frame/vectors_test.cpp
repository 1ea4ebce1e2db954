// Vectors, the instructions that SIMDe lacks or makes slow, and the loop over rows: each against its definition.
#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "frame/op2d.h"
#include "frame/simd.h"
#include "frame/vector4.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

TEST(Vectors, LoadsStoresAndSums) {
  const float numbers[] = {1, 2, 4, 8};
  const uint8_t bytes[] = {200, 1, 2, 3, 4, 5, 6, 255};
  float four[4];
  store4(four, load4(numbers) + load4(bytes));
  EXPECT_EQ((std::vector<float>(four, four + 4)), (std::vector<float>{201, 3, 6, 11}));
  EXPECT_EQ(sum4(load4(numbers)), 15);
  int16_t eight[8];
  store8(eight, load8(bytes) - 1);
  EXPECT_EQ((std::vector<int16_t>(eight, eight + 8)), (std::vector<int16_t>{199, 0, 1, 2, 3, 4, 5, 254}));
}

#if DAX_HAVE_NEON
template <class T, size_t kCount>
std::array<T, kCount> randomNumbers(uint64_t seed) {
  std::array<T, kCount> numbers;
  Random random(seed);
  for (T& number : numbers) number = static_cast<T>(random.next());
  return numbers;
}

TEST(Simd, FourVectorsAndEveryFourthElement) {
  const auto expectAll = [](auto from, auto load, auto store, auto loadFourths, auto storeFourths) {
    auto whole = from, fourths = from, back = from;
    whole.fill(0), back.fill(0);
    store(whole.data(), load(from.data()));
    EXPECT_EQ(whole, from);
    store(fourths.data(), loadFourths(from.data()));
    for (size_t i = 0; i < 16; ++i) EXPECT_EQ(fourths[i], from[i % 4 * 4 + i / 4]);
    storeFourths(back.data(), loadFourths(from.data()));
    EXPECT_EQ(back, from);
  };
  expectAll(
      randomNumbers<uint32_t, 16>(1), [](auto* p) { return vld1q_u32_x4(p); },
      [](auto* p, auto v) { vst1q_u32_x4(p, v); }, [](auto* p) { return vld4q_u32(p); },
      [](auto* p, auto v) { vst4q_u32(p, v); });
  expectAll(
      randomNumbers<float, 16>(2), [](auto* p) { return vld1q_f32_x4(p); }, [](auto* p, auto v) { vst1q_f32_x4(p, v); },
      [](auto* p) { return vld4q_f32(p); }, [](auto* p, auto v) { vst1q_f32_x4(p, transposed(v)); });
  const auto from = randomNumbers<float, 12>(3);
  const float32x4x3_t thirds = vld3q_f32(from.data());
  for (size_t i = 0; i < 12; ++i) EXPECT_EQ(thirds.val[i % 3][i / 3], from[i]);
}

TEST(Simd, GathersBits) {
  Random random(4);
  for (int32_t round = 0; round < 200; ++round) {
    const uint64_t bits = random.next();
    uint8_t flags[64];
    for (int32_t i = 0; i < 64; ++i) flags[i] = bits >> i & 1 ? 255 : 0;
    ASSERT_EQ(gatherBits(vld1q_u8(flags), vld1q_u8(flags + 16), vld1q_u8(flags + 32), vld1q_u8(flags + 48)), bits);
  }
}

template <class T, class Load>
void expectDifferences(Load load) {
  constexpr size_t kCount = 16 / sizeof(T);
  for (uint64_t seed = 0; seed < 50; ++seed) {
    const auto a = randomNumbers<T, kCount>(seed), b = randomNumbers<T, kCount>(seed + 100);
    const auto low = lowDifference(load(a.data()), load(b.data())),
               high = highDifference(load(a.data()), load(b.data()));
    for (size_t i = 0; i < kCount; ++i) {
      const auto wide = i < kCount / 2 ? low[i] : high[i - kCount / 2];
      ASSERT_EQ(wide, static_cast<decltype(wide)>(int64_t{a[i]} - b[i])) << i;
    }
  }
}

TEST(Simd, WideDifferencesAndProducts) {
  expectDifferences<uint8_t>([](auto* p) { return vld1q_u8(p); });
  expectDifferences<uint16_t>([](auto* p) { return vld1q_u16(p); });
  expectDifferences<int16_t>([](auto* p) { return vld1q_s16(p); });
  const std::array<uint16_t, 8> a = {65535, 0, 1, 40000, 65535, 2, 50000, 7},
                                b = {65535, 9, 65535, 60000, 65534, 3, 50000, 9};
  const uint16x8_t x = vld1q_u16(a.data()), y = vld1q_u16(b.data());
  const uint32x4_t low = vmull_u16(vget_low_u16(x), vget_low_u16(y)), high = vmull_high_u16(x, y);
  for (size_t i = 0; i < 8; ++i) EXPECT_EQ(i < 4 ? low[i] : high[i - 4], uint32_t{a[i]} * b[i]);
}

// The even elements of two vectors in turn.
TEST(Simd, Interleaves) {
  const auto a = randomNumbers<uint8_t, 16>(5), b = randomNumbers<uint8_t, 16>(6);
  const uint8x16_t bytes = vtrn1q_u8(vld1q_u8(a.data()), vld1q_u8(b.data()));
  for (size_t i = 0; i < 16; ++i) EXPECT_EQ(bytes[i], i % 2 == 0 ? a[i] : b[i - 1]);
  const auto c = randomNumbers<uint16_t, 8>(7), d = randomNumbers<uint16_t, 8>(8);
  const uint16x8_t words = vtrn1q_u16(vld1q_u16(c.data()), vld1q_u16(d.data()));
  for (size_t i = 0; i < 8; ++i) EXPECT_EQ(words[i], i % 2 == 0 ? c[i] : d[i - 1]);
}
#endif

// All rows as one where no plane has a gap and the number of elements is an integer; else one by one, from top to bottom.
TEST(Rows, AsOneWhereTheyFollowEachOther) {
  using Calls = std::vector<std::array<int64_t, 3>>;  // offsets of both planes, elements
  uint8_t first, second;
  const auto rows = [&](DaxiSize size, int32_t channels, int32_t firstStep, int32_t secondStep) {
    Calls calls;
    const auto start = [](const uint8_t& p) { return reinterpret_cast<intptr_t>(&p); };
    forEachRow(
        size, channels,
        [&](const uint8_t* a, uint8_t* b, int32_t n) {
          calls.push_back(
              {reinterpret_cast<intptr_t>(a) - start(first), reinterpret_cast<intptr_t>(b) - start(second), n});
        },
        Plane<const uint8_t>{&first, firstStep}, Plane<uint8_t>{&second, secondStep});
    return calls;
  };
  EXPECT_EQ(rows({5, 3}, 2, 10, 10), (Calls{{0, 0, 30}}));
  EXPECT_EQ(rows({5, 3}, 2, 10, 11), (Calls{{0, 0, 10}, {10, 11, 10}, {20, 22, 10}}));
  EXPECT_EQ(rows({5, 2}, 1, 6, 5), (Calls{{0, 0, 5}, {6, 5, 5}}));
  EXPECT_EQ(rows({INT32_MAX, 1}, 1, INT32_MAX, INT32_MAX), (Calls{{0, 0, INT32_MAX}}));
  EXPECT_EQ(rows({1 << 30, 2}, 1, 1 << 30, 1 << 30).size(), 2u);
}

}  // namespace
}  // namespace dax::test

// Histograms over bins against their definitions.
#include <gtest/gtest.h>

#include <algorithm>

#include "daxi/histogram.h"
#include "image/statistics/level_counts.h"
#include "tests/image/statistics/statistics_oracle.h"

namespace dax::test {
namespace {

struct Result {
  std::vector<uint64_t> counts;
  DaxiHistogramOutside outside = {7, 7, 7};

  bool operator==(const Result& other) const { return counts == other.counts && sameBits(outside, other.outside); }
};

// binOf(x): a bin, -1 below, -2 above.
template <class T, class BinOf>
Result expectedCounts(const std::vector<T>& pixels, int32_t bins, BinOf binOf) {
  Result result{std::vector<uint64_t>(static_cast<size_t>(bins)), {}};
  for (const T x : pixels) {
    if (x != x) {
      ++result.outside.nan;
      continue;
    }
    const int32_t bin = binOf(x);
    ++(bin == -1 ? result.outside.below : bin == -2 ? result.outside.above : result.counts[static_cast<size_t>(bin)]);
  }
  return result;
}

template <class T, class End>
Result evenByDefinition(const std::vector<T>& pixels, int32_t bins, End low, End high) {
  return expectedCounts(pixels, bins, [=](T x) -> int32_t {
    if constexpr (std::is_integral_v<T>) {
      if (x < low || x >= high) return x < low ? -1 : -2;
      return static_cast<int32_t>((int64_t{x} - low) * bins / (int64_t{high} - low));
    } else {
      if (x < low || x > high) return x < low ? -1 : -2;
      int32_t bin = bins - 1;
      while (low + bin * (high - low) / bins > x) --bin;
      return bin;
    }
  });
}

template <class T, class End>
Result rangeByDefinition(const std::vector<T>& pixels, const std::vector<End>& edges) {
  const auto bins = static_cast<int32_t>(edges.size()) - 1;
  return expectedCounts(pixels, bins, [&](T x) -> int32_t {
    if (std::is_floating_point_v<T> && x == edges.back()) return bins - 1;
    for (int32_t i = 0; i < bins; ++i) {
      if (x >= edges[static_cast<size_t>(i)] && x < edges[static_cast<size_t>(i) + 1]) return i;
    }
    return x < edges[0] ? -1 : -2;
  });
}

// A work buffer of exactly the size that the query tells, with rubbish in it.
struct Work {
  GuardedBuffer<uint8_t> bytes;
  explicit Work(uint64_t size) : bytes(static_cast<size_t>(size)) { std::memset(bytes.data(), 0x5A, bytes.size()); }
};

template <class Query>
uint64_t bytesFor(Query query, int32_t bins) {
  uint64_t bytes = 0;
  EXPECT_EQ(query(bins, &bytes), DAX_STS_OK);
  return bytes;
}

struct Bytes {
  using T = uint8_t;
  using Edge = int32_t;
  template <class... A>
  static DaxStatus even(int32_t, bool masked, const T* src, int32_t step, const uint8_t* mask, int32_t maskStep,
                        A... a) {
    return masked ? DAXI_HistogramEven_8u_C1MR(src, step, mask, maskStep, a...)
                  : DAXI_HistogramEven_8u_C1R(src, step, a...);
  }
  template <class... A>
  static DaxStatus range(int32_t, bool masked, const T* src, int32_t step, const uint8_t* mask, int32_t maskStep,
                         A... a) {
    return masked ? DAXI_HistogramRange_8u_C1MR(src, step, mask, maskStep, a...)
                  : DAXI_HistogramRange_8u_C1R(src, step, a...);
  }
};

struct Words {
  using T = uint16_t;
  using Edge = int32_t;
  template <class... A>
  static DaxStatus even(int32_t bins, bool masked, const T* src, int32_t step, const uint8_t* mask, int32_t maskStep,
                        A... a) {
    Work work(bytesFor(DAXI_HistogramEvenBufferSize_16u, bins));
    return masked ? DAXI_HistogramEven_16u_C1MR(src, step, mask, maskStep, a..., work.bytes.data())
                  : DAXI_HistogramEven_16u_C1R(src, step, a..., work.bytes.data());
  }
  template <class... A>
  static DaxStatus range(int32_t bins, bool masked, const T* src, int32_t step, const uint8_t* mask, int32_t maskStep,
                         A... a) {
    Work work(bytesFor(DAXI_HistogramRangeBufferSize_16u, bins));
    return masked ? DAXI_HistogramRange_16u_C1MR(src, step, mask, maskStep, a..., work.bytes.data())
                  : DAXI_HistogramRange_16u_C1R(src, step, a..., work.bytes.data());
  }
};

struct Floats {
  using T = float;
  using Edge = float;
  template <class... A>
  static DaxStatus even(int32_t bins, bool masked, const T* src, int32_t step, const uint8_t* mask, int32_t maskStep,
                        A... a) {
    Work work(bytesFor(DAXI_HistogramEvenBufferSize_32f, bins));
    return masked ? DAXI_HistogramEven_32f_C1MR(src, step, mask, maskStep, a..., work.bytes.data())
                  : DAXI_HistogramEven_32f_C1R(src, step, a..., work.bytes.data());
  }
  template <class... A>
  static DaxStatus range(int32_t, bool masked, const T* src, int32_t step, const uint8_t* mask, int32_t maskStep,
                         A... a) {
    return masked ? DAXI_HistogramRange_32f_C1MR(src, step, mask, maskStep, a...)
                  : DAXI_HistogramRange_32f_C1R(src, step, a...);
  }
};

template <class F>
class Bins : public testing::Test {};
using Forms = testing::Types<Bytes, Words, Floats>;
TYPED_TEST_SUITE(Bins, Forms);

template <class F, class End>
void checkEven(const TestImage<typename F::T>& image, const TestImage<uint8_t>* mask, int32_t bins, End low, End high) {
  Result result{std::vector<uint64_t>(static_cast<size_t>(bins), 99)};
  ASSERT_EQ(F::even(bins, mask != nullptr, image.data(), image.step(), mask ? mask->data() : nullptr,
                    mask ? mask->step() : 0, image.size(), bins, low, high, result.counts.data(), &result.outside),
            DAX_STS_OK);
  const auto pixels = oracle::chosenPixels(image, mask);
  EXPECT_TRUE(result == evenByDefinition(pixels, bins, low, high)) << bins << " bins from " << low << " to " << high;
}

TYPED_TEST(Bins, EvenAndGivenEdges) {
  using T = typename TypeParam::T;
  using Edge = typename TypeParam::Edge;
  using End = std::conditional_t<std::is_integral_v<T>, int32_t, double>;
  TestImage<T> image({203, 31}, 5);
  TestImage<uint8_t> mask(image.size());
  Random random(8);
  image.fill([&](int32_t x, int32_t y) -> T {
    if (std::is_integral_v<T>) return static_cast<T>(random.next());
    return x == 7 && y % 3 == 0 ? static_cast<T>(NAN) : static_cast<T>(random.below(3001) - 1000) / T(10);
  });
  mask.fill([&](int32_t, int32_t) { return random.below(3); });
  for (const TestImage<uint8_t>* const chosen : {static_cast<TestImage<uint8_t>*>(nullptr), &mask}) {
    for (const int32_t bins : {1, 7, 256, 1000}) {
      checkEven<TypeParam, End>(image, chosen, bins, 0, 256);
      checkEven<TypeParam, End>(image, chosen, bins, -13, 150);
      checkEven<TypeParam, End>(image, chosen, bins, 100, 101);
    }
    checkEven<TypeParam, End>(image, chosen, std::is_integral_v<T> ? 65536 : 3000, 0, 65536);

    const std::vector<Edge> edges = {-100, 3, 17, 18, 190, 200};
    Result result{std::vector<uint64_t>(5, 99)};
    ASSERT_EQ(TypeParam::range(5, chosen != nullptr, image.data(), image.step(), mask.data(), mask.step(), image.size(),
                               edges.data(), 5, result.counts.data(), &result.outside),
              DAX_STS_OK);
    EXPECT_TRUE(result == rangeByDefinition(oracle::chosenPixels(image, chosen), edges));
  }
}

// Tenths as floats lie beside tenths as doubles; every edge, and the floats next to it.
TEST(BinsOfFloats, PixelsNextToEdges) {
  for (const auto& [low, high, bins] : {std::tuple(0.0, 1.0, 10),
                                        {-3.3, 7.7, 1234},
                                        {0.1, 0.1 + 1e-9, 50},
                                        {1e30, 1.0000001e30, 65536},
                                        {0.0, 1e-320, 20}}) {
    const int32_t count = std::min(bins, 2000);
    TestImage<float> image({3 * count + 3, 1});
    image.fill([&](int32_t x, int32_t) {
      const auto edge = static_cast<float>(low + (x / 3) * (high - low) / count);
      return x % 3 == 0 ? edge : std::nextafter(edge, x % 3 == 1 ? -INFINITY : INFINITY);
    });
    checkEven<Floats, double>(image, nullptr, bins, low, high);
  }
}

TEST(BinsOfFloats, InfinitiesLieOutside) {
  TestImage<float> image({5, 1});
  const float values[] = {-INFINITY, INFINITY, NAN, 0, 1};
  image.fill([&](int32_t x, int32_t) { return values[x]; });
  checkEven<Floats, double>(image, nullptr, 3, 0.0, 1.0);
}

TEST(Bins, RefusedLimits) {
  TestImage<uint8_t> image({4, 1});
  TestImage<float> floats({4, 1});
  uint64_t counts[3] = {9, 9, 9};
  double edges[3];
  const auto even = [&](int32_t bins, int32_t low, int32_t high) {
    return DAXI_HistogramEven_8u_C1R(image.data(), 4, {4, 1}, bins, low, high, counts, nullptr);
  };
  EXPECT_EQ(even(3, 5, 5), DAX_STS_BAD_PARAM);
  EXPECT_EQ(even(0, 0, 5), DAX_STS_BAD_PARAM);
  EXPECT_EQ(even(3, INT32_MIN, INT32_MAX), DAX_STS_OK);
  EXPECT_EQ(DAXI_HistogramEven_32f_C1R(floats.data(), 4, {4, 1}, 3, -1e39, 1, counts, nullptr, edges),
            DAX_STS_BAD_PARAM);
  for (const std::vector<float>& bad : {std::vector<float>{0, 1, 1, 2}, {0, NAN, 1, 2}, {0, 1, 2, NAN}}) {
    EXPECT_EQ(DAXI_HistogramRange_32f_C1R(floats.data(), 4, {4, 1}, bad.data(), 3, counts, nullptr), DAX_STS_BAD_PARAM);
  }
}

// Tables are added up before they overflow, and every pixel counts once.
TEST(LevelCounts, AddedUpInTime) {
  TestImage<uint16_t> image({1000, 1});
  image.fill([](int32_t x, int32_t) { return x % 5 == 0 ? 65535 : 0; });
  const auto tables = std::make_unique<WordTables>();
  LevelCounter counter(*tables, 1500);
  for (int i = 0; i < 7; ++i) counter.add(image.data(), 1000, [](uint16_t value) { return value; });
  EXPECT_EQ(counter.totals()[0], 5600u);
  EXPECT_EQ(counter.totals()[65535], 1400u);
}

}  // namespace
}  // namespace dax::test

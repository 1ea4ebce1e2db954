#include "daxi/watershed.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <utility>

#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
struct Flood;
#define DAX_FLOOD_TYPE(SUFFIX, TYPE)                                      \
  template <>                                                             \
  struct Flood<TYPE> {                                                    \
    static constexpr auto kSize = DAXI_WatershedBufferSize_##SUFFIX##32s; \
    static constexpr auto kRun = DAXI_Watershed_##SUFFIX##32s_C1R;        \
  };
DAX_FLOOD_TYPE(8u, uint8_t)
DAX_FLOOD_TYPE(16u, uint16_t)
DAX_FLOOD_TYPE(32f, float)
#undef DAX_FLOOD_TYPE

// The queue of the definition: by level, then by the number of the entry.
template <class T>
void floodSlowly(const TestImage<T>& src, TestImage<int32_t>& labels, int32_t connectivity) {
  const DaxiSize size = src.size();
  std::map<std::pair<T, int32_t>, std::pair<int32_t, int32_t>> queue;
  int32_t entries = 0;
  const auto isNumber = [&](int32_t x, int32_t y) { return src.at(x, y) == src.at(x, y); };
  for (int32_t y = 0; y < size.height; ++y) {
    for (int32_t x = 0; x < size.width; ++x) {
      if (labels.at(x, y) > 0 && isNumber(x, y)) queue[{src.at(x, y), entries++}] = {x, y};
    }
  }
  while (!queue.empty()) {
    const T level = queue.begin()->first.first;
    const int32_t x = queue.begin()->second.first, y = queue.begin()->second.second;
    queue.erase(queue.begin());
    for (int32_t v = y - 1; v <= y + 1; ++v) {
      for (int32_t u = x - 1; u <= x + 1; ++u) {
        if (u < 0 || v < 0 || u >= size.width || v >= size.height) continue;
        if (connectivity == 4 && u != x && v != y) continue;
        if (labels.at(u, v) != 0 || !isNumber(u, v)) continue;
        labels.at(u, v) = labels.at(x, y);
        queue[{std::max(level, src.at(u, v)), entries++}] = {u, v};
      }
    }
  }
}

template <class>
class WatershedOf : public testing::Test {};
using FloodPixels = testing::Types<uint8_t, uint16_t, float>;
TYPED_TEST_SUITE(WatershedOf, FloodPixels);

// With few levels most meet at equal ones. Barriers cut some pixels off.
TYPED_TEST(WatershedOf, FloodsByTheRulesOfItsQueue) {
  using T = TypeParam;
  Random random(2);
  for (int32_t round = 0; round < 60; ++round) {
    const DaxiSize size = {1 + random.below(30), 1 + random.below(20)};
    TestImage<T> src(size, 1);
    TestImage<int32_t> labels(size, 2), expected(size);
    const int32_t values = round % 3 ? 250 : 3, isBroken = round % 2;
    src.fill([&](int32_t, int32_t) {
      if (std::is_floating_point_v<T> && random.below(20) == 0) return static_cast<T>(std::nan(""));
      return static_cast<T>(static_cast<T>(random.below(values)) - (std::is_floating_point_v<T> ? T{20} : T{0}));
    });
    labels.fill([&](int32_t, int32_t) {
      const int32_t draw = random.below(40);
      return draw == 0 ? 1 + random.below(9) : draw < 6 && isBroken ? -draw : 0;
    });
    expected.fill([&](int32_t x, int32_t y) { return labels.at(x, y); });
    const int32_t connectivity = round % 4 < 2 ? 4 : 8;
    floodSlowly(src, expected, connectivity);
    uint64_t bytes = 0;
    ASSERT_EQ(Flood<T>::kSize(size, connectivity, &bytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> buffer(bytes);
    ASSERT_EQ(Flood<T>::kRun(src.data(), src.step(), labels.data(), labels.step(), size, connectivity, buffer.data()),
              DAX_STS_OK);
    ASSERT_TRUE(samePixels(labels, expected)) << round;
  }
}

}  // namespace
}  // namespace dax::test

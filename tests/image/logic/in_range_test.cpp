#include "daxi/in_range.h"

#include "image/logic/in_range.h"
#include "tests/image/pixel/element_check.h"

namespace dax::test {
namespace {

// Every value of one channel within every two limits, and pixels of three channels that lie outside by any of them.
template <class T, class One, class Three>
void checkInRange(One one, Three three) {
  const std::vector<T> values = tellingValues<T>();
  const auto count = static_cast<int32_t>(values.size());
  for (int32_t turn = 0; turn<count; turn += count> 100 ? 7 : 1) {
    const T low = values[static_cast<size_t>(turn)], high = values[static_cast<size_t>((3 * turn + 5) % count)];
    checkRowOfOne<T, uint8_t>([=](const T* src, uint8_t* dst, int32_t width,
                                  int32_t isa) { inRangeRow<T, 1>(src, dst, width, &low, &high, isa); },
                              [=](T a) { return low <= a && a <= high ? 255 : 0; });
    const T lows[] = {low, values[static_cast<size_t>(turn / 2)], 0}, highs[] = {high, high, T{100}};
    const int32_t width = count / 3;
    for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
      std::vector<uint8_t> mask(values.size());
      inRangeRow<T, 3>(values.data(), mask.data(), width, lows, highs, isa);
      for (int32_t i = 0; i < 3 * width; i += 3) {
        bool inside = true;
        for (int32_t c = 0; c < 3; ++c) {
          const T value = values[static_cast<size_t>(i + c)];
          inside = inside && lows[c] <= value && value <= highs[c];
        }
        ASSERT_EQ(mask[static_cast<size_t>(i / 3)], inside ? 255 : 0) << i << " code " << isa;
      }
    }
  }
  checkExportOfOne<T, uint8_t>([=](auto... a) { return one(a..., T{9}, T{90}); }, nullptr,
                               [](T a) { return a >= 9 && a <= 90 ? 255 : 0; });
  const T low[] = {0, 5, 10}, high[] = {127, 120, 126};
  overRaggedSizes([&](DaxiSize size, int32_t gap, Guard guard) {
    TestImage<T> src({3 * size.width, size.height}, gap, guard);
    TestImage<uint8_t> dst(size, gap, guard);
    src.randomize(static_cast<uint64_t>(size.width)), dst.remember();
    ASSERT_EQ(three(src.data(), src.step(), dst.data(), dst.step(), size, low, high), DAX_STS_OK);
    ASSERT_TRUE(isEverywhere(dst, [&](int32_t x, int32_t y) {
      int inside = 0;
      for (int32_t c = 0; c < 3; ++c) inside += src.at(3 * x + c, y) >= low[c] && src.at(3 * x + c, y) <= high[c];
      return inside == 3 ? 255 : 0;
    }));
    ASSERT_TRUE(dst.paddingUntouched());
  });
}

#define CHECK_IN_RANGE(SUFFIX, T)                                              \
  checkInRange<T>([](auto... a) { return DAXI_InRange_##SUFFIX##_C1R(a...); }, \
                  [](auto... a) { return DAXI_InRange_##SUFFIX##_C3C1R(a...); })

TEST(InRange, OneChannelAndThree) {
  CHECK_IN_RANGE(8u, uint8_t);
  CHECK_IN_RANGE(16u, uint16_t);
  CHECK_IN_RANGE(16s, int16_t);
  CHECK_IN_RANGE(32f, float);
}

}  // namespace
}  // namespace dax::test

#include "daxi/rotate.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/image/warp/rotate_oracle.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

enum class Layout { c1, c3, p3 };

template <class T>
using Planes = std::vector<TestImage<T>>;

// Turns images, out of place or, where dst is null, in place.
template <class T>
struct Turner;
#define DAX_TURN_BY(NAME, SUFFIX, ...)                                                                                 \
  if (layout == Layout::c1) {                                                                                          \
    return dst ? DAXI_##NAME##_##SUFFIX##_C1R_MT(&pool, 3, s[0], step, d[0], dstStep, size __VA_OPT__(, ) __VA_ARGS__) \
               : DAXI_##NAME##_##SUFFIX##_C1IR(s[0], step, size __VA_OPT__(, ) __VA_ARGS__);                           \
  }                                                                                                                    \
  if (layout == Layout::c3) {                                                                                          \
    return dst ? DAXI_##NAME##_##SUFFIX##_C3R_MT(&pool, 3, s[0], step, d[0], dstStep, size __VA_OPT__(, ) __VA_ARGS__) \
               : DAXI_##NAME##_##SUFFIX##_C3IR(s[0], step, size __VA_OPT__(, ) __VA_ARGS__);                           \
  }                                                                                                                    \
  return dst ? DAXI_##NAME##_##SUFFIX##_P3R_MT(&pool, 3, s, step, d, dstStep, size __VA_OPT__(, ) __VA_ARGS__)         \
             : DAXI_##NAME##_##SUFFIX##_P3IR(s, step, size __VA_OPT__(, ) __VA_ARGS__)
#define DAX_TURNER(SUFFIX, T)                                                                                \
  template <>                                                                                                \
  struct Turner<T> {                                                                                         \
    static DaxStatus run(oracle::Turn turn, Layout layout, Planes<T>& src, Planes<T>* dst, DaxiSize size) {  \
      MockPool pool;                                                                                         \
      T *s[3] = {}, *d[3] = {};                                                                              \
      for (size_t k = 0; k < src.size(); ++k) s[k] = src[k].data(), d[k] = dst ? (*dst)[k].data() : nullptr; \
      const int32_t step = src[0].step(), dstStep = dst ? (*dst)[0].step() : 0;                              \
      if (turn == oracle::Turn::transpose) {                                                                 \
        DAX_TURN_BY(Transpose, SUFFIX);                                                                      \
      }                                                                                                      \
      if (turn < oracle::Turn::transpose) {                                                                  \
        DAX_TURN_BY(Mirror, SUFFIX, static_cast<int32_t>(turn));                                             \
      }                                                                                                      \
      const int32_t quarters = static_cast<int32_t>(turn) - static_cast<int32_t>(oracle::Turn::quarters0);   \
      DAX_TURN_BY(Rotate90, SUFFIX, quarters);                                                               \
    }                                                                                                        \
  };
DAX_TURNER(8u, uint8_t)
DAX_TURNER(16u, uint16_t)
DAX_TURNER(16s, int16_t)
DAX_TURNER(32s, int32_t)
DAX_TURNER(32f, float)
DAX_TURNER(64f, double)
#undef DAX_TURNER
#undef DAX_TURN_BY

template <class T>
Planes<T> planesOf(Layout layout, DaxiSize size, int32_t padding) {
  Planes<T> planes;
  for (int k = 0; k < (layout == Layout::p3 ? 3 : 1); ++k) {
    planes.emplace_back(DaxiSize{size.width * (layout == Layout::c3 ? 3 : 1), size.height}, padding);
    planes.back().randomize(static_cast<uint64_t>(size.width + k)).remember();
  }
  return planes;
}

template <class T>
class Rotate : public testing::Test {
 protected:
  static void expectTurned(oracle::Turn turn, Layout layout, DaxiSize size) {
    const int32_t channels = layout == Layout::c3 ? 3 : 1;
    const DaxiSize turned = rowsBecomeColumns(turn) ? DaxiSize{size.height, size.width} : size;
    Planes<T> src = planesOf<T>(layout, size, 1), dst = planesOf<T>(layout, turned, 2);
    ASSERT_EQ(Turner<T>::run(turn, layout, src, &dst, size), DAX_STS_OK);
    for (size_t k = 0; k < src.size(); ++k) {
      ASSERT_TRUE(dst[k].paddingUntouched() && src[k].untouched());
      for (int32_t i = 0; i < size.width * size.height * channels; ++i) {
        const oracle::Place from = {i / channels % size.width, i / channels / size.width};
        const oracle::Place to = placeAfter(turn, from, size);
        ASSERT_TRUE(sameBits(dst[k].at(to.x * channels + i % channels, to.y),
                             src[k].at(from.x * channels + i % channels, from.y)))
            << from.x << ", " << from.y << " of " << size.width << " x " << size.height;
      }
    }
    if (rowsBecomeColumns(turn) && size.width != size.height) {
      ASSERT_EQ(Turner<T>::run(turn, layout, src, nullptr, size), DAX_STS_BAD_SIZE);
      return;
    }
    ASSERT_EQ(Turner<T>::run(turn, layout, src, nullptr, size), DAX_STS_OK);
    for (size_t k = 0; k < src.size(); ++k) ASSERT_TRUE(samePixels(src[k], dst[k]) && src[k].paddingUntouched());
  }
};
using MovedTypes = testing::Types<uint8_t, uint16_t, int16_t, int32_t, float, double>;
TYPED_TEST_SUITE(Rotate, MovedTypes);

// Sides around those of vectors, tiles and the runs that are exchanged; wide, tall, square, odd.
TYPED_TEST(Rotate, MovesEveryPixelToItsPlace) {
  for (const DaxiSize size : {DaxiSize{1, 1}, {5, 3}, {1, 40}, {16, 16}, {33, 70}, {67, 67}, {130, 65}, {300, 2}}) {
    for (int turn = 0; turn < 8; ++turn) {
      for (const Layout layout : {Layout::c1, Layout::c3, Layout::p3}) {
        ASSERT_NO_FATAL_FAILURE(this->expectTurned(static_cast<oracle::Turn>(turn), layout, size)) << turn;
      }
    }
  }
}

}  // namespace
}  // namespace dax::test

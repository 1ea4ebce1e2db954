#include <gtest/gtest.h>

#include <string>

#include "daxi/copy_border.h"
#include "frame/pixel_types.h"
#include "image/border/copy_border.h"
#include "tests/image/border/copy_border_oracle.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using oracle::Border;
constexpr Border kFoldRules[] = {Border::mirror, Border::symmetric, Border::circular};

// The exports of one pixel type.
template <class T>
struct Exports;

#define DAX_BORDER_EXPORTS(SUFFIX, T, VALUE)                                                                         \
  template <>                                                                                                        \
  struct Exports<T> {                                                                                                \
    static DaxStatus run(Border rule, const T* s, int32_t ss, DaxiSize sz, T* d, int32_t ds, DaxiSize dz, int32_t t, \
                         uint32_t l, [[maybe_unused]] T v) {                                                         \
      switch (rule) {                                                                                                \
        case Border::constant:                                                                                       \
          return DAXI_CopyConstBorder_##SUFFIX##_C1R(s, ss, sz, d, ds, dz, t, l, VALUE);                             \
        case Border::replicate:                                                                                      \
          return DAXI_CopyReplicateBorder_##SUFFIX##_C1R(s, ss, sz, d, ds, dz, t, l);                                \
        case Border::mirror:                                                                                         \
          return DAXI_CopyMirrorBorder_##SUFFIX##_C1R(s, ss, sz, d, ds, dz, t, l);                                   \
        case Border::symmetric:                                                                                      \
          return DAXI_CopySymmetricBorder_##SUFFIX##_C1R(s, ss, sz, d, ds, dz, t, l);                                \
        case Border::circular:                                                                                       \
          return DAXI_CopyCircularBorder_##SUFFIX##_C1R(s, ss, sz, d, ds, dz, t, l);                                 \
      }                                                                                                              \
      return DAX_STS_FAILURE;                                                                                        \
    }                                                                                                                \
  };
#define DAX_SCALAR_BORDER_EXPORTS(SUFFIX, T) DAX_BORDER_EXPORTS(SUFFIX, T, v)
#define DAX_COMMA ,
DAX_SCALAR_PIXEL_TYPES(DAX_SCALAR_BORDER_EXPORTS)
DAX_BORDER_EXPORTS(32fc, DaxComplex32f, v.re DAX_COMMA v.im)
DAX_BORDER_EXPORTS(64fc, DaxComplex64f, v.re DAX_COMMA v.im)

template <class T>
class CopyBorder : public testing::Test {};

using PixelTypes =
    testing::Types<uint8_t, uint16_t, int16_t, int32_t, uint32_t, float, double, DaxComplex32f, DaxComplex64f>;
TYPED_TEST_SUITE(CopyBorder, PixelTypes);

template <class T>
::testing::AssertionResult matchesRule(const TestImage<T>& src, const TestImage<T>& dst, int32_t top, int32_t left,
                                       Border rule, T value) {
  for (int32_t y = 0; y < dst.size().height; ++y) {
    for (int32_t x = 0; x < dst.size().width; ++x) {
      const int32_t sx = oracle::borderIndex(rule, x - left, src.size().width);
      const int32_t sy = oracle::borderIndex(rule, y - top, src.size().height);
      const T& expected = sx < 0 || sy < 0 ? value : src.at(sx, sy);
      if (!sameBits(dst.at(x, y), expected)) {
        return ::testing::AssertionFailure()
               << "rule " << int(rule) << " source " << src.size().width << " x " << src.size().height << " top " << top
               << " left " << left << " at " << x << ", " << y;
      }
    }
  }
  return ::testing::AssertionSuccess();
}

// One source size with one border on each side, through all five rules.
template <class T>
void checkRules(DaxiSize size, int32_t top, int32_t left, int32_t bottom, int32_t right, Guard guard) {
  const int32_t minMirror = std::min(size.width, size.height);
  TestImage<T> src(size, right % 4, guard);
  src.randomize(static_cast<uint64_t>(top * 1000 + left));
  TestImage<T> value({1, 1});
  value.randomize(7);
  for (const Border rule : {Border::constant, Border::replicate, Border::mirror, Border::symmetric, Border::circular}) {
    if (rule == Border::mirror && minMirror < 2) continue;
    TestImage<T> dst({left + size.width + right, top + size.height + bottom}, bottom % 3, guard);
    dst.remember();
    ASSERT_EQ(Exports<T>::run(rule, src.data(), src.step(), size, dst.data(), dst.step(), dst.size(), top,
                              static_cast<uint32_t>(left), value.at(0, 0)),
              DAX_STS_OK);
    ASSERT_TRUE(matchesRule(src, dst, top, left, rule, value.at(0, 0)));
    ASSERT_TRUE(dst.paddingUntouched());
  }
}

// Sources of 1 x 1 to 5 x 5 with every left and right border up to three times the width, and the vertical ones along.
TYPED_TEST(CopyBorder, EveryPixelFollowsTheRule) {
  for (int32_t w = 1; w <= 5; ++w) {
    for (int32_t h = 1; h <= 5; ++h) {
      for (int32_t a = 0; a <= 3 * w; ++a) {
        for (int32_t b = 0; b <= 3 * h; ++b) {
          checkRules<TypeParam>({w, h}, b, a, (b * 7 + a) % (3 * h + 1), (a * 5 + b) % (3 * w + 1),
                                kGuards[(a + b) % 2]);
        }
      }
    }
  }
}

// Rows long enough for whole vector blocks, and the two kernels against the rule.
TYPED_TEST(CopyBorder, TwinsAgreeOnLongRuns) {
  using T = TypeParam;
  for (int32_t w = 2; w <= 70; w += w < 36 ? 1 : 11) {
    const BorderGeometry g{{w, 3}, {w * 2 + 45, 9}, 2, w + 5};
    TestImage<T> src(g.src, 3, kGuards[w % 2]);
    src.randomize(static_cast<uint64_t>(w));
    constexpr FoldRule kFolds[] = {kMirrorFold, kSymmetricFold, kCircularFold};
    for (int r = 0; r < 3; ++r) {
      for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
        TestImage<T> dst(g.dst, 0, kGuards[w % 2]);
        copyFoldBorder(src.data(), src.step(), dst.data(), dst.step(), g, kFolds[r], isa);
        ASSERT_TRUE(matchesRule(src, dst, g.top, g.left, kFoldRules[r], T{})) << "code " << isa;
      }
    }
  }
}

// The documented rows, as letters.
TEST(CopyBorderRows, DocumentedExamples) {
  struct Case {
    Border rule;
    uint32_t left;
    const char* row;
  };
  const Case cases[] = {{Border::mirror, 2, "cbabc"},    {Border::symmetric, 2, "baabc"},
                        {Border::replicate, 2, "aaabc"}, {Border::circular, 2, "bcabc"},
                        {Border::mirror, 4, "bccbabc"},  {Border::symmetric, 4, "ccbaabc"},
                        {Border::circular, 4, "cabcabc"}};
  const uint8_t source[] = {'a', 'b', 'c', 'a', 'b', 'c'};
  for (const Case& c : cases) {
    const int32_t width = static_cast<int32_t>(c.left) + 3;
    std::vector<uint8_t> out(static_cast<size_t>(width) * 2);
    ASSERT_EQ(Exports<uint8_t>::run(c.rule, source, 3, {3, 2}, out.data(), width, {width, 2}, 0, c.left, 0),
              DAX_STS_OK);
    EXPECT_EQ(std::string(out.begin(), out.begin() + width), c.row);
  }
}

}  // namespace
}  // namespace dax::test

#include "daxi/divide.h"

#include "image/pixel/divide.h"
#include "tests/image/pixel/divide_oracle.h"
#include "tests/image/pixel/element_check.h"

namespace dax::test {
namespace {

template <class T>
T divisor(T value) {
  return std::is_integral_v<T> && value == 0 ? T{1} : value;
}

// Every pair of telling values with every factor; the 8-bit ones are all.
template <class T>
void checkDivision() {
  const int32_t last = std::is_integral_v<T> ? 31 : 0;
  for (int32_t factor = -last; factor <= last; factor += sizeof(T) == 1 && (factor < -8 || factor > 8) ? 7 : 1) {
    const auto expected = [=](T a, T b) { return oracle::quotient(a, divisor(b), factor); };
    const auto row = [=](const T* a, const T* b, T* dst, int32_t count, int32_t isa) {
      TestImage<T> divisors({count, 1});
      divisors.fill([&](int32_t x, int32_t) { return divisor(b[x]); });
      divideRow<Operand::row>(a, divisors.data(), dst, count, factor, isa);
    };
    checkRowOfTwo<T, T>(row, expected);
  }
}

// 16-bit numbers from a grid, all divisors, the factors at which single precision stops to do.
TEST(Divide, Rows) {
  checkDivision<uint8_t>();
  checkDivision<uint16_t>();
  checkDivision<int16_t>();
  checkDivision<float>();
  TestImage<uint16_t> a({65535, 1}), b(a.size()), dst(a.size());
  b.fill([](int32_t x, int32_t) { return x + 1; });
  for (const int32_t factor : {-8, -7, -6, 0, 1, 5}) {
    for (int32_t first = 0; first < 64; ++first) {
      a.fill([&](int32_t x, int32_t) { return first % 2 ? 65535 - 7 * first - x % 5 : (x + 1) * (first + 1) / 2; });
      divideRow<Operand::row>(a.data(), b.data(), dst.data(), 65535, factor, DAX_ISA_NEON);
      for (int32_t x = 0; x < 65535; ++x) {
        ASSERT_EQ(dst.at(x, 0), oracle::quotient(a.at(x, 0), b.at(x, 0), factor)) << x << " factor " << factor;
      }
    }
  }
}

// Exports of one channel and three, in place too; `factor...` is the scale factor, which floats do not have.
template <class T, class... Factor>
struct Exports {
  DaxStatus (*images[2])(const T*, int32_t, const T*, int32_t, T*, int32_t, DaxiSize, Factor...);
  DaxStatus (*imagesInPlace[2])(const T*, int32_t, T*, int32_t, DaxiSize, Factor...);
  DaxStatus (*constant1)(const T*, int32_t, T*, int32_t, DaxiSize, T, Factor...);
  DaxStatus (*constant3)(const T*, int32_t, T*, int32_t, DaxiSize, const T*, Factor...);
  DaxStatus (*constantInPlace1)(T*, int32_t, DaxiSize, T, Factor...);
  DaxStatus (*constantInPlace3)(T*, int32_t, DaxiSize, const T*, Factor...);

  void check(Factor... factor) const {
    const int32_t scaleFactor = (0 + ... + factor);
    overRaggedSizes([&](DaxiSize pixels, int32_t gap, Guard guard) {
      for (const int32_t channels : {1, 3}) {
        const DaxiSize elements = {pixels.width * channels, pixels.height};
        TestImage<T> src(elements, gap, guard), other(elements, gap + 1, guard), dst(elements, gap),
            both(elements, gap);
        src.randomize(static_cast<uint64_t>(pixels.width)), other.randomize(7), dst.remember();
        other.fill([&](int32_t x, int32_t y) { return divisor(other.at(x, y)); });
        both.fill([&](int32_t x, int32_t y) { return src.at(x, y); });
        const size_t k = channels == 3;
        ASSERT_EQ(
            images[k](src.data(), src.step(), other.data(), other.step(), dst.data(), dst.step(), pixels, factor...),
            DAX_STS_OK);
        ASSERT_TRUE(isEverywhere(
            dst, [&](int32_t x, int32_t y) { return oracle::quotient(src.at(x, y), other.at(x, y), scaleFactor); }));
        ASSERT_TRUE(dst.paddingUntouched());
        ASSERT_EQ(imagesInPlace[k](other.data(), other.step(), both.data(), both.step(), pixels, factor...),
                  DAX_STS_OK);
        ASSERT_TRUE(samePixels(both, dst));
        const T value[] = {3, 7, 100};
        ASSERT_EQ(k ? constant3(src.data(), src.step(), dst.data(), dst.step(), pixels, value, factor...)
                    : constant1(src.data(), src.step(), dst.data(), dst.step(), pixels, *value, factor...),
                  DAX_STS_OK);
        ASSERT_TRUE(isEverywhere(dst, [&](int32_t x, int32_t y) {
          return oracle::quotient(src.at(x, y), value[x % channels], scaleFactor);
        }));
        ASSERT_EQ(k ? constantInPlace3(src.data(), src.step(), pixels, value, factor...)
                    : constantInPlace1(src.data(), src.step(), pixels, *value, factor...),
                  DAX_STS_OK);
        ASSERT_TRUE(samePixels(src, dst));
      }
    });
  }
};

#define DIVISION_EXPORTS(SUFFIX, END)                                                                        \
  {                                                                                                          \
    {DAXI_Div_##SUFFIX##_C1##R##END, DAXI_Div_##SUFFIX##_C3##R##END},                                        \
        {DAXI_Div_##SUFFIX##_C1##IR##END, DAXI_Div_##SUFFIX##_C3##IR##END}, DAXI_DivC_##SUFFIX##_C1##R##END, \
        DAXI_DivC_##SUFFIX##_C3##R##END, DAXI_DivC_##SUFFIX##_C1##IR##END, DAXI_DivC_##SUFFIX##_C3##IR##END  \
  }

TEST(Divide, Exports) {
  Exports<uint8_t, int32_t>(DIVISION_EXPORTS(8u, Sfs)).check(-2);
  Exports<uint16_t, int32_t>(DIVISION_EXPORTS(16u, Sfs)).check(-9);
  Exports<int16_t, int32_t>(DIVISION_EXPORTS(16s, Sfs)).check(0);
  Exports<float>(DIVISION_EXPORTS(32f, )).check();
}

// A zero anywhere among the divisors, also behind the vectors of the last row, leaves everything as it was.
TEST(Divide, ZerosAreRefused) {
  for (int32_t at = 0; at < 5 * 70; ++at) {
    TestImage<int16_t> first({70, 5}, at % 2), second(first.size(), at % 3), dst(first.size());
    first.fill([](int32_t x, int32_t) { return x; });
    second.fill([&](int32_t x, int32_t y) { return 70 * y + x == at ? 0 : -256; });
    dst.randomize(3), dst.remember();
    ASSERT_EQ(DAXI_Div_16s_C1RSfs(first.data(), first.step(), second.data(), second.step(), dst.data(), dst.step(),
                                  dst.size(), 0),
              DAX_STS_DATA_RANGE);
    ASSERT_TRUE(dst.untouched());
  }
  uint8_t pixel[3] = {};
  const uint8_t values[3] = {1, 1, 0};
  EXPECT_EQ(DAXI_DivC_8u_C3IRSfs(pixel, 3, {1, 1}, values, 0), DAX_STS_BAD_PARAM);
}

}  // namespace
}  // namespace dax::test

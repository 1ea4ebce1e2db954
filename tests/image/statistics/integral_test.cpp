// Integral images and projections against sums of every rectangle from the corner, and of every row and column.
#include "daxi/integral.h"

#include <gtest/gtest.h>

#include "daxi/projection.h"
#include "image/statistics/integral.h"
#include "tests/image/statistics/statistics_oracle.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

template <class D, class T, class F>
void checkIntegral(const TestImage<T>& src, const TestImage<D>& dst, F f) {
  for (int32_t x = 0; x <= src.size().width; ++x) ASSERT_EQ(dst.at(x, 0), D{0});
  for (int32_t y = 0; y < src.size().height; ++y) {
    ASSERT_EQ(dst.at(0, y + 1), D{0});
    D row = 0;
    for (int32_t x = 0; x < src.size().width; ++x) {
      row += f(static_cast<D>(src.at(x, y)));
      ASSERT_EQ(dst.at(x + 1, y + 1), dst.at(x + 1, y) + row) << x << ", " << y << " of " << src.size().width;
    }
  }
}

// Of random pixels, and of pixels at the ends of the type.
template <class T, class D, class Function, class F>
void checkForm(Function function, F f) {
  for (int32_t width : {1, 2, 15, 16, 17, 31, 33, 64, 100}) {
    TestImage<T> src({width, 5}, width % 3, kGuards[width % 2]);
    TestImage<D> dst({width + 1, 6}, width % 4, kGuards[width % 2]);
    for (const bool extreme : {false, true}) {
      if (std::is_integral_v<T>) src.randomize(static_cast<uint64_t>(width));
      if (std::is_floating_point_v<T>)
        src.fill([&](int32_t x, int32_t y) { return (x * 31 + y * 57) % 101 / 7.0 - 3; });
      if (extreme)
        src.fill([](int32_t x, int32_t) {
          return x % 7 ? std::numeric_limits<T>::max() : std::numeric_limits<T>::lowest();
        });
      dst.remember();
      ASSERT_EQ(function(src.data(), src.step(), dst.data(), dst.step(), src.size()), DAX_STS_OK);
      checkIntegral(src, dst, f);
      ASSERT_TRUE(dst.paddingUntouched());
    }
  }
}

TEST(Integral, SumsAndSquares) {
  const auto itself = [](auto x) { return x; };
  const auto squared = [](auto x) { return x * x; };
  for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
    checkForm<uint8_t, uint32_t>(
        [=](auto... a) {
          integral(a..., isa);
          return DAX_STS_OK;
        },
        itself);
  }
  const auto onPool = [](auto function) {
    return [=](auto... a) {
      MockPool pool;
      return function(&pool, 3, a...);
    };
  };
  checkForm<uint8_t, uint32_t>(DAXI_Integral_8u32u_C1R, itself);
  checkForm<uint8_t, uint32_t>(onPool(DAXI_Integral_8u32u_C1R_MT), itself);
  checkForm<int16_t, int64_t>(onPool(DAXI_Integral_16s64s_C1R_MT), itself);
  checkForm<float, double>(onPool(DAXI_Integral_32f64f_C1R_MT), itself);
  checkForm<float, double>(onPool(DAXI_IntegralSqr_32f64f_C1R_MT), squared);
  checkForm<uint8_t, uint64_t>(DAXI_Integral_8u64u_C1R, itself);
  checkForm<uint16_t, uint64_t>(DAXI_Integral_16u64u_C1R, itself);
  checkForm<int16_t, int64_t>(DAXI_Integral_16s64s_C1R, itself);
  checkForm<float, double>(DAXI_Integral_32f64f_C1R, itself);
  checkForm<uint8_t, uint64_t>(DAXI_IntegralSqr_8u64u_C1R, squared);
  checkForm<uint16_t, uint64_t>(DAXI_IntegralSqr_16u64u_C1R, squared);
  checkForm<int16_t, uint64_t>(DAXI_IntegralSqr_16s64u_C1R, squared);
  checkForm<float, double>(DAXI_IntegralSqr_32f64f_C1R, squared);
}

// More than 2^31 fits, more than 2^32 is refused.
TEST(Integral, LargestImages) {
  TestImage<uint8_t> src({4104, 4104});
  TestImage<uint32_t> dst({4105, 4105});
  src.fill([](int32_t, int32_t) { return 255; });
  ASSERT_EQ(DAXI_Integral_8u32u_C1R(src.data(), src.step(), dst.data(), dst.step(), {4104, 4104}), DAX_STS_OK);
  EXPECT_EQ(dst.at(4104, 4104), 255u * 4104 * 4104);
  EXPECT_EQ(DAXI_Integral_8u32u_C1R(src.data(), 5000, dst.data(), 5000, {4105, 4104}), DAX_STS_BAD_SIZE);
  int16_t pixel = 0;  // 2^48 times -2^15 does not fit, however short the rows
  int64_t sum = 0;
  EXPECT_EQ(DAXI_Integral_16s64s_C1R(&pixel, 1, &sum, 1, {1 << 24, 1 << 24}), DAX_STS_BAD_SIZE);
  EXPECT_EQ(DAXI_Integral_16s64s_C1R(&pixel, 1, &sum, 1, {1 << 24, (1 << 24) - 1}), DAX_STS_BAD_STEP);
}

template <class T, class Rows, class Columns>
void checkProjections(Rows rows, Columns columns) {
  for (const DaxiSize size : {DaxiSize{1, 1}, {7, 40}, {1030, 9}, {3, 33000}}) {
    TestImage<T> image(size, 3);
    image.randomize(2);
    if (std::is_floating_point_v<T>) image.fill([](int32_t x, int32_t y) { return (x * 31 + y * 57) % 101 / 7.0 - 3; });
    if (size.width == 3) image.fill([](int32_t, int32_t) { return std::numeric_limits<T>::max(); });
    std::vector<double> ofRows(static_cast<size_t>(size.height)), ofColumns(static_cast<size_t>(size.width));
    ASSERT_EQ(rows(image.data(), image.step(), size, ofRows.data()), DAX_STS_OK);
    ASSERT_EQ(columns(image.data(), image.step(), size, ofColumns.data()), DAX_STS_OK);
    for (int32_t y = 0; y < size.height; ++y) {
      const std::vector<T> row(image.row(y), image.row(y) + size.width);
      ASSERT_EQ(ofRows[static_cast<size_t>(y)], oracle::sumOf(row, [](auto x) { return x; }));
    }
    for (int32_t x = 0; x < size.width; ++x) {
      double band = 0, sum = 0;
      for (int32_t y = 0; y < size.height; ++y) {
        if (y == 32767) sum += band, band = 0;
        band += image.at(x, y);
      }
      ASSERT_EQ(ofColumns[static_cast<size_t>(x)], sum + band);
    }
  }
}

TEST(Projection, RowsAndColumns) {
  checkProjections<uint8_t>(DAXI_ProjectRows_8u_C1R, DAXI_ProjectColumns_8u_C1R);
  checkProjections<uint16_t>(DAXI_ProjectRows_16u_C1R, DAXI_ProjectColumns_16u_C1R);
  checkProjections<int16_t>(DAXI_ProjectRows_16s_C1R, DAXI_ProjectColumns_16s_C1R);
  checkProjections<float>(DAXI_ProjectRows_32f_C1R, DAXI_ProjectColumns_32f_C1R);
}

}  // namespace
}  // namespace dax::test

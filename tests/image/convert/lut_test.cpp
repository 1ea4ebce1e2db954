#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <vector>

#include "daxi.h"
#include "image/convert/lut.h"
#include "tests/image/convert/convert_oracle.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class From, class To>
using LutFunction = DaxStatus (*)(const From*, int32_t, To*, int32_t, DaxiSize, const To*);

template <class From, class To>
void expectLut(LutFunction<From, To> lut1, LutFunction<From, To> lut3) {
  TestImage<To> table({kLevels<From>, 1});
  table.randomize(2);
  for (int32_t width = 1; width <= 150; ++width) {
    const int32_t channels = width % 2 ? 1 : 3, gap = width % 3;
    const DaxiSize size = {width, 1 + width % 3};
    TestImage<From> src({width * channels, size.height}, gap, kGuards[width % 2]);
    TestImage<To> dst(src.size(), gap, kGuards[width % 2]), other(src.size(), gap);
    src.randomize(static_cast<uint64_t>(width));
    dst.remember();
    ASSERT_EQ((channels == 1 ? lut1 : lut3)(src.data(), src.step(), dst.data(), dst.step(), size, table.data()),
              DAX_STS_OK);
    ASSERT_TRUE(dst.paddingUntouched());
    for (int32_t y = 0; y < size.height; ++y) {
      lutRow(src.row(y), other.row(y), src.size().width, table.data(), DAX_ISA_PORTABLE);
      for (int32_t x = 0; x < src.size().width; ++x)
        ASSERT_TRUE(sameBits(dst.at(x, y), table.at(src.at(x, y), 0))) << x;
    }
    ASSERT_TRUE(samePixels(dst, other));
  }
}

TEST(Lut, RaggedSizes) {
  expectLut<uint8_t, uint8_t>(DAXI_Lut_8u_C1R, DAXI_Lut_8u_C3R);
  expectLut<uint8_t, uint16_t>(DAXI_Lut_8u16u_C1R, DAXI_Lut_8u16u_C3R);
  expectLut<uint8_t, float>(DAXI_Lut_8u32f_C1R, DAXI_Lut_8u32f_C3R);
  expectLut<uint16_t, uint16_t>(DAXI_Lut_16u_C1R, DAXI_Lut_16u_C3R);
}

// What lies at knots, between and outside them, and where no number is.
TEST(LutLinear, Definition) {
  const double levels[] = {-10.5, 0, 3, 200.25}, values[] = {5, 250, -7, 40000};
  for (int32_t v = -300; v < 400; ++v) {
    const auto x = static_cast<float>(v) / 2;
    double expected = x < -10.5f ? 5 : 40000;
    for (int i = 0; i < 3; ++i) {
      if (x >= levels[i] && x < levels[i + 1])
        expected = values[i] + (x - levels[i]) * (values[i + 1] - values[i]) / (levels[i + 1] - levels[i]);
    }
    float real;
    ASSERT_EQ(DAXI_LutLinear_32f_C1R(&x, 1, &real, 1, {1, 1}, levels, values, 4), DAX_STS_OK);
    ASSERT_EQ(real, static_cast<float>(expected)) << x;
    if (v % 2) continue;
    auto whole = static_cast<int16_t>(v / 2);
    ASSERT_EQ(DAXI_LutLinear_16s_C1IR(&whole, 1, {1, 1}, levels, values, 4), DAX_STS_OK);
    ASSERT_EQ(whole, oracle::pixel<int16_t>(expected)) << x;
    if (v < 0 || v > 510) continue;
    auto byte = static_cast<uint8_t>(v / 2);
    auto wide = static_cast<uint16_t>(v / 2);
    ASSERT_EQ(DAXI_LutLinear_8u_C1R(&byte, 1, &byte, 1, {1, 1}, levels, values, 4), DAX_STS_OK);
    ASSERT_EQ(DAXI_LutLinear_16u_C1R(&wide, 1, &wide, 1, {1, 1}, levels, values, 4), DAX_STS_OK);
    ASSERT_EQ(byte, oracle::pixel<uint8_t>(expected)) << x;
    ASSERT_EQ(wide, oracle::pixel<uint16_t>(expected)) << x;
  }
  float odd[3] = {NAN, INFINITY, -INFINITY};
  ASSERT_EQ(DAXI_LutLinear_32f_C3IR(odd, 3, {1, 1}, levels, values, 4), DAX_STS_OK);
  EXPECT_TRUE(std::isnan(odd[0]) && odd[1] == 40000 && odd[2] == 5);
}

TEST(LutLinear, RefusesKnotsThatDoNotAscend) {
  uint8_t pixel = 0;
  double levels[] = {0, 1, 1}, values[] = {0, 1, 2};
  const auto status = [&](int32_t count) { return DAXI_LutLinear_8u_C1IR(&pixel, 1, {1, 1}, levels, values, count); };
  EXPECT_EQ(status(3), DAX_STS_BAD_PARAM);
  EXPECT_EQ(status(1), DAX_STS_BAD_PARAM);
  EXPECT_EQ(status(2), DAX_STS_OK);
  levels[2] = NAN;
  EXPECT_EQ(status(3), DAX_STS_BAD_PARAM);
  levels[2] = 2, values[2] = INFINITY;
  EXPECT_EQ(status(3), DAX_STS_BAD_PARAM);
}

// Within the last place of the formula; the ends stay, 1 changes nothing, and the curve ascends.
TEST(Gamma, Curve) {
  std::vector<uint16_t> src(65536), dst(65536);
  std::iota(src.begin(), src.end(), uint16_t{0});
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_GammaBufferSize_16u(&bytes), DAX_STS_OK);
  std::vector<char> buffer(bytes);
  const DaxiSize size = {65536, 1};
  for (const double gamma : {0.01, 0.45, 1.0, 2.2, 100.0}) {
    ASSERT_EQ(DAXI_Gamma_16u_C1R(src.data(), 65536, dst.data(), 65536, size, gamma, buffer.data()), DAX_STS_OK);
    for (size_t v = 0; v < 65536; ++v) {
      ASSERT_NEAR(dst[v], 65535 * std::pow(static_cast<double>(v) / 65535, gamma), 0.5 + 1e-9) << v;
      ASSERT_TRUE(v == 0 || dst[v] >= dst[v - 1]);
    }
    EXPECT_TRUE(dst[0] == 0 && dst[65535] == 65535 && (gamma != 1 || dst == src));
    uint8_t levels[255], results[255];
    std::iota(levels, levels + 255, uint8_t{1});
    ASSERT_EQ(DAXI_Gamma_8u_C3R(levels, 255, results, 255, {85, 1}, gamma), DAX_STS_OK);
    for (int v = 0; v < 255; ++v) ASSERT_NEAR(results[v], 255 * std::pow(levels[v] / 255.0, gamma), 0.5 + 1e-9) << v;
  }
  EXPECT_EQ(DAXI_Gamma_8u_C1IR(nullptr, 1, {1, 1}, 1), DAX_STS_NULL_POINTER);
}

}  // namespace
}  // namespace dax::test

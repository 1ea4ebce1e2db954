#include "daxi/lab.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/image/colour/all_colours.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

// The standard in double precision. The matrix from the chromaticities of primaries and white.
struct LabOracle {
  double xyz[3], lab[3];

  explicit LabOracle(const double (&rgb)[3]) {
    constexpr double kPrimaries[3][2] = {{0.64, 0.33}, {0.30, 0.60}, {0.15, 0.06}};
    constexpr double kWhite[3] = {0.3127 / 0.3290, 1, (1 - 0.3127 - 0.3290) / 0.3290};
    double p[3][3], strength[3];  // columns are the primaries
    for (int k = 0; k < 3; ++k) {
      const auto [x, y] = kPrimaries[k];
      p[0][k] = x / y, p[1][k] = 1, p[2][k] = (1 - x - y) / y;
    }
    const auto determinant = [](const double(&m)[3][3]) {
      return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) - m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
             m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
    };
    for (int k = 0; k < 3; ++k) {  // Cramer's rule
      double m[3][3];
      for (int i = 0; i < 9; ++i) m[i / 3][i % 3] = i % 3 == k ? kWhite[i / 3] : p[i / 3][i % 3];
      strength[k] = determinant(m) / determinant(p);
    }
    double f[3];
    for (int i = 0; i < 3; ++i) {
      xyz[i] = 0;
      for (int k = 0; k < 3; ++k) xyz[i] += p[i][k] * strength[k] * linear(rgb[k]);
      const double part = xyz[i] / kWhite[i];
      f[i] = part > 216.0 / 24389 ? std::cbrt(part) : part * 841 / 108 + 4.0 / 29;
    }
    lab[0] = 116 * f[1] - 16, lab[1] = 500 * (f[0] - f[1]), lab[2] = 200 * (f[1] - f[2]);
  }

  static double linear(double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); }
};

// Colours of bytes in all three types. Every 77th of a row.
TEST(Lab, AgainstTheStandard) {
  const DaxiSize size = {kColours, 1};
  constexpr int32_t kStep = 3 * kColours;
  TestImage<uint8_t> lab({kStep, 1});
  TestImage<uint16_t> words({kStep, 1}), labWords({kStep, 1}), xyzWords({kStep, 1});
  TestImage<float> floats({kStep, 1}), labFloats({kStep, 1}), xyzFloats({kStep, 1});
  double worst[3] = {};
  forColours([&](const TestImage<uint8_t>& rgb) {
    words.fill([&](int32_t x, int32_t) { return rgb.at(x, 0) * 257; });
    floats.fill([&](int32_t x, int32_t) { return static_cast<float>(rgb.at(x, 0)) / 255; });
    ASSERT_EQ(DAXI_RGBToLab_8u_C3R(rgb.data(), kStep, lab.data(), kStep, size), DAX_STS_OK);
    ASSERT_EQ(DAXI_RGBToLab_16u_C3R(words.data(), kStep, labWords.data(), kStep, size), DAX_STS_OK);
    ASSERT_EQ(DAXI_RGBToLab_32f_C3R(floats.data(), kStep, labFloats.data(), kStep, size), DAX_STS_OK);
    ASSERT_EQ(DAXI_SRGBToXYZ_16u_C3R(words.data(), kStep, xyzWords.data(), kStep, size), DAX_STS_OK);
    ASSERT_EQ(DAXI_SRGBToXYZ_32f_C3R(floats.data(), kStep, xyzFloats.data(), kStep, size), DAX_STS_OK);
    for (int32_t i = 0; i < kStep; i += 3 * 77) {
      const LabOracle expected({rgb.at(i, 0) / 255.0, rgb.at(i + 1, 0) / 255.0, rgb.at(i + 2, 0) / 255.0});
      for (int32_t k = 0; k < 3; ++k) {
        const double value = expected.lab[k], byte = k == 0 ? value * 2.55 : value + 128;
        const double word = k == 0 ? value * 655.35 : value * 256 + 32768;
        worst[0] = std::max(worst[0], std::abs(lab.at(i + k, 0) - byte));
        worst[1] = std::max(worst[1], std::abs(labWords.at(i + k, 0) - word));
        worst[2] = std::max(worst[2], std::abs(labFloats.at(i + k, 0) - value));
        ASSERT_NEAR(xyzWords.at(i + k, 0), expected.xyz[k] * 32768, 0.53);
        ASSERT_NEAR(xyzFloats.at(i + k, 0), expected.xyz[k], 1e-6);
      }
    }
  });
  EXPECT_LE(worst[0], 0.501);
  EXPECT_LE(worst[1], 0.53);
  EXPECT_LE(worst[2], 0.0005);
}

TEST(Lab, GreyHasNoColour) {
  for (int32_t level = 0; level < 256; ++level) {
    const float gray = static_cast<float>(level) / 255, rgb[3] = {gray, gray, gray};
    float lab[3], back[3];
    DAXI_RGBToLab_32f_C3R(rgb, 3, lab, 3, {1, 1});
    EXPECT_TRUE(lab[1] == 0 && lab[2] == 0) << level;
    DAXI_LabToRGB_32f_C3R(lab, 3, back, 3, {1, 1});
    EXPECT_TRUE(back[0] == back[1] && back[1] == back[2]);
    EXPECT_NEAR(back[0], gray, 1e-6);
  }
}

// What rounding to bytes costs whatever computes it; in 16 bits nothing of a byte is lost.
TEST(Lab, RoundTrips) {
  const DaxiSize size = {kColours, 1};
  constexpr int32_t kStep = 3 * kColours;
  const auto bytes = roundTrip<uint8_t>(
      1, [&](auto* s, auto* d) { DAXI_RGBToLab_8u_C3R(s, kStep, d, kStep, size); },
      [&](auto* s, auto* d) { DAXI_LabToRGB_8u_C3R(s, kStep, d, kStep, size); });
  printRoundTrip("Lab, 8u", bytes);
  EXPECT_LE(bytes.largest, 26);
  if (std::getenv("DAX_ALL_COLOURS") != nullptr) {
    EXPECT_EQ(bytes.largest, 26);
  }
  const auto words = roundTrip<uint16_t>(
      257, [&](auto* s, auto* d) { DAXI_RGBToLab_16u_C3R(s, kStep, d, kStep, size); },
      [&](auto* s, auto* d) { DAXI_LabToRGB_16u_C3R(s, kStep, d, kStep, size); });
  printRoundTrip("Lab, 16u, levels of 16 bits", words);
  EXPECT_LT(words.largest, 128.5);
  const auto xyz = roundTrip<uint16_t>(
      257, [&](auto* s, auto* d) { DAXI_RGBToXYZ_16u_C3R(s, kStep, d, kStep, size); },
      [&](auto* s, auto* d) { DAXI_XYZToRGB_16u_C3R(s, kStep, d, kStep, size); });
  EXPECT_LE(xyz.largest, 6);
  const auto floats = roundTrip<float>(
      1 / 255.0, [&](auto* s, auto* d) { DAXI_SRGBToXYZ_32f_C3R(s, kStep, d, kStep, size); },
      [&](auto* s, auto* d) { DAXI_XYZToSRGB_32f_C3R(s, kStep, d, kStep, size); });
  EXPECT_LE(floats.largest, 2e-5);
}

// Orders of channels, in place, padded rows, on a pool: the same numbers.
TEST(Lab, FormsAgree) {
  MockPool pool;
  for (int32_t width = 1; width <= 140; width += width < 10 ? 1 : 13) {
    const DaxiSize size = {width, 1 + width % 4};
    TestImage<uint16_t> rgb({3 * width, size.height}, width % 3, kGuards[width % 2]), bgr(rgb.size()),
        there(rgb.size(), 2);
    TestImage<uint16_t> other(rgb.size());
    rgb.randomize(static_cast<uint64_t>(width));
#define AGREE(TO, FROM, RGB, BGR)                                                                                  \
  bgr.fill([&](int32_t x, int32_t y) { return rgb.at(x - x % 3 + 2 - x % 3, y); });                                \
  there.remember();                                                                                                \
  ASSERT_EQ(DAXI_##RGB##To##TO##_16u_C3R(rgb.data(), rgb.step(), there.data(), there.step(), size), DAX_STS_OK);   \
  ASSERT_TRUE(there.paddingUntouched());                                                                           \
  ASSERT_EQ(DAXI_##BGR##To##TO##_16u_C3R_MT(&pool, 3, bgr.data(), bgr.step(), other.data(), other.step(), size),   \
            DAX_STS_OK);                                                                                           \
  ASSERT_TRUE(samePixels(there, other));                                                                           \
  ASSERT_EQ(DAXI_##FROM##To##RGB##_16u_C3R(there.data(), there.step(), rgb.data(), rgb.step(), size), DAX_STS_OK); \
  ASSERT_EQ(DAXI_##FROM##To##BGR##_16u_C3IR(other.data(), other.step(), size), DAX_STS_OK);                        \
  for (int32_t x = 0; x < 3 * width; ++x) ASSERT_EQ(rgb.at(x, 0), other.at(x - x % 3 + 2 - x % 3, 0));
    AGREE(Lab, Lab, RGB, BGR)
    AGREE(XYZ, XYZ, RGB, BGR)
    AGREE(XYZ, XYZ, SRGB, SBGR)
#undef AGREE
  }
}

}  // namespace
}  // namespace dax::test

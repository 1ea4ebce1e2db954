#include "daxi/ycbcr.h"

#include <gtest/gtest.h>

#include <cmath>

#include "image/colour/ycbcr_neon.h"
#include "tests/image/colour/all_colours.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

// The definition, of levels of bytes.
struct YCbCrOracle {
  YCbCrOracle(int32_t standard, int32_t rangeOfLevels) : range(rangeOfLevels) {
    kr = standard == 1 ? 0.2126 : 0.299, kb = standard == 1 ? 0.0722 : 0.114;
  }
  double kr, kb;
  int32_t range;

  void encode(const double* rgb, double* ycc) const {
    const double y = kr * rgb[0] + (1 - kr - kb) * rgb[1] + kb * rgb[2];
    const double cb = (rgb[2] - y) / (2 * (1 - kb)), cr = (rgb[0] - y) / (2 * (1 - kr));
    ycc[0] = range == 1 ? y : 16 + y * 219 / 255;
    ycc[1] = 128 + (range == 1 ? cb : cb * 224 / 255), ycc[2] = 128 + (range == 1 ? cr : cr * 224 / 255);
  }
  void decode(const double* ycc, double* rgb) const {
    const double y = range == 1 ? ycc[0] : (ycc[0] - 16) * 255 / 219, swing = range == 1 ? 1 : 255 / 224.0;
    const double cb = (ycc[1] - 128) * swing, cr = (ycc[2] - 128) * swing;
    rgb[0] = y + 2 * (1 - kr) * cr, rgb[2] = y + 2 * (1 - kb) * cb;
    rgb[1] = (y - kr * rgb[0] - kb * rgb[2]) / (1 - kr - kb);
  }
};

// Within 0.51 of the formula, saturated; and both twins. Every fifth colour of a row that all the levels of two channels are in.
TEST(YCbCr, WithinHalfALevel) {
  for (int32_t mode = 0; mode < 4; ++mode) {
    const int32_t standard = mode % 2, range = mode / 2;
    const YCbCrOracle oracle(standard, range);
    const YCbCrEncoder encoder(standard, range);
    const YCbCrDecoder decoder(standard, range);
    TestImage<uint8_t> neonRow({3 * kColours, 1}), portableRow(neonRow.size());
    const auto compare = [&](const TestImage<uint8_t>& src, auto formula) {
      ASSERT_TRUE(samePixels(neonRow, portableRow));
      for (int32_t i = 0; i < 3 * kColours; i += 15) {
        const double from[3] = {1.0 * src.at(i, 0), 1.0 * src.at(i + 1, 0), 1.0 * src.at(i + 2, 0)};
        double to[3];
        formula(from, to);
        for (int32_t k = 0; k < 3; ++k) ASSERT_NEAR(neonRow.at(i + k, 0), std::clamp(to[k], 0.0, 255.0), 0.51);
      }
    };
    forColours([&](const TestImage<uint8_t>& colours) {
      portable::encodeYCbCrRow<RgbOrder>(colours.data(), portableRow.data(), kColours, encoder);
      neon::encodeYCbCrRow<RgbOrder>(colours.data(), neonRow.data(), kColours, encoder);
      compare(colours, [&](const double* from, double* to) { oracle.encode(from, to); });
      portable::decodeYCbCrRow<RgbOrder>(colours.data(), portableRow.data(), kColours, decoder);
      neon::decodeYCbCrRow<RgbOrder>(colours.data(), neonRow.data(), kColours, decoder);
      compare(colours, [&](const double* from, double* to) { oracle.decode(from, to); });
    });
  }
}

// What rounding to bytes costs whatever computes it: 1 level in full range, 2 in video range. Grey comes back exactly.
TEST(YCbCr, RoundTrips) {
  for (int32_t mode = 0; mode < 4; ++mode) {
    const int32_t standard = mode % 2, range = mode / 2;
    const DaxiSize size = {kColours, 1};
    const auto bytes = roundTrip<uint8_t>(
        1, [&](auto* s, auto* d) { DAXI_RGBToYCbCr_8u_C3R(s, 3 * kColours, d, 3 * kColours, size, standard, range); },
        [&](auto* s, auto* d) { DAXI_YCbCrToRGB_8u_C3R(s, 3 * kColours, d, 3 * kColours, size, standard, range); });
    printRoundTrip(range == 1 ? "YCbCr, full range, 8u" : "YCbCr, video range, 8u", bytes);
    EXPECT_EQ(bytes.largest, range == 1 ? 1 : 2);
    const auto words = roundTrip<uint16_t>(
        257,
        [&](auto* s, auto* d) { DAXI_BGRToYCbCr_16u_C3R(s, 3 * kColours, d, 3 * kColours, size, standard, range); },
        [&](auto* s, auto* d) { DAXI_YCbCrToBGR_16u_C3R(s, 3 * kColours, d, 3 * kColours, size, standard, range); });
    EXPECT_LE(words.largest, range == 1 ? 1 : 2);
    const auto floats = roundTrip<float>(
        1 / 255.0,
        [&](auto* s, auto* d) { DAXI_RGBToYCbCr_32f_C3R(s, 3 * kColours, d, 3 * kColours, size, standard, range); },
        [&](auto* s, auto* d) { DAXI_YCbCrToRGB_32f_C3R(s, 3 * kColours, d, 3 * kColours, size, standard, range); });
    EXPECT_LE(floats.largest, 3e-7);
    uint8_t gray[3] = {77, 77, 77}, coded[3];
    DAXI_RGBToYCbCr_8u_C3R(gray, 3, coded, 3, {1, 1}, standard, range);
    EXPECT_TRUE(coded[1] == 128 && coded[2] == 128);
  }
}

// Orders of channels, in place, padded rows, on a pool: the same numbers.
TEST(YCbCr, FormsAgree) {
  MockPool pool;
  for (int32_t width = 1; width <= 40; ++width) {
    const DaxiSize size = {width, 1 + width % 4};
    TestImage<uint8_t> rgb({3 * width, size.height}, width % 3, kGuards[width % 2]), bgr(rgb.size()),
        coded(rgb.size(), 2);
    TestImage<uint8_t> other(rgb.size()), back(rgb.size());
    rgb.randomize(static_cast<uint64_t>(width));
    bgr.fill([&](int32_t x, int32_t y) { return rgb.at(x - x % 3 + 2 - x % 3, y); });
    coded.remember();
    ASSERT_EQ(DAXI_RGBToYCbCr_8u_C3R(rgb.data(), rgb.step(), coded.data(), coded.step(), size, 0, 0), DAX_STS_OK);
    ASSERT_TRUE(coded.paddingUntouched());
    ASSERT_EQ(DAXI_BGRToYCbCr_8u_C3R_MT(&pool, 3, bgr.data(), bgr.step(), other.data(), other.step(), size, 0, 0),
              DAX_STS_OK);
    ASSERT_TRUE(samePixels(coded, other));
    ASSERT_EQ(DAXI_BGRToYCbCr_8u_C3IR(bgr.data(), bgr.step(), size, 0, 0), DAX_STS_OK);
    ASSERT_TRUE(samePixels(coded, bgr));
    ASSERT_EQ(DAXI_YCbCrToBGR_8u_C3R(coded.data(), coded.step(), other.data(), other.step(), size, 0, 0), DAX_STS_OK);
    ASSERT_EQ(DAXI_YCbCrToRGB_8u_C3R_MT(&pool, 2, coded.data(), coded.step(), back.data(), back.step(), size, 0, 0),
              DAX_STS_OK);
    for (int32_t x = 0; x < 3 * width; ++x) ASSERT_EQ(back.at(x, 0), other.at(x - x % 3 + 2 - x % 3, 0));
  }
}

}  // namespace
}  // namespace dax::test

#include "daxi/hsv.h"

#include <gtest/gtest.h>

#include <cmath>

#include "image/colour/hsv_neon.h"
#include "tests/image/colour/all_colours.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

// Of whole levels up to `full`, in long double, which leaves no doubt about halves.
struct HueOracle {
  long double h, s, v, l, sl;

  HueOracle(int32_t red, int32_t green, int32_t blue, int32_t full) {
    const int32_t max = std::max({red, green, blue}), min = std::min({red, green, blue}), d = max - min;
    v = max, l = (max + min) / 2.0L, h = s = sl = 0;
    if (d == 0) return;
    if (red == max)
      h = 60.0L * (green - blue) / d;
    else if (green == max)
      h = 120 + 60.0L * (blue - red) / d;
    else
      h = 240 + 60.0L * (red - green) / d;
    if (h < 0) h += 360;
    s = static_cast<long double>(full) * d / max;
    sl = static_cast<long double>(full) * d / (l <= full / 2.0L ? max + min : 2 * full - max - min);
  }
};

int32_t nearest(long double value) {
  return static_cast<int32_t>(std::nearbyint(value));
}

// Every seventh colour exactly, with both scales of the hue.
TEST(Hsv, BytesAreTheNearestToTheFormula) {
  const DaxiSize size = {kColours, 1};
  TestImage<uint8_t> hsv({3 * kColours, 1}), hls(hsv.size());
  forColours([&](const TestImage<uint8_t>& rgb) {
    for (int32_t hue180 = 0; hue180 <= 1; ++hue180) {
      const int32_t turn = hue180 ? 180 : 256;
      ASSERT_EQ(DAXI_RGBToHSV_8u_C3R(rgb.data(), rgb.step(), hsv.data(), hsv.step(), size, hue180), DAX_STS_OK);
      ASSERT_EQ(DAXI_RGBToHLS_8u_C3R(rgb.data(), rgb.step(), hls.data(), hls.step(), size, hue180), DAX_STS_OK);
      for (int32_t i = 0; i < 3 * kColours; i += 21) {
        const HueOracle expected(rgb.at(i, 0), rgb.at(i + 1, 0), rgb.at(i + 2, 0), 255);
        const int32_t h = nearest(turn * expected.h / 360) % turn;
        ASSERT_EQ(hsv.at(i, 0), h) << i;
        ASSERT_EQ(hsv.at(i + 1, 0), nearest(expected.s));
        ASSERT_EQ(hsv.at(i + 2, 0), expected.v);
        ASSERT_EQ(hls.at(i, 0), h);
        ASSERT_EQ(hls.at(i + 1, 0), nearest(expected.l));
        ASSERT_EQ(hls.at(i + 2, 0), nearest(expected.sl));
      }
    }
  });
}

template <class Conversion>
void expectSameTwins(const TestImage<uint8_t>& from, double turn) {
  TestImage<uint8_t> byVectors(from.size()), byPixels(from.size());
  neon::hueRow<Conversion>(from.data(), byVectors.data(), kColours, turn);
  portable::hueRow<Conversion>(from.data(), byPixels.data(), kColours, turn);
  ASSERT_TRUE(samePixels(byVectors, byPixels));
}

TEST(Hsv, TwinsOfBytes) {
  forColours([](const TestImage<uint8_t>& any) {
    for (const double turn : {180.0, 256.0}) {
      expectSameTwins<ToHsv<RgbOrder>>(any, turn);
      expectSameTwins<ToHls<BgrOrder>>(any, turn);
      expectSameTwins<FromHsv<RgbOrder>>(any, turn);
      expectSameTwins<FromHls<BgrOrder>>(any, turn);
    }
  });
}

TEST(Hsv, WordsAreTheNearestToTheFormula) {
  TestImage<uint16_t> rgb({3 * 20000, 1}), hsv(rgb.size()), hls(rgb.size());
  rgb.randomize(5);
  ASSERT_EQ(DAXI_RGBToHSV_16u_C3R(rgb.data(), rgb.step(), hsv.data(), hsv.step(), {20000, 1}), DAX_STS_OK);
  ASSERT_EQ(DAXI_RGBToHLS_16u_C3R(rgb.data(), rgb.step(), hls.data(), hls.step(), {20000, 1}), DAX_STS_OK);
  for (int32_t i = 0; i < 60000; i += 3) {
    const HueOracle expected(rgb.at(i, 0), rgb.at(i + 1, 0), rgb.at(i + 2, 0), 65535);
    ASSERT_EQ(hsv.at(i, 0), nearest(65536 * expected.h / 360) % 65536);
    ASSERT_EQ(hsv.at(i + 1, 0), nearest(expected.s));
    ASSERT_EQ(hls.at(i, 0), hsv.at(i, 0));
    ASSERT_EQ(hls.at(i + 1, 0), nearest(expected.l));
    ASSERT_EQ(hls.at(i + 2, 0), nearest(expected.sl));
  }
}

// What rounding to bytes costs whatever computes it.
TEST(Hsv, RoundTrips) {
  const DaxiSize size = {kColours, 1};
  constexpr int32_t kStep = 3 * kColours;
  for (int32_t hue180 = 0; hue180 <= 1; ++hue180) {
    const auto hsv = roundTrip<uint8_t>(
        1, [&](auto* s, auto* d) { DAXI_RGBToHSV_8u_C3R(s, kStep, d, kStep, size, hue180); },
        [&](auto* s, auto* d) { DAXI_HSVToRGB_8u_C3R(s, kStep, d, kStep, size, hue180); });
    printRoundTrip(hue180 ? "HSV, hue 0..179, 8u" : "HSV, 8u", hsv);
    EXPECT_EQ(hsv.largest, hue180 ? 4 : 3);
    const auto hls = roundTrip<uint8_t>(
        1, [&](auto* s, auto* d) { DAXI_RGBToHLS_8u_C3R(s, kStep, d, kStep, size, hue180); },
        [&](auto* s, auto* d) { DAXI_HLSToRGB_8u_C3R(s, kStep, d, kStep, size, hue180); });
    printRoundTrip(hue180 ? "HLS, hue 0..179, 8u" : "HLS, 8u", hls);
    EXPECT_EQ(hls.largest, hue180 ? 5 : 4);
  }
  // Colours of bytes survive in 16 bits.
  const auto words = roundTrip<uint16_t>(
      257, [&](auto* s, auto* d) { DAXI_RGBToHSV_16u_C3R(s, kStep, d, kStep, size); },
      [&](auto* s, auto* d) { DAXI_HSVToRGB_16u_C3R(s, kStep, d, kStep, size); });
  printRoundTrip("HSV, 16u, levels of 16 bits", words);
  EXPECT_LT(words.largest, 128);
  const auto floats = roundTrip<float>(
      1 / 255.0, [&](auto* s, auto* d) { DAXI_BGRToHLS_32f_C3R(s, kStep, d, kStep, size); },
      [&](auto* s, auto* d) { DAXI_HLSToBGR_32f_C3R(s, kStep, d, kStep, size); });
  EXPECT_LE(floats.largest, 4e-7);
}

// Orders of channels, in place, padded rows, on a pool: the same numbers.
TEST(Hsv, FormsAgree) {
  MockPool pool;
  for (int32_t width = 1; width <= 40; ++width) {
    const DaxiSize size = {width, 1 + width % 4};
    TestImage<uint8_t> rgb({3 * width, size.height}, width % 3, kGuards[width % 2]), bgr(rgb.size()),
        hue(rgb.size(), 2);
    TestImage<uint8_t> other(rgb.size());
    rgb.randomize(static_cast<uint64_t>(width));
    bgr.fill([&](int32_t x, int32_t y) { return rgb.at(x - x % 3 + 2 - x % 3, y); });
#define AGREE(MODEL)                                                                                              \
  hue.remember();                                                                                                 \
  ASSERT_EQ(DAXI_RGBTo##MODEL##_8u_C3R(rgb.data(), rgb.step(), hue.data(), hue.step(), size, 1), DAX_STS_OK);     \
  ASSERT_TRUE(hue.paddingUntouched());                                                                            \
  ASSERT_EQ(DAXI_BGRTo##MODEL##_8u_C3R_MT(&pool, 3, bgr.data(), bgr.step(), other.data(), other.step(), size, 1), \
            DAX_STS_OK);                                                                                          \
  ASSERT_TRUE(samePixels(hue, other));                                                                            \
  ASSERT_EQ(DAXI_##MODEL##ToRGB_8u_C3R(hue.data(), hue.step(), rgb.data(), rgb.step(), size, 1), DAX_STS_OK);     \
  ASSERT_EQ(DAXI_##MODEL##ToBGR_8u_C3IR(other.data(), other.step(), size, 1), DAX_STS_OK);                        \
  for (int32_t x = 0; x < 3 * width; ++x) ASSERT_EQ(rgb.at(x, 0), other.at(x - x % 3 + 2 - x % 3, 0));            \
  bgr.fill([&](int32_t x, int32_t y) { return rgb.at(x - x % 3 + 2 - x % 3, y); });
    AGREE(HSV)
    AGREE(HLS)
#undef AGREE
  }
}

}  // namespace
}  // namespace dax::test

#include "image/threshold/threshold.h"

#include <gtest/gtest.h>

#include <cmath>

#include "image/statistics/histogram.h"
#include "image/threshold/threshold_levels.h"
#include "tests/image/threshold/threshold_oracle.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using Image = TestImage<uint8_t>;

Image ramp() {
  Image image({256, 1});
  image.fill([](int32_t x, int32_t) { return x; });
  return image;
}

DaxiThresholdBinCfg config(uint32_t method, uint32_t polarity) {
  DaxiThresholdBinCfg cfg = {};
  cfg.method = method;
  cfg.polarity = polarity;
  cfg.highPos = 1;
  cfg.softHigh = 255;
  return cfg;
}

DaxStatus binarize(const Image& src, Image& dst, const DaxiThresholdBinCfg& cfg) {
  return DAXI_ThresholdBin_8u_C1R(src.data(), src.step(), dst.data(), dst.step(), src.size(), &cfg);
}

// All 256 x 256 pairs of thresholds on a row that holds every level.
TEST(Threshold, SingleAndBandForEveryPair) {
  const Image src = ramp();
  Image dst({256, 1});
  for (const uint32_t method : {DAXI_THRESHOLD_SINGLE, DAXI_THRESHOLD_BAND}) {
    for (uint32_t polarity = 0; polarity <= 1; ++polarity) {
      DaxiThresholdBinCfg cfg = config(method, polarity);
      for (cfg.t1 = 0; cfg.t1 < 256; ++cfg.t1) {
        for (cfg.t2 = 0; cfg.t2 < (method == DAXI_THRESHOLD_BAND ? 256u : 1u); ++cfg.t2) {
          ASSERT_EQ(binarize(src, dst, cfg), DAX_STS_OK);
          for (int32_t x = 0; x < 256; ++x) {
            ASSERT_EQ(dst.at(x, 0), oracle::isSet(cfg, static_cast<uint32_t>(x)) ? 255 : 0)
                << "method " << method << " polarity " << polarity << " t1 " << cfg.t1 << " t2 " << cfg.t2 << " at "
                << x;
          }
        }
      }
    }
  }
}

TEST(Threshold, OutOfRangeKernelForEveryPair) {
  const Image src = ramp();
  Image dst({256, 1});
  for (int32_t low = 0; low < 256; ++low) {
    for (int32_t high = 0; high < 256; ++high) {
      ASSERT_EQ(DAXI_ThresholdBin_out_range_is_255_NEON(src.data(), 256, dst.data(), 256, src.size(),
                                                        static_cast<uint8_t>(low), static_cast<uint8_t>(high)),
                DAX_STS_OK);
      for (int32_t x = 0; x < 256; ++x) ASSERT_EQ(dst.at(x, 0), x < low || x > high ? 255 : 0) << low << " " << high;
    }
  }
}

// Kernels of both codes over ragged widths, padded steps and guarded ends.
TEST(Threshold, TwinsAgreeOnRaggedRows) {
  LevelTable table;
  Random random(3);
  for (uint8_t& value : table) value = static_cast<uint8_t>(random.next());
  for (int32_t width = 1; width <= 200; width += width < 40 ? 1 : 13) {
    const Guard guard = kGuards[width % 2];
    Image src({width, 3}, width % 5, guard);
    src.randomize(static_cast<uint64_t>(width));
    for (const LevelInterval interval : {LevelInterval::inside(40, 200), LevelInterval::inside(60, 90).complement(),
                                         LevelInterval::none(), LevelInterval::none().complement()}) {
      Image portable(src.size(), 3, guard), neon(src.size(), 0, guard);
      portable.remember();
      maskInterval(src.data(), src.step(), portable.data(), portable.step(), src.size(), interval, DAX_ISA_PORTABLE);
      maskInterval(src.data(), src.step(), neon.data(), neon.step(), src.size(), interval, DAX_ISA_NEON);
      ASSERT_TRUE(samePixels(portable, neon)) << width;
      ASSERT_TRUE(portable.paddingUntouched());
    }
    Image portable(src.size(), 0, guard), neon(src.size(), 1, guard), inverse(src.size(), 2, guard);
    mapLevels(src.data(), src.step(), portable.data(), portable.step(), src.size(), table, DAX_ISA_PORTABLE);
    mapLevels(src.data(), src.step(), neon.data(), neon.step(), src.size(), table, DAX_ISA_NEON);
    ASSERT_TRUE(samePixels(portable, neon)) << width;
    ASSERT_EQ(DAXI_ThresholdBin_0to255_8u_C1R_NEON(src.data(), src.step(), inverse.data(), inverse.step(), src.size()),
              DAX_STS_OK);
    for (int32_t x = 0; x < width; ++x) ASSERT_EQ(inverse.at(x, 2), 255 - src.at(x, 2));
    ASSERT_EQ(DAXI_ThresholdBin_0to255_8u_C1IR_NEON(inverse.data(), inverse.step(), src.size()), DAX_STS_OK);
    ASSERT_TRUE(samePixels(inverse, src));
  }
}

// The level itself: set by both polarities of the configurable form and by the plain form, clear in place.
TEST(Otsu, PixelsAtTheLevel) {
  Image src({4, 1}), dst({4, 1});
  src.fill([](int32_t x, int32_t) { return x % 2 ? 200 : 10; });
  const auto row = [&](const Image& image) { return std::vector<int>(image.row(0), image.row(0) + 4); };
  ASSERT_EQ(binarize(src, dst, config(DAXI_THRESHOLD_OTSU, 0)), DAX_STS_OK);
  EXPECT_EQ(row(dst), (std::vector<int>{255, 255, 255, 255}));
  ASSERT_EQ(binarize(src, dst, config(DAXI_THRESHOLD_OTSU, 1)), DAX_STS_OK);
  EXPECT_EQ(row(dst), (std::vector<int>{255, 0, 255, 0}));
  for (const int32_t isa : {0, 100, 7}) {
    ASSERT_EQ(DAXI_AdpThresholdOtsu_8u_C1R_IS(src.data(), 4, dst.data(), 4, {4, 1}, isa), DAX_STS_OK);
    EXPECT_EQ(row(dst), (std::vector<int>{255, 255, 255, 255}));
  }
  ASSERT_EQ(DAXI_AdpThresholdOtsu_8u_C1IR(src.data(), 4, {4, 1}), DAX_STS_OK);
  EXPECT_EQ(row(src), (std::vector<int>{0, 255, 0, 255}));
}

// Every ramp over a few level pairs: by definition, monotone, exact at both ends; as weights, and inverted by polarity
// 0.
TEST(SoftThreshold, RampForEverySoftParameter) {
  const Image src = ramp();
  Image soft({256, 1}), inverted({256, 1});
  TestImage<float> weights({256, 1});
  for (const auto& [low, high] : {std::pair{0, 255}, {0, 1}, {254, 255}, {100, 103}, {17, 200}}) {
    for (uint32_t levels = 0; levels < 255; ++levels) {
      DaxiThresholdBinCfg cfg = config(DAXI_THRESHOLD_SOFT, 1);
      cfg.softLow = low, cfg.softHigh = high, cfg.soft = levels;
      ASSERT_EQ(binarize(src, soft, cfg), DAX_STS_OK);
      cfg.polarity = 0;
      ASSERT_EQ(binarize(src, inverted, cfg), DAX_STS_OK);
      ASSERT_EQ(DAXI_ThresholdSoftBin_8u32f_C1R(src.data(), 256, weights.data(), 256, src.size(), low, high, levels),
                DAX_STS_OK);
      for (int32_t x = 0; x < 256; ++x) {
        const double weight = oracle::rampStep(x, low, high, static_cast<int32_t>(levels)) / (levels + 1.0);
        ASSERT_EQ(soft.at(x, 0), static_cast<int>(std::floor(255 * weight + 0.5))) << low << ".." << high << " " << x;
        ASSERT_EQ(inverted.at(x, 0), 255 - soft.at(x, 0));
        ASSERT_EQ(weights.at(x, 0), static_cast<float>(weight));
      }
    }
  }
}

TEST(SoftThreshold, EqualLevelsAreAHardThreshold) {
  Image src({3, 1}), dst({3, 1});
  src.fill([](int32_t, int32_t) { return 90; });
  ASSERT_EQ(DAXI_ThresholdRelativeSoft_8u_C1R(src.data(), 3, dst.data(), 3, {3, 1}, 0, 0, 0, 1, 9), DAX_STS_OK);
  EXPECT_EQ(dst.at(0, 0), 255);
}

TEST(Threshold, SecondFormReportsTheLevels) {
  Image src({2, 1}), dst({2, 1});
  src.fill([](int32_t x, int32_t) { return x ? 200 : 10; });
  struct Case {
    uint32_t method;
    int low, high;
  };
  for (const Case& c : {Case{DAXI_THRESHOLD_COPY, 0, 255},
                        {DAXI_THRESHOLD_SINGLE, 80, 80},
                        {DAXI_THRESHOLD_BAND, 30, 80},
                        {DAXI_THRESHOLD_OTSU, 10, 10},
                        {DAXI_THRESHOLD_SOFT, 5, 99},
                        {DAXI_THRESHOLD_RELATIVE_SOFT, 10, 200}}) {
    DaxiThresholdBinCfg cfg = config(c.method, 0);
    cfg.t1 = 80, cfg.t2 = 30, cfg.softLow = 5, cfg.softHigh = 99;
    uint8_t low = 1, high = 2;
    ASSERT_EQ(DAXI_ThresholdBinV2_8u_C1R_IS(src.data(), 2, dst.data(), 2, {2, 1}, &cfg, &low, &high), DAX_STS_OK);
    EXPECT_EQ(low, c.low) << c.method;
    EXPECT_EQ(high, c.high) << c.method;
  }
}

TEST(Threshold, SourceAndDestinationMayBeTheSame) {
  Image image({70, 3}), copy({70, 3}), expected({70, 3});
  image.randomize(1);
  for (uint32_t method = 1; method <= 6; ++method) {
    DaxiThresholdBinCfg cfg = config(method, 1);
    cfg.t1 = 100, cfg.t2 = 50;
    copy.fill([&](int32_t x, int32_t y) { return image.at(x, y); });
    ASSERT_EQ(binarize(image, expected, cfg), DAX_STS_OK);
    ASSERT_EQ(binarize(copy, copy, cfg), DAX_STS_OK);
    EXPECT_TRUE(samePixels(copy, expected)) << method;
  }
}

// The size belongs to both images, so its clause also covers the destination's.
TEST(ThresholdChecks, MethodParameters) {
  Image src({8, 2}), dst({8, 2});
  struct Case {
    uint32_t method;
    void (*change)(DaxiThresholdBinCfg&);
    bool accepted;
  };
  const Case cases[] = {
      {0, [](DaxiThresholdBinCfg&) {}, false},
      {7, [](DaxiThresholdBinCfg&) {}, false},
      {UINT32_MAX, [](DaxiThresholdBinCfg&) {}, false},
      {1, [](DaxiThresholdBinCfg& c) { c.t1 = 999, c.darkTail = NAN, c.soft = 999; }, true},
      {3, [](DaxiThresholdBinCfg& c) { c.t2 = 256; }, false},
      {3, [](DaxiThresholdBinCfg& c) { c.t1 = 0xFFFFFF00u; }, false},
      {5, [](DaxiThresholdBinCfg& c) { c.soft = 254; }, true},
      {5, [](DaxiThresholdBinCfg& c) { c.soft = 255; }, false},
      {5, [](DaxiThresholdBinCfg& c) { c.softLow = -1; }, false},
      {5, [](DaxiThresholdBinCfg& c) { c.softHigh = 256; }, false},
      {5, [](DaxiThresholdBinCfg& c) { c.softLow = c.softHigh = 9; }, false},
      {6, [](DaxiThresholdBinCfg& c) { c.darkTail = 0.7f, c.brightTail = 0.3f; }, true},
      {6, [](DaxiThresholdBinCfg& c) { c.darkTail = 0.6f, c.brightTail = 0.5f; }, false},
      {6, [](DaxiThresholdBinCfg& c) { c.darkTail = NAN; }, false},
      {6, [](DaxiThresholdBinCfg& c) { c.brightTail = NAN; }, false},
      {6, [](DaxiThresholdBinCfg& c) { c.lowPos = NAN; }, false},
      {6, [](DaxiThresholdBinCfg& c) { c.highPos = NAN; }, false},
      {6, [](DaxiThresholdBinCfg& c) { c.highPos = INFINITY; }, false},
      {6, [](DaxiThresholdBinCfg& c) { c.lowPos = 0.6f, c.highPos = 0.5f; }, false},
      {6, [](DaxiThresholdBinCfg& c) { c.lowPos = -0.1f; }, false},
      {6, [](DaxiThresholdBinCfg& c) { c.soft = 255; }, false},
  };
  for (const Case& c : cases) {
    DaxiThresholdBinCfg cfg = config(c.method, 0);
    c.change(cfg);
    dst.remember();
    const DaxStatus status = binarize(src, dst, cfg);
    EXPECT_EQ(status, c.accepted ? DAX_STS_OK : DAX_STS_BAD_PARAM) << "case " << &c - cases;
    EXPECT_TRUE(c.accepted || dst.untouched());
  }
  EXPECT_EQ(DAXI_ThresholdSoftBin_8u_C1R(src.data(), 8, dst.data(), 8, {8, 2}, 5, 5, 0), DAX_STS_BAD_PARAM);
  float weights[16];
  EXPECT_EQ(DAXI_ThresholdRelativeSoft_8u32f_C1R(src.data(), 8, weights, 8, {8, 2}, 0, 0, NAN, 1, 0),
            DAX_STS_BAD_PARAM);
}

}  // namespace
}  // namespace dax::test

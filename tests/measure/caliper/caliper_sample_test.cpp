// From region to profile: sampling, projection, masks.
#include <gtest/gtest.h>

#include <numbers>

#include "measure/caliper/caliper_buffer.h"
#include "measure/caliper/caliper_profile.h"
#include "measure/caliper/caliper_sample.h"
#include "tests/measure/caliper/caliper_oracle.h"
#include "tests/measure/caliper/caliper_scene.h"

namespace dax::test {
namespace {

constexpr float kPi = std::numbers::pi_v<float>;

Gray noise(DaxiSize size, uint64_t seed, int32_t padding = 0, Guard guard = Guard::after) {
  Gray image(size, padding, guard);
  image.randomize(seed);
  return image;
}

// Positions are rounded to 1/2048 and values to 1/256, across differences of up to 255.
constexpr double kMaxError = 0.13;

// The point of a position is the one that is sampled for it, on the middle line of the region.
template <class Region>
void checkPoints(const Region& region, uint32_t projection) {
  const CaliperGrid grid = gridOf(region, projection);
  const double middle = grid.alongColumns ? -grid.firstRow : -grid.firstColumn;
  for (int32_t i = 0; i < grid.length(); ++i) {
    const bool exact = !grid.alongColumns || middle == std::floor(middle);
    if (!exact) break;
    const SampleLine row = grid.row(grid.alongColumns ? static_cast<int32_t>(middle) : i);
    const double along = grid.alongColumns ? i : middle;
    const DaxiPoint32f point =
        grid.pointAt(static_cast<float>((grid.alongColumns ? grid.firstColumn : grid.firstRow) + i));
    ASSERT_NEAR(point.x, row.x + along * row.dx, 1e-4);
    ASSERT_NEAR(point.y, row.y + along * row.dy, 1e-4);
  }
}

TEST(CaliperRegions, PointsOfPositions) {
  for (const uint32_t projection : {0u, 1u}) {
    for (const float size : {9.0f, 10.0f, 1.2f}) {
      checkPoints(CaliperBox{40, 30, 20, size, 0.3f}, projection);
      checkPoints(CaliperRhomboid{40, 30, 20, size, 0.3f, 1.5f}, projection);
      checkPoints(CaliperAnnulus{40, 30, 10, 10 + size, -0.4f, 1.7f}, projection);
    }
  }
}

template <class Region>
void checkProfile(const Gray& image, const Region& region) {
  for (const uint32_t projection : {0u, 1u}) {
    const auto expected = oracle::profileOf(image, oracle::layoutOf(region, projection == 1));
    CaliperEdgeCfg cfg = edgeConfig(projection);
    cfg.isa = DAX_ISA_NEON;
    cfg.maxEdges = 1000;
    const Measured got = measure(image, region, cfg);
    ASSERT_EQ(got.status, DAX_STS_OK);
    ASSERT_EQ(got.profile.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) {
      ASSERT_NEAR(got.profile[i], expected[i], kMaxError) << "sample " << i << " of projection " << projection;
    }
    cfg.isa = DAX_ISA_PORTABLE;
    const Measured portable = measure(image, region, cfg);
    ASSERT_EQ(got.profile, portable.profile);
    ASSERT_EQ(got.response, portable.response);
    ASSERT_EQ(got.edges.size(), portable.edges.size());
  }
}

TEST(CaliperSample, FollowsTheDefinition) {
  Random random(5);
  const auto within = [&](double low, double high) {
    return static_cast<float>(low + (high - low) * random.below(1 << 20) / (1 << 20));
  };
  for (int i = 0; i < 120; ++i) {
    const DaxiSize size{1 + random.below(90), 1 + random.below(70)};
    const Gray image = noise(size, static_cast<uint64_t>(i), i % 4, kGuards[i % 2]);
    const float x = within(0, size.width - 1), y = within(0, size.height - 1);
    SCOPED_TRACE(testing::Message() << "case " << i << ", " << size.width << " x " << size.height);
    checkProfile(image, CaliperBox{x, y, within(1, 70), within(1, 40), within(-3.14, 3.14)});
    const float angle = within(-3.14, 3.14);
    checkProfile(image, CaliperRhomboid{x, y, within(1, 70), within(1, 40), angle,
                                        std::remainder(angle + within(0.2, 2.9), 2 * kPi)});
    const float inner = within(0, 30);
    checkProfile(image, CaliperAnnulus{x, y, inner, inner + within(1, 30), within(-3.14, 3.14),
                                       within(1 / (inner + 0.5) + 0.01, 6.2)});
  }
}

TEST(CaliperSample, SixteenBits) {
  TestImage<int16_t> image({60, 40}, 3);
  image.randomize(3);
  for (const uint32_t projection : {0u, 1u}) {
    const CaliperBox box{33.3f, 17.8f, 50, 30, 0.7f};
    uint64_t bytes = 0;
    ASSERT_EQ(DAXI_CalipEdgeDetectBufferSize_16s(&box, &bytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> buffer(bytes);
    const CaliperGrid grid = gridOf(box, projection);
    const CaliperBuffer at(grid.columns, grid.rows, sizeof(int32_t));
    const CaliperImage<int16_t> view{image.data(), image.step(), nullptr, 0, image.size()};
    const CaliperSignal signal = measureSignal(view, grid, 2, at, buffer.data(), DAX_ISA_NEON);
    const auto expected = oracle::profileOf(image, oracle::layoutOf(box, projection == 1));
    for (size_t i = 0; i < expected.size(); ++i) ASSERT_NEAR(signal.profile[i], expected[i], 256 * kMaxError);

    // The same edges as of the 8-bit image with the same values.
    const Gray bytesImage = noise({60, 40}, 4);
    TestImage<int16_t> wide({60, 40});
    wide.fill([&](int32_t x, int32_t y) { return bytesImage.at(x, y); });
    const CaliperEdgeCfg cfg = edgeConfig(projection);
    const Measured narrow = measure(bytesImage, box, cfg);
    std::vector<CaliperEdge> edges(100);
    CaliperEdgeResult result{edges.data(), nullptr, 0};
    ASSERT_EQ(DAXI_CalipEdgeDetect_16s_C1R(wide.data(), wide.step(), wide.size(), &box, &cfg, &result, buffer.data()),
              DAX_STS_OK);
    ASSERT_EQ(static_cast<size_t>(result.count), narrow.edges.size());
    EXPECT_GT(result.count, 3);
    for (size_t i = 0; i < narrow.edges.size(); ++i) EXPECT_TRUE(sameBits(edges[i], narrow.edges[i]));
  }
}

// Image and box turned together by quarters, and mirrored.
TEST(CaliperSample, TurnsWithTheImage) {
  const int32_t side = 61;
  const Gray image = noise({side, side}, 9);
  const auto turned = [&](const Gray& from, int quarters) {
    Gray to({side, side});
    to.fill([&](int32_t x, int32_t y) {
      switch (quarters) {
        case 1:
          return from.at(y, side - 1 - x);
        case 2:
          return from.at(side - 1 - x, side - 1 - y);
        case 3:
          return from.at(side - 1 - y, x);
        default:
          return from.at(x, y);
      }
    });
    return to;
  };
  const CaliperEdgeCfg cfg = edgeConfig();
  const CaliperBox box{22, 37.25f, 30, 9, 0};
  const Measured upright = measure(image, box, cfg);
  ASSERT_GT(upright.edges.size(), 4u);
  const float centre = (side - 1) / 2.0f, dx = box.x - centre, dy = box.y - centre;
  const float x[] = {dx, -dy, -dx, dy}, y[] = {dy, dx, -dy, -dx}, angle[] = {0, kPi / 2, kPi, -kPi / 2};
  for (int quarters = 0; quarters < 4; ++quarters) {
    const CaliperBox with{centre + x[quarters], centre + y[quarters], 30, 9, angle[quarters]};
    const Measured got = measure(turned(image, quarters), with, cfg);
    EXPECT_EQ(got.profile, upright.profile) << quarters;
    EXPECT_EQ(got.response, upright.response) << quarters;
  }
  // A position is reached from the centre along the direction of the box.
  for (size_t i = 0; i < upright.edges.size(); ++i) {
    EXPECT_FLOAT_EQ(upright.points[i].x, box.x + upright.edges[i].position);
    EXPECT_EQ(upright.points[i].y, box.y);
  }
  // Seen from the other end the profile runs backwards, without its first sample.
  const Measured back = measure(image, CaliperBox{22, 37.25f, 30, 9, kPi}, cfg);
  for (size_t i = 1; i < 30; ++i) EXPECT_EQ(back.profile[i], upright.profile[30 - i]);
  for (const CaliperEdge& edge : back.edges) {
    if (edge.index < 3 || edge.index > 26) continue;
    const auto same = std::find_if(upright.edges.begin(), upright.edges.end(), [&](const CaliperEdge& e) {
      return std::fabs(e.position + edge.position) < 1e-4f && e.polarity != edge.polarity;
    });
    EXPECT_NE(same, upright.edges.end()) << edge.position;
  }
}

TEST(CaliperMask, MaskedPixelsHaveNoInfluence) {
  const DaxiSize size{70, 50};
  Gray image = noise(size, 1), mask(size, 2, Guard::before);
  const CaliperBox box{30, 22, 40, 18, 0.4f};
  const CaliperRhomboid rhomboid{30, 22, 40, 18, 0.4f, 1.5f};
  const CaliperAnnulus annulus{30, 22, 5, 25, -1, 2.5f};
  const auto all = [&](auto check) {
    for (const uint32_t projection : {0u, 1u}) {
      for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
        CaliperEdgeCfg cfg = edgeConfig(projection);
        cfg.isa = isa;
        check(box, cfg), check(rhomboid, cfg), check(annulus, cfg);
      }
    }
  };
  mask.fill([](int32_t x, int32_t) { return x % 2 ? 255 : 1; });
  all([&](const auto& region, const CaliperEdgeCfg& cfg) {
    EXPECT_EQ(measure(image, region, cfg, &mask).profile, measure(image, region, cfg).profile);
  });
  // A disc and scattered pixels are masked; other values there change nothing, and other values elsewhere do.
  Random random(8);
  mask.fill([&](int32_t x, int32_t y) { return std::hypot(x - 33, y - 25) < 9 || random.below(40) == 0 ? 0 : 255; });
  Gray other(size);
  other.fill([&](int32_t x, int32_t y) { return mask.at(x, y) ? image.at(x, y) : 255 - image.at(x, y); });
  all([&](const auto& region, const CaliperEdgeCfg& cfg) {
    const Measured got = measure(image, region, cfg, &mask);
    EXPECT_EQ(got.profile, measure(other, region, cfg, &mask).profile);
    EXPECT_NE(got.profile, measure(image, region, cfg).profile);
  });
}

TEST(CaliperMask, GapsTakeTheNearestValueAndNoEdge) {
  // Columns 20..26 of an upright box are masked; within them lies an edge.
  const DaxiSize size{60, 20};
  Gray image(size), mask(size);
  image.fill([](int32_t x, int32_t) { return x < 23 ? 40 : 200; });
  mask.fill([](int32_t x, int32_t) { return x >= 20 && x <= 26 ? 0 : 255; });
  const CaliperBox box{25, 10, 40, 8, 0};  // sample j lies at column 5 + j
  const Measured got = measure(image, box, edgeConfig(1, 3, 1, 1), &mask);
  for (size_t j = 0; j < 40; ++j) EXPECT_EQ(got.profile[j], j <= 18 ? 40 : 200) << j;
  EXPECT_TRUE(got.edges.empty());
  EXPECT_EQ(measure(image, box, edgeConfig(1, 3, 1, 1)).edges.size(), 1u);
  // Gaps at both ends, and nothing but a gap.
  mask.fill([](int32_t x, int32_t) { return x >= 20 && x <= 26 ? 255 : 0; });
  const Measured inner = measure(image, box, edgeConfig(1, 3, 1, 1), &mask);
  for (size_t j = 0; j < 40; ++j) EXPECT_EQ(inner.profile[j], j < 18 ? 40 : 200) << j;
  EXPECT_EQ(inner.edges.size(), 1u);
  mask.fill([](int32_t, int32_t) { return 0; });
  const Measured none = measure(image, box, edgeConfig(1, 3, 1, 0), &mask);
  EXPECT_EQ(none.profile, std::vector<float>(40, 0));
  EXPECT_TRUE(none.edges.empty());
}

TEST(CaliperHostile, RegionsFarOutsideAndTiny) {
  for (const DaxiSize size : {DaxiSize{1, 1}, {2, 1}, {1, 9}, {9, 9}}) {
    const Gray image = noise(size, 4, 0, kGuards[size.width % 2]);
    const float x = static_cast<float>(size.width - 1), y = static_cast<float>(size.height - 1);
    for (const float angle : {0.0f, 0.3f, 1.5707964f, -3.1415927f}) {
      for (const float side : {1.0f, 1.4f, 3.0f, 40.0f, 3000.0f}) {
        checkProfile(image, CaliperBox{x, y, side, 5, angle});
        checkProfile(image, CaliperBox{0, y, 7, side, angle});
        checkProfile(image, CaliperRhomboid{x, y, side, 5, angle, angle + 1});
        if (side < 3000) checkProfile(image, CaliperAnnulus{x, 0, side, side + 3, angle, 6.2831855f});
      }
    }
  }
  // As long as a region may be, from end to end through a small image.
  const Gray image = noise({30, 30}, 6);
  const CaliperBox longest{15, 15, 16777216, 1, 0.001f};
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_CalipEdgeDetectBufferSize_8u(&longest, &bytes), DAX_STS_OK);
  EXPECT_GT(bytes, uint64_t{16777216} * 96);
  const CaliperBox wide{15, 15, 100000, 2, 0.3f};
  const Measured got = measure(image, wide, edgeConfig(1));
  EXPECT_EQ(got.profile.front(), image.at(0, 0));
  EXPECT_EQ(got.profile.back(), image.at(29, 29));
}

// Every second sample rises by 5, the others fall: the response changes its sign from each to the next, but at the ends.
TEST(CaliperHostile, EverySampleAnEdge) {
  Gray image({100, 4});
  image.fill([](int32_t x, int32_t) { return x % 2 == 0 ? 5 * (x / 2) : 255 - 5 * (x / 2); });
  const CaliperBox box{50, 1.5f, 100, 4, 0};
  CaliperEdgeCfg cfg = edgeConfig(1, 3, 1, 1);
  EXPECT_EQ(measure(image, box, cfg).edges.size(), 96u);
  cfg.maxEdges = 1;
  EXPECT_EQ(measure(image, box, cfg).edges.size(), 1u);
  cfg.edgeChoice = 98;
  EXPECT_EQ(measure(image, box, cfg).edges.at(0).index, 97);
}

}  // namespace
}  // namespace dax::test

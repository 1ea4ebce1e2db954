#include "measure/blob/blob_features.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/measure/blob/blob_scene.h"

namespace dax::test {
namespace {

constexpr float kPi = std::numbers::pi_v<float>;

BlobInfo only(const Image& mask) {
  const std::vector<BlobInfo> blobs = Scene(mask).select(config());
  EXPECT_EQ(blobs.size(), 1u);
  return blobs.empty() ? BlobInfo{} : blobs[0];
}

// Angles of lines are equal up to half turns.
double lineDifference(double a, double b) {
  return std::fabs(std::remainder(a - b, std::numbers::pi));
}

void expectFeatures(const BlobInfo& blob, const oracle::Points& points, const Image& gray, bool grayMode) {
  const oracle::Moments m = oracle::moments(points, [&](double x, double y) {
    return grayMode ? gray.at(static_cast<int32_t>(x), static_cast<int32_t>(y)) / 255.0 : 1.0;
  });
  const auto [left, right] = std::minmax_element(points.begin(), points.end());
  EXPECT_NEAR(blob.area, m.mass, 1e-5 * m.mass);
  EXPECT_NEAR(blob.centroidX, m.x, 1e-3);
  EXPECT_NEAR(blob.centroidY, m.y, 1e-3);
  EXPECT_EQ(blob.rectX, left->first);
  EXPECT_EQ(blob.rectX + blob.rectWidth - 1, right->first);
  EXPECT_EQ(blob.rectY, points.front().second);
  EXPECT_EQ(blob.rectY + blob.rectHeight - 1, points.back().second);
  EXPECT_NEAR(blob.boxWidth * blob.boxHeight, oracle::minBoxArea(points), 1e-3);
  EXPECT_LE(blob.boxHeight, blob.boxWidth);
  EXPECT_NEAR(blob.centralBias, std::hypot(blob.boxX - m.x, blob.boxY - m.y), 1e-3);
  if (blob.area <= 1) return;
  const double radius2 = oracle::largestDistance2(points, blob.centroidX, blob.centroidY);
  EXPECT_NEAR(blob.circularity, std::min(1.0, m.mass / std::numbers::pi / radius2), 1e-4);
  if (!grayMode && std::hypot(2 * m.xy, m.xx - m.yy) > 1e-3 * m.mass) {
    EXPECT_LT(lineDifference(blob.principalAngle, 0.5 * std::atan2(2 * m.xy, m.xx - m.yy)), 1e-3);
  }
}

// Every feature of the blobs of random masks, against sums over pixels and a brute-force rectangle.
TEST(BlobFeatures, MatchDefinitions) {
  for (int32_t percent = 10; percent <= 60; percent += 10) {
    const Image mask = randomMask({41, 23}, static_cast<uint64_t>(percent), percent);
    Image gray(mask.size());
    gray.randomize(3);
    gray.fill([&](int32_t x, int32_t y) { return std::max<uint8_t>(gray.at(x, y), 1); });
    const oracle::Labels labels = oracle::floodFill(toMask(mask), 8);
    for (const uint32_t grayMode : {0u, 1u}) {
      BlobSelectCfg cfg = config();
      cfg.grayMode = grayMode;
      Scene scene(mask);
      for (const BlobInfo& blob : scene.select(cfg, gray)) {
        const oracle::Points points = oracle::pixelsOf(toMask(mask), labels, static_cast<int32_t>(blob.label));
        if (points.size() > 150) continue;  // the rectangle takes cubic time
        expectFeatures(blob, points, gray, grayMode != 0);
        EXPECT_EQ(blob.domain, &scene.list().domains[blob.label]);
      }
    }
  }
}

TEST(BlobFeatures, KnownContours) {
  struct Case {
    Image mask;
    int32_t axial, diagonal;
  };
  const Case cases[] = {
      {picture({"......", ".####.", ".####.", ".####.", "......"}), 10, 0},
      {picture({"#####"}), 8, 0},
      {picture({"#", "#", "#"}), 4, 0},
      {picture({"#..", ".#.", "..#"}), 0, 4},
      {picture({"..#..", ".###.", "#####", ".###.", "..#.."}), 0, 8},
      {picture({"#####", "#...#", "#...#", "#####"}), 14, 0},  // a hole adds nothing
      {picture({".#.", "###", ".#."}), 0, 4},
      {picture({"#..#", "####"}), 6, 2},                      // corners of the notch are cut
      {picture({"#.#", "#.#", "###"}), 8, 2},                 // into the notch, up the arm and down again
      {picture({"##...", "##...", "..##.", "..##."}), 8, 2},  // both passages of the shared corner
  };
  for (size_t i = 0; i < std::size(cases); ++i) {
    const Case& c = cases[i];
    EXPECT_FLOAT_EQ(only(c.mask).perimeter, static_cast<float>(c.diagonal) * 1.4142135f + static_cast<float>(c.axial))
        << "case " << i;
  }
}

// With 4-connectivity a neighbour that touches at a corner is another blob, and its pixels are not followed.
TEST(BlobFeatures, ContourKeepsToItsDomain) {
  const Image mask = picture({"##..", "##..", "..##", "..##"});
  Scene scene(mask, 4);
  const std::vector<BlobInfo> blobs = scene.select(config());
  ASSERT_EQ(blobs.size(), 2u);
  for (const BlobInfo& blob : blobs) EXPECT_EQ(blob.perimeter, 4);
}

TEST(BlobFeatures, OnePixel) {
  const BlobInfo blob = only(picture({"...", ".#.", "..."}));
  EXPECT_EQ(blob.area, 1);
  EXPECT_EQ(blob.perimeter, 1);
  EXPECT_EQ(blob.circularity, 1);
  EXPECT_EQ(blob.rectangularity, 1);
  EXPECT_EQ(blob.axisRatio, 1);
  EXPECT_EQ(blob.principalAngle, 0);
  EXPECT_EQ(blob.boxX, 1);
  EXPECT_EQ(blob.boxWidth, 0);
  EXPECT_EQ(blob.centralBias, 0);
  // Where the length is known before.
  const Image dot = picture({"#"});
  BlobSelectCfg cfg = config(DAXI_BLOB_BY_PERIMETER);
  cfg.perimeter = {0, 9};
  EXPECT_EQ(Scene(dot).select(cfg).at(0).circularity, 1);
}

// A bar at every angle: the long side first, the angle in its range, along the bar.
TEST(BlobFeatures, BoxOfRotatedBars) {
  for (int32_t degrees = -90; degrees <= 90; ++degrees) {
    const double a = degrees * std::numbers::pi / 180, c = std::cos(a), s = std::sin(a);
    Image mask({121, 121});
    mask.fill([&](int32_t x, int32_t y) {
      const double u = (x - 60) * c + (y - 60) * s, v = (y - 60) * c - (x - 60) * s;
      return std::fabs(u) <= 40 && std::fabs(v) <= 8 ? 1 : 0;
    });
    const BlobInfo blob = only(mask);
    EXPECT_NEAR(blob.boxX, 60, 0.75) << degrees;
    EXPECT_NEAR(blob.boxY, 60, 0.75) << degrees;
    EXPECT_NEAR(blob.boxWidth, 80, 1.5) << degrees;
    EXPECT_NEAR(blob.boxHeight, 16, 1.5) << degrees;
    EXPECT_GT(blob.boxAngle, -kPi / 2) << degrees;
    EXPECT_LE(blob.boxAngle, kPi / 2) << degrees;
    EXPECT_LT(lineDifference(blob.boxAngle, a), 0.02) << degrees;
    EXPECT_LT(lineDifference(blob.principalAngle, a), 0.02) << degrees;
  }
}

// Squares have no long side: the angle stays within an eighth of a turn, whatever the edge it came from.
TEST(BlobFeatures, BoxOfSquares) {
  EXPECT_EQ(only(picture({"###", "###", "###"})).boxAngle, 0);
  const BlobInfo diamond = only(picture({"..#..", ".###.", "#####", ".###.", "..#.."}));
  EXPECT_FLOAT_EQ(diamond.boxAngle, kPi / 4);
  EXPECT_FLOAT_EQ(diamond.boxWidth, std::sqrt(8.0f));
  EXPECT_EQ(diamond.boxWidth, diamond.boxHeight);
}

// Translation moves positions only; exchanging x and y exchanges them; a filled hole changes neither outline nor box.
TEST(BlobFeatures, Invariance) {
  const Image small = randomMask({9, 7}, 5, 70);
  Image moved({30, 40}), turned({7, 9});
  moved.fill(
      [&](int32_t x, int32_t y) { return x >= 11 && x < 20 && y >= 23 && y < 30 ? small.at(x - 11, y - 23) : 0; });
  turned.fill([&](int32_t x, int32_t y) { return small.at(y, x); });
  const auto largest = [](const Image& image) { return Scene(image).select(config())[0]; };
  const BlobInfo a = largest(small), b = largest(moved), c = largest(turned);
  EXPECT_EQ(b.rectX, a.rectX + 11);
  EXPECT_EQ(b.rectY, a.rectY + 23);
  EXPECT_NEAR(b.centroidX, a.centroidX + 11, 1e-4);
  EXPECT_NEAR(b.boxY, a.boxY + 23, 1e-4);
  EXPECT_EQ(b.perimeter, a.perimeter);
  EXPECT_EQ(b.boxAngle, a.boxAngle);
  EXPECT_NEAR(b.circularity, a.circularity, 1e-5);
  EXPECT_EQ(c.area, a.area);
  EXPECT_EQ(c.perimeter, a.perimeter);
  EXPECT_NEAR(c.centroidX, a.centroidY, 1e-4);
  EXPECT_EQ(c.rectWidth, a.rectHeight);
  EXPECT_NEAR(c.boxWidth, a.boxWidth, 1e-4);

  const BlobInfo ring = only(picture({"####", "#..#", "####"})), full = only(picture({"####", "####", "####"}));
  EXPECT_EQ(ring.perimeter, full.perimeter);
  EXPECT_EQ(ring.boxWidth, full.boxWidth);
  EXPECT_EQ(full.area, ring.area + 2);
}

// A region smaller than the labelled image: what lies outside is neither measured nor read.
TEST(BlobFeatures, RegionCutsDomains) {
  const Image mask = picture({"#####...", "#####...", "#####..#", ".......#"});
  Scene scene(mask);
  Image gray({4, 2}, 0, Guard::after);
  gray.fill([](int32_t, int32_t) { return 255; });
  for (const uint32_t grayMode : {0u, 1u}) {
    BlobSelectCfg cfg = config();
    cfg.grayMode = grayMode;
    const std::vector<BlobInfo> blobs = scene.select(cfg, gray);
    ASSERT_EQ(blobs.size(), 2u);
    EXPECT_FLOAT_EQ(blobs[0].area, 8);
    EXPECT_EQ(blobs[0].rectWidth, 4);
    EXPECT_EQ(blobs[0].perimeter, 8);
    EXPECT_EQ(blobs[1].area, 0);
    EXPECT_EQ(blobs[1].rectWidth, 0);
    EXPECT_EQ(blobs[1].circularity, 1);
  }
}

// A domain of many runs, and one that spans the widest image.
TEST(BlobFeatures, LargeDomains) {
  Image comb({3, 65536}), row({65536, 2});
  comb.fill([](int32_t x, int32_t y) { return x == 0 || y % 2 == 0; });
  row.fill([](int32_t, int32_t) { return 1; });
  const BlobInfo a = only(comb), b = only(row);
  EXPECT_EQ(a.area, 131072);
  EXPECT_EQ(a.rectHeight, 65536);
  EXPECT_EQ(b.area, 131072);
  EXPECT_FLOAT_EQ(b.centroidX, 32767.5f);
  EXPECT_FLOAT_EQ(b.boxWidth, 65535);
  EXPECT_FLOAT_EQ(b.perimeter, 131072);
}

}  // namespace
}  // namespace dax::test

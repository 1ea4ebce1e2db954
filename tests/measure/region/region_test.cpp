#include "daxi/region.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "measure/region/contour.h"
#include "tests/measure/blob/blob_scene.h"

namespace dax::test {
namespace {

using PointList = std::vector<DaxiPoint32s>;

oracle::Points toOracle(const PointList& points) {
  oracle::Points result;
  for (const DaxiPoint32s p : points) result.push_back({p.x, p.y});
  return result;
}

// Random domains: the hull turns one way only, its corners are pixels, and every pixel lies inside.
TEST(Region, HullsOfDomains) {
  for (uint64_t seed = 0; seed < 40; ++seed) {
    const Image image = randomMask({33, 21}, seed, 30 + static_cast<int32_t>(seed));
    const Scene scene(image);
    const oracle::Labels labels = oracle::floodFill(toMask(image), 8);
    for (uint32_t d = 0; d < scene.list().domainCount; ++d) {
      GuardedBuffer<DaxiPoint32s> hull(DAXI_HULL_POINTS(21));
      int32_t count = 0;
      ASSERT_EQ(_DAXI_DomainConvexHull_ROI(&scene.list(), &scene.list().domains[d], image.size(), hull.data(), &count),
                DAX_STS_OK);
      const oracle::Points pixels = oracle::pixelsOf(toMask(image), labels, static_cast<int32_t>(d));
      ASSERT_GE(count, 1);
      EXPECT_EQ((std::pair<double, double>(hull[0].x, hull[0].y)), pixels.front());
      for (int32_t i = 0; i < count; ++i) {
        const DaxiPoint32s a = hull[static_cast<size_t>(i)], b = hull[static_cast<size_t>((i + 1) % count)];
        EXPECT_EQ(std::count(pixels.begin(), pixels.end(), std::pair<double, double>(a.x, a.y)), 1);
        int onEdge = 0;
        for (const auto& [x, y] : pixels) {
          const double turn = (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x);
          EXPECT_GE(turn, 0);
          onEdge += turn == 0;
        }
        EXPECT_TRUE(count <= 2 || onEdge < static_cast<int>(pixels.size()));
      }
    }
  }
}

// Of random domains over several words: a closed chain through the pixels beside the outer background, those of other
// domains among it; nothing stays on the bitmap.
TEST(Region, ContoursOfDomains) {
  for (uint64_t seed = 0; seed < 12; ++seed) {
    const Image image = randomMask({150, 11}, seed, 20 + 7 * static_cast<int32_t>(seed));
    const DaxiSize size = image.size();
    const Scene scene(image);
    const oracle::Labels labels = oracle::floodFill(toMask(image), 8);
    GuardedBuffer<uint8_t> memory(DomainBitmap::bytes(size));
    const DomainBitmap bitmap(memory.data(), size);
    bitmap.clear(size);
    for (uint32_t d = 0; d < scene.list().domainCount; ++d) {
      // The background that goes on to the outside, with a margin.
      oracle::Mask outside{size.width + 2, size.height + 2, {}};
      for (int32_t y = -1; y <= size.height; ++y) {
        for (int32_t x = -1; x <= size.width; ++x) {
          const bool isInside = x >= 0 && y >= 0 && x < size.width && y < size.height;
          const bool isOwn = isInside && labels.of[static_cast<size_t>(y * size.width + x)] == static_cast<int32_t>(d);
          outside.pixels.push_back(!isOwn);
        }
      }
      const oracle::Labels background = oracle::floodFill(outside, 4);
      const auto isOutside = [&](int32_t x, int32_t y) {
        return background.of[static_cast<size_t>((y + 1) * (size.width + 2) + x + 1)] == 0;
      };
      std::set<std::pair<int32_t, int32_t>> expected, visited;
      for (const auto& [px, py] : oracle::pixelsOf(toMask(image), labels, static_cast<int32_t>(d))) {
        const auto x = static_cast<int32_t>(px), y = static_cast<int32_t>(py);
        if (isOutside(x - 1, y) || isOutside(x + 1, y) || isOutside(x, y - 1) || isOutside(x, y + 1)) {
          expected.insert({x, y});
        }
      }
      const DaxiDomain& domain = scene.list().domains[d];
      int32_t atX = domain.head.start, atY = domain.head.row;
      const RunSpan first =
          forEachContourPoint(viewDomain(scene.list(), domain, size), bitmap, [&](uint8_t code, int32_t x, int32_t y) {
            ASSERT_EQ(x - atX, kChainX[code]);
            ASSERT_EQ(y - atY, kChainY[code]);
            ASSERT_LT(visited.size(), 4 * expected.size() + 1);
            visited.insert({atX = x, atY = y});
          });
      EXPECT_EQ(first.row, domain.head.row);
      EXPECT_TRUE(atX == first.start && atY == first.row);
      if (expected.size() == 1) visited.insert({first.start, first.row});  // no step at all
      ASSERT_EQ(visited, expected) << seed << ", " << d;
      ASSERT_EQ(std::count(memory.begin(), memory.end(), 0), static_cast<ptrdiff_t>(memory.size()))
          << seed << ", " << d;
    }
  }
  const Image right = picture({"..##"});
  const Scene scene(right);
  GuardedBuffer<uint8_t> memory(DomainBitmap::bytes({2, 1}), Guard::after, 0);
  const auto nothing = [](uint8_t, int32_t, int32_t) {};
  const DomainView view = viewDomain(scene.list(), scene.list().domains[0], {2, 1});
  EXPECT_EQ(forEachContourPoint(view, DomainBitmap(memory.data(), {2, 1}), nothing).row, -1);
}

DaxiRotatedBox boxAround(const PointList& points, int32_t mode) {
  uint64_t bytes = 0;
  EXPECT_EQ(_DAXI_PtEncloseBoxBufferSize_32s(static_cast<int32_t>(points.size()), &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  DaxiRotatedBox box = {};
  EXPECT_EQ(_DAXI_PtEncloseBox_32s(points.data(), static_cast<int32_t>(points.size()), mode, &box, buffer.data()),
            DAX_STS_OK);
  return box;
}

// Points in any order, duplicates and lines among them: as small as brute force can, and around all points.
TEST(Region, BoxesAroundPoints) {
  Random random(2);
  for (int round = 0; round < 300; ++round) {
    PointList points(static_cast<size_t>(1 + random.below(25)));
    const int32_t spread = 1 + random.below(40), flat = round % 7 == 0 ? 1 : spread;
    for (DaxiPoint32s& p : points) p = {random.below(spread) - 20, random.below(flat) + 1000};
    const DaxiRotatedBox min = boxAround(points, DAXI_BOX_MIN_AREA), narrow = boxAround(points, DAXI_BOX_MIN_PERIMETER);
    const double best = oracle::minBoxArea(toOracle(points));
    EXPECT_NEAR(min.width * min.height, std::isinf(best) ? 0 : best, 1e-3);
    EXPECT_LE(narrow.width + narrow.height, min.width + min.height + 1e-4);
    for (const DaxiRotatedBox& box : {min, narrow}) {
      EXPECT_GE(box.width, box.height);
      for (const DaxiPoint32s p : points) {
        const double dx = p.x - box.x, dy = p.y - box.y, c = std::cos(box.angle), s = std::sin(box.angle);
        EXPECT_LE(std::fabs(dx * c + dy * s), box.width / 2 + 1e-3);
        EXPECT_LE(std::fabs(dy * c - dx * s), box.height / 2 + 1e-3);
      }
    }
  }
  const DaxiRotatedBox far =
      boxAround({{-(1 << 19), -(1 << 19)}, {1 << 19, 1 << 19}, {1 << 19, -(1 << 19)}}, DAXI_BOX_MIN_AREA);
  EXPECT_FLOAT_EQ(far.width * far.height, 1048576.0f * 1048576.0f);
}

TEST(Region, ModesAndTies) {
  // A right triangle with sides 3, 4, 5: area 12 along any edge; half perimeter 7 along the short ones, 7.4 along the
  // long.
  const PointList triangle = {{0, 0}, {4, 0}, {0, 3}};
  DaxiRotatedBox box;
  ASSERT_EQ(DAXI_REG_EncloseBox(triangle.data(), 3, DAXI_BOX_MIN_AREA, &box), DAX_STS_OK);
  EXPECT_FLOAT_EQ(box.width, 4);
  EXPECT_EQ(box.angle, 0);  // the last of the equal ones: the edge from (0, 3) to (0, 0)
  const PointList turned = {{0, 0}, {0, 3}, {-4, 0}};
  ASSERT_EQ(DAXI_REG_EncloseBox(turned.data(), 3, DAXI_BOX_MIN_PERIMETER, &box), DAX_STS_OK);
  EXPECT_FLOAT_EQ(box.width + box.height, 7);
  EXPECT_FLOAT_EQ(box.x, -2);
  EXPECT_FLOAT_EQ(box.y, 1.5f);
}

TEST(Region, DomainMeasuresAndChecks) {
  const Image image = picture({"####", "####", "#...", "...#"});
  const Scene scene(image, 4);
  const DaxiDomain &shape = scene.list().domains[0], &dot = scene.list().domains[1];
  GuardedBuffer<DaxiPoint32s> points(DAXI_HULL_POINTS(4));
  DaxiRotatedBox box;
  float fill = 0;
  ASSERT_EQ(_DAXI_DomainEncloseBox(&scene.list(), &shape, {4, 4}, DAXI_BOX_MIN_AREA, points.data(), &box), DAX_STS_OK);
  EXPECT_EQ(box.width, 3);
  EXPECT_EQ(box.height, 2);
  ASSERT_EQ(_DAXI_DomainRectangularity(&scene.list(), &shape, {4, 4}, points.data(), &fill), DAX_STS_OK);
  EXPECT_EQ(fill, 1);  // nine pixels, six square pixels between centres
  ASSERT_EQ(_DAXI_DomainEncloseBox(&scene.list(), &shape, {2, 4}, DAXI_BOX_MIN_AREA, points.data(), &box), DAX_STS_OK);
  EXPECT_EQ(box.height, 1);  // cut at the region
  ASSERT_EQ(_DAXI_DomainEncloseBox(&scene.list(), &dot, {2, 2}, DAXI_BOX_MIN_AREA, points.data(), &box), DAX_STS_OK);
  EXPECT_EQ(box.width + box.x + box.y, 0);
  ASSERT_EQ(_DAXI_DomainRectangularity(&scene.list(), &dot, {2, 2}, points.data(), &fill), DAX_STS_OK);
  EXPECT_EQ(fill, 1);

  ASSERT_EQ(_DAXI_DomainEncloseBox(&scene.list(), &shape, {1, 1}, DAXI_BOX_MIN_AREA, points.data(), &box), DAX_STS_OK);
  EXPECT_EQ(_DAXI_DomainEncloseBox(&scene.list(), &shape, {65537, 4}, 1, points.data(), &box), DAX_STS_BAD_SIZE);

  const DaxiPoint32s far = {(1 << 19) + 1, 0};
  EXPECT_EQ(DAXI_REG_EncloseBox(&far, 1, 1, &box), DAX_STS_DATA_RANGE);
}

}  // namespace
}  // namespace dax::test

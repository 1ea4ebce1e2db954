#include "calib/board/chessboard_subpix.h"

#include <gtest/gtest.h>

#include <limits>

#include "calib/board/board_image.h"
#include "daxi/chessboard_subpix.h"
#include "tests/calib/board/board_image.h"

namespace dax::test {
namespace {

using Image = TestImage<uint8_t>;
using Refine = DaxStatus (*)(const uint8_t*, int32_t, DaxiSize, const DaxiPoint32f*, int32_t, DaxiSize, int32_t,
                             DaxiPoint32f*, float);
constexpr Refine kForms[] = {DAXI_ChessboardCornerGetSubpix_8u_C1R, DAXI_ChessboardCornerGetSubpix_8u_C1R_v2};

// A smooth saddle: both edges blurred, crossing at (x, y) under the given angles.
Image saddle(DaxiSize size, double x, double y, double angle, double between, Guard guard = Guard::after) {
  Image image(size, 3, guard);
  const double nx = -std::sin(angle), ny = std::cos(angle), mx = -std::sin(angle + between),
               my = std::cos(angle + between);
  image.fill([&](int32_t u, int32_t v) {
    const double a = std::tanh(nx * (u - x) + ny * (v - y)), b = std::tanh(mx * (u - x) + my * (v - y));
    return std::floor(128 + 90 * a * b + 0.5);
  });
  return image;
}

DaxiPoint32f refine(Refine form, const Image& image, DaxiPoint32f start, DaxiSize half, int32_t maxIter = 30) {
  DaxiPoint32f refined{-1, -1};
  EXPECT_EQ(form(image.data(), image.step(), image.size(), &start, 1, half, maxIter, &refined, 1e-6f), DAX_STS_OK);
  return refined;
}

TEST(GetSubpix, FindsSaddlesWhateverWindowAndStart) {
  const struct {
    DaxiSize half;
    double tolerance;
  } cases[] = {{{2, 2}, 0.1}, {{5, 5}, 0.04}, {{7, 3}, 0.05}, {{4, 20}, 0.05}, {{50, 50}, 0.04}};
  for (const Refine form : kForms) {
    for (const auto& c : cases) {
      for (int32_t i = 0; i < 24; ++i) {
        const double x = 58.3 + 0.17 * i, y = 60.9 - 0.11 * i, angle = 0.26 * i;
        const Image image = saddle({121, 119}, x, y, angle, 1.57 - 0.02 * i);
        const auto start = DaxiPoint32f{static_cast<float>(x) + 0.9f, static_cast<float>(y) - 0.7f};
        const DaxiPoint32f found = refine(form, image, start, c.half);
        EXPECT_NEAR(found.x, x, c.tolerance) << c.half.width << " " << i;
        EXPECT_NEAR(found.y, y, c.tolerance) << c.half.width << " " << i;
      }
    }
  }
}

// The image ends within the patch: corners one pixel from every edge, either end of the memory forbidden.
TEST(GetSubpix, AtTheImageEdgesAndWithinTheImageMemory) {
  for (const Guard guard : kGuards) {
    for (const auto& [x, y] : {PlanePoint{1.2, 40}, {78.1, 39.6}, {40.4, 1.3}, {40, 67.9}, {1, 1}, {78, 68}}) {
      const Image image = saddle({80, 70}, x, y, 0.4, 1.5, guard);
      for (const DaxiSize half : {DaxiSize{3, 3}, {50, 50}}) {
        const auto start = DaxiPoint32f{static_cast<float>(x), static_cast<float>(y)};
        const DaxiPoint32f found = refine(DAXI_ChessboardCornerGetSubpix_8u_C1R, image, start, half);
        EXPECT_LE(std::fabs(found.x - start.x), half.width);
        EXPECT_LE(std::fabs(found.y - start.y), half.height);
      }
    }
  }
}

TEST(GetSubpix, KeepsTheInputWhereThereIsNoCorner) {
  Image constant({64, 64});
  constant.fill([](int32_t, int32_t) { return 77; });
  const Image far = saddle({128, 64}, 64, 32, 0.1, 1.5);
  const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
  for (const Refine form : kForms) {
    const auto keeps = [&](const Image& image, DaxiPoint32f p, int32_t maxIter = 10) {
      const DaxiPoint32f found = refine(form, image, p, {5, 5}, maxIter);
      EXPECT_TRUE(sameBits(found, p)) << p.x << ", " << p.y << ": " << found.x << ", " << found.y;
    };
    keeps(constant, {30.25f, 31.5f});
    // The saddle draws, but it is out of reach.
    keeps(far, {58.5f, 32});
    for (const float v : {nan, inf, -inf, 1e30f, -1e9f, 200.0f, -8.5f}) {
      keeps(far, {v, 32});
      keeps(far, {64, v});
    }
  }
  // A straight edge is no corner for the second form.
  Image edge({64, 64});
  edge.fill([](int32_t x, int32_t y) { return x + y / 4 > 40 ? 200 : 20; });
  const DaxiPoint32f start{33, 30};
  EXPECT_TRUE(sameBits(refine(kForms[1], edge, start, {5, 5}), start));
}

TEST(GetSubpix, BoardsToATwentiethOfAPixel) {
  struct Case {
    BoardView view;
    double mean;
  };
  std::vector<Case> cases;
  for (int32_t i = 0; i < 12; i += 2) {
    BoardView view;
    view.rotation = 31 * i;
    view.tilt = 4 * i;
    view.tiltAxis = 50 * i;
    view.blur = 0.7 + 0.1 * i;
    view.size = {800, 600};
    cases.push_back({view, 0.05});
    view.noise = 5;
    view.seed = static_cast<uint64_t>(i);
    cases.push_back({view, 0.1});
  }
  for (const Case& c : cases) {
    const BoardImage board(c.view);
    std::vector<DaxiPoint32f> points;
    Random random(c.view.seed);
    for (const PlanePoint& p : board.corners) {
      points.push_back(
          {static_cast<float>(p.x + random.below(5) * 0.5 - 1), static_cast<float>(p.y + random.below(5) * 0.5 - 1)});
    }
    ASSERT_EQ(kForms[0](board.image.data(), board.image.step(), board.image.size(), points.data(),
                        static_cast<int32_t>(points.size()), {8, 8}, 20, points.data(), 1e-5f),
              DAX_STS_OK);
    double sum = 0;
    for (size_t i = 0; i < points.size(); ++i) {
      sum += std::hypot(points[i].x - board.corners[i].x, points[i].y - board.corners[i].y);
    }
    EXPECT_LE(sum / static_cast<double>(points.size()), c.mean) << c.view.rotation << " " << c.view.noise;
  }
}

// A single grey level seen through 1/128 of a pixel in the last row and column of the patch is enough.
TEST(GetSubpix, FaintGradientsCount) {
  Image image({64, 64});
  image.fill([](int32_t x, int32_t y) { return x >= 36 || y >= 36; });
  const DaxiPoint32f found = refine(kForms[0], image, {30.0078125f, 30.0078125f}, {4, 4}, 1);
  EXPECT_EQ(found.x, 34.0078125f);
  EXPECT_EQ(found.y, 34.0078125f);
}

TEST(Common, EveryThirdPixel) {
  Image image({27, 9}, 1), sampled({9, 3}, 2);
  image.randomize(7);
  DAXI_Commom_sample_img(image.data(), image.step(), sampled.data(), sampled.step(), sampled.size(), 3);
  for (int32_t i = 0; i < 27; ++i) EXPECT_EQ(sampled.at(i % 9, i / 9), image.at(3 * (i % 9), 3 * (i / 9)));
}

TEST(Edges, DirectionsAndPolarityAroundACorner) {
  for (int32_t i = 0; i < 40; ++i) {
    const double angle = 0.157 * i, between = 0.8 + 0.04 * i;
    const Image image = saddle({64, 64}, 31.7, 30.2, angle, between);
    CornerEdges edges;
    ASSERT_TRUE(DAXI_Common_around_edge_orit(image.data(), image.step(), image.size(), {31.7f, 30.2f}, 8, 10, &edges));
    // Between angle and angle + between the product of the two sides is negative: dark.
    const auto cross = [](DaxiPoint32f d, double a) { return std::fabs(d.x * std::sin(a) - d.y * std::cos(a)); };
    EXPECT_LT(cross(edges.intoDark, angle), 0.06) << i;
    EXPECT_LT(cross(edges.intoLight, angle + between), 0.06) << i;
  }
}

}  // namespace
}  // namespace dax::test

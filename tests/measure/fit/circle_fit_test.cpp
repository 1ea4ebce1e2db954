// Circles through points, some of which do not belong.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "daxi.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

enum Method { algebraic, geometric, consensus };

template <class Point>
auto circleMember(Method method) {
  if constexpr (std::is_same_v<Point, DaxiPoint16s>) {
    return method == algebraic   ? DAXI_CircleFitRegre_16s32f
           : method == geometric ? DAXI_CircleFitLeastSquare_16s32f
                                 : DAXI_CircleFitRansac_16s32f;
  } else if constexpr (std::is_same_v<Point, DaxiPoint32s>) {
    return method == algebraic   ? DAXI_CircleFitRegre_32s32f
           : method == geometric ? DAXI_CircleFitLeastSquare_32s32f
                                 : DAXI_CircleFitRansac_32s32f;
  } else {
    return method == algebraic   ? DAXI_CircleFitRegre_32f
           : method == geometric ? DAXI_CircleFitLeastSquare_32f
                                 : DAXI_CircleFitRansac_32f;
  }
}

struct FoundCircle {
  DaxStatus status;
  DaxiCircleFit circle;
  std::vector<uint8_t> inliers;
  std::vector<float> weights;
};

CircleFitCfg standard(int32_t weights = DAXI_CIRCLE_LEAST_SQUARES, double threshold = 0) {
  CircleFitCfg cfg;
  DAXI_CircleFitDefaultCfg(&cfg);
  cfg.weightFunction = weights, cfg.distanceThreshold = threshold;
  if (threshold > 0) cfg.inlierDistance = threshold;
  return cfg;
}

template <class Point>
FoundCircle fitCircle(Method method, const std::vector<Point>& points, const CircleFitCfg& cfg) {
  const auto n = static_cast<int32_t>(points.size());
  uint64_t bytes = 0;
  EXPECT_EQ(DAXI_CircleFitBufferSize(n, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  FoundCircle found{0, {}, std::vector<uint8_t>(points.size(), 7), std::vector<float>(points.size(), 7)};
  found.status = circleMember<Point>(method)(points.data(), n, &cfg, &found.circle, found.inliers.data(),
                                             found.weights.data(), buffer.data());
  return found;
}

// Normal deviates by the sum of twelve uniform ones.
double normal(Random& random) {
  double sum = -6;
  for (int i = 0; i < 12; ++i) sum += random.below(1 << 20) * 0x1p-20;
  return sum;
}

struct Scene {
  double x, y, r;
  int32_t count;
  double arc = 2 * kPi;
  double noise = 0;
  int32_t everyStray = 0;  // every so many a point that does not belong; 0: none
};

std::vector<DaxiPoint32f> pointsOf(const Scene& scene, uint64_t seed) {
  Random random(seed);
  std::vector<DaxiPoint32f> points;
  for (int32_t i = 0; i < scene.count; ++i) {
    const double angle = 0.3 + scene.arc * i / (scene.arc < 6 ? scene.count - 1 : scene.count);
    const bool isStray = scene.everyStray > 0 && i % scene.everyStray == 0;
    const double r =
        isStray ? scene.r * (0.2 + random.below(1000) * 1e-3 * 0.6) : scene.r + scene.noise * normal(random);
    points.push_back(
        {static_cast<float>(scene.x + r * std::cos(angle)), static_cast<float>(scene.y + r * std::sin(angle))});
  }
  return points;
}

double squaresAbout(const std::vector<DaxiPoint32f>& points, double x, double y, double r) {
  double sum = 0;
  for (const DaxiPoint32f& p : points) {
    const double d = std::hypot(p.x - x, p.y - y) - r;
    sum += d * d;
  }
  return sum;
}

TEST(CircleFit, ExactPoints) {
  for (const Method method : {algebraic, geometric, consensus}) {
    for (const double arc : {2 * kPi, 0.5}) {
      const FoundCircle found =
          fitCircle(method, pointsOf({120, -40, 37.5, 60, arc}, 1), standard(DAXI_CIRCLE_LEAST_SQUARES, 0.1));
      ASSERT_EQ(found.status, DAX_STS_OK) << method;
      const double tolerance = arc > 6 ? 1e-5 : 1e-3;  // coordinates have 24 bits
      EXPECT_NEAR(found.circle.x, 120, tolerance);
      EXPECT_NEAR(found.circle.y, -40, tolerance);
      EXPECT_NEAR(found.circle.r, 37.5, tolerance);
      EXPECT_LT(found.circle.maxAbs, 1e-5);
      EXPECT_NEAR(found.circle.arc, arc > 6 ? arc * 59 / 60 : arc, 1e-3);
      EXPECT_EQ(found.circle.used, 60);
      EXPECT_EQ(found.circle.dof, 57);
    }
  }
  // Far away, in integers: (3, 4, 5) and its reflections.
  std::vector<DaxiPoint32s> far;
  std::vector<DaxiPoint16s> near;
  for (const auto& [dx, dy] : {std::pair{3, 4}, {4, 3}, {-3, 4}, {-5, 0}, {0, -5}, {4, -3}, {5, 0}}) {
    far.push_back({2000000000 + dx, -2000000000 + dy});
    near.push_back({static_cast<int16_t>(30000 + dx), static_cast<int16_t>(-30000 + dy)});
  }
  for (const Method method : {algebraic, geometric, consensus}) {
    const FoundCircle a = fitCircle(method, far, standard(1, 0.01)), b = fitCircle(method, near, standard(1, 0.01));
    EXPECT_NEAR(a.circle.x, 2e9, 1e-6);
    EXPECT_NEAR(a.circle.r, 5, 1e-9);
    EXPECT_NEAR(b.circle.y, -3e4, 1e-10);
    EXPECT_NEAR(b.circle.r, 5, 1e-10);
  }
}

// The geometric fit has the least squares; the algebraic one no essential bias; errors are those that repetition shows.
TEST(CircleFit, NoiseAndItsErrors) {
  constexpr int32_t kFits = 2000;
  constexpr double kNoise = 3, kRadius = 100;
  double bias[2] = {}, spread[3] = {}, told[3] = {}, product = 0, covariance = 0;
  for (int32_t k = 0; k < kFits; ++k) {
    const std::vector<DaxiPoint32f> points =
        pointsOf({10, 20, kRadius, 20, 2 * kPi, kNoise}, 100 + static_cast<uint64_t>(k));
    for (const Method method : {algebraic, geometric}) {
      const FoundCircle found = fitCircle(method, points, standard());
      ASSERT_EQ(found.status, DAX_STS_OK);
      bias[method] += (found.circle.r - kRadius) / kFits;
      if (method == algebraic || k >= 50) continue;
      const DaxiCircleFit& c = found.circle;
      const double least = squaresAbout(points, c.x, c.y, c.r);
      EXPECT_NEAR(c.rms, std::sqrt(least / 20), 1e-9);
      for (const double by : {-1e-4, 1e-4}) {
        EXPECT_GT(squaresAbout(points, c.x + by, c.y, c.r), least);
        EXPECT_GT(squaresAbout(points, c.x, c.y + by, c.r), least);
        EXPECT_GT(squaresAbout(points, c.x, c.y, c.r + by), least);
      }
    }
    const FoundCircle part =
        fitCircle(geometric, pointsOf({10, 20, kRadius, 40, 2, 0.5}, 5000 + static_cast<uint64_t>(k)), standard());
    const double errors[] = {part.circle.x - 10, part.circle.y - 20, part.circle.r - kRadius};
    for (int i = 0; i < 3; ++i) {
      spread[i] += errors[i] * errors[i] / kFits;
      told[i] += part.circle.se[i] * part.circle.se[i] / kFits;
    }
    product += errors[0] * errors[2] / kFits, covariance += part.circle.cov[1] / kFits;
  }
  const double unit = kNoise * kNoise / kRadius, chance = 3 * kNoise / std::sqrt(20.0 * kFits);
  EXPECT_NEAR(bias[algebraic], 0, chance);
  EXPECT_NEAR(bias[geometric], unit / 2, chance);
  for (int i = 0; i < 3; ++i) EXPECT_NEAR(spread[i] / told[i], 1, 0.12) << i;
  EXPECT_NEAR(product / covariance, 1, 0.12);
}

TEST(CircleFit, StraysTakeNoPart) {
  const std::vector<DaxiPoint32f> points = pointsOf({50, 60, 40, 120, 2 * kPi, 0.1, 5}, 3);
  const auto expectFound = [&](const FoundCircle& found, const char* what) {
    ASSERT_EQ(found.status, DAX_STS_OK) << what;
    EXPECT_NEAR(found.circle.x, 50, 0.05) << what;
    EXPECT_NEAR(found.circle.r, 40, 0.05) << what;
    EXPECT_NEAR(found.circle.sigma, 0.1, 0.03) << what;
    for (size_t i = 0; i < points.size(); i += 5) EXPECT_EQ(found.inliers[i], 0) << what << i;
    EXPECT_EQ(found.circle.used, std::count(found.inliers.begin(), found.inliers.end(), 1)) << what;
    for (size_t i = 0; i < points.size(); ++i) EXPECT_EQ(found.weights[i] > 0, found.inliers[i] == 1);
    EXPECT_GT(found.circle.used, 90) << what;
  };
  for (const Method method : {algebraic, geometric}) {
    expectFound(fitCircle(method, points, standard(DAXI_CIRCLE_TUKEY)), "Tukey");
    expectFound(fitCircle(method, points, standard(DAXI_CIRCLE_HUBER)), "Huber");
    CircleFitCfg cfg = standard();
    cfg.maxRejected = 24;
    expectFound(fitCircle(method, points, cfg), "rejection");
  }
  expectFound(fitCircle(consensus, points, standard(1, 0.4)), "consensus");
  // Half of the points exact: their median distance is 0, the others stay (minScale).
  std::vector<DaxiPoint32f> exact = pointsOf({0, 0, 64, 40}, 4);
  for (size_t i = 0; i < exact.size(); i += 3) exact[i].x *= 1.0001f, exact[i].y *= 1.0001f;
  EXPECT_EQ(fitCircle(geometric, exact, standard(DAXI_CIRCLE_TUKEY)).circle.used, 40);
}

TEST(CircleFit, PlacesAndOrdersChangeNothing) {
  std::vector<DaxiPoint32f> points = pointsOf({8, 9, 64, 50, 3, 0.5, 7}, 5);
  for (DaxiPoint32f& p : points) p = {std::round(p.x * 64) / 64, std::round(p.y * 64) / 64};
  std::vector<DaxiPoint32f> moved, reversed(points.rbegin(), points.rend());
  for (const DaxiPoint32f& p : points) moved.push_back({p.x + 65536, p.y - 32768});
  for (const Method method : {algebraic, geometric}) {
    const DaxiCircleFit a = fitCircle(method, points, standard(DAXI_CIRCLE_TUKEY)).circle;
    const DaxiCircleFit b = fitCircle(method, moved, standard(DAXI_CIRCLE_TUKEY)).circle;
    const DaxiCircleFit c = fitCircle(method, reversed, standard(DAXI_CIRCLE_TUKEY)).circle;
    EXPECT_NEAR(b.x - 65536, a.x, 1e-9);
    EXPECT_NEAR(b.r, a.r, 1e-9);
    EXPECT_NEAR(c.y, a.y, 1e-10);
    EXPECT_NEAR(c.se[2], a.se[2], 1e-10);
  }
}

TEST(CircleFit, FailuresSaySo) {
  const auto status = [](Method method, const std::vector<DaxiPoint32f>& points, const CircleFitCfg& cfg) {
    const FoundCircle found = fitCircle(method, points, cfg);
    EXPECT_TRUE(found.status == DAX_STS_OK ||
                (found.inliers[0] == 7 && found.weights[0] == 7 && found.circle.used == 0));
    return found.status;
  };
  const std::vector<DaxiPoint32f> line = {{0, 0}, {1, 2}, {2, 4}, {7, 14}, {11, 22}}, same(5, {3, 3});
  const std::vector<DaxiPoint32f> two = {{0, 0}, {1, 1}, {kNan, 0}, {0, kNan}};
  for (const Method method : {algebraic, geometric}) {
    for (const auto& points : {line, same, two}) EXPECT_EQ(status(method, points, standard(1, 1)), DAX_STS_DEGENERATE);
  }
  EXPECT_EQ(status(consensus, line, standard(1, 1)), DAX_STS_LEAST_SQUARES);
  EXPECT_EQ(status(consensus, two, standard(1, 1)), DAX_STS_DEGENERATE);
  const std::vector<DaxiPoint32f> circle = pointsOf({0, 0, 20, 30}, 6);
  CircleFitCfg cfg = standard(1, 0.5);
  cfg.minRadius = 21;
  for (const Method method : {algebraic, geometric, consensus})
    EXPECT_EQ(status(method, circle, cfg), DAX_STS_LEAST_SQUARES);
  cfg.minRadius = 0, cfg.distanceThreshold = 0;
  cfg.maxRejected = 28;
  EXPECT_EQ(status(geometric, circle, cfg), DAX_STS_LEAST_SQUARES);
  // Three points: a circle, of unknown error.
  const FoundCircle three = fitCircle(geometric, std::vector<DaxiPoint32f>{{0, 0}, {4, 0}, {0, 4}}, standard());
  EXPECT_NEAR(three.circle.r, std::sqrt(8.0), 1e-12);
  EXPECT_EQ(three.circle.se[0], INFINITY);
  // A limit that was reached is told.
  CircleFitCfg hasty = standard(DAXI_CIRCLE_TUKEY);
  hasty.maxIterations = 1;
  EXPECT_EQ(fitCircle(geometric, pointsOf({0, 0, 20, 50, 6.2, 0.5, 4}, 7), hasty).circle.flags,
            uint32_t{DAXI_CIRCLE_LIMIT});
}

}  // namespace
}  // namespace dax::test

// Lines, circles, planes and spheres among points.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "prmt.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
using Find = int32_t (*)(const T*, int32_t, int32_t, const PrmtSacCfg*, PrmtSacResult*, uint8_t*, void*);

struct Shape {
  const char* name;
  int32_t dimension;
  double truth[4];
  Find<double> find64;
  Find<float> find32;
};

constexpr Shape kShapes[] = {
    {"line", 2, {0.6, 0.8, -30}, PRMT_SAC_Line2_f64, PRMT_SAC_Line2_f32},
    {"circle", 2, {40, 60, 35}, PRMT_SAC_Circle_f64, PRMT_SAC_Circle_f32},
    {"plane", 3, {0.36, 0.48, 0.8, -60}, PRMT_SAC_Plane_f64, PRMT_SAC_Plane_f32},
    {"sphere", 3, {50, 40, 60, 30}, PRMT_SAC_Sphere_f64, PRMT_SAC_Sphere_f32},
};

bool isFlat(const Shape& shape) {
  return shape.name[0] == 'l' || shape.name[0] == 'p';
}

double distanceOf(const Shape& shape, const double* model, const double* p) {
  double sum = isFlat(shape) ? model[shape.dimension] : 0;
  for (int32_t d = 0; d < shape.dimension; ++d) {
    sum += isFlat(shape) ? model[d] * p[d] : (p[d] - model[d]) * (p[d] - model[d]);
  }
  return std::fabs(isFlat(shape) ? sum : std::sqrt(sum) - model[shape.dimension]);
}

double uniform(Random& random) {
  return random.below(1 << 24) * 0x1p-24;
}

// A point of the cube of side 100, moved to a distance of at most `noise` from the shape.
void moveTo(const Shape& shape, double noise, Random& random, double* p) {
  const double* const model = shape.truth;
  double sum = 0;
  for (int32_t d = 0; d < shape.dimension; ++d) {
    sum += isFlat(shape) ? model[d] * p[d] : (p[d] - model[d]) * (p[d] - model[d]);
  }
  const double error = noise * (2 * uniform(random) - 1), radius = std::sqrt(sum);
  for (int32_t d = 0; d < shape.dimension; ++d) {
    if (isFlat(shape)) p[d] -= model[d] * (sum + model[shape.dimension] - error);
    if (!isFlat(shape)) p[d] = model[d] + (p[d] - model[d]) / radius * (model[shape.dimension] + error);
  }
}

// Every second point lies on the shape; all are moved by `offset`; one element of padding.
template <class T>
std::vector<T> scene(const Shape& shape, int32_t n, double noise, double offset) {
  Random random(31);
  std::vector<T> points;
  for (int32_t i = 0; i < n; ++i) {
    double p[3];
    for (double& coordinate : p) coordinate = 100 * uniform(random);
    if (i % 2 == 1) moveTo(shape, noise, random, p);
    for (int32_t d = 0; d < shape.dimension; ++d) points.push_back(static_cast<T>(p[d] + offset));
    points.push_back(T(NAN));
  }
  return points;
}

template <class T>
int32_t find(const Shape& shape, const std::vector<T>& points, const PrmtSacCfg& cfg, PrmtSacResult* result,
             std::vector<uint8_t>* mask) {
  const int32_t step = shape.dimension + 1, n = static_cast<int32_t>(points.size()) / step;
  uint64_t bytes = 0;
  EXPECT_EQ(PRMT_SAC_ShapeBufferSize(n, &cfg, 1, &bytes), 0);
  GuardedBuffer<uint8_t> buffer(bytes);
  mask->assign(size_t(n), 7);
  if constexpr (sizeof(T) == 8) {
    return shape.find64(points.data(), step, n, &cfg, result, mask->data(), buffer.data());
  } else {
    return shape.find32(points.data(), step, n, &cfg, result, mask->data(), buffer.data());
  }
}

template <class T>
void checkShape(const Shape& shape, double offset) {
  constexpr int32_t kN = 2001;
  constexpr double kNoise = 0.3;
  PrmtSacCfg cfg;
  PRMT_SAC_DefaultCfg(&cfg);
  cfg.threshold = 0.4;
  std::vector<T> points = scene<T>(shape, kN, kNoise, offset);
  points[static_cast<size_t>(shape.dimension + 1)] = T(INFINITY);  // an inlier no more
  PrmtSacResult result;
  std::vector<uint8_t> mask;
  ASSERT_EQ(find(shape, points, cfg, &result, &mask), 0) << shape.name;
  const double coarse = sizeof(T) == 4 ? 1e-6 * offset : 0;
  double squares = 0, p[3];
  const auto sumAround = [&](int32_t changed, double by) {
    double model[4], sum = 0;
    std::copy_n(result.model, 4, model);
    model[changed] += by;
    for (int32_t i = 0; i < kN; ++i) {
      for (int32_t d = 0; d < shape.dimension; ++d) p[d] = double{points[size_t(i * (shape.dimension + 1) + d)]};
      const double distance = distanceOf(shape, model, p);
      if (mask[size_t(i)]) sum += distance * distance;
    }
    return sum;
  };
  squares = sumAround(0, 0);
  EXPECT_LT(std::sqrt(squares / result.inliers), kNoise);
  for (int32_t i = 1; i < kN; i += 2) EXPECT_EQ(mask[size_t(i)], i > 1) << shape.name << i;
  EXPECT_EQ(result.inliers, std::count(mask.begin(), mask.end(), 1));
  for (int32_t d = 0; d < shape.dimension; ++d) {
    const double truth = isFlat(shape) ? shape.truth[d] : shape.truth[d] + offset;
    EXPECT_NEAR(result.model[d], truth, isFlat(shape) ? 2e-3 : 0.1 + coarse) << shape.name;
  }
  // The least sum of squares: no other offset or radius is better.
  if (coarse > 0) return;
  for (const double by : {-1e-4, 1e-4}) EXPECT_GT(sumAround(shape.dimension, by), squares) << shape.name;
}

TEST(ConsensusShapes, AreFoundAmongOutliers) {
  for (const Shape& shape : kShapes) {
    for (const double offset : {0.0, 1e4}) checkShape<float>(shape, offset);
    for (const double offset : {0.0, 1e8}) checkShape<double>(shape, offset);
  }
}

TEST(ConsensusShapes, PointsThatDetermineNone) {
  PrmtSacCfg cfg;
  PRMT_SAC_DefaultCfg(&cfg);
  PrmtSacResult result;
  std::vector<uint8_t> mask;
  for (const Shape& shape : kShapes) {
    const size_t step = static_cast<size_t>(shape.dimension) + 1;
    std::vector<double> points(step * 20, 5);  // all equal
    EXPECT_EQ(find(shape, points, cfg, &result, &mask), PRMT_STS_DEGENERATE) << shape.name;
    EXPECT_EQ(mask[0], 7);
    for (size_t i = 0; i < 20; ++i) {  // on a line
      for (size_t d = 0; d < step - 1; ++d) points[i * step + d] = static_cast<double>(i);
    }
    const bool isLine = shape.name[0] == 'l';
    EXPECT_EQ(find(shape, points, cfg, &result, &mask), isLine ? PRMT_STS_OK : PRMT_STS_DEGENERATE) << shape.name;
  }
}

}  // namespace
}  // namespace dax::test

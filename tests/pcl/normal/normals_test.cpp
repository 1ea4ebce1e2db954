#include "dax3dpcl/normals.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "pcl/normal/normals_plane.h"
#include "tests/pcl/normal/normals_oracle.h"
#include "tests/pcl/search/kd_tree.h"
#include "tests/pcl/search/point_sets.h"

namespace dax::test {
namespace {

using Normal = DAX3DPCL_NORMAL;
using Points = std::vector<float>;
using Direction = std::array<double, 3>;

constexpr Normal kUntouched{7, 7, 7, 7};

bool same(const Normal& a, const Normal& b) {
  return sameBits(a, b);
}

double lengthOf(const Normal& n) {
  return std::sqrt(double{n.nx} * n.nx + double{n.ny} * n.ny + double{n.nz} * n.nz);
}

// Up to sign; by the sine, which is accurate for small angles.
double angleBetween(const Normal& n, const Direction& d) {
  const double x = n.ny * d[2] - n.nz * d[1], y = n.nz * d[0] - n.nx * d[2], z = n.nx * d[1] - n.ny * d[0];
  return std::asin(std::min(1.0, std::sqrt(x * x + y * y + z * z)));
}

int32_t compute(const Points& points, Normal& normal) {
  int32_t estimated = -1;
  normal = kUntouched;
  EXPECT_EQ(
      DAX3DPCL_FEATURE_NORM_Compute_32f(points.data(), static_cast<int32_t>(points.size() / 3), &normal, &estimated),
      DAX_STS_OK);
  if (estimated == 1) {
    EXPECT_NEAR(lengthOf(normal), 1, 1e-6);
    EXPECT_TRUE(normal.curvature >= 0 && normal.curvature <= 0.34f) << normal.curvature;
  } else {
    EXPECT_TRUE(estimated == 0 && same(normal, kUntouched));
  }
  return estimated;
}

// Three unit vectors at right angles to each other.
std::array<Direction, 3> randomFrame(Random& random) {
  const double a = 3.2 * unitFloat(random), b = 3.2 * unitFloat(random), c = 3.2 * unitFloat(random);
  const double ca = std::cos(a), sa = std::sin(a), cb = std::cos(b), sb = std::sin(b), cc = std::cos(c),
               sc = std::sin(c);
  return {{{ca * cb, sa * cb, -sb},
           {ca * sb * sc - sa * cc, sa * sb * sc + ca * cc, cb * sc},
           {ca * sb * cc + sa * sc, sa * sb * cc - ca * sc, cb * cc}}};
}

// `count` points within +-extents along the axes of a frame.
Points boxOfPoints(Random& random, const std::array<Direction, 3>& frame, const Direction& extents, int32_t count) {
  Points points;
  for (int32_t i = 0; i < count; ++i) {
    double p[3] = {};
    for (size_t axis = 0; axis < 3; ++axis) {
      const double along = extents[axis] * unitFloat(random);
      for (size_t j = 0; j < 3; ++j) p[j] += along * frame[axis][j];
    }
    for (const double x : p) points.push_back(static_cast<float>(x));
  }
  return points;
}

TEST(Normals, OfAWholeSetAgreeWithJacobi) {
  Random random(1);
  const Direction extents[] = {{1, 1, 0}, {1, 0.1, 0}, {3, 2, 1}, {1, 0.9, 0.8}, {100, 50, 0.5}, {1e-3, 1e-3, 1e-5}};
  for (int32_t round = 0; round < 1000; ++round) {
    const Direction& extent = extents[round % 6];
    const Points points = boxOfPoints(random, randomFrame(random), extent, 4 + round % 40);
    Normal normal;
    ASSERT_EQ(compute(points, normal), 1);
    const oracle::Axes axes = oracle::principalAxes(points);
    const double gap = (axes.values[1] - axes.values[0]) / axes.values[2];
    const double trace = axes.values[0] + axes.values[1] + axes.values[2];
    ASSERT_LT(angleBetween(normal, axes.vectors[0]), 1e-6 / gap);
    ASSERT_NEAR(normal.curvature, std::fabs(axes.values[0]) / trace, 1e-6);
    if (extent[2] == 0) {
      ASSERT_EQ(normal.curvature, 0);
    }
  }
}

TEST(Normals, OfLinesAndPlacesAreNotEstimated) {
  Random random(2);
  Normal normal;
  for (int32_t round = 0; round < 1000; ++round) {
    ASSERT_EQ(compute(boxOfPoints(random, randomFrame(random), {2, 0, 0}, 4 + round % 30), normal), 0);
  }
  EXPECT_EQ(compute(Points(30, 4.5f), normal), 0);
  EXPECT_EQ(compute({0, 0, 0, 1, 2, 3, 2, 4, 6, 3, 6, 9}, normal), 0);
  EXPECT_EQ(compute({0, 0, 0, 1e-25f, 0, 0, 0, 1e-25f, 0, 0, 0, 1e-25f}, normal), 0);
  EXPECT_EQ(compute({3e38f, 0, 0, 3e38f, 1, 0, -3e38f, 0, 1, 0, 0, 1}, normal), 0);
  EXPECT_EQ(compute({0, 0, 0, 1, 0, 0, 0, 1, 0, std::numeric_limits<float>::quiet_NaN(), 0, 0}, normal), 0);
}

// What is less than four units in the last place of the largest spread is none.
TEST(Normals, OfSpreadsAtTheLimit) {
  constexpr float kUnit = std::numeric_limits<float>::epsilon();
  for (const float spread : {3.9f * kUnit, 4.1f * kUnit}) {
    Normal normal = kUntouched;
    EXPECT_EQ(fitNormal({1, 0, 0, spread, 0, 0}, normal), spread > 4 * kUnit);
    ASSERT_TRUE(fitNormal({spread, 0, 0, 1, 0, 1}, normal));
    EXPECT_EQ(normal.curvature > 0, spread > 4 * kUnit) << spread;
  }
}

// Where the smallest axis is not unique, one of those that fit.
TEST(Normals, OfAmbiguousSetsAreUnitVectors) {
  Normal normal;
  const Points octahedron = {1, 0, 0, -1, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, 1, 0, 0, -1};
  ASSERT_EQ(compute(octahedron, normal), 1);
  EXPECT_TRUE(same(normal, {0, 0, 1, 1.0f / 3})) << normal.curvature;
  Points cube;
  for (int32_t i = 0; i < 24; ++i) cube.push_back((i / 3 >> i % 3) & 1 ? 5.0f : 4.0f);
  ASSERT_EQ(compute(cube, normal), 1);
  EXPECT_TRUE(same(normal, {0, 0, 1, 1.0f / 3}));

  // Rods: the corners of a square prism.
  Random random(3);
  for (int32_t round = 0; round < 500; ++round) {
    const auto frame = randomFrame(random);
    Points rod;
    for (int32_t i = 0; i < 8; ++i) {
      const double along[3] = {i & 1 ? 9.0 : -9.0, i & 2 ? 1.0 : -1.0, i & 4 ? 1.0 : -1.0};
      for (size_t j = 0; j < 3; ++j) {
        rod.push_back(static_cast<float>(along[0] * frame[0][j] + along[1] * frame[1][j] + along[2] * frame[2][j]));
      }
    }
    ASSERT_EQ(compute(rod, normal), 1);
    ASSERT_NEAR(normal.nx * frame[0][0] + normal.ny * frame[0][1] + normal.nz * frame[0][2], 0, 1e-5);
  }
}

// A cloud with its tree and all that an estimation needs, guarded.
class Cloud {
 public:
  explicit Cloud(Points points, int32_t leafSize = 10) : points_(std::move(points)), tree_(points_, 3, leafSize) {}

  std::vector<Normal> normals(int32_t k, float radius, const float* viewpoint = nullptr) {
    const auto n = static_cast<int32_t>(points_.size() / 3);
    Bytes buffer = queried(DAX3DPCL_FEATURE_NORM_PCAEstimate_BufferSize, Guard::after, n, k);
    GuardedBuffer<Normal> out(static_cast<size_t>(n));
    EXPECT_EQ(DAX3DPCL_FEATURE_NORM_PCAEstimate(points_.data(), n, tree_.record(), k, viewpoint, out.data(),
                                                buffer.data(), radius),
              DAX_STS_OK);
    return {out.begin(), out.end()};
  }
  FirstTree& tree() { return tree_; }

 private:
  Points points_;
  FirstTree tree_;
};

constexpr Normal kDefault{0, 0, 1, 0};

// The neighbourhood by brute force.
TEST(Normals, OfPointsAgreeWithJacobiOverTheirNeighbours) {
  const Points points = makePoints(PointKind::clustered, 400, 3, 3);
  Cloud cloud(points);
  for (const int32_t k : {3, 16, 405}) {
    for (const float radius : {1e-3f, 0.008f, 100.0f}) {
      const std::vector<Normal> normals = cloud.normals(k, radius);
      for (size_t i = 0; i < 400; i += 7) {
        const auto near = oracle::within(points, 3, &points[3 * i], radius * radius);
        Points around;
        for (size_t j = 0; j < std::min(near.size(), static_cast<size_t>(k)); ++j) {
          around.insert(around.end(), &points[3 * near[j].index], &points[3 * near[j].index] + 3);
        }
        if (around.size() < 9) {
          ASSERT_TRUE(same(normals[i], kDefault));
          continue;
        }
        const oracle::Axes axes = oracle::principalAxes(around);
        const double gap = (axes.values[1] - axes.values[0]) / axes.values[2];
        // The rounding of the mean, at coordinates of 10, of neighbourhoods of 0.01.
        if (gap > 0.01) {
          ASSERT_LT(angleBetween(normals[i], axes.vectors[0]), 2e-3 / gap);
        }
      }
    }
  }
}

TEST(Normals, OfASphereAreRadial) {
  Random random(4);
  Points points;
  while (points.size() < 3 * 3000) {
    const double x = unitFloat(random), y = unitFloat(random), z = unitFloat(random);
    const double r = std::sqrt(x * x + y * y + z * z);
    if (r > 1 || r < 0.1) continue;
    for (const double c : {x, y, z}) points.push_back(static_cast<float>(c / r));
  }
  Cloud cloud(points);
  const float inside[3] = {0, 0, 0}, outside[3] = {0, 0, 50};
  const std::vector<Normal> in = cloud.normals(16, 0.5f, inside), out = cloud.normals(16, 0.5f, outside);
  for (size_t i = 0; i < 3000; ++i) {
    const float* const p = &points[3 * i];
    ASSERT_LT(in[i].nx * p[0] + in[i].ny * p[1] + in[i].nz * p[2], -0.98f);
    if (p[2] > 0.3f) {
      ASSERT_GT(out[i].nx * p[0] + out[i].ny * p[1] + out[i].nz * p[2], 0.98f);
    }
  }
}

// Rows of which the search leaves places empty; the empty ones are no neighbours.
TEST(Normals, CountOnlyNeighboursThatThereAre) {
  const Points three = {0, 0, 0, 1, 0, 0, 0, 1, 0};
  for (const int32_t k : {3, 10, 50}) {
    for (const Normal& each : Cloud(three).normals(k, 0.5f)) EXPECT_TRUE(same(each, kDefault));
    for (const Normal& each : Cloud(three, 1).normals(k, 1e20f)) {
      EXPECT_EQ(std::fabs(each.nz), 1.0f);
      EXPECT_EQ(each.curvature, 0.0f);
    }
  }
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const Points withHoles = {1, 0, 0, 0, 1, 0, nan, 0, 0, 0, nan, 0, 5, 5, 5, 5, 6, 5};
  const std::vector<Normal> normals = Cloud(withHoles).normals(6, 3);
  for (const size_t i : {0, 1, 2, 4, 5}) EXPECT_TRUE(same(normals[i], kDefault)) << i;
  FirstTree rootless(three, 3, 4);
  rootless.record()->root = nullptr;
  rootless.record()->index = nullptr;
  Normal out[3];
  uint8_t buffer[384];
  EXPECT_EQ(DAX3DPCL_FEATURE_NORM_PCAEstimate(three.data(), 3, rootless.record(), 3, nullptr, out, buffer, 9),
            DAX_STS_OK);
  EXPECT_TRUE(same(out[1], kDefault));
}

TEST(Normals, TurnTowardsTheViewpoint) {
  const float origin[3] = {0, 0, 0};
  const struct {
    Normal before;
    float viewpoint[3];
    bool turns;
  } cases[] = {{{0, 0, 1, 0.5f}, {0, 0, 3}, false},
               {{0, 0, 1, 0.5f}, {0, 0, -3}, true},
               {{0, 0, 1, 0.5f}, {4, -9, 0}, false},
               {{0.6f, 0.8f, 0, 0.1f}, {-1, -1, 7}, true}};
  for (const auto& one : cases) {
    Normal normal = one.before;
    EXPECT_EQ(DAX3DPCL_FEATURE_NORM_FlipTowardsViewPoint_I(&normal, origin, one.viewpoint), DAX_STS_OK);
    const Normal turned{-one.before.nx, -one.before.ny, -one.before.nz, one.before.curvature};
    EXPECT_TRUE(same(normal, one.turns ? turned : one.before));
  }
  // The default normal turns as well.
  const float below[3] = {0.3f, 0.3f, -5};
  const std::vector<Normal> normals = Cloud({0, 0, 0, 1, 0, 0, 0, 1, 0}).normals(3, 0.1f, below);
  EXPECT_EQ(normals[0].nz, -1.0f);
}

}  // namespace
}  // namespace dax::test

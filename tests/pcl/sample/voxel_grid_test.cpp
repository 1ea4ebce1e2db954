#include "pcl/sample/voxel_grid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "tests/pcl/sample/voxel_grid_oracle.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using oracle::Point;
using Box = std::array<float, 6>;

uint64_t queried(DaxStatus (*query)(int32_t, uint64_t*), size_t n) {
  uint64_t bytes = 0;
  EXPECT_EQ(query(static_cast<int32_t>(n), &bytes), DAX_STS_OK);
  return bytes;
}

// In memory of exactly the queried sizes, filled with anything, with every kernel.
void expectGrid(const std::vector<Point>& points, const Box& box, const Point& leaf) {
  const std::vector<Point> expected = oracle::voxelCentroids(points, box, leaf);
  GuardedBuffer<Point> input(points.size());
  std::copy(points.begin(), points.end(), input.begin());
  const DAX3DPCL_CLOUD3D cloud = {static_cast<int32_t>(points.size()), static_cast<int32_t>(points.size()),
                                  input.data()->data()};
  VoxelGrid grid;
  ASSERT_TRUE(makeVoxelGrid(box.data(), leaf.data(), grid));
  for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
    for (const uint8_t poison : {0x00, 0xFF, 0x7B}) {
      SCOPED_TRACE(testing::Message() << points.size() << " points, code " << isa << " poison " << int{poison});
      const Guard guard = kGuards[poison ? 0 : 1];
      GuardedBuffer<uint8_t> work(queried(DAX3DPCL_PREP_SAMPLE_VoxelGridBufferSize, points.size()), guard, poison);
      GuardedBuffer<uint8_t> result(queried(DAX3DPCL_PREP_SAMPLE_VoxelGridResultSize, points.size()), guard, poison);
      DAX3DPCL_CLOUD3D* out = nullptr;
      downsample(&cloud, grid, &out, result.data(), work.data(), isa);
      ASSERT_EQ(static_cast<void*>(out), result.data());
      ASSERT_EQ(static_cast<void*>(out->points), result.data() + 128);
      ASSERT_EQ(out->capacity, cloud.count);
      ASSERT_EQ(out->count, static_cast<int32_t>(expected.size()));
      ASSERT_EQ(std::memcmp(out->points, expected.data(), expected.size() * sizeof(Point)), 0);
    }
  }
}

std::vector<Point> scattered(size_t n, float reach, uint64_t seed) {
  Random random(seed);
  std::vector<Point> points(n);
  for (Point& p : points) {
    for (float& v : p) v = (static_cast<float>(random.below(20001)) - 10000) * reach / 10000;
  }
  return points;
}

// From one cell to a billion: no, one, two and three passes of the sort; around zero; partly outside.
TEST(VoxelGrids, RandomCloudsAgainstADictionary) {
  const Box boxes[] = {{-10, -10, -10, 10, 10, 10},
                       {-3, -7, 0, 4, 2, 5},
                       {0.5f, 0.5f, 0.5f, 9, 9, 9},
                       {-8, -8, 2, -2, -2, 2},
                       {50, 50, 50, 60, 60, 60}};
  const Point leaves[] = {{100, 100, 100}, {1, 1, 1}, {0.3f, 2, 0.7f}, {0.1f, 0.1f, 0.1f}, {0.021f, 0.02f, 0.02f}};
  for (const size_t n : {1u, 2u, 3u, 4u, 5u, 7u, 64u, 1001u}) {
    const std::vector<Point> points = scattered(n, 10, n);
    for (const Box& box : boxes) {
      for (const Point& leaf : leaves) expectGrid(points, box, leaf);
    }
  }
  expectGrid(scattered(30000, 10, 9), {-10, -10, -10, 10, 10, 10}, {0.5f, 0.5f, 0.5f});
}

TEST(VoxelGrids, FacesFlatBoxesZeroAndNoNumbers) {
  const float inf = INFINITY;
  const std::vector<Point> faces = {{1, 1, 1}, {2, 2, 2}, {1, 2, 1}, {2, 1, 1.5f}, {2.0001f, 1, 1}, {1, 0.999f, 1}};
  expectGrid(faces, {1, 1, 1, 2, 2, 2}, {0.5f, 0.5f, 0.5f});
  expectGrid(faces, {1, 1, 1, 1, 2, 2}, {0.5f, 0.5f, 0.5f});
  const std::vector<Point> spoilt = {{NAN, 0, 0},     {0, inf, 0}, {0.25f, 0, 0}, {0, 0, -inf},
                                     {-0.0f, 0, NAN}, {1, 1, 1},   {0.75f, 0, 0}, {3e38f, -3e38f, 0}};
  expectGrid(spoilt, {-2, -2, -2, 2, 2, 2}, {1, 1, 1});
  expectGrid(spoilt, {0.25f, -1, -1, 0.3f, 1, 1}, {1, 1, 1});
  // One cell around zero, twice as wide as the others.
  const std::vector<Point> line = {{-0.9f, 0, 0}, {0.9f, 0, 0}, {-1, 0, 0}, {1, 0, 0}};
  EXPECT_EQ(oracle::voxelCentroids(line, {-1, 0, 0, 1, 0, 0}, {1, 1, 1}).size(), 3u);
  expectGrid(line, {-1, 0, 0, 1, 0, 0}, {1, 1, 1});
}

TEST(VoxelGrids, BoxesWithoutNumbersForTheirCells) {
  struct Case {
    Box box;
    float leaf;
    bool valid;
  };
  const Case cases[] = {
      {{-1e30f, -1e30f, -1e30f, 1e30f, 1e30f, 1e30f}, 1, false},
      {{-1e30f, -1e30f, -1e30f, 1e30f, 1e30f, 1e30f}, 1e30f, true},
      {{0, 0, 0, NAN, 1, 1}, 1, false},
      {{NAN, 0, 0, 1, 1, 1}, 1, false},
      {{0, 0, -INFINITY, 1, 1, 1}, 1, false},
      {{0, 0, 0, 1e4f, 1e4f, 1e4f}, 1.2e-7f, false},
      {{0, 0, 0, 1290, 1290, 1289}, 1, false},  // 1291 * 1291 * 1290 cells
      {{0, 0, 0, 1289, 1289, 1289}, 1, true},   // 1290^3
      {{0, 0, 0, 2147483520, 0, 0}, 1, true},   // the greatest float below 2^31
      {{-2147483648, 0, 0, -2147483520, 0, 0}, 1, true},
      {{0, 0, 0, 2147483648, 0, 0}, 1, false},
      {{-1, 0, 0, 2147483520, 1, 0}, 1, false},
      {{65536, 65536, 0, 131072, 131072, 0}, 1, false},  // 65537^2
      {{-2147483648, -2147483648, 0, 2147483520, 2147483520, 0}, 1, false},
  };
  for (const Case& c : cases) {
    const float leaf[3] = {c.leaf, c.leaf, c.leaf};
    VoxelGrid grid;
    EXPECT_EQ(makeVoxelGrid(c.box.data(), leaf, grid), c.valid) << &c - cases;
  }
  expectGrid({{2147483520, 0, 0}, {1, 0, 0}, {2147483520, 0, 0}}, {0, 0, 0, 2147483520, 0, 0}, {1, 1, 1});
}

}  // namespace
}  // namespace dax::test

// Digests of range images and clouds: see digest_test.cpp.
#include <gtest/gtest.h>

#include "dax3dpcl.h"
#include "fuzz/memory_file.h"
#include "tests/support/any_pool.h"
#include "tests/support/digest.h"
#include "tests/support/point_sets.h"
#include "tests/support/range_sample.h"
#include "zur.h"

namespace dax::test {
namespace {

TEST(Digests, RangeToPoints) {
  TestImage<int16_t> values({301, 203});
  Image mask(values.size());
  values.randomize(8), mask.randomize(9);
  DAX3DPCL_RANGE_MAP map = {203, 301, {0.1f, -0.3f, 0.07f, 11.1f, 3, -5}, nullptr, mask.data(), values.data()};
  std::vector<float> buffer(3 * 301 * 203 + 32);
  float* points = nullptr;
  DAX3DPCL_CLOUD_SIZE size = {};
  Digest digest;
  ASSERT_EQ(DAX3DPCL_PREP_CONVERT_Range2XYZ_16s32f(&map, buffer.data(), 1, &points, &size), DAX_STS_OK);
  digest.add(points, size_t{12} * 301 * 203);
  const float pinhole[6] = {0.01f, 0.3f, 511.7f, 499.1f, 150.3f, 101.9f};
  std::copy(pinhole, pinhole + 6, map.params);
  ASSERT_EQ(DAX3DPCL_PREP_CONVERT_Depth2XYZ_16s32f(&map, buffer.data(), 0, &points, &size), DAX_STS_OK);
  digest.add(points, size_t{12} * static_cast<size_t>(size.width));

  const DAX3DPCL_CLOUD3D cloud = {size.width, size.width, points};
  const float box[6] = {-300, -200, -300, 250, 200, 300};
  uint64_t resultBytes = 0, workBytes = 0;
  ASSERT_EQ(DAX3DPCL_PREP_SAMPLE_VoxelGridResultSize(cloud.count, &resultBytes), DAX_STS_OK);
  ASSERT_EQ(DAX3DPCL_PREP_SAMPLE_VoxelGridBufferSize(cloud.count, &workBytes), DAX_STS_OK);
  std::vector<uint8_t> result(resultBytes), work(workBytes);
  DAX3DPCL_CLOUD3D* thinned = nullptr;
  ASSERT_EQ(DAX3DPCL_PREP_SAMPLE_VoxelGrid(&cloud, box, &thinned, result.data(), work.data(), 2, 3, 5), DAX_STS_OK);
  digest.add(thinned->points, size_t{12} * static_cast<size_t>(thinned->count));
  EXPECT_EQ(digest.value(), 0x62243EAFDD10350Fu);
}

TEST(Digests, Speckles) {
  const Image gray = hills({301, 203}, 10);
  TestImage<int16_t> src(gray.size()), dst(gray.size());
  src.fill([&](int32_t x, int32_t y) { return gray.at(x, y) * 7 - 900; });
  uint64_t bytes = 0;
  ASSERT_EQ(DAX3DPCL_PREP_FILTER_Speckle_BufferSize(src.size(), &bytes), DAX_STS_OK);
  std::vector<uint8_t> buffer(bytes);
  Digest digest;
  for (const int32_t maxDiff : {20, 60, 90}) {
    ASSERT_EQ(DAX3DPCL_PREP_FILTER_Speckle_S16(src.size(), src.data(), dst.data(), {3, 5}, {300, 190}, maxDiff, 50,
                                               -900, buffer.data()),
              DAX_STS_OK);
    digest.add(dst);
  }
  EXPECT_EQ(digest.value(), 0xDD2744EE5B17CEACu);
}

struct Neighbours {
  explicit Neighbours(size_t queries, int32_t k)
      : indices(queries * static_cast<size_t>(k)), distances(indices.size()), counts(queries) {}
  std::vector<uint32_t> indices;
  std::vector<float> distances;
  std::vector<int32_t> counts;
};

// Both generations: the nearest of every point.
TEST(Digests, KdTrees) {
  Digest digest;
  for (const PointKind kind : kPointKinds) {
    for (const int32_t d : {2, 3, 5}) {
      constexpr int32_t kCount = 400, kNearest = 7;
      const std::vector<float> points = makePoints(kind, kCount, d);
      uint64_t treeBytes = 0, stackBytes = 0;
      ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_BufferSize(kCount, d, &treeBytes), DAX_STS_OK);
      std::vector<uint64_t> block(treeBytes / 8), stack;
      auto* const first = reinterpret_cast<DAX3DPCL_KDTREE*>(block.data());
      ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_BuildIndex(first, points.data(), kCount, d, 8), DAX_STS_OK);
      Neighbours near(kCount, kNearest);
      ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_KNearestSearch(first, points.data(), kCount, d, kNearest, near.indices.data(),
                                                      near.distances.data(), near.counts.data()),
                DAX_STS_OK);
      digest.add(near.indices.data(), near.indices.size() * 4).add(near.distances.data(), near.distances.size() * 4);

      ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize(kCount, d, &stackBytes), DAX_STS_OK);
      stack.resize(stackBytes);
      auto* const second = reinterpret_cast<DAX3DPCL_KDTREE_V2*>(block.data());
      ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2(second, points.data(), kCount, d, 8, stack.data()), DAX_STS_OK);
      int32_t count = 0;
      ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_RNearestSearch_V2(second, points.data(), d, kCount, near.indices.data(),
                                                         near.distances.data(), &count, stack.data(), 3),
                DAX_STS_OK);
      digest.add(near.indices.data(), static_cast<size_t>(count) * 4);
      digest.add(near.distances.data(), static_cast<size_t>(count) * 4);
    }
  }
  EXPECT_EQ(digest.value(), 0x5E439BCB50C12BF2u);
}

TEST(Digests, KdTreesOnPool) {
  constexpr int32_t kCount = 1000, kNearest = 9;
  const std::vector<float> points = makePoints(PointKind::clustered, kCount, 3);
  uint64_t treeBytes = 0, stackBytes = 0;
  ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_V2_BufferSize(kCount, 3, &treeBytes), DAX_STS_OK);
  ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize(kCount, 16, &stackBytes), DAX_STS_OK);
  std::vector<uint64_t> block(treeBytes / 8), stack(stackBytes / 8);
  auto* const tree = reinterpret_cast<DAX3DPCL_KDTREE_V2*>(block.data());
  ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2(tree, points.data(), kCount, 3, 10, stack.data()), DAX_STS_OK);
  for (uint32_t threads = 1; threads <= 16; ++threads) {
    AnyPool pool(threads);
    Neighbours near(kCount, kNearest);
    ASSERT_EQ(
        DAX3DPCL_KDTREE_KNearestSearch_MT(pool.get(), threads, tree, points.data(), kCount, 3, kNearest,
                                          near.indices.data(), near.distances.data(), near.counts.data(), stack.data()),
        DAX_STS_OK);
    Digest digest;
    digest.add(near.indices.data(), near.indices.size() * 4).add(near.distances.data(), near.distances.size() * 4);
    ASSERT_EQ(DAX3DPCL_KDTREE_RNearestSearch_MT(pool.get(), threads, tree, points.data(), kCount, 3, kNearest,
                                                near.indices.data(), near.distances.data(), near.counts.data(),
                                                stack.data(), 0.5f),
              DAX_STS_OK);
    digest.add(near.indices.data(), near.indices.size() * 4).add(near.counts.data(), near.counts.size() * 4);
    EXPECT_EQ(digest.value(), 0x1233B50AD4AF6170u) << threads << " threads";
  }
}

TEST(Digests, Normals) {
  constexpr int32_t kCount = 500, kNearest = 12;
  Digest digest;
  for (const PointKind kind : kPointKinds) {
    const std::vector<float> points = makePoints(kind, kCount, 3);
    uint64_t treeBytes = 0, bytes = 0;
    ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_BufferSize(kCount, 3, &treeBytes), DAX_STS_OK);
    ASSERT_EQ(DAX3DPCL_FEATURE_NORM_PCAEstimate_BufferSize(kCount, kNearest, &bytes), DAX_STS_OK);
    std::vector<uint64_t> block(treeBytes / 8), buffer(bytes / 8);
    auto* const tree = reinterpret_cast<DAX3DPCL_KDTREE*>(block.data());
    ASSERT_EQ(DAX3DPCL_SEARCH_KDTREE_BuildIndex(tree, points.data(), kCount, 3, 8), DAX_STS_OK);
    const float viewpoint[3] = {1, -2, 30};
    std::vector<DAX3DPCL_NORMAL> normals(kCount);
    ASSERT_EQ(DAX3DPCL_FEATURE_NORM_PCAEstimate(points.data(), kCount, tree, kNearest, viewpoint, normals.data(),
                                                buffer.data(), 5),
              DAX_STS_OK);
    digest.add(normals.data(), normals.size() * sizeof(DAX3DPCL_NORMAL));
  }
  EXPECT_EQ(digest.value(), 0xDA33C46D9B40183Du);
}

// A file of every chunk, and the record that is read from it.
TEST(Digests, RangeFiles) {
  const fuzz::MemoryFile file;
  const RangeSample sample(41, 23, DAX3D_RANGE_WITH_MASK, 201);
  ASSERT_EQ(DAX3DPCL_UTILS_WRITE_RANGE_V4_V2(file.path().c_str(), &sample.record), DAX_STS_OK);
  const std::vector<uint8_t> bytes = file.contents();
  DAX3D_RANGE_V4 record = {};
  ASSERT_EQ(DAX3DPCL_UTILS_READ_RANGE_V4(file.path().c_str(), &record), DAX_STS_OK);
  Digest digest;
  digest.add(bytes.data(), bytes.size()).add(&record.calib, sizeof record.calib);
  digest.add(record.range.owner[0], 41 * 23 * 2).add(record.mask.owner[0], 41 * 23);
  digest.add(record.colour.owner[0], 41 * 23 * 3);
  DAX3DPCL_UTILS_RELEASE_RANGE_V4(&record);
  ZUR_Free(record.colour.owner[0]);
  EXPECT_EQ(digest.value(), 0xFB9D07EC86516E53u);
}

}  // namespace
}  // namespace dax::test

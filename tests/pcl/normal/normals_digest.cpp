#include <gtest/gtest.h>

#include "dax3dpcl.h"
#include "tests/pcl/search/point_sets.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

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

}  // namespace
}  // namespace dax::test

#include "dax3d/hull.h"

#include <gtest/gtest.h>

#include "dax3d/box.h"
#include "tests/space/space_scene.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, HullsAndBoxes) {
  Digest digest;
  Random random(5);
  for (const int32_t n : {9, 60, 2000}) {
    std::vector<double> points;
    for (int32_t i = 0; i < n; ++i) {
      const Real3 p = anyVector(random);
      append(points, {std::floor(8 * p[0]), p[1], p[2]});
    }
    uint64_t bytes = 0;
    int32_t count = 0;
    Dax3dBox box;
    ASSERT_EQ(DAX3D_BOX_MinVolume_BufferSize(n, &bytes), DAX_STS_OK);
    std::vector<uint64_t> buffer(bytes / 8);
    std::vector<int32_t> triangles(static_cast<size_t>(6 * n));
    ASSERT_EQ(DAX3D_HULL_f64(points.data(), n, triangles.data(), &count, buffer.data()), DAX_STS_OK);
    digest.add(triangles.data(), triangles.size() * sizeof(int32_t));
    ASSERT_EQ(DAX3D_BOX_MinVolume_f64(points.data(), n, &box, buffer.data()), DAX_STS_OK);
    digest.add(&box, sizeof box);
    ASSERT_EQ(DAX3D_BOX_Pca_f64(points.data(), n, &box), DAX_STS_OK);
    digest.add(&box, sizeof box);
  }
  EXPECT_EQ(digest.value(), 0xAE0C26591AE75B4Eu);
}

}  // namespace
}  // namespace dax::test

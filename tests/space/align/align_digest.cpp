#include "dax3d/align.h"

#include <gtest/gtest.h>

#include "tests/space/space_scene.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Alignments) {
  Digest digest;
  Random random(6);
  std::vector<double> from, to, weights;
  for (int i = 0; i < 3333; ++i) {
    append(from, anyVector(random));
    append(to, anyVector(random));
    weights.push_back(i % 5);
    for (size_t k = 1; k <= 3; ++k) to[to.size() - k] += 3 * from[from.size() - k];
  }
  const std::vector<float> narrowFrom(from.begin(), from.end()), narrowTo(to.begin(), to.end());
  Dax3dAlignment found;
  ASSERT_EQ(DAX3D_ALIGN_Rigid_f64(from.data(), to.data(), weights.data(), 3333, &found), DAX_STS_OK);
  digest.add(&found, sizeof found);
  ASSERT_EQ(DAX3D_ALIGN_Similarity_f32(narrowFrom.data(), narrowTo.data(), nullptr, 3333, &found), DAX_STS_OK);
  digest.add(&found, sizeof found);
  EXPECT_EQ(digest.value(), 0x3EB058986758C23Cu);
}

}  // namespace
}  // namespace dax::test

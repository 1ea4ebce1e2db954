#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, ContourApprox) {
  constexpr int32_t kN = 3000;
  Random random(4);
  std::vector<DaxiPoint32f> chain;
  float x = 0, y = 0;
  for (int32_t i = 0; i < kN; ++i) {
    x += static_cast<float>(random.below(90) - 30) / 8, y += static_cast<float>(random.below(130) - 65) / 8;
    chain.push_back({x, y});
  }
  std::vector<int32_t> indices(kN);
  std::vector<uint8_t> buffer(kN);
  Digest digest;
  for (const uint32_t closed : {0u, 1u}) {
    int32_t kept = 0;
    uint32_t flags = 0;
    ASSERT_EQ(DAXI_ContourApprox_32f(chain.data(), kN, closed, 6.5, indices.data(), &kept, &flags, buffer.data()),
              DAX_STS_OK);
    digest.add(indices.data(), static_cast<size_t>(kept) * sizeof(int32_t)).add(&flags, sizeof flags);
  }
  EXPECT_EQ(digest.value(), 0x4008E185C8077BB1u);
}

}  // namespace
}  // namespace dax::test

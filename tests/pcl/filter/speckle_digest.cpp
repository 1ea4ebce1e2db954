#include <gtest/gtest.h>

#include "dax3dpcl.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

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

}  // namespace
}  // namespace dax::test

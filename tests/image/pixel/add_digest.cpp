#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Add) {
  Image a({301, 37}), b(a.size()), dst(a.size());
  a.randomize(9), b.randomize(10);
  for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
    ASSERT_EQ(DAXI_Add_8u_C1RSfs_IS(a.data(), a.step(), b.data(), b.step(), dst.data(), dst.step(), a.size(), isa),
              DAX_STS_OK);
    EXPECT_EQ(Digest().add(dst).value(), 0xAA703C013D10FB0Au);
  }
}

}  // namespace
}  // namespace dax::test

#include <gtest/gtest.h>

#include <vector>

#include "daxi.h"
#include "tests/support/any_pool.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, ClipEqualize) {
  const Image src = hills({211, 157}, 9);
  Image dst(src.size());
  DaxiClipEqualizeCfg cfg;
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_ClipEqualizeDefaultCfg(&cfg), DAX_STS_OK);
  ASSERT_EQ(DAXI_ClipEqualizeBufferSize_8u(src.size(), &cfg, &bytes), DAX_STS_OK);
  std::vector<char> buffer(bytes);
  for (uint32_t threads = 1; threads <= 16; threads += 5) {
    AnyPool pool(threads);
    ASSERT_EQ(DAXI_ClipEqualize_8u_C1R_MT(pool.get(), threads, src.data(), src.step(), dst.data(), dst.step(),
                                          src.size(), &cfg, buffer.data()),
              DAX_STS_OK);
    EXPECT_EQ(Digest().add(dst).value(), 3518430318567892377u);
  }
}

}  // namespace
}  // namespace dax::test

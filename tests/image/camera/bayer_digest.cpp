#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/any_pool.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Bayer) {
  const Image bytes = hills({301, 37}, 3);
  TestImage<uint16_t> words(bytes.size()), rgbWords({3 * 301, 37});
  TestImage<uint8_t> rgb({3 * 301, 37}), gray(bytes.size());
  words.randomize(12);
  for (const uint32_t threads : {1u, 2u, 5u, 16u}) {
    AnyPool pool(threads);
    Digest digest;
    for (int32_t phase = 0; phase < 4; ++phase) {
      DAXI_BayerBilinear_8u_C1C3R_MT(pool.get(), threads, bytes.data(), bytes.step(), rgb.data(), rgb.step(),
                                     bytes.size(), phase);
      DAXI_BayerMHC_16u_C1C3R_MT(pool.get(), threads, words.data(), words.step(), rgbWords.data(), rgbWords.step(),
                                 words.size(), phase);
      DAXI_BayerMHCToGray_8u_C1R_MT(pool.get(), threads, bytes.data(), bytes.step(), gray.data(), gray.step(),
                                    bytes.size(), phase);
      digest.add(rgb).add(rgbWords).add(gray);
    }
    EXPECT_EQ(digest.value(), 0x2B67EAC0276F3E7Fu) << threads << " threads";
  }
}

}  // namespace
}  // namespace dax::test

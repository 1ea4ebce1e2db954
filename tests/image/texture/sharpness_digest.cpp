#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Sharpness) {
  Digest digest;
  const auto add = [&](const auto& image, const auto&... calls) {
    for (const auto call : {calls...}) {
      double sharpness = 0;
      ASSERT_EQ(call(image.data(), image.step(), image.size(), &sharpness), DAX_STS_OK);
      digest.add(&sharpness, sizeof sharpness);
    }
  };
  TestImage<uint16_t> words({203, 41});
  words.randomize(6);
  TestImage<float> floats(words.size());
  floats.fill([&](int32_t x, int32_t y) { return static_cast<float>(words.at(x, y)) / 7; });
  add(words, DAXI_SharpnessTenengrad_16u_C1R, DAXI_SharpnessLaplacianVariance_16u_C1R, DAXI_SharpnessBrenner_16u_C1R);
  add(floats, DAXI_SharpnessTenengrad_32f_C1R, DAXI_SharpnessLaplacianVariance_32f_C1R, DAXI_SharpnessBrenner_32f_C1R);
  EXPECT_EQ(digest.value(), 0xD82AA196D7616FD2u);
}

}  // namespace
}  // namespace dax::test

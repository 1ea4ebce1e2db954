#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Noise) {
  Digest digest;
  const auto add = [&](const auto& image, const auto&... calls) {
    for (const auto call : {calls...}) {
      double sigma = 0;
      ASSERT_EQ(call(image.data(), image.step(), image.size(), 1000, 60000, &sigma), DAX_STS_OK);
      digest.add(&sigma, sizeof sigma);
    }
  };
  TestImage<uint16_t> words({203, 41});
  words.randomize(6);
  TestImage<float> floats(words.size());
  floats.fill([&](int32_t x, int32_t y) { return static_cast<float>(words.at(x, y)) / 7 + 1001; });
  add(words, DAXI_NoiseImmerkaer_16u_C1R, DAXI_NoiseMad_16u_C1R);
  add(floats, DAXI_NoiseImmerkaer_32f_C1R, DAXI_NoiseMad_32f_C1R);
  EXPECT_EQ(digest.value(), 0x3E360B72180608ECu);
}

}  // namespace
}  // namespace dax::test

#include "daxi/convolve.h"

#include <gtest/gtest.h>

#include "tests/support/digest.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

TEST(Digests, Convolve) {
  Digest digest;
  Random random(4);
  TestImage<uint16_t> words({203, 31}), result(words.size());
  TestImage<float> floats(words.size()), sums(words.size());
  words.fill([&](int32_t, int32_t) { return random.below(65536); });
  floats.fill([&](int32_t, int32_t) { return static_cast<float>(random.below(65536)) / 7; });
  int16_t whole[35];
  float real[35];
  for (int16_t& weight : whole) weight = static_cast<int16_t>(random.below(65536) - 32768);
  for (float& weight : real) weight = static_cast<float>(random.below(2000) - 1000) / 900;
  const DaxiConvolveCfg cfg = {{7, 5}, 1, 4, 16, DAXI_BORDER_MIRROR, 0};
  EXPECT_EQ(DAXI_Filter_16u_C1R(words.data(), words.step(), result.data(), result.step(), words.size(), whole, &cfg),
            DAX_STS_OK);
  digest.add(result);
  EXPECT_EQ(DAXI_Filter_32f_C1R(floats.data(), floats.step(), sums.data(), sums.step(), floats.size(), real, &cfg),
            DAX_STS_OK);
  digest.add(sums);
  EXPECT_EQ(DAXI_FilterSeparable_32f_C1R(floats.data(), floats.step(), sums.data(), sums.step(), floats.size(), real,
                                         real + 7, &cfg),
            DAX_STS_OK);
  EXPECT_EQ(digest.add(sums).value(), 14688448513973839024u);
}

}  // namespace
}  // namespace dax::test

#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Pyramid) {
  constexpr DaxiSize kSize = {201, 103}, kHalf = {101, 52};
  TestImage<uint8_t> bytes(kSize), half(kHalf);
  TestImage<float> floats(kSize), halfFloats(kHalf), difference(kSize);
  Random random(4);
  bytes.fill([&](int32_t, int32_t) { return random.below(256); });
  floats.fill([&](int32_t, int32_t) { return static_cast<float>(random.below(1 << 24)) / 37; });
  std::vector<uint8_t> buffer(1 << 20);
  ASSERT_EQ(DAXI_PyrDown_8u_C1R(bytes.data(), 201, half.data(), 101, kSize, buffer.data()), DAX_STS_OK);
  ASSERT_EQ(DAXI_PyrUp_8u_C1R(half.data(), 101, bytes.data(), 201, kHalf, kSize, buffer.data()), DAX_STS_OK);
  ASSERT_EQ(DAXI_PyrDown_32f_C1R(floats.data(), 201, halfFloats.data(), 101, kSize, buffer.data()), DAX_STS_OK);
  ASSERT_EQ(DAXI_LaplacianBuild_32f_C1R(floats.data(), 201, difference.data(), 201, kSize, halfFloats.data(), 101,
                                        buffer.data()),
            DAX_STS_OK);
  Digest digest;
  EXPECT_EQ(digest.add(half).add(bytes).add(halfFloats).add(difference).value(), 0xDD7A3E4002EE33E0u);
}

}  // namespace
}  // namespace dax::test

#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Gray) {
  Digest digest;
  TestImage<uint8_t> bytes({3 * 301, 37}), gray({301, 37});
  TestImage<uint16_t> words(bytes.size()), grayWords(gray.size());
  TestImage<float> floats(bytes.size()), grayFloats(gray.size());
  bytes.randomize(11), words.randomize(12);
  floats.fill([&](int32_t x, int32_t y) { return static_cast<float>(words.at(x, y)) / 65535; });
  for (int32_t standard = 0; standard <= 1; ++standard) {
    DAXI_RGBToGray_8u_C3C1R(bytes.data(), bytes.step(), gray.data(), gray.step(), gray.size(), standard);
    DAXI_BGRToGray_16u_C3C1R(words.data(), words.step(), grayWords.data(), grayWords.step(), gray.size(), standard);
    DAXI_RGBToGray_32f_C3C1R(floats.data(), floats.step(), grayFloats.data(), grayFloats.step(), gray.size(), standard);
    digest.add(gray).add(grayWords).add(grayFloats);
  }
  EXPECT_EQ(digest.value(), 0x60295D258626D6FAu);
}

}  // namespace
}  // namespace dax::test

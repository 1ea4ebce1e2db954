#include "daxi/gradient.h"

#include <gtest/gtest.h>

#include "daxi/gradient_mag_dir.h"
#include "tests/support/digest.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class D, class T, class... Filter>
void addGradients(Digest& digest, const TestImage<T>& src, int32_t window, Filter... filters) {
  TestImage<D> dst(src.size());
  const auto add = [&](auto filter) {
    EXPECT_EQ(filter(src.data(), src.step(), dst.data(), dst.step(), src.size(), window, DAXI_BORDER_MIRROR, 0.0),
              DAX_STS_OK);
    digest.add(dst);
  };
  (add(filters), ...);
}

TEST(Digests, Gradient) {
  Digest digest;
  Random random(2);
  const auto number = [&](int32_t, int32_t) { return random.below(60000); };
  TestImage<uint8_t> bytes({203, 31});
  TestImage<uint16_t> words(bytes.size());
  TestImage<float> floats(bytes.size()), mag(bytes.size()), dir(bytes.size());
  bytes.fill(number), words.fill(number), floats.fill(number);
  addGradients<int16_t>(digest, bytes, 3, DAXI_SobelX_8u16s_C1R, DAXI_ScharrY_8u16s_C1R);
  addGradients<float>(digest, words, 5, DAXI_SobelY_16u32f_C1R, DAXI_ScharrX_16u32f_C1R);
  addGradients<float>(digest, floats, 5, DAXI_PrewittX_32f_C1R, DAXI_ScharrY_32f_C1R);
  addGradients<float>(digest, floats, 8, DAXI_Laplace_32f_C1R);
  EXPECT_EQ(DAXI_GradientMagDir_32f_C1R(floats.data(), floats.step(), mag.data(), mag.step(), dir.data(), dir.step(),
                                        floats.size(), DAXI_GRADIENT_SCHARR, 5, DAXI_BORDER_REPLICATE, 0),
            DAX_STS_OK);
  EXPECT_EQ(digest.add(mag).add(dir).value(), 15899346987853524885u);
}

}  // namespace
}  // namespace dax::test

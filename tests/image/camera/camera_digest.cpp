#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/any_pool.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Camera) {
  constexpr DaxiSize kFrame = {301, 37}, kHalf = {302, 19};
  Image y({604, 37}), chroma({kHalf.width, kHalf.height}), rgb({3 * kFrame.width, kFrame.height}), map(kFrame);
  TestImage<uint16_t> raw(kFrame), dark(kFrame), corrected(kFrame), mended(kFrame);
  TestImage<float> gain(kFrame);
  y.randomize(1), chroma.randomize(2), raw.randomize(3), dark.randomize(4), map.randomize(5);
  map.fill([&](int32_t x, int32_t row) { return map.at(x, row) < 100; });
  gain.fill([&](int32_t x, int32_t row) { return 0.5f + static_cast<float>((x * 13 + row * 7) % 64) / 50; });
  for (const uint32_t threads : {1u, 2u, 5u, 16u}) {
    AnyPool pool(threads);
    Digest digest;
    const auto add = [&](DaxStatus status, const auto& image) {
      ASSERT_EQ(status, DAX_STS_OK);
      digest.add(image);
    };
    add(DAXI_NV12ToRGB_8u_P2C3R_MT(pool.get(), threads, y.data(), y.step(), chroma.data(), chroma.step(), rgb.data(),
                                   rgb.step(), kFrame, 0, 0),
        rgb);
    add(DAXI_I420ToBGR_8u_P3C3R_MT(pool.get(), threads, y.data(), y.step(), chroma.data(), chroma.step(),
                                   chroma.data() + 151, chroma.step(), rgb.data(), rgb.step(), kFrame, 1, 1),
        rgb);
    add(DAXI_UYVYToRGB_8u_C2C3R_MT(pool.get(), threads, y.data(), y.step(), rgb.data(), rgb.step(), kFrame, 0, 1), rgb);
    add(DAXI_FlatField_16u_C1R(raw.data(), raw.step(), dark.data(), dark.step(), gain.data(), gain.step(),
                               corrected.data(), corrected.step(), kFrame),
        corrected);
    int64_t unmended = 0;
    add(DAXI_ReplaceDefects_16u_C1R(raw.data(), raw.step(), map.data(), map.step(), mended.data(), mended.step(),
                                    kFrame, 2, &unmended),
        mended);
    EXPECT_EQ(digest.value(), 0x64AD2418C03CAB3Au) << threads << " threads";
  }
}

}  // namespace
}  // namespace dax::test

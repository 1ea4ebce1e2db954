#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/any_pool.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

constexpr DaxiSize kColourSize = {301, 37};

// call(pool, threads, source, step, destination, step, size)
template <class T, class... Calls>
void digestColours(std::pair<void*, uint32_t> on, const TestImage<T>& src, Digest& digest, Calls... calls) {
  TestImage<T> dst(src.size());
  const auto add = [&](auto call) {
    ASSERT_EQ(call(on.first, on.second, src.data(), src.step(), dst.data(), dst.step(), kColourSize), DAX_STS_OK);
    digest.add(dst);
  };
  (add(calls), ...);
}

TEST(Digests, Colour) {
  Image bytes({3 * kColourSize.width, kColourSize.height});
  TestImage<uint16_t> words(bytes.size());
  TestImage<float> floats(bytes.size());
  bytes.randomize(21), words.randomize(22);
  floats.fill([&](int32_t x, int32_t y) { return static_cast<float>(words.at(x, y)) / 65535; });
  const double matrix[12] = {1.7, -0.5, -0.2, 3, -0.3, 1.6, -0.3, 0, 0.1, -0.6, 1.5, -2};
  for (const uint32_t threads : {1u, 2u, 5u, 16u}) {
    AnyPool pool(threads);
    Digest digest;
    const std::pair<void*, uint32_t> on = {pool.get(), threads};
#define COLOURS(IMAGE, SUFFIX, ...)                                                                \
  digestColours(                                                                                   \
      on, IMAGE, digest, [&](auto... a) { return DAXI_RGBToYCbCr_##SUFFIX##_C3R_MT(a..., 0, 0); }, \
      [&](auto... a) { return DAXI_YCbCrToRGB_##SUFFIX##_C3R_MT(a..., 1, 1); },                    \
      [&](auto... a) { return DAXI_RGBToHSV_##SUFFIX##_C3R_MT(a... __VA_OPT__(, ) __VA_ARGS__); }, \
      [&](auto... a) { return DAXI_HSVToRGB_##SUFFIX##_C3R_MT(a... __VA_OPT__(, ) __VA_ARGS__); }, \
      [&](auto... a) { return DAXI_RGBToHLS_##SUFFIX##_C3R_MT(a... __VA_OPT__(, ) __VA_ARGS__); }, \
      [&](auto... a) { return DAXI_HLSToRGB_##SUFFIX##_C3R_MT(a... __VA_OPT__(, ) __VA_ARGS__); }, \
      DAXI_RGBToLab_##SUFFIX##_C3R_MT, DAXI_LabToRGB_##SUFFIX##_C3R_MT,                            \
      [&](auto... a) { return DAXI_ColourMatrix_##SUFFIX##_C3R_MT(a..., matrix); })
    COLOURS(bytes, 8u, 1);
    COLOURS(words, 16u);
    COLOURS(floats, 32f);
#undef COLOURS
    digestColours(on, words, digest, DAXI_SRGBToXYZ_16u_C3R_MT, DAXI_XYZToSRGB_16u_C3R_MT, DAXI_XYZToBGR_16u_C3R_MT);
    double gains[3];
    std::vector<uint64_t> buffer(3 * 65536);
    ASSERT_EQ(DAXI_GrayWorld_32f_C3R(floats.data(), floats.step(), kColourSize, gains), DAX_STS_OK);
    digest.add(gains, sizeof gains);
    ASSERT_EQ(DAXI_WhitePatch_32f_C3R(floats.data(), floats.step(), kColourSize, 0.99, gains, buffer.data()),
              DAX_STS_OK);
    digest.add(gains, sizeof gains);
    EXPECT_EQ(digest.value(), 0xB8C493F35759825Bu) << threads << " threads";
  }
}

}  // namespace
}  // namespace dax::test

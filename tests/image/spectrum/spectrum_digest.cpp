#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Spectra) {
  constexpr DaxiSize kSize = {123, 45};
  TestImage<DaxComplex32f> spectrum(kSize), filtered(kSize);
  TestImage<float> picture(kSize), kernel({12, 9}), result(kSize);
  Random random(4);
  const auto number = [&] { return static_cast<float>(random.below(1 << 20) - (1 << 19)) / 37; };
  spectrum.fill([&](int32_t, int32_t) { return DaxComplex32f{number(), number()}; });
  kernel.fill([&](int32_t, int32_t) { return number(); });
  std::vector<uint8_t> buffer(1 << 21);
  const DaxiNotch notch = {30.5, -7, 4};
  const DaxiBandCfg band = {0.3, 0.1, 1, 0};
  const DaxiWindowCfg window = {DAXI_WINDOW_TUKEY, 0, 0.4};
  Digest digest;
  ASSERT_EQ(DAXI_LogSpectrum_32fc32f_C1R(spectrum.data(), 123, picture.data(), 123, kSize), DAX_STS_OK);
  digest.add(picture);
  ASSERT_EQ(DAXI_Phase_32fc32f_C1R(spectrum.data(), 123, picture.data(), 123, kSize), DAX_STS_OK);
  digest.add(picture);
  ASSERT_EQ(
      DAXI_SpectrumNotch_32fc_C1R(spectrum.data(), 123, filtered.data(), 123, kSize, 123, &notch, 1, buffer.data()),
      DAX_STS_OK);
  digest.add(filtered);
  ASSERT_EQ(DAXI_SpectrumBand_32fc_C1R(spectrum.data(), 123, filtered.data(), 123, kSize, 123, &band), DAX_STS_OK);
  digest.add(filtered);
  ASSERT_EQ(DAXI_ApplyWindow_32f_C1R(picture.data(), 123, result.data(), 123, kSize, &window, buffer.data()),
            DAX_STS_OK);
  digest.add(result);
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_ConvolveDftBufferSize_32f(kSize, {12, 9}, &bytes), DAX_STS_OK);
  buffer.resize(bytes);
  ASSERT_EQ(DAXI_ConvolveDft_32f_C1R(picture.data(), 123, kSize, kernel.data(), 12, {12, 9}, result.data(), 123,
                                     DAXI_CONVOLVE_SAME, buffer.data()),
            DAX_STS_OK);
  EXPECT_EQ(digest.add(result).value(), 0x40221D255B4A3757u);
}

}  // namespace
}  // namespace dax::test

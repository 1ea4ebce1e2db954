// Spectra number by number, their filters, windows, and convolution by transforms.
#include "daxi/spectrum.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

#include "daxi/convolve_dft.h"
#include "daxi/spectrum_filter.h"
#include "daxi/window_function.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

constexpr DaxiSize kSize = {37, 20};
using Spectrum = TestImage<DaxComplex32f>;

Spectrum randomSpectrum(DaxiSize size, uint64_t seed) {
  Spectrum image(size, 3);
  Random random(seed);
  const auto part = [&] { return static_cast<float>(random.below(20001) - 10000) / 8; };
  image.fill([&](int32_t, int32_t) { return DaxComplex32f{part(), part()}; });
  return image;
}

std::complex<double> numberOf(DaxComplex32f a) {
  return {a.re, a.im};
}

TEST(Spectra, NumbersByTheirDefinitions) {
  MockPool pool;
  Spectrum a = randomSpectrum(kSize, 1);
  const Spectrum b = randomSpectrum(kSize, 2);
  a.at(3, 3) = {0, 0};
  TestImage<float> magnitude(kSize), phase(kSize), logarithm(kSize);
  Spectrum product(kSize), conjugate(kSize);
  const auto real = [&](auto function, TestImage<float>& to) {
    ASSERT_EQ(function(&pool, 3, a.data(), a.step(), to.data(), to.step(), kSize), DAX_STS_OK);
  };
  real(DAXI_Magnitude_32fc32f_C1R_MT, magnitude);
  real(DAXI_Phase_32fc32f_C1R_MT, phase);
  real(DAXI_LogSpectrum_32fc32f_C1R_MT, logarithm);
  const auto both = [&](auto function, Spectrum& to) {
    ASSERT_EQ(function(a.data(), a.step(), b.data(), b.step(), to.data(), to.step(), kSize), DAX_STS_OK);
  };
  both(DAXI_MulSpectrum_32fc_C1R, product);
  both(DAXI_MulConjSpectrum_32fc_C1R, conjugate);
  for (int32_t y = 0; y < kSize.height; ++y) {
    for (int32_t x = 0; x < kSize.width; ++x) {
      const auto u = numberOf(a.at(x, y)), v = numberOf(b.at(x, y));
      EXPECT_FLOAT_EQ(magnitude.at(x, y), static_cast<float>(std::abs(u)));
      EXPECT_FLOAT_EQ(phase.at(x, y), static_cast<float>(std::arg(u)));
      EXPECT_FLOAT_EQ(logarithm.at(x, y), static_cast<float>(std::log1p(std::abs(u))));
      EXPECT_LE(std::abs(numberOf(product.at(x, y)) - u * v), 1e-7 * std::abs(u * v));
      EXPECT_LE(std::abs(numberOf(conjugate.at(x, y)) - u * std::conj(v)), 1e-7 * std::abs(u * v));
    }
  }
}

TEST(Spectra, QuadrantsMoveAndComeBack) {
  for (const DaxiSize size : {DaxiSize{1, 1}, DaxiSize{6, 5}, DaxiSize{7, 2}, DaxiSize{1, 9}}) {
    TestImage<float> src(size, 2), shifted(size, 1), back(size);
    src.fill([](int32_t x, int32_t y) { return 100 * y + x; });
    const auto shift = [&](TestImage<float>& from, TestImage<float>& to, int32_t isBack) {
      ASSERT_EQ(DAXI_ShiftQuadrants_32f_C1R(from.data(), from.step(), to.data(), to.step(), size, isBack), DAX_STS_OK);
    };
    shift(src, shifted, 0);
    shift(shifted, back, 1);
    EXPECT_EQ(shifted.at(size.width / 2, size.height / 2), 0);
    EXPECT_TRUE(samePixels(src, back));
  }
}

double gaussianOf(double t, double sigma) {
  return std::exp(-t * t / (2 * sigma * sigma));
}

// The nearest of all copies of a place.
double distanceTo(double x, double y, double u, double v, DaxiSize size) {
  double nearest = 1e300;
  for (int i = -2; i <= 2; ++i) {
    for (int j = -2; j <= 2; ++j)
      nearest = std::min(nearest, std::hypot(x - u + i * size.width, y - v + j * size.height));
  }
  return nearest;
}

TEST(SpectrumFilters, NotchesByDefinitionOnWholeAndHalfSpectra) {
  const DaxiNotch notches[] = {{5, -3, 1.5}, {-12.5, 7.25, 0.7}, {1, 0, 3}};
  for (const int32_t width : {37, 36}) {
    const DaxiSize whole = {width, 20}, half = {width / 2 + 1, 20};
    const Spectrum src = randomSpectrum(whole, 3);
    Spectrum all(whole), part(half);
    for (const DaxiSize size : {whole, half}) {
      Spectrum& to = size.width == width ? all : part;
      uint64_t bytes = 0;
      ASSERT_EQ(DAXI_SpectrumNotchBufferSize(size, 3, &bytes), DAX_STS_OK);
      std::vector<uint8_t> buffer(bytes);
      ASSERT_EQ(DAXI_SpectrumNotch_32fc_C1R(src.data(), src.step(), to.data(), to.step(), size, width, notches, 3,
                                            buffer.data()),
                DAX_STS_OK);
    }
    for (int32_t y = 0; y < 20; ++y) {
      for (int32_t x = 0; x < width; ++x) {
        double weight = 1;
        for (const DaxiNotch& each : notches) {
          for (const int sign : {1, -1}) {
            weight *= 1 - gaussianOf(distanceTo(x, y, sign * each.u, sign * each.v, whole), each.sigma);
          }
        }
        if (x == 0 && y == 0) weight = 1;
        const auto right = weight * numberOf(src.at(x, y));
        ASSERT_LE(std::abs(numberOf(all.at(x, y)) - right), 1e-6 * std::abs(right) + 1e-12) << x << " " << y;
        ASSERT_TRUE(x >= half.width || sameBits(part.at(std::min(x, half.width - 1), y), all.at(x, y)));
      }
    }
  }
}

TEST(SpectrumFilters, BandsByDefinition) {
  const Spectrum src = randomSpectrum(kSize, 4);
  for (const int32_t keep : {0, 1}) {
    const DaxiBandCfg cfg = {0.2, 0.03, keep, 0};
    Spectrum dst(kSize);
    ASSERT_EQ(DAXI_SpectrumBand_32fc_C1R(src.data(), src.step(), dst.data(), dst.step(), kSize, kSize.width, &cfg),
              DAX_STS_OK);
    for (int32_t y = 0; y < kSize.height; ++y) {
      for (int32_t x = 0; x < kSize.width; ++x) {
        const double u = std::remainder(double(x) / kSize.width, 1), v = std::remainder(double(y) / kSize.height, 1);
        const double g = gaussianOf(std::hypot(u, v) - 0.2, 0.03), weight = x + y == 0 ? 1 : keep ? g : 1 - g;
        const auto right = weight * numberOf(src.at(x, y));
        ASSERT_LE(std::abs(numberOf(dst.at(x, y)) - right), 1e-6 * std::abs(right) + 1e-12) << x << " " << y;
      }
    }
  }
}

double weightOf(const DaxiWindowCfg& cfg, int32_t n, int32_t count) {
  const double period = cfg.symmetric ? count - 1 : count, t = 2 * std::numbers::pi * n / period;
  if (count == 1) return 1;
  if (cfg.kind == DAXI_WINDOW_HANN) return 0.5 - 0.5 * std::cos(t);
  if (cfg.kind == DAXI_WINDOW_HAMMING) return 0.54 - 0.46 * std::cos(t);
  if (cfg.kind == DAXI_WINDOW_BLACKMAN) return 0.42 - 0.5 * std::cos(t) + 0.08 * std::cos(2 * t);
  const double flank = std::min<double>(n, period - n) / period / (cfg.alpha / 2);
  return flank < 1 ? 0.5 - 0.5 * std::cos(std::numbers::pi * flank) : 1;
}

TEST(Windows, WeightsByDefinitionAndTheirProducts) {
  MockPool pool;
  for (int32_t i = 0; i < 16; ++i) {
    const DaxiWindowCfg cfg = {i % 4, i / 4 % 2, i / 8 ? 0.3 : 0.9};
    for (const int32_t count : {1, 2, 3, 10, 101}) {
      std::vector<double> weights(size_t(count), -1);
      ASSERT_EQ(DAXI_Window_64f(count, &cfg, weights.data()), DAX_STS_OK);
      for (int32_t n = 0; n < count; ++n) ASSERT_NEAR(weights[size_t(n)], weightOf(cfg, n, count), 1e-14) << i;
    }
    TestImage<uint8_t> src(kSize, 1);
    src.randomize(3);
    TestImage<float> dst(kSize, 2);
    uint64_t bytes = 0;
    ASSERT_EQ(DAXI_ApplyWindowBufferSize_8u32f(kSize, &bytes), DAX_STS_OK);
    std::vector<uint8_t> buffer(bytes);
    ASSERT_EQ(DAXI_ApplyWindow_8u32f_C1R_MT(&pool, 3, src.data(), src.step(), dst.data(), dst.step(), kSize, &cfg,
                                            buffer.data()),
              DAX_STS_OK);
    for (int32_t y = 0; y < kSize.height; ++y) {
      for (int32_t x = 0; x < kSize.width; ++x) {
        ASSERT_NEAR(dst.at(x, y), src.at(x, y) * weightOf(cfg, x, kSize.width) * weightOf(cfg, y, kSize.height), 2e-5);
      }
    }
  }
}

TestImage<float> greyLevels(DaxiSize size, uint64_t seed) {
  TestImage<float> image(size, 2);
  Random random(seed);
  return std::move(image.fill([&](int32_t, int32_t) { return 100 + random.below(56); }));
}

// Of the full result, in doubles.
double convolved(const TestImage<float>& src, const TestImage<float>& kernel, int32_t x, int32_t y, bool isTurned) {
  const DaxiSize size = kernel.size();
  double sum = 0;
  for (int32_t j = 0; j < size.height; ++j) {
    for (int32_t i = 0; i < size.width; ++i) {
      const int32_t u = x - i, v = y - j;
      if (u < 0 || v < 0 || u >= src.size().width || v >= src.size().height) continue;
      const double k = isTurned ? kernel.at(size.width - 1 - i, size.height - 1 - j) : kernel.at(i, j);
      sum += k * src.at(u, v);
    }
  }
  return sum;
}

TEST(ConvolveDft, AllPartsByDefinition) {
  MockPool pool;
  for (const DaxiSize size : {DaxiSize{61, 40}, DaxiSize{9, 11}, DaxiSize{1, 12}}) {
    const DaxiSize kernelSize = {std::min(size.width, 7), 10};
    const TestImage<float> src = greyLevels(size, 1), kernel = greyLevels(kernelSize, 2);
    uint64_t bytes = 0;
    ASSERT_EQ(DAXI_ConvolveDftBufferSize_32f(size, kernelSize, &bytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> buffer(bytes);
    for (int32_t part = 0; part < 6; ++part) {
      const bool isCorrelation = part >= 3;
      DaxiSize dstSize;
      ASSERT_EQ(DAXI_ConvolveDftSize(size, kernelSize, part % 3, &dstSize), DAX_STS_OK);
      TestImage<float> dst(dstSize, 1);
      dst.remember();
      const auto function = isCorrelation ? DAXI_CorrelateDft_32f_C1R_MT : DAXI_ConvolveDft_32f_C1R_MT;
      ASSERT_EQ(function(&pool, 3, src.data(), src.step(), size, kernel.data(), kernel.step(), kernelSize, dst.data(),
                         dst.step(), part % 3, buffer.data()),
                DAX_STS_OK);
      EXPECT_TRUE(dst.paddingUntouched());
      const int32_t left = part % 3 == 0 ? 0 : part % 3 == 1 ? (kernelSize.width - 1) / 2 : kernelSize.width - 1;
      const int32_t top = part % 3 == 0 ? 0 : part % 3 == 1 ? (kernelSize.height - 1) / 2 : kernelSize.height - 1;
      for (int32_t y = 0; y < dstSize.height; ++y) {
        for (int32_t x = 0; x < dstSize.width; ++x) {
          // Floats of a million are 0.0625 apart.
          ASSERT_NEAR(dst.at(x, y), convolved(src, kernel, x + left, y + top, isCorrelation), 0.1) << part;
        }
      }
    }
  }
}

// A picture of 512 x 512 and a kernel of 64 x 64 about grey 127: with their means the error was several levels.
TEST(ConvolveDft, MeansCostNoDigits) {
  const DaxiSize size = {512, 512}, kernelSize = {64, 64};
  const TestImage<float> src = greyLevels(size, 1), kernel = greyLevels(kernelSize, 2);
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_ConvolveDftBufferSize_32f(size, kernelSize, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  TestImage<float> dst({449, 449});
  ASSERT_EQ(DAXI_CorrelateDft_32f_C1R(src.data(), src.step(), size, kernel.data(), kernel.step(), kernelSize,
                                      dst.data(), dst.step(), DAXI_CONVOLVE_VALID, buffer.data()),
            DAX_STS_OK);
  for (int32_t i = 0; i < 449; i += 7) {
    // Values of 66 million: floats are 4 apart.
    EXPECT_NEAR(dst.at(i, 448 - i), convolved(src, kernel, i + 63, 448 - i + 63, true), 2.2);
  }
}

}  // namespace
}  // namespace dax::test

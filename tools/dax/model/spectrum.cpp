#include "model/spectrum.h"

#include <algorithm>
#include <cmath>

#include "base/library_call.h"
#include "daxi/fourier.h"
#include "daxi/spectrum.h"
#include "daxi/window_function.h"

namespace dax::tool {
namespace {

using Transform = decltype(&DAXI_Dft_32fc_C1R);

void transform(Transform function, Spectrum& spectrum, const char* step) {
  const DaxiSize size = spectrum.size;
  uint64_t planBytes = 0, bytes = 0;
  check(DAXI_DftPlanModelSize_32f(size, &planBytes), "Fourier plan");
  check(DAXI_DftBufferSize_32f(size, &bytes), "Fourier buffer");
  const Memory plan(planBytes), buffer(bytes);
  check(DAXI_DftPlan_32f(size, plan.get()), "Fourier plan");
  DaxComplex32f* const values = spectrum.values.data();
  check(function(values, size.width, values, size.width, size, DAXI_DFT_BACKWARD, plan.get(), planBytes, buffer.get()),
        step);
}

void fadeEdges(std::vector<float>& pixels, DaxiSize size) {
  uint64_t bytes = 0;
  check(DAXI_ApplyWindowBufferSize_32f(size, &bytes), "window buffer");
  const Memory buffer(bytes);
  DaxiWindowCfg cfg;
  check(DAXI_WindowDefaultCfg(&cfg), "window");
  std::vector<float> faded(pixels.size());
  check(DAXI_ApplyWindow_32f_C1R(pixels.data(), size.width, faded.data(), size.width, size, &cfg, buffer.get()),
        "window");
  pixels = std::move(faded);
}

// Where a column or row of the picture lies in the spectrum, and back.
int32_t inSpectrum(int32_t place, int32_t side) {
  return (place + side - side / 2) % side;
}

}  // namespace

Spectrum spectrumOf(const Picture& picture, bool window) {
  const bool hasValues = picture.hasValues();
  const DaxiSize size = picture.grey.size;
  std::vector<float> pixels(picture.grey.pixels.begin(), picture.grey.pixels.end());
  if (hasValues) pixels.assign(picture.values.pixels.begin(), picture.values.pixels.end());
  if (window) fadeEdges(pixels, size);
  Spectrum spectrum{size, std::vector<DaxComplex32f>(pixels.size())};
  std::transform(pixels.begin(), pixels.end(), spectrum.values.begin(), [](float v) { return DaxComplex32f{v, 0}; });
  transform(DAXI_Dft_32fc_C1R, spectrum, "Fourier transform");
  return spectrum;
}

GreyImage pictureOf(const Spectrum& spectrum) {
  const DaxiSize size = spectrum.size;
  std::vector<float> levels(spectrum.values.size());
  check(DAXI_LogSpectrum_32fc32f_C1R(spectrum.values.data(), size.width, levels.data(), size.width, size), "logarithm");
  const float mean = levels[0];
  levels[0] = 0;
  const float max = std::max(*std::max_element(levels.begin(), levels.end()), 1e-6f);
  levels[0] = std::min(mean, max);
  GreyImage picture = makeGreyImage(size);
  for (int32_t y = 0; y < size.height; ++y) {
    const float* const from = levels.data() + size_t(inSpectrum(y, size.height)) * size_t(size.width);
    for (int32_t x = 0; x < size.width; ++x) {
      picture.row(y)[x] = static_cast<uint8_t>(std::lround(255 * from[inSpectrum(x, size.width)] / max));
    }
  }
  return picture;
}

std::vector<SpectrumPeak> strongestPeaks(const Spectrum& spectrum, size_t count, int32_t closest) {
  const DaxiSize size = spectrum.size;
  const auto strength = [&](int32_t column, int32_t row) {
    const size_t x = size_t(inSpectrum((column + size.width) % size.width, size.width));
    const size_t y = size_t(inSpectrum((row + size.height) % size.height, size.height));
    const DaxComplex32f value = spectrum.values[y * size_t(size.width) + x];
    return std::hypot(double{value.re}, double{value.im});
  };
  const auto isPeak = [&](int32_t column, int32_t row) {
    const double own = strength(column, row);
    for (int32_t i = 0; i < 9; ++i) {
      if (i != 4 && strength(column + i % 3 - 1, row + i / 3 - 1) > own) return false;
    }
    return own > 0;
  };
  std::vector<SpectrumPeak> peaks;
  for (int32_t row = 0; row <= size.height / 2; ++row) {
    for (int32_t column = 0; column < size.width; ++column) {
      const int32_t u = column - size.width / 2, v = row - size.height / 2;
      if (std::max(std::abs(u), std::abs(v)) <= closest || (v == 0 && u > 0)) continue;
      if (isPeak(column, row)) peaks.push_back({column, row, strength(column, row) / double(spectrum.values.size())});
    }
  }
  std::stable_sort(peaks.begin(), peaks.end(), [](const auto& a, const auto& b) { return a.magnitude > b.magnitude; });
  if (peaks.size() > count) peaks.resize(count);
  return peaks;
}

void takeOut(Spectrum& spectrum, std::vector<DaxiNotch> places) {
  const DaxiSize size = spectrum.size;
  const int32_t middleX = size.width / 2, middleY = size.height / 2;
  for (DaxiNotch& place : places) place.u -= middleX, place.v -= middleY;
  const auto count = static_cast<int32_t>(places.size());
  uint64_t bytes = 0;
  check(DAXI_SpectrumNotchBufferSize(size, count, &bytes), "notch buffer");
  const Memory buffer(bytes);
  DaxComplex32f* const values = spectrum.values.data();
  check(DAXI_SpectrumNotch_32fc_C1R(values, size.width, values, size.width, size, size.width, places.data(), count,
                                    buffer.get()),
        "notches");
}

std::vector<int> levelsOf(const Spectrum& spectrum, int maxValue) {
  Spectrum picture = spectrum;
  transform(DAXI_Idft_32fc_C1R, picture, "Fourier transform");
  std::vector<int> levels(picture.values.size());
  std::transform(picture.values.begin(), picture.values.end(), levels.begin(), [maxValue](DaxComplex32f value) {
    return static_cast<int>(std::lround(std::clamp(value.re, 0.0f, static_cast<float>(maxValue))));
  });
  return levels;
}

}  // namespace dax::tool

// Spectra of pictures, for looking at and for taking places out of them.
#pragma once

#include <vector>

#include "daxi/spectrum_filter.h"
#include "io/picture.h"

namespace dax::tool {

// The spectrum of a grey picture, frequency 0 in the first pixel.
struct Spectrum {
  DaxiSize size;
  std::vector<DaxComplex32f> values;
};

// A place where a spectrum is stronger than around it, in columns and rows of its picture.
struct SpectrumPeak {
  int32_t column, row;
  double magnitude;  // grey levels: half the amplitude of the wave
};

// window: fades the edges out first, so that they do not make a cross.
Spectrum spectrumOf(const Picture& picture, bool window);

// ln(1 + |F|), frequency 0 at column width / 2, row height / 2, the largest value but that of frequency 0 white.
GreyImage pictureOf(const Spectrum& spectrum);

// The strongest `count` of the upper half, more than `closest` columns or rows from frequency 0.
std::vector<SpectrumPeak> strongestPeaks(const Spectrum& spectrum, size_t count, int32_t closest);

// Notches of places of the picture.
void takeOut(Spectrum& spectrum, std::vector<DaxiNotch> places);

// The picture of a spectrum, in whole levels.
std::vector<int> levelsOf(const Spectrum& spectrum, int maxValue);

}  // namespace dax::tool

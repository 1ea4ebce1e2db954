// Rows of stretched grey values, any instruction set.
#pragma once

#include <cmath>

#include "daxi/normalise.h"
#include "image/convert/convert_portable.h"

namespace dax {

struct Stretch {
  double low, high, outLow, outRange, range;

  Stretch(double lowest, double highest, const DaxiNormaliseCfg& cfg)
      : low(lowest),
        high(highest),
        outLow(cfg.outLow),
        outRange(cfg.outHigh - outLow),
        range(low < high ? high - low : 1) {}

  // Of 16 bits to whole levels from 0 to at most 255. Then single precision holds the numerators, and rounds no quotient to a
  // half that is none, or beyond: these are at least 1 / 131070 away, while floats below 256 are 1 / 65536 apart.
  bool singleIsExact() const {
    return outLow == 0 && outRange >= 1 && outRange <= 255 && outRange == std::floor(outRange);
  }

  // NaN stays.
  double at(double x) const {
    const double held = x < low ? low : x > high ? high : x;
    return outLow + (held - low) * outRange / range;
  }
};

namespace portable {

template <class From, class To>
void stretchRow(const From* src, To* dst, int32_t count, const Stretch& stretch) {
  for (int32_t x = 0; x < count; ++x) dst[x] = pixelOf<To>(stretch.at(static_cast<double>(src[x])));
}

}  // namespace portable
}  // namespace dax

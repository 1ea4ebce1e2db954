// Rows of stretched grey values, any instruction set.
#pragma once

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

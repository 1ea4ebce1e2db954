// Rows of pixels within limits, any instruction set.
#pragma once

#include "image/logic/in_range.h"

namespace dax::portable {

template <class T, int kChannels>
void inRangeRow(const T* src, uint8_t* dst, int32_t width, const T* low, const T* high) {
  for (int32_t x = 0; x < width; ++x) {
    bool inside = true;
    for (int c = 0; c < kChannels; ++c) {
      const T value = src[kChannels * x + c];
      inside = inside & (value >= low[c]) & (value <= high[c]);
    }
    dst[x] = inside ? 255 : 0;
  }
}

}  // namespace dax::portable

// Rows of copies where a mask says so, any instruction set.
#pragma once

#include <cstdint>

namespace dax::portable {

template <class T, int kChannels>
void maskedRow(const T* src, const uint8_t* mask, T* dst, int32_t width) {
  for (int32_t x = 0; x < width; ++x) {
    for (int32_t c = 0; c < kChannels; ++c) {
      const int32_t i = x * kChannels + c;
      dst[i] = mask[x] != 0 ? src[i] : dst[i];
    }
  }
}

template <class T, int kChannels>
void maskedConstantRow(const T* value, const uint8_t* mask, T* dst, int32_t width) {
  for (int32_t x = 0; x < width; ++x) {
    for (int32_t c = 0; c < kChannels; ++c) {
      const int32_t i = x * kChannels + c;
      dst[i] = mask[x] != 0 ? value[c] : dst[i];
    }
  }
}

}  // namespace dax::portable

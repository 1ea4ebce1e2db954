// Rows of channels, any instruction set. Compilers turn the loops over a fixed number of channels into loads and stores of
// interleaved vectors.
#pragma once

#include <array>
#include <cstdint>

namespace dax::portable {

template <class T, int kChannels>
void splitRow(const T* __restrict src, const std::array<T*, kChannels>& planes, int32_t width) {
  T* __restrict const a = planes[0];
  T* __restrict const b = planes[1];
  T* __restrict const c = planes[2];
  T* __restrict const d = planes[kChannels - 1];
  for (int32_t x = 0; x < width; ++x) {
    a[x] = src[x * kChannels], b[x] = src[x * kChannels + 1], c[x] = src[x * kChannels + 2];
    if constexpr (kChannels == 4) d[x] = src[x * kChannels + 3];
  }
}

template <class T, int kChannels>
void mergeRow(const std::array<const T*, kChannels>& planes, T* __restrict dst, int32_t width) {
  const T* const a = planes[0];
  const T* const b = planes[1];
  const T* const c = planes[2];
  const T* const d = planes[kChannels - 1];
  for (int32_t x = 0; x < width; ++x) {
    dst[x * kChannels] = a[x], dst[x * kChannels + 1] = b[x], dst[x * kChannels + 2] = c[x];
    if constexpr (kChannels == 4) dst[x * kChannels + 3] = d[x];
  }
}

template <class T, int kChannels>
void pickRow(const T* __restrict src, int32_t channel, T* __restrict dst, int32_t width) {
  for (int32_t x = 0; x < width; ++x) dst[x] = src[x * kChannels + channel];
}

template <class T, int kFrom, int kTo>
void swapRow(const T* src, T* dst, int32_t width, const int32_t* order, T value) {
  for (int32_t x = 0; x < width; ++x) {
    T pixel[1 + kFrom] = {value};
    for (int32_t c = 0; c < kFrom; ++c) pixel[1 + c] = src[x * kFrom + c];
    for (int32_t c = 0; c < kTo; ++c) dst[x * kTo + c] = pixel[1 + order[c]];
  }
}

}  // namespace dax::portable

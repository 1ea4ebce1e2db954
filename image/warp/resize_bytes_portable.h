// Bytes resized with whole weights, one element at a time.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "image/warp/resize_taps.h"

namespace dax {

// Elements that are computed at a time.
constexpr int32_t kResizeGroup = 8;

// Where the bytes of a group's taps lie: within 32 bytes from `base` on, at `index` those of the eight first taps, then those of
// the eight second ones; or further apart, with a base below 0.
struct ByteSpan {
  static constexpr int32_t kBytes = 32;
  ByteSpan(const int32_t* firsts, int32_t taps, int32_t channels) {
    const auto [low, high] = std::minmax_element(firsts, firsts + kResizeGroup);
    base = *high + (taps - 1) * channels - *low < kBytes ? *low : -1;
    for (int32_t i = 0; i < kResizeGroup; ++i) {
      index[i] = static_cast<uint8_t>(firsts[i] - *low);
      index[i + kResizeGroup] = static_cast<uint8_t>(firsts[i] - *low + channels);
    }
  }
  int32_t base;
  uint8_t index[2 * kResizeGroup];
};

// The taps of all groups; weights lie by group, tap and element.
template <class Weight>
struct ByteTaps {
  int32_t groups, taps, channels;
  const int32_t* firsts;
  const ByteSpan* spans;
  const Weight* weights;
};

namespace portable {

// 1/256 levels: 255 * 256 fits 16 bits, the sum of two of them with weights 31.
constexpr int32_t kPairMidBits = 8;

// Sums of the elements of groups first..end - 1.
template <class Sum, class Weight, class Store>
void sumAlongX(const ByteTaps<Weight>& at, const uint8_t* row, int32_t first, int32_t end, Store store) {
  for (int32_t e = first * kResizeGroup; e < end * kResizeGroup; ++e) {
    const Weight* const w = at.weights + ptrdiff_t{e / kResizeGroup} * at.taps * kResizeGroup + e % kResizeGroup;
    const uint8_t* const pixel = row + at.firsts[e];
    Sum sum = 0;
    for (int32_t k = 0; k < at.taps; ++k) sum += pixel[k * at.channels] * Sum{w[k * kResizeGroup]};
    store(e, sum);
  }
}

inline void pairGroups(const ByteTaps<uint16_t>& at, const uint8_t* row, int32_t first, int32_t end, uint16_t* mid) {
  constexpr int32_t kShift = kWeightBits - kPairMidBits;
  sumAlongX<uint32_t>(at, row, first, end, [&](int32_t e, uint32_t sum) {
    mid[e] = static_cast<uint16_t>((sum + (1 << (kShift - 1))) >> kShift);
  });
}

inline void wideGroups(const ByteTaps<int32_t>& at, const uint8_t* row, int32_t first, int32_t end, float* mid) {
  sumAlongX<int32_t>(at, row, first, end, [&](int32_t e, int32_t sum) { mid[e] = static_cast<float>(sum); });
}

inline void pairAlongX(const ByteTaps<uint16_t>& at, const uint8_t* row, uint16_t* mid) {
  pairGroups(at, row, 0, at.groups, mid);
}

inline void wideAlongX(const ByteTaps<int32_t>& at, const uint8_t* row, float* mid) {
  wideGroups(at, row, 0, at.groups, mid);
}

// The last rounding is half to even.
inline void pairAlongY(const uint16_t* a, const uint16_t* b, uint32_t wa, uint32_t wb, uint8_t* dst, int32_t count) {
  constexpr int32_t kShift = kWeightBits + kPairMidBits;
  for (int32_t i = 0; i < count; ++i) {
    const uint32_t sum = a[i] * wa + b[i] * wb;
    dst[i] = static_cast<uint8_t>((sum + ((1u << (kShift - 1)) - 1) + (sum >> kShift & 1)) >> kShift);
  }
}

// Columns first..count - 1.
inline void wideColumns(const float* const* rows, const float* weights, int32_t taps, uint8_t* dst, int32_t first,
                        int32_t count) {
  constexpr int32_t kBlock = 32;
  for (int32_t i = first; i < count; i += kBlock) {
    const int32_t n = std::min(kBlock, count - i);
    float sums[kBlock] = {};
    for (int32_t j = 0; j < n; ++j) sums[j] = weights[0] * rows[0][i + j];
    for (int32_t k = 1; k < taps; ++k) {
      for (int32_t j = 0; j < n; ++j) sums[j] += weights[k] * rows[k][i + j];
    }
    for (int32_t j = 0; j < n; ++j) {
      dst[i + j] = static_cast<uint8_t>(static_cast<int32_t>(std::rint(std::clamp(sums[j], 0.0f, 255.0f))));
    }
  }
}

inline void wideAlongY(const float* const* rows, const float* weights, int32_t taps, uint8_t* dst, int32_t count) {
  wideColumns(rows, weights, taps, dst, 0, count);
}

// Means of two by two pixels, halves to even.
template <int kChannels>
void halveRows(const uint8_t* a, const uint8_t* b, uint8_t* dst, int32_t width) {
  for (int32_t x = 0; x < width; ++x, a += 2 * kChannels, b += 2 * kChannels) {
    for (int c = 0; c < kChannels; ++c) {
      const int32_t sum = a[c] + a[c + kChannels] + b[c] + b[c + kChannels];
      dst[kChannels * ptrdiff_t{x} + c] = static_cast<uint8_t>((sum + 1 + (sum >> 2 & 1)) >> 2);
    }
  }
}

}  // namespace portable
}  // namespace dax

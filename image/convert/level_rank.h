// Values of given ranks among the pixels of an image, without sorting them: a radix search, a byte at a time, of two
// ranks at once.
#pragma once

#include <cmath>
#include <cstdint>
#include <type_traits>

#include "frame/memory/work_buffer.h"
#include "frame/numeric/rank.h"
#include "frame/numeric/total_order.h"
#include "frame/rows.h"

namespace dax {

template <class T, class Use>
void forFinitePixels(const T* src, int32_t srcStep, DaxiSize size, Use use) {
  for (int32_t y = 0; y < size.height; ++y) {
    const T* const row = rowAt(src, srcStep, y);
    for (int32_t x = 0; x < size.width; ++x) {
      if constexpr (std::is_floating_point_v<T>) {
        if (!std::isfinite(row[x])) continue;
      }
      use(row[x]);
    }
  }
}

template <class T>
uint64_t countFinite(const T* src, int32_t srcStep, DaxiSize size) {
  uint64_t count = pixelsOf(size);
  if constexpr (std::is_floating_point_v<T>) {
    count = 0;
    forFinitePixels(src, srcStep, size, [&](T) { ++count; });
  }
  return count;
}

struct RankSearch {
  uint64_t rank;
  uint32_t prefix = 0;
  uint64_t counts[256] = {};

  // Takes the byte in which the rank lies.
  void descend() {
    uint32_t byte = 0;
    while (rank > counts[byte]) rank -= counts[byte++];
    prefix = prefix << 8 | byte;
    for (uint64_t& count : counts) count = 0;
  }
};

// Finite pixels only, of which there are at least as many as the greater rank.
template <class T>
void levelsOfRanks(const T* src, int32_t srcStep, DaxiSize size, const uint64_t (&ranks)[2], T (&levels)[2]) {
  RankSearch searches[2] = {{ranks[0]}, {ranks[1]}};
  for (int shift = 8 * (static_cast<int>(sizeof(T)) - 1); shift >= 0; shift -= 8) {
    forFinitePixels(src, srcStep, size, [&](T pixel) {
      const uint64_t key = orderedBits(pixel);
      for (RankSearch& search : searches) {
        if (key >> (shift + 8) == search.prefix) ++search.counts[key >> shift & 255];
      }
    });
    for (RankSearch& search : searches) search.descend();
  }
  for (int i = 0; i < 2; ++i) levels[i] = fromOrderedBits<T>(searches[i].prefix);
}

}  // namespace dax

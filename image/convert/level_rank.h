// Values of given ranks among the pixels of an image, without sorting them: a radix search, a byte at a time, of two ranks at once.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "frame/memory/work_buffer.h"
#include "frame/rows.h"

namespace dax {

// Pixels as unsigned integers in the same order, and back; -0 comes before 0.
inline uint8_t orderedBits(uint8_t v) {
  return v;
}
inline uint16_t orderedBits(uint16_t v) {
  return v;
}
inline uint16_t orderedBits(int16_t v) {
  return static_cast<uint16_t>(static_cast<uint16_t>(v) ^ 0x8000u);
}
inline uint32_t orderedBits(float v) {
  const auto bits = std::bit_cast<uint32_t>(v);
  return bits ^ (bits >> 31 ? ~uint32_t{0} : uint32_t{1} << 31);
}
template <class T>
T fromOrderedBits(uint32_t key) {
  if constexpr (std::is_same_v<T, float>)
    return std::bit_cast<float>(key ^ (key >> 31 ? uint32_t{1} << 31 : ~uint32_t{0}));
  else if constexpr (std::is_signed_v<T>)
    return static_cast<T>(static_cast<int32_t>(key) - 0x8000);
  else
    return static_cast<T>(key);
}

// Rank, from 1, of the share p in 0..1 of n values; products such as 0.07 * 100, rounded up to above 7, count as 7.
inline uint64_t rankOf(double p, uint64_t n) {
  const double exact = p * static_cast<double>(n);
  const double rank = std::ceil(exact - exact * 0x1p-50);
  return rank < 1 ? 1 : rank < static_cast<double>(n) ? static_cast<uint64_t>(rank) : n;
}

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

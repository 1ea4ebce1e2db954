// Samples of 16 bits in a caller's memory, whose address is any.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace dax {

inline uint16_t wordAt(const uint8_t* row, uint64_t index) {
  uint16_t word;
  std::memcpy(&word, row + 2 * index, sizeof word);
  return word;
}

inline void putWord(uint8_t* row, uint64_t index, uint16_t word) {
  std::memcpy(row + 2 * index, &word, sizeof word);
}

// Whether all words of a row are at most `max`.
inline bool wordsWithin(const uint8_t* row, uint64_t count, int32_t max) {
  int32_t largest = 0;
  for (uint64_t i = 0; i < count; ++i) largest = std::max<int32_t>(largest, wordAt(row, i));
  return largest <= max;
}

}  // namespace dax

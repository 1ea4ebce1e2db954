// Rows of samples as they are, which PFM has too.
#pragma once

#include <cstring>

#include "image/file/image_file.h"

namespace dax {

// Samples of 16 bits in a caller's memory, whose address is any.
inline uint16_t wordAt(const uint8_t* row, uint64_t index) {
  uint16_t word;
  std::memcpy(&word, row + 2 * index, sizeof word);
  return word;
}

inline void putWord(uint8_t* row, uint64_t index, uint16_t word) {
  std::memcpy(row + 2 * index, &word, sizeof word);
}

// Whether all words of a row are at most `max`.
bool wordsWithin(const uint8_t* row, uint64_t count, int32_t max);

// Turns the bytes of `count` samples around where the file's order is not this machine's.
void swapSamples(uint8_t* samples, uint64_t count, int32_t type);

// A row for a file, piece by piece.
void writeSamples(ByteSink& sink, const uint8_t* samples, uint64_t count, int32_t type, bool swap);

}  // namespace dax

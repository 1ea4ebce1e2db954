// The outer boundary of a domain as an 8-direction chain, followed on a bitmap of the domain's own pixels.
//
// Codes (H. Freeman, IRE Trans. EC-10, 1961) are numbered clockwise on the screen: 0 right, 1 right and down, 2 down,
// ... 7 right and up. Odd codes are diagonal. The chain starts at the first pixel in raster order, has the domain on
// its right, and ends when it would leave the first pixel in the first direction again.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "measure/region/domain_runs.h"

namespace dax {

inline constexpr int8_t kChainX[8] = {1, 1, 0, -1, -1, -1, 0, 1};
inline constexpr int8_t kChainY[8] = {0, 1, 1, 1, 0, -1, -1, -1};

// One bit per pixel, with a margin of one pixel on all sides. All bits are clear between uses.
class DomainBitmap {
 public:
  static size_t bytes(DaxiSize size) { return stride(size) * (static_cast<size_t>(size.height) + 2); }

  // `memory` holds bytes(size) bytes, aligned to 8.
  DomainBitmap(uint8_t* memory, DaxiSize size) : memory_(memory), stride_(stride(size)) {}

  void clear(DaxiSize size) const { std::memset(memory_, 0, bytes(size)); }

  void setBits(RunSpan run) const {
    const int32_t first = run.start + 1, last = run.end + 1;
    const uint64_t head = ~uint64_t{0} << (first % 64), tail = ~uint64_t{0} >> (63 - last % 64);
    uint64_t* at = word(run, first);
    uint64_t* const end = word(run, last);
    if (at == end) {
      *at |= head & tail;
      return;
    }
    *at |= head;
    while (++at < end) *at = ~uint64_t{0};
    *end |= tail;
  }

  // Clears the words that setBits touched.
  void clearWords(RunSpan run) const {
    uint64_t* at = word(run, run.start + 1);
    uint64_t* const end = word(run, run.end + 1);
    *at = 0;
    if (at == end) return;  // most runs fit a word; avoids the memset call that compilers make of the loop
    while (++at < end) *at = 0;
    *end = 0;
  }

  // The eight neighbours of a pixel as bits: the three above from left to right, left, right, the three below.
  uint32_t neighbours(int32_t x, int32_t y) const {
    const uint8_t* const at = memory_ + static_cast<size_t>(y) * stride_ + static_cast<size_t>(x >> 3);
    const auto three = [&](size_t row) {
      uint16_t bits;
      std::memcpy(&bits, at + row * stride_, sizeof(bits));
      return static_cast<uint32_t>(bits >> (x & 7)) & 7;
    };
    const uint32_t beside = three(1);
    return three(0) | (beside & 1) << 3 | (beside >> 2) << 4 | three(2) << 5;
  }

 private:
  // Whole words: the pixels, two bits of margin, and one more byte because neighbours() reads two bytes.
  static size_t stride(DaxiSize size) { return (static_cast<size_t>(size.width) + 2 + 8 + 63) / 64 * 8; }

  uint64_t* word(RunSpan run, int32_t bit) const {
    uint8_t* const row = memory_ + (static_cast<size_t>(run.row) + 1) * stride_;
    return reinterpret_cast<uint64_t*>(row) + bit / 64;
  }

  uint8_t* memory_;
  size_t stride_;
};

// table[neighbours][code]: the next code at a pixel that was entered by `code`. It leads to the first neighbour in
// clockwise order after the background pixel that was seen last. kNoStep where there is no neighbour.
using ChainTable = std::array<std::array<uint8_t, 8>, 256>;
extern const ChainTable kNextCode;

inline constexpr uint8_t kNoStep = 8;
// The first pixel counts as entered by an upward step: its neighbours above and to the left are background.
inline constexpr uint8_t kEntryCode = 6;

// Follows the boundary from the domain's first pixel and calls visit(code, x, y) for each step, with the pixel that it
// leads to. A single pixel has no steps.
template <class Visit>
void traceContour(const DomainBitmap& bitmap, int32_t startX, int32_t startY, Visit&& visit) {
  const uint8_t firstCode = kNextCode[bitmap.neighbours(startX, startY)][kEntryCode];
  if (firstCode == kNoStep) return;
  int32_t x = startX, y = startY;
  uint8_t code = firstCode;
  do {
    x += kChainX[code];
    y += kChainY[code];
    visit(code, x, y);
    code = kNextCode[bitmap.neighbours(x, y)][code];
  } while (x != startX || y != startY || code != firstCode);
}

// Follows the boundary of a domain on a clear bitmap, and clears it again; visits as traceContour. Returns the run of
// the first pixel; its row is -1 where the domain lies outside the region.
template <class Visit>
RunSpan forEachContourPoint(const DomainView& view, DomainBitmap bitmap, Visit&& visit) {
  RunSpan first{-1, 0, 0};
  forEachRun(view, [&](RunSpan run) {
    if (first.row < 0) first = run;
    bitmap.setBits(run);
  });
  if (first.row < 0) return first;
  traceContour(bitmap, first.start, first.row, visit);
  forEachRun(view, [&](RunSpan run) { bitmap.clearWords(run); });
  return first;
}

}  // namespace dax

// Finds the runs of a row.
#pragma once

#include <bit>
#include <cstdint>

#include "frame/dispatch.h"
#include "measure/blob/blob_scan_neon.h"
#include "measure/blob/blob_scan_portable.h"

namespace dax {

// Columns of the set bits of a word of 64 pixels, from left to right.
class Edges {
 public:
  Edges(uint64_t bits, int32_t x) : bits_(bits), x_(x) {}
  bool any() const { return bits_ != 0; }
  int32_t take() {
    const int32_t edge = x_ + std::countr_zero(bits_);
    bits_ &= bits_ - 1;
    return edge;
  }

 private:
  uint64_t bits_;
  int32_t x_;
};

// Runs of a mask, 64 pixels at a time: a run starts or ends where a foreground bit differs from its left neighbour.
// Edges are taken in pairs; a run may continue in the next word. bits64(pixels) returns the bits of a whole word.
struct MaskScan {
  static constexpr bool kClasses = false;
  static int32_t maxRuns(int32_t width) { return (width + 1) / 2; }

  template <class Bits64, class Joiner>
  static void scanRow(const uint8_t* row, int32_t width, Bits64 bits64, Joiner& joiner) {
    bool inside = false;
    int32_t start = 0;
    for (int32_t x = 0; x < width; x += 64) {
      const int32_t n = width - x;
      const uint64_t bits = n >= 64 ? bits64(row + x) : portable::foregroundBits(row + x, n);
      Edges edges(bits ^ (bits << 1 | uint64_t{inside}), x);
      while (edges.any()) {
        if (!inside) {
          start = edges.take();
          inside = true;
          if (!edges.any()) break;
        }
        joiner.add(start, edges.take() - 1);
        inside = false;
      }
    }
    if (inside) joiner.add(start, width - 1);
  }
};

// Runs of an image of classes: a run ends where the value changes.
struct ClassScan {
  static constexpr bool kClasses = true;
  static int32_t maxRuns(int32_t width) { return width; }

  template <class Bits64, class Joiner>
  static void scanRow(const uint8_t* row, int32_t width, Bits64 changeBits64, Joiner& joiner) {
    int32_t start = 0;
    const auto finish = [&](int32_t end) {
      if (row[start] != 0) joiner.add(start, end, row[start]);
      start = end + 1;
    };
    // Words begin at the second pixel, so that every pixel has a left neighbour.
    for (int32_t x = 1; x < width; x += 64) {
      const int32_t n = width - x;
      Edges edges(n >= 64 ? changeBits64(row + x) : portable::changeBits(row + x, n), x);
      while (edges.any()) finish(edges.take() - 1);
    }
    finish(width - 1);
  }
};

// Calls run(bits64) with the kernel for an instruction-set code.
template <class Scan, class Run>
auto withKernel(int32_t isa, Run&& run) {
  if constexpr (Scan::kClasses) {
    if (usesNeon(isa)) return run([](const uint8_t* p) { return neon::changeBits64(p); });
    return run([](const uint8_t* p) { return portable::changeBits64(p); });
  } else {
    if (usesNeon(isa)) return run([](const uint8_t* p) { return neon::foregroundBits64(p); });
    return run([](const uint8_t* p) { return portable::foregroundBits64(p); });
  }
}

}  // namespace dax

// Rows of local binary patterns, in strips: for one neighbour after the other a mask of the pixels that are not
// brighter than it, which then goes into the codes. Plain loops that compilers vectorise; functions of their own, so
// that there is one of each however many kinds of results take their strips.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "image/border/strip_image.h"
#include "image/texture/lbp_pattern.h"

namespace dax {

inline constexpr int32_t kLbpStrip = 256;

// Bytes that are 255 where a neighbour, the sum of taps, is at least as bright as the centre.
template <int kTaps, class T>
void compareNeighbour(const T* centre, const T* const (&taps)[4], const int32_t (&weights)[4], int32_t count,
                      uint8_t* __restrict mask) {
  using Number = std::conditional_t<std::is_same_v<T, float>, float, int32_t>;
  // Differences and weights of bytes fit 16 bits, which compilers multiply in half the instructions.
  using Factor = std::conditional_t<std::is_same_v<T, uint8_t>, int16_t, Number>;
  Factor weight[kTaps];
  for (int t = 0; t < kTaps; ++t) weight[t] = static_cast<Factor>(weights[t]);
  for (int32_t i = 0; i < count; ++i) {
    if constexpr (kTaps == 1) {
      mask[i] = taps[0][i] >= centre[i] ? 255 : 0;
    } else {
      const auto part = [&](int t) {
        const auto difference = static_cast<Factor>(static_cast<Factor>(taps[t][i]) - static_cast<Factor>(centre[i]));
        return static_cast<Number>(difference) * static_cast<Number>(weight[t]);
      };
      Number sum = part(0);
      for (int t = 1; t < kTaps; ++t) sum += part(t);
      mask[i] = sum >= 0 ? 255 : 0;
    }
  }
}

// Codes of up to so many bits, one bit after the other.
template <class Code>
class LbpBits {
 public:
  LbpBits(int32_t points, bool isTurned) : points_(points), isTurned_(isTurned) {}

  const Code* codes() const { return codes_; }

  void begin(int32_t count) { std::fill_n(codes_, count, Code{0}); }

  [[gnu::noinline]] void add(int32_t k, const uint8_t* __restrict mask, int32_t count) {
    const auto bit = static_cast<Code>(1 << k);
    // Sign extension makes 255 all bits of a code.
    for (int32_t i = 0; i < count; ++i) {
      codes_[i] = static_cast<Code>(codes_[i] | (static_cast<Code>(static_cast<int8_t>(mask[i])) & bit));
    }
  }

  [[gnu::noinline]] void end(int32_t count) {
    if (!isTurned_) return;
    const auto all = static_cast<Code>((1 << points_) - 1);
    Code plain[kLbpStrip];
    std::copy_n(codes_, count, plain);
    for (int32_t turn = 1; turn < points_; ++turn) {
      for (int32_t i = 0; i < count; ++i) {
        const auto turned = static_cast<Code>((plain[i] >> turn | plain[i] << (points_ - turn)) & all);
        codes_[i] = std::min(codes_[i], turned);
      }
    }
  }

 private:
  int32_t points_;
  bool isTurned_;  // to the smallest number
  alignas(16) Code codes_[kLbpStrip];
};

// Uniform codes: bits and changes from one to the next are counted.
class LbpChanges {
 public:
  explicit LbpChanges(int32_t points) : points_(points) {}

  const uint8_t* codes() const { return codes_; }

  void begin(int32_t count) {
    std::fill_n(codes_, count, uint8_t{0});
    std::fill_n(changes_, count, uint8_t{0});
  }

  [[gnu::noinline]] void add(int32_t k, const uint8_t* __restrict mask, int32_t count) {
    if (k == 0) std::copy_n(mask, count, first_), std::copy_n(mask, count, before_);
    for (int32_t i = 0; i < count; ++i) {
      codes_[i] = static_cast<uint8_t>(codes_[i] + (mask[i] & 1));
      changes_[i] = static_cast<uint8_t>(changes_[i] + ((mask[i] ^ before_[i]) & 1));
      before_[i] = mask[i];
    }
  }

  [[gnu::noinline]] void end(int32_t count) {
    const auto other = static_cast<uint8_t>(points_ + 1);
    for (int32_t i = 0; i < count; ++i) {
      const auto all = static_cast<uint8_t>(changes_[i] + ((first_[i] ^ before_[i]) & 1));
      codes_[i] = all <= 2 ? codes_[i] : other;
    }
  }

 private:
  int32_t points_;
  alignas(16) uint8_t codes_[kLbpStrip], changes_[kLbpStrip], before_[kLbpStrip], first_[kLbpStrip];
};

template <class T>
class LbpRows {
 public:
  LbpRows(const StripImage<T>& image, const LbpPattern& pattern) : image_(image), pattern_(pattern) {}

  // Calls take(x, codes, count) for the strips of a row.
  template <class Codes, class Take>
  void run(int32_t y, Codes& codes, Take take) {
    const int64_t width = image_.size.width, reach = image_.isInMemory() ? 0 : pattern_.reach;
    const int64_t inner = std::max(reach, width - reach);
    for (int64_t x = 0, end = 0; x < width; x = end) {
      // Strips at both ends may reach what is not there.
      const int64_t limit = x < reach ? std::min(reach, width) : x < inner ? std::min(inner, width) : width;
      end = std::min(limit, x + kLbpStrip);
      const auto count = static_cast<int32_t>(end - x);
      codes.begin(count);
      for (int32_t k = 0; k < pattern_.count; ++k) {
        addNeighbour(k, x, y, count, x < reach || x >= inner);
        codes.add(k, mask_, count);
      }
      codes.end(count);
      take(x, codes.codes(), count);
    }
  }

 private:
  [[gnu::noinline]] void addNeighbour(int32_t k, int64_t x, int64_t y, int32_t count, bool isAtEnd) {
    const LbpPoint& point = pattern_.points[k];
    const T* taps[4] = {};
    for (int32_t t = 0; t < point.taps; ++t) {
      const T* const row = image_.row(y + point.dy[t]);
      taps[t] = row && !isAtEnd ? row + x + point.dx[t] : gathered(row, x + point.dx[t], count, copies_[t]);
    }
    const T* const centre = rowAt(image_.src, image_.step, static_cast<int32_t>(y)) + x;
    switch (point.taps) {
      case 1:
        return compareNeighbour<1>(centre, taps, point.weights, count, mask_);
      case 2:
        return compareNeighbour<2>(centre, taps, point.weights, count, mask_);
      case 3:
        return compareNeighbour<3>(centre, taps, point.weights, count, mask_);
      default:
        return compareNeighbour<4>(centre, taps, point.weights, count, mask_);
    }
  }

  // A row's pixels, which may lie outside; no row: all do.
  const T* gathered(const T* row, int64_t x, int32_t count, T* copy) const {
    const int64_t width = image_.size.width;
    for (int32_t i = 0; i < count; ++i) {
      const int64_t at = x + i;
      const bool isInside = row && (hasBorderIndex(image_.border) || (at >= 0 && at < width));
      copy[i] = isInside ? row[borderIndex(at, width, image_.border)] : image_.value;
    }
    return copy;
  }

  const StripImage<T>& image_;
  const LbpPattern& pattern_;
  alignas(16) T copies_[4][kLbpStrip];
  alignas(16) uint8_t mask_[kLbpStrip];
};

}  // namespace dax

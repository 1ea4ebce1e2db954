// Rows of local binary patterns, in strips: for one neighbour after the other a mask of the pixels that are not
// brighter than it, which then goes into the codes. Plain loops that compilers vectorise; functions of their own, so
// that there is one of each however many kinds of results take their strips.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "image/border/bordered_image.h"
#include "image/texture/lbp_pattern.h"

namespace dax {

inline constexpr int32_t kLbpStrip = 512;

// Pointers are copied: vectors need to know that no mask is written over them. Of bytes in 16 bits, which vectors hold
// twice as many of: the sum of w (pixel - centre) is 32 high + low for weights 32 high + low. Its parts stay below 128
// * 255 and 4 * 31 * 255, and so does the sum / 32, rounded down.
template <int kTaps>
void compareBytes(const uint8_t* centre, const uint8_t* const (&taps)[4], const int32_t (&weights)[4], int32_t count,
                  uint8_t* __restrict mask) {
  const uint8_t* tap[kTaps];
  uint8_t high[kTaps], low[kTaps], allHigh = 0, allLow = 0;
  for (int t = 0; t < kTaps; ++t) {
    tap[t] = taps[t];
    high[t] = static_cast<uint8_t>(weights[t] >> 5), low[t] = static_cast<uint8_t>(weights[t] & 31);
    allHigh = static_cast<uint8_t>(allHigh + high[t]), allLow = static_cast<uint8_t>(allLow + low[t]);
  }
  for (int32_t i = 0; i < count; ++i) {
    const auto part = [&](const uint8_t(&factors)[kTaps], uint8_t all) {
      uint16_t sum = 0;
      for (int t = 0; t < kTaps; ++t) sum = static_cast<uint16_t>(sum + factors[t] * tap[t][i]);
      return static_cast<int16_t>(static_cast<uint16_t>(sum - all * centre[i]));
    };
    const auto sum = static_cast<int16_t>(part(high, allHigh) + (part(low, allLow) >> 5));
    mask[i] = sum >= 0 ? 255 : 0;
  }
}

template <int kTaps, class T>
void compareNumbers(const T* centre, const T* const (&taps)[4], const int32_t (&weights)[4], int32_t count,
                    uint8_t* __restrict mask) {
  using Number = std::conditional_t<std::is_same_v<T, float>, float, int32_t>;
  const T* tap[kTaps];
  Number weight[kTaps];
  for (int t = 0; t < kTaps; ++t) tap[t] = taps[t], weight[t] = static_cast<Number>(weights[t]);
  for (int32_t i = 0; i < count; ++i) {
    const auto part = [&](int t) {
      return weight[t] * (static_cast<Number>(tap[t][i]) - static_cast<Number>(centre[i]));
    };
    Number sum = part(0);
    for (int t = 1; t < kTaps; ++t) sum += part(t);
    mask[i] = sum >= 0 ? 255 : 0;
  }
}

// Bytes that are 255 where a neighbour, the sum of taps, is at least as bright as the centre.
template <int kTaps, class T>
void compareNeighbour(const T* centre, const T* const (&taps)[4], const int32_t (&weights)[4], int32_t count,
                      uint8_t* __restrict mask) {
  if constexpr (kTaps == 1) {
    const T* const tap = taps[0];
    for (int32_t i = 0; i < count; ++i) mask[i] = tap[i] >= centre[i] ? 255 : 0;
  } else if constexpr (std::is_same_v<T, uint8_t>) {
    compareBytes<kTaps>(centre, taps, weights, count, mask);
  } else {
    compareNumbers<kTaps>(centre, taps, weights, count, mask);
  }
}

// Codes of up to so many bits, one bit after the other.
template <class Code>
class LbpBits {
 public:
  LbpBits(int32_t points, bool isTurned) : points_(points), isTurned_(isTurned) {}

  const Code* codes() const { return codes_; }

  void begin(int32_t count) { std::fill_n(codes_, count, Code{0}); }

  // All bits of the eight pixels around at once.
  template <class T>
  [[gnu::noinline]] void takeAround(const T* above, const T* own, const T* below, int32_t count) {
    for (int32_t i = 0; i < count; ++i) {
      const auto bit = [centre = own[i]](T v, int32_t k) { return static_cast<Code>(v >= centre ? 1 << k : 0); };
      codes_[i] =
          static_cast<Code>(bit(own[i + 1], 0) | bit(below[i + 1], 1) | bit(below[i], 2) | bit(below[i - 1], 3) |
                            bit(own[i - 1], 4) | bit(above[i - 1], 5) | bit(above[i], 6) | bit(above[i + 1], 7));
    }
  }

  [[gnu::noinline]] void add(int32_t k, const uint8_t* __restrict mask, const uint8_t*, int32_t count) {
    const auto bit = static_cast<Code>(1 << k);
    // Sign extension makes 255 all bits of a code.
    for (int32_t i = 0; i < count; ++i) {
      codes_[i] = static_cast<Code>(codes_[i] | (static_cast<Code>(static_cast<int8_t>(mask[i])) & bit));
    }
  }

  [[gnu::noinline]] void end(const uint8_t*, int32_t count) {
    if (!isTurned_) return;
    const auto all = static_cast<Code>((1 << points_) - 1), last = static_cast<Code>(1 << (points_ - 1));
    alignas(16) Code turned[kLbpStrip];
    std::copy_n(codes_, count, turned);
    for (int32_t turn = 1; turn < points_; ++turn) {
      for (int32_t i = 0; i < count; ++i) {
        const auto carry = static_cast<Code>((turned[i] & last) != 0 ? 1 : 0);
        turned[i] = static_cast<Code>((static_cast<Code>(turned[i] + turned[i]) & all) | carry);
        codes_[i] = std::min(codes_[i], turned[i]);
      }
    }
  }

 private:
  int32_t points_;
  bool isTurned_;  // to the smallest number
  alignas(16) Code codes_[kLbpStrip] = {};
};

// Uniform codes: bits and changes from one to the next are counted. Takes the mask before each one, too.
class LbpChanges {
 public:
  explicit LbpChanges(int32_t points) : points_(points) {}

  const uint8_t* codes() const { return codes_; }

  void begin(int32_t count) {
    std::fill_n(codes_, count, uint8_t{0});
    std::fill_n(changes_, count, uint8_t{0});
  }

  // 255 is -1.
  [[gnu::noinline]] void add(int32_t k, const uint8_t* __restrict mask, const uint8_t* __restrict before,
                             int32_t count) {
    if (k == 0) {
      std::copy_n(mask, count, first_);
      before = mask;
    }
    for (int32_t i = 0; i < count; ++i) {
      codes_[i] = static_cast<uint8_t>(codes_[i] - mask[i]);
      changes_[i] = static_cast<uint8_t>(changes_[i] - (mask[i] ^ before[i]));
    }
  }

  [[gnu::noinline]] void end(const uint8_t* __restrict last, int32_t count) {
    const auto other = static_cast<uint8_t>(points_ + 1);
    for (int32_t i = 0; i < count; ++i) {
      const auto all = static_cast<uint8_t>(changes_[i] + ((first_[i] ^ last[i]) & 1));
      codes_[i] = all <= 2 ? codes_[i] : other;
    }
  }

 private:
  int32_t points_;
  alignas(16) uint8_t codes_[kLbpStrip] = {}, changes_[kLbpStrip] = {}, first_[kLbpStrip] = {};
};

template <class T>
class LbpRows {
 public:
  LbpRows(const BorderedImage<T>& image, const LbpPattern& pattern) : image_(image), pattern_(pattern) {
    std::fill_n(constants_, kLbpStrip + 2, image.value);
  }

  // Calls take(x, codes, count) for the strips of a row.
  template <class Codes, class Take>
  void run(int32_t y, Codes& codes, Take take) {
    const int64_t width = image_.size.width, reach = image_.isInMemory() ? 0 : pattern_.reach;
    const int64_t inner = std::max(reach, width - reach);
    for (int64_t x = 0, end = 0; x < width; x = end) {
      // Strips at both ends may reach what is not there.
      const bool isAtEnd = x < reach || x >= inner;
      const int64_t limit = x < reach ? std::min(reach, width) : x < inner ? std::min(inner, width) : width;
      end = std::min(limit, x + (isAtEnd ? kEndStrip : kLbpStrip));
      const auto count = static_cast<int32_t>(end - x);
      addNeighbours(x, y, count, isAtEnd, codes);
      codes.end(mask(pattern_.count - 1), count);
      take(x, codes.codes(), count);
    }
  }

 private:
  static constexpr int32_t kEndStrip = 64;

  template <class Codes>
  void addNeighbours(int64_t x, int64_t y, int32_t count, bool isAtEnd, Codes& codes) {
    if constexpr (!std::is_same_v<Codes, LbpChanges>) {
      const auto pixels = [&](int64_t line) {
        const T* const row = image_.row(line);
        return row ? row + x : constants_ + 1;
      };
      if (pattern_.isAround && !isAtEnd) return codes.takeAround(pixels(y - 1), pixels(y), pixels(y + 1), count);
    }
    codes.begin(count);
    for (int32_t k = 0; k < pattern_.count; ++k) {
      addNeighbour(k, x, y, count, isAtEnd);
      codes.add(k, mask(k), mask(k - 1), count);
    }
  }

  [[gnu::noinline]] void addNeighbour(int32_t k, int64_t x, int64_t y, int32_t count, bool isAtEnd) {
    const LbpPoint& point = pattern_.points[k];
    const T* taps[4] = {};
    for (int32_t t = 0; t < point.taps; ++t) {
      const T* const row = image_.row(y + point.dy[t]);
      taps[t] = isAtEnd ? gathered(row, x + point.dx[t], count, copies_[t]) : row ? row + x + point.dx[t] : constants_;
    }
    const T* const centre = rowAt(image_.src, image_.step, static_cast<int32_t>(y)) + x;
    switch (point.taps) {
      case 1:
        return compareNeighbour<1>(centre, taps, point.weights, count, mask(k));
      case 2:
        return compareNeighbour<2>(centre, taps, point.weights, count, mask(k));
      case 3:
        return compareNeighbour<3>(centre, taps, point.weights, count, mask(k));
      default:
        return compareNeighbour<4>(centre, taps, point.weights, count, mask(k));
    }
  }

  // Of a neighbour and of the one before it.
  uint8_t* mask(int32_t k) { return masks_[k & 1]; }

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

  const BorderedImage<T>& image_;
  const LbpPattern& pattern_;
  alignas(16) T constants_[kLbpStrip + 2];
  T copies_[4][kEndStrip] = {};
  alignas(16) uint8_t masks_[2][kLbpStrip] = {};
};

}  // namespace dax

// Rows of bytes that are resized with whole weights: the taps of eight elements at a time, and two arithmetics. One of two
// taps has 16 bits in the middle. The other has weights of 22 bits and sums of 32 along x, and single precision along y,
// which errs by less than 2^-24 of 510 levels for each of 64 taps.
#pragma once

#include <algorithm>
#include <cstdint>

#include "frame/dispatch.h"
#include "frame/memory/work_buffer.h"
#include "image/warp/resize_bytes_neon.h"
#include "image/warp/resize_bytes_portable.h"
#include "image/warp/resize_taps.h"

namespace dax {

// Taps in pairs; a tap that an output does not have weighs 0.
template <class Weight, int kChannels>
struct ByteColumns {
  ByteColumns(BufferLayout& layout, int32_t columns, int32_t maxTaps)
      : elements(columns * kChannels),
        taps((maxTaps + 1) / 2 * 2),
        groups((elements + kResizeGroup - 1) / kResizeGroup),
        firsts(layout.add<int32_t>(static_cast<uint64_t>(groups) * kResizeGroup)),
        spans(layout.add<ByteSpan>(static_cast<uint64_t>(groups))),
        weights(layout.add<Weight>(static_cast<uint64_t>(groups) * kResizeGroup * static_cast<uint64_t>(taps))) {}

  // `whole`: as many weights as taps.
  void set(void* buffer, int32_t x, const Taps& at, const Weight* whole) const {
    for (int32_t e = x * kChannels; e < (x + 1) * kChannels; ++e) {
      const int32_t group = e / kResizeGroup, lane = e % kResizeGroup;
      firsts.in(buffer)[e] = at.first * kChannels + e % kChannels;
      Weight* const own = weights.in(buffer) + (ptrdiff_t{group} * taps) * kResizeGroup + lane;
      for (int32_t k = 0; k < taps; ++k) own[k * kResizeGroup] = k < at.count ? whole[k] : Weight{0};
    }
  }

  // What is beyond the last element repeats it, with weights of 0; then the bytes of each group.
  void finish(void* buffer) const {
    int32_t* const first = firsts.in(buffer);
    for (int32_t e = elements; e < groups * kResizeGroup; ++e) {
      first[e] = first[elements - 1];
      Weight* const own = weights.in(buffer) + (ptrdiff_t{groups} - 1) * taps * kResizeGroup + e % kResizeGroup;
      for (int32_t k = 0; k < taps; ++k) own[k * kResizeGroup] = 0;
    }
    for (int32_t g = 0; g < groups; ++g) {
      spans.in(buffer)[g] = ByteSpan(first + ptrdiff_t{g} * kResizeGroup, taps, kChannels);
    }
  }

  ByteTaps<Weight> in(void* buffer) const {
    return {groups, taps, kChannels, firsts.in(buffer), spans.in(buffer), weights.in(buffer)};
  }

  int32_t elements, taps, groups;
  BufferPiece<int32_t> firsts;
  BufferPiece<ByteSpan> spans;
  BufferPiece<Weight> weights;
};

// Of two taps.
template <int kChannels>
struct PairResize {
  using Mid = uint16_t;
  using RowWeight = uint16_t;
  struct Columns : ByteColumns<uint16_t, kChannels> {
    using ByteColumns<uint16_t, kChannels>::ByteColumns;
    void set(void* buffer, int32_t x, const Taps& at, const double* real) const {
      uint16_t fixed[2];
      fixedWeights(at, real, fixed);
      ByteColumns<uint16_t, kChannels>::set(buffer, x, at, fixed);
    }
  };

  static Mid midOf(uint8_t value) { return static_cast<Mid>(value << 8); }
  static void rowWeights(const Taps& taps, const double* real, RowWeight* weights) {
    uint16_t fixed[2];
    fixedWeights(taps, real, fixed);
    std::copy_n(fixed, taps.count, weights);
  }
  static void alongX(const Columns& columns, void* buffer, const uint8_t* row, Mid* mid, int32_t isa) {
    const auto taps = columns.in(buffer);
    usesNeon(isa) ? neon::pairAlongX(taps, row, mid) : portable::pairAlongX(taps, row, mid);
  }
  static void alongY(const Mid* const* rows, const RowWeight* weights, int32_t taps, uint8_t* dst, int32_t count,
                     int32_t isa) {
    const Mid* const second = rows[taps - 1];
    const uint32_t w = taps > 1 ? weights[1] : 0;
    usesNeon(isa) ? neon::pairAlongY(rows[0], second, weights[0], w, dst, count)
                  : portable::pairAlongY(rows[0], second, weights[0], w, dst, count);
  }
};

// Of at most kWideTaps taps.
constexpr int32_t kWideTaps = 64;

template <int kChannels>
struct WideResize {
  using Mid = float;
  using RowWeight = float;
  struct Columns : ByteColumns<int32_t, kChannels> {
    using ByteColumns<int32_t, kChannels>::ByteColumns;
    void set(void* buffer, int32_t x, const Taps& at, const double* real) const {
      int32_t wide[kWideTaps]{};
      wideWeights(at, real, wide);
      ByteColumns<int32_t, kChannels>::set(buffer, x, at, wide);
    }
  };

  static Mid midOf(uint8_t value) { return static_cast<Mid>(value << kWideWeightBits); }
  // Sums along x are those of levels times 2^22.
  static void rowWeights(const Taps& taps, const double* real, RowWeight* weights) {
    for (int32_t k = 0; k < taps.count; ++k) weights[k] = static_cast<float>(real[k] / (1 << kWideWeightBits));
  }
  static void alongX(const Columns& columns, void* buffer, const uint8_t* row, Mid* mid, int32_t isa) {
    const auto taps = columns.in(buffer);
    usesNeon(isa) ? neon::wideAlongX(taps, row, mid) : portable::wideAlongX(taps, row, mid);
  }
  static void alongY(const Mid* const* rows, const RowWeight* weights, int32_t taps, uint8_t* dst, int32_t count,
                     int32_t isa) {
    usesNeon(isa) ? neon::wideAlongY(rows, weights, taps, dst, count)
                  : portable::wideAlongY(rows, weights, taps, dst, count);
  }
};

}  // namespace dax

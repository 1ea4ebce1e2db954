// Blocks of pixels whose rows become columns, in vectors: as many rows as a vector has pixels. Joining vector i with vector
// i + n / 2 element by element, for all i at once, doubles how many pixels of a column lie side by side; log2 n times
// makes the columns rows.
#pragma once

#include <array>

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/border/copy_border_neon.h"
#include "image/warp/rotate_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

template <class Element>
struct TransposedLanes;
#define DAX_TRANSPOSED_LANES(T, VECTOR, SUFFIX)                                                  \
  template <>                                                                                    \
  struct TransposedLanes<T> {                                                                    \
    using Vector = VECTOR;                                                                       \
    static Vector load(const void* from) { return vld1q_##SUFFIX(static_cast<const T*>(from)); } \
    static void store(void* to, Vector v) { vst1q_##SUFFIX(static_cast<T*>(to), v); }            \
    static Vector zip1(Vector a, Vector b) { return vzip1q_##SUFFIX(a, b); }                     \
    static Vector zip2(Vector a, Vector b) { return vzip2q_##SUFFIX(a, b); }                     \
  };
DAX_TRANSPOSED_LANES(uint8_t, uint8x16_t, u8)
DAX_TRANSPOSED_LANES(uint16_t, uint16x8_t, u16)
DAX_TRANSPOSED_LANES(uint32_t, uint32x4_t, u32)
DAX_TRANSPOSED_LANES(uint64_t, uint64x2_t, u64)
#undef DAX_TRANSPOSED_LANES

// Runs of pixels of three elements in reverse order, as many whole pixels at a time as a vector holds: what its last bytes are
// goes where the next pixels come.
template <class Pixel>
void reverseTriples(const Pixel* src, Pixel* dst, int32_t count) {
  constexpr int32_t kBytes = sizeof(Pixel), kPixels = 16 / kBytes;
  alignas(16) constexpr auto kOrder = [] {
    std::array<uint8_t, 16> order{};
    for (int32_t i = 0; i < 16; ++i)
      order[i] = static_cast<uint8_t>((16 - (i / kBytes + 1) * kBytes + i % kBytes) & 15);
    return order;
  }();
  const uint8x16_t order = vld1q_u8(kOrder.data());
  const auto* end = reinterpret_cast<const uint8_t*>(src + count);
  auto* to = reinterpret_cast<uint8_t*>(dst);
  int32_t left = count;
  for (; left * int64_t{kBytes} >= 16; left -= kPixels, end -= kPixels * kBytes, to += kPixels * kBytes) {
    vst1q_u8(to, vqtbl1q_u8(vld1q_u8(end - 16), order));
  }
  for (int32_t i = 0; i < left; ++i) dst[count - left + i] = src[left - 1 - i];
}

// Distances of rows in bytes. They are made outside of the function that uses them: a compiler that sees how they are made puts
// an addition in place of every address, a quarter more instructions.
struct RowDistances {
  explicit RowDistances(ptrdiff_t step) : of{step, 2 * step, 3 * step, 4 * step} {}
  ptrdiff_t of[4];  // one to four rows
};

// Rows of a block by few registers: every fourth one, and the distances to the three behind it.
template <class Byte>
struct BlockRows {
  BlockRows(Byte* first, const RowDistances& distances) : to(distances) {
    for (Byte*& each : at) each = first, first += distances.of[3];
  }
  Byte* operator[](int i) const { return i % 4 == 0 ? at[i / 4] : at[i / 4] + to.of[i % 4 - 1]; }
  Byte* at[4];
  const RowDistances& to;
};

template <class Pixel>
[[gnu::always_inline]] inline void transposeBlock(const uint8_t* src, const RowDistances& srcRows, uint8_t* dst,
                                                  const RowDistances& dstRows) {
  using Lanes = TransposedLanes<typename Pixel::Bits>;
  constexpr int n = 16 / sizeof(Pixel);
  typename Lanes::Vector rows[n], joined[n];
  const BlockRows<const uint8_t> from(src, srcRows);
  const BlockRows<uint8_t> to(dst, dstRows);
#pragma GCC unroll 16
  for (int i = 0; i < n; ++i) rows[i] = Lanes::load(from[i]);
#pragma GCC unroll 4
  for (int side = 1; side < n; side *= 2) {
#pragma GCC unroll 8
    for (int i = 0; i < n / 2; ++i) {
      joined[2 * i] = Lanes::zip1(rows[i], rows[i + n / 2]);
      joined[2 * i + 1] = Lanes::zip2(rows[i], rows[i + n / 2]);
    }
#pragma GCC unroll 16
    for (int i = 0; i < n; ++i) rows[i] = joined[i];
  }
#pragma GCC unroll 16
  for (int i = 0; i < n; ++i) Lanes::store(to[i], rows[i]);
}

// Of a tile of at least one block; the last blocks overlap those before them where it is not whole.
template <class Pixel>
[[gnu::noinline]] void transposeBlocks(MovedRows<const Pixel> src, const RowDistances& srcRows, MovedRows<Pixel> dst,
                                       const RowDistances& dstRows, int32_t width, int32_t height) {
  constexpr int32_t n = 16 / sizeof(Pixel);
  const RowDistances srcOf = srcRows, dstOf = dstRows;
  for (int32_t column = 0; column < width; column += n) {
    const int32_t x = std::min(column, width - n);
    const uint8_t* from = src.from(x, 0).bytes;
    uint8_t* to = dst.from(0, x).bytes;
    for (int32_t y = n; y <= height; y += n, from += n * src.step, to += 16) {
      transposeBlock<Pixel>(from, srcOf, to, dstOf);
    }
    if (height % n) {
      transposeBlock<Pixel>(src.from(x, height - n).bytes, srcOf, dst.from(height - n, x).bytes, dstOf);
    }
  }
}

template <class Pixel>
void reversePixels(const Pixel* src, Pixel* dst, int32_t count) {
  if constexpr (Pixel::kIsElement) {
    reverseRun(dst, src, count);
  } else if constexpr (sizeof(Pixel) < 8) {
    reverseTriples(src, dst, count);
  } else {
    portable::reverseRun(dst, src, count);
  }
}

template <class Pixel>
void transposeTile(MovedRows<const Pixel> src, MovedRows<Pixel> dst, int32_t width, int32_t height) {
  if constexpr (Pixel::kIsElement) {
    if (std::min(width, height) >= static_cast<int32_t>(16 / sizeof(Pixel))) {
      return transposeBlocks(src, RowDistances(src.step), dst, RowDistances(dst.step), width, height);
    }
  }
  portable::transposeTile(src, dst, width, height);
}

}  // namespace dax::neon
#endif

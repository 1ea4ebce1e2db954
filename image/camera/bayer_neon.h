// Rows of colours from a Bayer pattern, a vector of pairs at a time: a load of every second sample gives one place of all
// pairs.
#pragma once

#include "frame/dispatch.h"
#include "frame/lanes.h"
#include "image/camera/bayer_portable.h"
#include "image/colour/gray_neon.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// Bilinear: samples in vectors of their own type.
template <class T>
struct BayerVectors;

template <>
struct BayerVectors<uint8_t> {
  using V = uint8x16_t;
  static V average(V a, V b) { return vrhaddq_u8(a, b); }
  static V average(V a, V b, V c, V d) {
    const uint16x8_t low =
        vaddq_u16(vaddl_u8(vget_low_u8(a), vget_low_u8(b)), vaddl_u8(vget_low_u8(c), vget_low_u8(d)));
    const uint16x8_t high = vaddq_u16(vaddl_high_u8(a, b), vaddl_high_u8(c, d));
    return vrshrn_high_n_u16(vrshrn_n_u16(low, 2), high, 2);
  }
};

template <>
struct BayerVectors<uint16_t> {
  using V = uint16x8_t;
  static V average(V a, V b) { return vrhaddq_u16(a, b); }
  static V average(V a, V b, V c, V d) {
    const uint32x4_t low =
        vaddq_u32(vaddl_u16(vget_low_u16(a), vget_low_u16(b)), vaddl_u16(vget_low_u16(c), vget_low_u16(d)));
    const uint32x4_t high = vaddq_u32(vaddl_high_u16(a, b), vaddl_high_u16(c, d));
    return vrshrn_high_n_u32(vrshrn_n_u32(low, 2), high, 2);
  }
};

template <class T>
struct NearWindow {
  using L = Lanes<T>;
  NearWindow(portable::BayerRows<T> rows, ptrdiff_t x) {
    for (int i = 0; i < 3; ++i) {
      const auto outer = L::loadPair(rows[1 + i] + x - 1), inner = L::loadPair(rows[1 + i] + x + 1);
      v[i][0] = outer.val[0], v[i][1] = outer.val[1], v[i][2] = inner.val[0], v[i][3] = inner.val[1];
    }
  }
  typename L::Vector at(int dy, int dx) const { return v[1 + dy][1 + dx]; }
  typename L::Vector v[3][4];
};

// MHC: samples of half a vector, widened.
struct MhcVectors8 {
  using V = int16x8_t;
  using Narrow = uint8x8_t;
  static uint8x8x2_t loadPair(const uint8_t* from) { return vld2_u8(from); }
  static V wide(Narrow v) { return vreinterpretq_s16_u16(vmovl_u8(v)); }
  static Narrow same(V v) { return vmovn_u16(vreinterpretq_u16_s16(v)); }
  static Narrow sixteenth(V sum) { return vqrshrun_n_s16(sum, 4); }
};

struct MhcVectors16 {
  using V = int32x4_t;
  using Narrow = uint16x4_t;
  static uint16x4x2_t loadPair(const uint16_t* from) { return vld2_u16(from); }
  static V wide(Narrow v) { return vreinterpretq_s32_u32(vmovl_u16(v)); }
  static Narrow same(V v) { return vmovn_u32(vreinterpretq_u32_s32(v)); }
  static Narrow sixteenth(V sum) { return vqrshrun_n_s32(sum, 4); }
};

template <class Vectors, class T>
struct FarWindow {
  FarWindow(portable::BayerRows<T> rows, ptrdiff_t x) {
    for (int dx = -2; dx <= 2; dx += 2) load(rows, x, 0, dx);
    for (int dy = -1; dy <= 1; dy += 2) load(rows, x, dy, -1), load(rows, x, dy, 1);
    for (int dy = -2; dy <= 2; dy += 4) load(rows, x, dy, 0);
  }
  typename Vectors::V at(int dy, int dx) const { return v[2 + dy][2 + dx]; }

 private:
  void load(portable::BayerRows<T> rows, ptrdiff_t x, int dy, int dx) {
    const auto both = Vectors::loadPair(rows[2 + dy] + x + dx);
    v[2 + dy][2 + dx] = Vectors::wide(both.val[0]), v[2 + dy][3 + dx] = Vectors::wide(both.val[1]);
  }
  typename Vectors::V v[5][6];
};

#define DAX_BAYER_STORE(T, FULL, HALF, SUFFIX)                                          \
  inline void storeColours(T* to, FULL##_t red, FULL##_t green, FULL##_t blue) {        \
    const FULL##x3_t all = {{red, green, blue}};                                        \
    vst3q_##SUFFIX(to, all);                                                            \
  }                                                                                     \
  inline FULL##_t joined(HALF##_t left, HALF##_t right) {                               \
    return vcombine_##SUFFIX(vzip1_##SUFFIX(left, right), vzip2_##SUFFIX(left, right)); \
  }                                                                                     \
  inline FULL##_t joinedLow(FULL##_t left, FULL##_t right) {                            \
    return vzip1q_##SUFFIX(left, right);                                                \
  }                                                                                     \
  inline FULL##_t joinedHigh(FULL##_t left, FULL##_t right) {                           \
    return vzip2q_##SUFFIX(left, right);                                                \
  }
DAX_BAYER_STORE(uint8_t, uint8x16, uint8x8, u8)
DAX_BAYER_STORE(uint16_t, uint16x8, uint16x4, u16)
#undef DAX_BAYER_STORE

// In the order red, green, blue.
template <int32_t kOwn, class T, class V, class Join>
void storeJoined(const BayerPair<V>& p, T* to, Join join) {
  const auto own = join(p.left.own, p.right.own), green = join(p.left.green, p.right.green);
  const auto other = join(p.left.other, p.right.other);
  kOwn == 0 ? storeColours(to, own, green, other) : storeColours(to, other, green, own);
}

template <int32_t kOwn, class T, class V>
void storePairs(const BayerPair<V>& p, T* to) {
  if constexpr (sizeof(V) == 8) {
    storeJoined<kOwn>(p, to, [](V left, V right) { return joined(left, right); });
  } else {
    storeJoined<kOwn>(p, to, [](V left, V right) { return joinedLow(left, right); });
    storeJoined<kOwn>(p, to + 3 * Lanes<T>::kCount, [](V left, V right) { return joinedHigh(left, right); });
  }
}

template <class Method, class T>
struct BayerBlock {
  using Vectors = BayerVectors<T>;
  using Window = NearWindow<T>;
  static constexpr int32_t kPairs = 16 / sizeof(T);
};
template <class T>
struct BayerBlock<BayerMhc, T> {
  using Vectors = std::conditional_t<sizeof(T) == 1, MhcVectors8, MhcVectors16>;
  using Window = FarWindow<Vectors, T>;
  static constexpr int32_t kPairs = 8 / sizeof(T);
};

// Where the pairs of a block go: as colours, or as grey of bytes.
struct BayerColours {
  static constexpr int kChannels = 3;
  template <int32_t kOwn, class T, class V>
  static void store(const BayerPair<V>& p, T* to) {
    storePairs<kOwn>(p, to);
  }
};

struct BayerGray {
  static constexpr int kChannels = 1;
  template <int32_t kOwn, class V>
  static V grayOf(const BayerPixel<V>& p) {
    return kOwn == 0 ? gray601(p.own, p.green, p.other) : gray601(p.other, p.green, p.own);
  }
  template <int32_t kOwn, class V>
  static void store(const BayerPair<V>& p, uint8_t* to) {
    const V left = grayOf<kOwn>(p.left), right = grayOf<kOwn>(p.right);
    if constexpr (sizeof(V) == 8) {
      const uint8x8x2_t both = {{left, right}};
      vst2_u8(to, both);
    } else {
      const uint8x16x2_t both = {{left, right}};
      vst2q_u8(to, both);
    }
  }
};

// Blocks from column x on; the last one begins at `last`, whose parity is that of x, and may overlap the one before it.
template <class Method, class Sink, int32_t kOwn, class T>
void bayerBlocks(portable::BayerRows<T> rows, int32_t x, int32_t last, T* origin) {
  using Block = BayerBlock<Method, T>;
  const T* const near[5] = {rows[0], rows[1], rows[2], rows[3], rows[4]};  // what dst points to may not be these
  ptrdiff_t at = x;
  // The last block apart, so that the loop needs no test of its own for it.
  for (const ptrdiff_t end : {ptrdiff_t{last}, ptrdiff_t{last} + 1}) {
    for (; at < end; at += 2 * Block::kPairs) {
      const typename Block::Window window(near, at);
      Sink::template store<kOwn>(Method::template pair<typename Block::Vectors>(window), origin + Sink::kChannels * at);
    }
    at = last;
  }
}

// `part` computes what lies beside the blocks, which begin at a pixel of the row's own colour, and whose windows lie in the row.
template <class Method, class Sink, class T>
void bayerRowByBlocks(BayerRowKernel<T> part, portable::BayerRows<T> rows, BayerRow row, int32_t width, int32_t first,
                      int32_t end, T* dst) {
  constexpr int32_t kBlock = 2 * BayerBlock<Method, T>::kPairs;
  T* const origin = dst - Sink::kChannels * ptrdiff_t{first};
  int32_t x = std::max(first, Method::kReach), last = std::min(end, width - Method::kReach) - kBlock;
  x += (x ^ row.column) & 1, last -= (last ^ row.column) & 1;
  if (x > last) return part(rows, row, width, first, end, dst);
  part(rows, row, width, first, x, dst);
  (row.own == 0 ? bayerBlocks<Method, Sink, 0, T> : bayerBlocks<Method, Sink, 2, T>)(rows, x, last, origin);
  const int32_t rest = last + kBlock;
  part(rows, row, width, rest, end, origin + Sink::kChannels * ptrdiff_t{rest});
}

// As the portable ones.
template <class Method, class T>
void bayerRow(portable::BayerRows<T> rows, BayerRow row, int32_t width, int32_t first, int32_t end, T* dst) {
  bayerRowByBlocks<Method, BayerColours, T>(portable::bayerRow<Method, T>, rows, row, width, first, end, dst);
}

template <class Method, class T>
void bayerGrayRow(portable::BayerRows<T> rows, BayerRow row, int32_t width, int32_t first, int32_t end, T* dst) {
  if constexpr (sizeof(T) == 1)
    bayerRowByBlocks<Method, BayerGray, T>(portable::bayerGrayRow<Method, T>, rows, row, width, first, end, dst);
  else
    grayOfColours<T>(bayerRow<Method, T>, rows, row, width, first, end, dst, DAX_ISA_NEON);
}

}  // namespace dax::neon
#endif

// Rows of Gaussian filters in blocks of vectors, whose sums stay in registers. What does not fill a block is computed with
// the last pixels of the row once more, or pixel by pixel.
#pragma once

#include "frame/dispatch.h"
#include "frame/lanes.h"
#include "frame/vector4.h"
#include "image/gauss/gauss_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// sum += v * weight, and shifts to the right, also rounded. (SIMDe does them one by one.)
#if defined(__aarch64__)
inline uint32x4_t shiftedRight(uint32x4_t v, int32_t shift) {
  return vshlq_u32(v, vdupq_n_s32(-shift));
}
inline uint32x4_t roundedRight(uint32x4_t v, int32_t shift) {
  return vrshlq_u32(v, vdupq_n_s32(-shift));
}
inline void addProducts(uint32x4_t (&sum)[2], uint16x8_t v, uint16_t weight) {
  sum[0] = vmlal_n_u16(sum[0], vget_low_u16(v), weight);
  sum[1] = vmlal_high_n_u16(sum[1], v, weight);
}
inline void addProducts(int64x2_t (&sum)[2], int32x4_t v, int32_t weight) {
  sum[0] = vmlal_n_s32(sum[0], vget_low_s32(v), weight);
  sum[1] = vmlal_high_n_s32(sum[1], v, weight);
}
#else
inline uint32x4_t shiftedRight(uint32x4_t v, int32_t shift) {
  return v >> static_cast<uint32_t>(shift);
}
inline uint32x4_t roundedRight(uint32x4_t v, int32_t shift) {
  return (v + (1u << (shift - 1))) >> static_cast<uint32_t>(shift);
}
inline void addProducts(uint32x4_t (&sum)[2], uint16x8_t v, uint16_t weight) {
  const __m128i a = (__m128i)v, w = _mm_set1_epi16(static_cast<int16_t>(weight));
  const __m128i low = _mm_mullo_epi16(a, w), high = _mm_mulhi_epu16(a, w);
  sum[0] += (uint32x4_t)_mm_unpacklo_epi16(low, high);
  sum[1] += (uint32x4_t)_mm_unpackhi_epi16(low, high);
}
inline void addProducts(int64x2_t (&sum)[2], int32x4_t v, int32_t weight) {
  const __m128i a = (__m128i)v, w = _mm_set1_epi32(weight);
  sum[0] += (int64x2_t)_mm_mul_epi32(_mm_unpacklo_epi32(a, a), w);
  sum[1] += (int64x2_t)_mm_mul_epi32(_mm_unpackhi_epi32(a, a), w);
}
#endif

template <class T>
struct GaussBlock;

template <>
struct GaussBlock<uint8_t> {
  static constexpr int32_t kColumns = 32, kPixels = 32;

  struct ColumnSums {
    uint32x4_t sum[4][2] = {};

    void add(const uint8_t* a, const uint8_t* b, uint16_t weight) {
      for (int i = 0; i < 2; ++i) {
        const uint8x16_t above = vld1q_u8(a + 16 * i), below = vld1q_u8(b + 16 * i);
        addProducts(sum[2 * i], vaddl_u8(vget_low_u8(above), vget_low_u8(below)), weight);
        addProducts(sum[2 * i + 1], vaddl_high_u8(above, below), weight);
      }
    }
    void store(uint16_t* to, int32_t bits) const {
      const int32_t shift = bits + 1 - GaussPixel<uint8_t>::kBetweenBits;
      for (int i = 0; i < 4; ++i) {
        const auto low = vreinterpretq_u16_u32(roundedRight(sum[i][0], shift));
        const auto high = vreinterpretq_u16_u32(roundedRight(sum[i][1], shift));
        vst1q_u16(to + 8 * i, vuzp1q_u16(low, high));
      }
    }
  };

  struct RowSums {
    uint32x4_t sum[4][2] = {};

    void add(const uint16_t* a, const uint16_t* b, uint16_t weight) {
      for (int i = 0; i < 4; ++i) addProducts(sum[i], vaddq_u16(vld1q_u16(a + 8 * i), vld1q_u16(b + 8 * i)), weight);
    }
    void addGroup(RowSums& group, int32_t shift) {
      for (int i = 0; i < 4; ++i) {
        for (int k = 0; k < 2; ++k) sum[i][k] = vaddq_u32(sum[i][k], shiftedRight(group.sum[i][k], shift));
      }
    }
    void store(uint8_t* to) const {
      for (int i = 0; i < 2; ++i) {
        vst1q_u8(to + 16 * i, vrshrn_high_n_u16(vrshrn_n_u16(upper(2 * i), 8), upper(2 * i + 1), 8));
      }
    }
    uint16x8_t upper(int i) const {
      return vuzp2q_u16(vreinterpretq_u16_u32(sum[i][0]), vreinterpretq_u16_u32(sum[i][1]));
    }
  };
};

inline int32x4_t lowPairs(uint16x8_t a, uint16x8_t b) {
  return vreinterpretq_s32_u32(vaddl_u16(vget_low_u16(a), vget_low_u16(b)));
}
inline int32x4_t highPairs(uint16x8_t a, uint16x8_t b) {
  return vreinterpretq_s32_u32(vaddl_high_u16(a, b));
}
inline int32x4_t lowPairs(int16x8_t a, int16x8_t b) {
  return vaddl_s16(vget_low_s16(a), vget_low_s16(b));
}
inline int32x4_t highPairs(int16x8_t a, int16x8_t b) {
  return vaddl_high_s16(a, b);
}
inline void storeLow(uint16_t* to, int32x4_t low, int32x4_t high) {
  const auto words = [](int32x4_t v) { return vreinterpretq_u16_s32(v); };
  vst1q_u16(to, vuzp1q_u16(words(low), words(high)));
}
inline void storeLow(int16_t* to, int32x4_t low, int32x4_t high) {
  const auto words = [](int32x4_t v) { return vreinterpretq_s16_s32(v); };
  vst1q_s16(to, vuzp1q_s16(words(low), words(high)));
}

template <class T>
struct GaussWordBlock {
  static constexpr int32_t kColumns = 16, kPixels = 16, kBits = 30;

  struct ColumnSums {
    int64x2_t sum[4][2] = {};

    void add(const T* a, const T* b, int32_t weight) {
      for (int i = 0; i < 2; ++i) {
        const auto above = Lanes<T>::load(a + 8 * i), below = Lanes<T>::load(b + 8 * i);
        addProducts(sum[2 * i], lowPairs(above, below), weight);
        addProducts(sum[2 * i + 1], highPairs(above, below), weight);
      }
    }
    void store(int32_t* to, int32_t) const {
      constexpr int kShift = kBits + 1 - GaussPixel<T>::kBetweenBits;
      for (int i = 0; i < 4; ++i) {
        vst1q_s32(to + 4 * i, vcombine_s32(vrshrn_n_s64(sum[i][0], kShift), vrshrn_n_s64(sum[i][1], kShift)));
      }
    }
  };

  struct RowSums {
    int64x2_t sum[4][2] = {};

    void add(const int32_t* a, const int32_t* b, int32_t weight) {
      for (int i = 0; i < 4; ++i) addProducts(sum[i], vaddq_s32(vld1q_s32(a + 4 * i), vld1q_s32(b + 4 * i)), weight);
    }
    void store(T* to) const {
      for (int i = 0; i < 2; ++i) storeLow(to + 8 * i, rounded(2 * i), rounded(2 * i + 1));
    }
    int32x4_t rounded(int i) const {
      constexpr int kShift = kBits + 1 + GaussPixel<T>::kBetweenBits - 32;
      return vrshrq_n_s32(vuzp2q_s32(vreinterpretq_s32_s64(sum[i][0]), vreinterpretq_s32_s64(sum[i][1])), kShift);
    }
  };
};
template <>
struct GaussBlock<uint16_t> : GaussWordBlock<uint16_t> {};
template <>
struct GaussBlock<int16_t> : GaussWordBlock<int16_t> {};

template <>
struct GaussBlock<float> {
  static constexpr int32_t kColumns = 32, kPixels = 32;

  struct ColumnSums {
    Float4 sum[8];

    void start(const float* a, const float* b, float weight) {
      for (int i = 0; i < 8; ++i) sum[i] = weight * (load4(a + 4 * i) + load4(b + 4 * i));
    }
    void add(const float* a, const float* b, float weight) {
      for (int i = 0; i < 8; ++i) sum[i] += weight * (load4(a + 4 * i) + load4(b + 4 * i));
    }
    void store(float* to, int32_t = 0) const {
      for (int i = 0; i < 8; ++i) store4(to + 4 * i, sum[i]);
    }
  };
  using RowSums = ColumnSums;
};

// Integer sums start at nothing, those of floats with the first pair, whose -0 they keep.
template <class Sums, class T, class Weight>
void startSums(Sums& sums, const T* a, const T* b, Weight weight) {
  if constexpr (std::is_floating_point_v<T>) {
    sums.start(a, b, weight);
  } else {
    sums.add(a, b, weight);
  }
}

// Calls block(x) for blocks that cover x..end - 1, the last of which may reach back over the one before. False where there
// are too few pixels for one.
template <class Block>
bool forBlocks(ptrdiff_t x, ptrdiff_t end, int32_t pixels, Block block) {
  if (end - x < pixels) return false;
  for (; x + pixels <= end; x += pixels) block(x);
  if (x < end) block(end - pixels);
  return true;
}

// kTaps: how many there are, known to the compiler, or 0.
template <int kTaps, class T>
bool gaussColumnBlocks(const T* const* rows, const GaussTapsOf<T>& taps, typename GaussPixel<T>::Between* to,
                       ptrdiff_t begin, ptrdiff_t end) {
  using Block = GaussBlock<T>;
  const int32_t count = kTaps > 0 ? kTaps : taps.count;
  return forBlocks(begin, end, Block::kColumns, [&](ptrdiff_t x) {
    typename Block::ColumnSums sums;
    startSums(sums, rows[0] + x, rows[1] + x, taps.weight[0]);
    for (int32_t k = 1; k < count; ++k) sums.add(rows[2 * k] + x, rows[2 * k + 1] + x, taps.weight[k]);
    sums.store(to + x, taps.bits);
  });
}

template <int kTaps, class T>
bool gaussRowBlocks(const typename GaussPixel<T>::Between* from, const GaussTapsOf<T>& taps, T* to, ptrdiff_t width) {
  using Block = GaussBlock<T>;
  using Sums = typename Block::RowSums;
  const int32_t count = kTaps > 0 ? kTaps : taps.count;
  return forBlocks(0, width, Block::kPixels, [&](ptrdiff_t x) {
    Sums sums;
    const auto add = [&](Sums& some, int32_t k) {
      const ptrdiff_t distance = taps.distance[k];
      some.add(from + x - distance, from + x + distance, taps.weight[k]);
    };
    const ptrdiff_t nearest = taps.distance[0];
    startSums(sums, from + x - nearest, from + x + nearest, taps.weight[0]);
    if constexpr (std::is_same_v<T, uint8_t>) {
      if (taps.groups > 1) {
        Sums all;
        for (int32_t group = 0, k = 1; group < taps.groups; ++group, sums = {}) {
          for (; k < taps.groupEnd[group]; ++k) add(sums, k);
          all.addGroup(sums, taps.bits - 16);
        }
        return all.store(to + x);
      }
    }
    for (int32_t k = 1; k < count; ++k) add(sums, k);
    sums.store(to + x);
  });
}

template <class T>
void gaussColumns(const T* const* rows, const GaussTapsOf<T>& taps, typename GaussPixel<T>::Between* to, ptrdiff_t x,
                  ptrdiff_t end) {
  const bool done =
      taps.count == 3 ? gaussColumnBlocks<3>(rows, taps, to, x, end) : gaussColumnBlocks<0>(rows, taps, to, x, end);
  if (!done) portable::gaussColumns(rows, taps, to, x, end);
}

template <class T>
void gaussRow(const typename GaussPixel<T>::Between* from, const GaussTapsOf<T>& taps, T* to, ptrdiff_t x,
              ptrdiff_t end) {
  const bool done = taps.count == 3 ? gaussRowBlocks<3>(from + x, taps, to + x, end - x)
                                    : gaussRowBlocks<0>(from + x, taps, to + x, end - x);
  if (!done) portable::gaussRow(from, taps, to, x, end);
}

}  // namespace dax::neon
#endif

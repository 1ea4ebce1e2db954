// Extremes of windows along a row, in vectors.
#pragma once

#include <bit>
#include <cstdint>
#include <type_traits>

#include "frame/dispatch.h"
#include "frame/lanes.h"
#include "frame/numeric/total_order.h"
#include "image/morphology/reach.h"
#include "image/morphology/sliding_extreme_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

template <class Order, class Key, class Vector = typename Lanes<Key>::Vector>
Vector joined(Vector a, Vector b) {
  if constexpr (std::is_same_v<Order, Smaller>) {
    return Lanes<Key>::min(a, b);
  } else {
    return Lanes<Key>::max(a, b);
  }
}

// Keys of pixels in a row of these.
template <class T, class Vector>
void storeKeys(T* to, Vector keys) {
  if constexpr (std::is_same_v<T, float>) {
    vst1q_f32(to, vreinterpretq_f32_s32(keys));
  } else {
    Lanes<T>::store(to, keys);
  }
}

template <class T>
auto loadKeys(const T* from) {
  if constexpr (std::is_same_v<T, float>) {
    return vreinterpretq_s32_f32(vld1q_f32(from));
  } else {
    return Lanes<T>::load(from);
  }
}

template <class T, class Vector>
void storePixels(T* to, Vector keys) {
  if constexpr (std::is_same_v<T, float>) {
    storeKeys(to, veorq_s32(keys, vandq_s32(vshrq_n_s32(keys, 31), vdupq_n_s32(INT32_MAX))));
  } else {
    Lanes<T>::store(to, keys);
  }
}

// Turns vectors, from the right to the left, into extremes of 2^kSteps pixels from each on.
template <class Order, class Key, int kSteps>
class Cover {
 public:
  using Vector = typename Lanes<Key>::Vector;

  explicit Cover(Vector neutral) {
    for (Vector& each : after_) each = neutral;
  }
  Vector next(Vector v) { return step<0>(v); }

 private:
  template <int k>
  Vector step(Vector v) {
    if constexpr (k == kSteps) {
      return v;
    } else {
      const Vector ahead = Lanes<Key>::template shift<Lanes<Key>::kCount - (1 << k)>(v, after_[k]);
      after_[k] = v;
      return step<k + 1>(joined<Order, Key>(v, ahead));
    }
  }

  Vector after_[kSteps > 0 ? kSteps : 1];
};

// Windows of at most two vectors: two extremes of 2^kSteps pixels. They are read in a sweep of their own, since a load
// across two vectors that were stored just before would wait for both.
template <class Order, int kSteps, class T, class Key>
void slideShort(Key* row, int64_t end, int32_t window, T* dst, int32_t width) {
  constexpr int64_t n = Lanes<Key>::kCount;
  Cover<Order, Key, kSteps> cover(Lanes<Key>::all(Order::template kNeutral<Key>));
  for (int64_t x = end - n; x >= 0; x -= n) Lanes<Key>::store(row + x, cover.next(Lanes<Key>::load(row + x)));
  const Key* const ahead = row + window - (1 << kSteps);
  int64_t x = 0;
  for (; x <= width - n; x += n) {
    storePixels(dst + x, joined<Order, Key>(Lanes<Key>::load(row + x), Lanes<Key>::load(ahead + x)));
  }
  for (; x < width; ++x) dst[x] = OrderKey<T>::pixel(Order::of(row[x], ahead[x]));
}

// Longer ones, of K vectors and a rest: van Herk's suffixes, which wait in dst, and prefixes of blocks of K vectors, each
// of which holds the extremes of a vector's length from its pixels on.
template <class Order, class T, class Key>
void slideLong(Key* row, int64_t end, int32_t window, T* dst, int32_t width) {
  using L = Lanes<Key>;
  constexpr int64_t n = L::kCount;
  const auto neutral = L::all(Order::template kNeutral<Key>);
  const int64_t ahead = window - n, block = window / n * n, whole = width / n * n;
  Cover<Order, Key, std::countr_zero(static_cast<uint32_t>(n))> cover(neutral);
  int64_t x = end - n;
  for (; x >= whole; x -= n) L::store(row + x, cover.next(L::load(row + x)));
  auto suffix = neutral;
  for (int64_t first = (whole + block - 1) / block * block - block; first >= 0; first -= block) {
    // Of the last block what is beyond the whole vectors counts, too.
    suffix = neutral;
    for (int64_t i = whole; i < first + block; i += n) suffix = joined<Order, Key>(suffix, L::load(row + i));
    for (; x >= first; x -= n) {
      const auto v = cover.next(L::load(row + x));
      L::store(row + x, v);
      suffix = joined<Order, Key>(suffix, v);
      storeKeys(dst + x, suffix);
    }
  }
  const auto out = [&](int64_t i, auto v) { return joined<Order, Key>(v, L::load(row + i + ahead)); };
  for (int64_t first = 0; first < whole; first += block) {
    storePixels(dst + first, out(first, loadKeys(dst + first)));
    auto prefix = neutral;
    const int64_t last = std::min(first + block, whole);
    for (int64_t i = first + n; i < last; i += n) {
      prefix = joined<Order, Key>(prefix, L::load(row + i + block - n));
      storePixels(dst + i, out(i, joined<Order, Key>(loadKeys(dst + i), prefix)));
    }
  }
  if (whole == width) return;
  auto rest = L::load(row + whole + ahead);
  for (int64_t i = whole; i < whole + block; i += n) rest = joined<Order, Key>(rest, L::load(row + i));
  Key keys[n];
  L::store(keys, rest);
  for (int64_t i = whole; i < width; ++i) dst[i] = OrderKey<T>::pixel(keys[i - whole]);
}

// The row has `length` pixels; up to the end of the vector after the last one it holds what does not count.
template <class Order, class T, class Key>
void slideRow(Key* row, int64_t length, int32_t window, T* dst, int32_t width) {
  constexpr int32_t n = Lanes<Key>::kCount;
  const int64_t end = (length + n - 1) / n * n;
  if (window > 2 * n) return slideLong<Order>(row, end, window, dst, width);
  const int32_t steps = std::min(std::bit_width(static_cast<uint32_t>(window)), std::bit_width(uint32_t{n})) - 1;
  if (steps == 0) return slideShort<Order, 0>(row, end, window, dst, width);
  if (steps == 1) return slideShort<Order, 1>(row, end, window, dst, width);
  if (steps == 2) return slideShort<Order, 2>(row, end, window, dst, width);
  if constexpr (n > 4) {
    if (steps == 3) return slideShort<Order, 3>(row, end, window, dst, width);
  }
  if constexpr (n > 8) slideShort<Order, 4>(row, end, window, dst, width);
}

}  // namespace dax::neon
#endif

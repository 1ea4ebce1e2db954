#include "image/transform/dft_line.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <numbers>
#include <utility>

#include "frame/math.h"
#include "image/transform/dft_butterfly.h"

namespace dax {
namespace {

// x(q + s (p + m k)), k < kRadix, to y(q + s (kRadix p + j)), turned by e^(-2 pi i p j / (kRadix m)); at the last stage, of
// m = 1, nothing is turned.
template <int kRadix, bool kIsLast, class T>
void stage(const T* __restrict x, T* __restrict y, int32_t m, int32_t s, const T* __restrict twiddles) {
  constexpr int kHalves = 2, kTurned = kRadix - 1;
  const ptrdiff_t leg = ptrdiff_t{s} * m * kDftPoint<T>, out = ptrdiff_t{s} * kDftPoint<T>;
  for (int32_t p = 0; p < m; ++p) {
    T w[2 * kTurned];
    if constexpr (!kIsLast) std::memcpy(w, twiddles + ptrdiff_t{p} * 2 * kTurned, sizeof w);
    for (int32_t q = 0; q < s; ++q) {
      for (int half = 0; half < kHalves; ++half) {
        Cx<T> a[kRadix];
        for (int k = 0; k < kRadix; ++k) a[k] = loadHalf(x + k * leg, half);
        butterfly(a);
        storeHalf(y, half, a[0]);
        for (int j = 1; j < kRadix; ++j) {
          if constexpr (!kIsLast) a[j] = product(a[j], w[2 * j - 2], w[2 * j - 1]);
          storeHalf(y + j * out, half, a[j]);
        }
      }
      x += kDftPoint<T>, y += kDftPoint<T>;
    }
    y += (kRadix - 1) * out;
  }
}

template <int kRadix, class T>
void stageOf(const T* x, T* y, int32_t m, int32_t s, const T* twiddles) {
  if (m == 1) {
    stage<kRadix, true>(x, y, m, s, twiddles);
  } else {
    stage<kRadix, false>(x, y, m, s, twiddles);
  }
}

void twistPairs(DaxComplex64f* a, DaxComplex64f* b, const DaxComplex64f* w, int64_t count) {
  for (int64_t k = 0; k < count; ++k) {
    const DaxComplex64f turned = {b[k].re * w[k].re - b[k].im * w[k].im, b[k].re * w[k].im + b[k].im * w[k].re};
    b[k] = {a[k].re - turned.re, a[k].im - turned.im};
    a[k] = {a[k].re + turned.re, a[k].im + turned.im};
  }
}

// In place, of a power of two, radix 2: for tables only.
void transformPowerOfTwo(DaxComplex64f* x, int32_t length) {
  for (int32_t i = 1, reversed = 0; i < length; ++i) {
    int32_t bit = length >> 1;
    for (; reversed & bit; bit >>= 1) reversed ^= bit;
    reversed ^= bit;
    if (i < reversed) std::swap(x[i], x[reversed]);
  }
  constexpr int32_t kChunk = 64;  // of adjacent butterflies, so that lines of the cache are used up
  for (int64_t half = 1; half < length; half *= 2) {
    for (int64_t first = 0; first < half; first += kChunk) {
      const int64_t count = std::min<int64_t>(kChunk, half - first);
      DaxComplex64f w[kChunk];
      for (int64_t k = 0; k < count; ++k) w[k] = rootOfUnity(first + k, 2 * half);
      for (int64_t block = first; block < length; block += 2 * half) twistPairs(x + block, x + block + half, w, count);
    }
  }
}

// e^(-i pi k^2 / n): k^2 needs 64 bits.
DaxComplex64f chirpAt(int64_t k, int64_t n) {
  return rootOfUnity(k * k % (2 * n), 2 * n);
}

// Bluestein's convolution. The backward transform is the forward one of numbers whose parts are exchanged.
template <class T>
T* transformChirp(const DftLine<T>& line, T* x, T* y) {
  constexpr int kHalves = 2;
  for (int32_t k = 0; k < line.n; ++k) {
    T* const point = x + ptrdiff_t{k} * kDftPoint<T>;
    const T* const w = line.chirp + ptrdiff_t{2} * k;
    for (int half = 0; half < kHalves; ++half) storeHalf(point, half, product(loadHalf(point, half), w[0], w[1]));
  }
  std::fill(x + ptrdiff_t{line.n} * kDftPoint<T>, x + ptrdiff_t{line.length} * kDftPoint<T>, T{0});
  T* const there = transformStages(line.length, line.twiddles, x, y);
  for (int32_t k = 0; k < line.length; ++k) {
    T* const point = there + ptrdiff_t{k} * kDftPoint<T>;
    const auto re = static_cast<T>(line.spectrum[ptrdiff_t{2} * k]);
    const auto im = static_cast<T>(line.spectrum[ptrdiff_t{2} * k + 1]);
    for (int half = 0; half < kHalves; ++half) {
      const Cx<T> filtered = product(loadHalf(point, half), re, im);
      storeHalf(point, half, Cx<T>{filtered.im, filtered.re});
    }
  }
  T* const back = transformStages(line.length, line.twiddles, there, there == x ? y : x);
  for (int32_t k = 0; k < line.n; ++k) {
    T* const point = back + ptrdiff_t{k} * kDftPoint<T>;
    const T* const w = line.chirp + ptrdiff_t{2} * k;
    for (int half = 0; half < kHalves; ++half) {
      const Cx<T> a = loadHalf(point, half);
      storeHalf(point, half, product(Cx<T>{a.im, a.re}, w[0], w[1]));
    }
  }
  return back;
}

}  // namespace

DftStages dftStages(int32_t n) {
  DftStages stages = {};
  for (const int radix : {4, 2, 3, 5, 7}) {
    for (; n % radix == 0; n /= radix) stages.radix[stages.count++] = static_cast<uint8_t>(radix);
  }
  if (n != 1) stages.count = 0;
  return stages;
}

int32_t smoothSide(int32_t n) {
  while (n > 1 && dftStages(n).count == 0) ++n;
  return n;
}

int32_t stagedLength(int32_t n) {
  if (n == 1 || dftStages(n).count) return n;
  return static_cast<int32_t>(std::bit_ceil(2 * static_cast<uint32_t>(n) - 1));
}

uint64_t twiddleNumbers(int32_t length) {
  const DftStages stages = dftStages(length);
  uint64_t numbers = 0;
  for (int i = 0; i < stages.count; ++i) {
    length /= stages.radix[i];
    if (length > 1) numbers += 2 * (stages.radix[i] - uint64_t{1}) * static_cast<uint64_t>(length);
  }
  return numbers;
}

DaxComplex64f rootOfUnity(int64_t k, int64_t n) {
  const int64_t octant = 8 * k / n, rest = 8 * k - octant * n;
  const double part = static_cast<double>(octant & 1 ? n - rest : rest) / static_cast<double>(n);
  const SinCos within = sinCosExact(part * (std::numbers::pi / 4));
  const double c = within.cosine, s = within.sine;
  switch (octant) {
    case 0:
      return {c, -s};
    case 1:
      return {s, -c};
    case 2:
      return {-s, -c};
    case 3:
      return {-c, -s};
    case 4:
      return {-c, s};
    case 5:
      return {-s, c};
    case 6:
      return {s, c};
    default:
      return {c, s};
  }
}

template <class T>
void makeTwiddles(int32_t length, T* twiddles) {
  const DftStages stages = dftStages(length);
  for (int i = 0; i < stages.count; ++i) {
    const int radix = stages.radix[i];
    const int32_t whole = length;
    length /= radix;
    for (int32_t p = 0; length > 1 && p < length; ++p) {
      for (int j = 1; j < radix; ++j) {
        const DaxComplex64f w = rootOfUnity(int64_t{p} * j, whole);
        *twiddles++ = static_cast<T>(w.re), *twiddles++ = static_cast<T>(w.im);
      }
    }
  }
}

template <class T>
void makeChirp(int32_t n, T* chirp) {
  for (int32_t k = 0; k < n; ++k) {
    const DaxComplex64f w = chirpAt(k, n);
    *chirp++ = static_cast<T>(w.re), *chirp++ = static_cast<T>(w.im);
  }
}

void makeChirpSpectrum(int32_t n, int32_t length, double* spectrum) {
  auto* const x = reinterpret_cast<DaxComplex64f*>(spectrum);
  std::fill(x, x + length, DaxComplex64f{0, 0});
  for (int32_t k = 0; k < n; ++k) {
    const DaxComplex64f w = chirpAt(k, n);
    x[k] = x[k ? length - k : 0] = {w.re / length, -w.im / length};
  }
  transformPowerOfTwo(x, length);
}

template <class T>
T* transformStages(int32_t length, const T* twiddles, T* x, T* y) {
  const DftStages stages = dftStages(length);
  int32_t s = 1, m = length;
  for (int i = 0; i < stages.count; ++i) {
    const int radix = stages.radix[i];
    m /= radix;
    switch (radix) {
      case 2:
        stageOf<2>(x, y, m, s, twiddles);
        break;
      case 3:
        stageOf<3>(x, y, m, s, twiddles);
        break;
      case 4:
        stageOf<4>(x, y, m, s, twiddles);
        break;
      case 5:
        stageOf<5>(x, y, m, s, twiddles);
        break;
      default:
        stageOf<7>(x, y, m, s, twiddles);
    }
    if (m > 1) twiddles += ptrdiff_t{2} * (radix - 1) * m;
    s *= radix;
    std::swap(x, y);
  }
  return x;
}

template <class T>
T* transformLine(const DftLine<T>& line, T* x, T* y) {
  return line.isChirp() ? transformChirp(line, x, y) : transformStages(line.length, line.twiddles, x, y);
}

#define DAX_DFT_LINE(T)                                              \
  template void makeTwiddles(int32_t length, T* twiddles);           \
  template void makeChirp(int32_t n, T* chirp);                      \
  template T* transformStages(int32_t length, const T*, T* x, T* y); \
  template T* transformLine(const DftLine<T>& line, T* x, T* y);
DAX_DFT_LINE(float)
DAX_DFT_LINE(double)
#undef DAX_DFT_LINE

}  // namespace dax

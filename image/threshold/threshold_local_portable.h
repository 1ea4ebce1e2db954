// Local thresholds of rows of pixels, from the sums of their windows.
#pragma once

#include <cmath>
#include <cstdint>
#include <type_traits>

#include "image/window/local_sums.h"

namespace dax {

// A pixel is set where n x - S - n (T - m) lies between n times these ends, or does not.
struct LocalTest {
  double low, high;
  uint8_t invert;  // 255: where it does not

  bool holds(double excess, double n) const { return (excess >= n * low) & (excess <= n * high); }
};
// The same where one end is infinite.
struct LowTest : LocalTest {
  bool holds(double excess, double n) const { return excess >= n * low; }
};
struct HighTest : LocalTest {
  bool holds(double excess, double n) const { return excess <= n * high; }
};

// n (T - m) from n, S and n s. Without squares, the mean itself.
struct MeanTerm {
  static constexpr bool kSquares = false;
  double operator()(double, double, double) const { return 0; }
};
struct DeviationTerm {
  static constexpr bool kSquares = true;
  double k, minDeviation;
  double operator()(double n, double, double deviation) const {
    const double floor = n * minDeviation;
    return k * (deviation < floor ? floor : deviation);
  }
};
struct SauvolaTerm {
  static constexpr bool kSquares = true;
  double k, r;
  double operator()(double n, double sum, double deviation) const { return sum * (deviation * (k / (n * r)) - k); }
};
struct WolfTerm {
  SauvolaTerm contrast;
  double least;
  static constexpr bool kSquares = true;
  double operator()(double n, double sum, double deviation) const { return contrast(n, sum - n * least, deviation); }
};

// n x - S; of integers exact.
template <class T, class Sum>
double excessOf(uint32_t n, T x, Sum sum) {
  if constexpr (std::is_floating_point_v<T>) {
    return n * static_cast<double>(x) - sum;
  } else if constexpr (sizeof(T) == 1 && sizeof(Sum) == 4) {
    return static_cast<int32_t>(n * x - sum);
  } else {
    return static_cast<double>(static_cast<int64_t>(uint64_t{n} * x - sum));
  }
}

}  // namespace dax

namespace dax::portable {

template <class T, class Sum, class Squares, class Count, class Term, class Test>
void localMask(const T* src, const Sum* sums, const Squares* squares, uint8_t* __restrict dst, int32_t width,
               Count count, Term term, Test test) {
  for (int32_t x = 0; x < width; ++x) {
    const uint32_t n = count(x);
    double deviation = 0;
    if constexpr (Term::kSquares) deviation = std::sqrt(spreadOf(n, sums[x], squares[x]));
    const double excess = excessOf(n, src[x], sums[x]) - term(n, static_cast<double>(sums[x]), deviation);
    dst[x] = static_cast<uint8_t>((test.holds(excess, n) ? 255 : 0) ^ test.invert);
  }
}

// Against the mean alone, with the ends in whole numbers: low <= n x - S <= high.
inline void meanMask(const uint8_t* src, const uint32_t* sums, uint8_t* __restrict dst, int32_t width, uint32_t n,
                     int32_t low, uint32_t range, uint8_t invert) {
  for (int32_t x = 0; x < width; ++x) {
    const uint32_t above = n * src[x] - sums[x] - static_cast<uint32_t>(low);
    dst[x] = static_cast<uint8_t>((above <= range ? 255 : 0) ^ invert);
  }
}

// Against weighted means: weights sum to rowTotal totals[x]. Of integers all is exact but for the ends.
template <class T>
void weightedMask(const T* src, const double* sums, const uint32_t* totals, double rowTotal, uint8_t* __restrict dst,
                  int32_t width, LocalTest test) {
  for (int32_t x = 0; x < width; ++x) {
    const double weights = rowTotal * totals[x];
    const double excess = weights * static_cast<double>(src[x]) - sums[x];
    dst[x] = static_cast<uint8_t>((test.holds(excess, weights) ? 255 : 0) ^ test.invert);
  }
}

}  // namespace dax::portable

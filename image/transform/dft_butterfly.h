// Forward transforms of 2, 3, 4, 5 and 7 points.
#pragma once

#include "image/transform/dft_vector.h"

namespace dax {

template <class T>
inline void butterfly(Cx<T> (&a)[2]) {
  const Cx<T> sum = a[0] + a[1];
  a[1] = a[0] - a[1], a[0] = sum;
}

template <class T>
inline void butterfly(Cx<T> (&a)[4]) {
  const Cx<T> even = a[0] + a[2], evenDifference = a[0] - a[2];
  const Cx<T> odd = a[1] + a[3], oddDifference = quarterBack(a[1] - a[3]);
  a[0] = even + odd, a[2] = even - odd;
  a[1] = evenDifference + oddDifference, a[3] = evenDifference - oddDifference;
}

// Cosines and sines of multiples of 2 pi / kRadix, for odd prime radices.
template <int kRadix>
struct RootsOfUnity;
template <>
struct RootsOfUnity<3> {
  static constexpr double kCosine[] = {-0.5};
  static constexpr double kSine[] = {0.86602540378443864676};
};
template <>
struct RootsOfUnity<5> {
  static constexpr double kCosine[] = {0.30901699437494742410, -0.80901699437494742410};
  static constexpr double kSine[] = {0.95105651629515357212, 0.58778525229247312917};
};
template <>
struct RootsOfUnity<7> {
  static constexpr double kCosine[] = {0.62348980185873353053, -0.22252093395631440429, -0.90096886790241912624};
  static constexpr double kSine[] = {0.78183148246802980871, 0.97492791218182360702, 0.43388373911755812048};
};

// Terms k and kRadix - k together: (a + b) cos - i (a - b) sin.
template <class T, int kRadix>
inline void butterfly(Cx<T> (&a)[kRadix]) {
  using Roots = RootsOfUnity<kRadix>;
  constexpr int kPairs = kRadix / 2;
  Cx<T> sum[kPairs], difference[kPairs];
  const Cx<T> first = a[0];
  for (int k = 0; k < kPairs; ++k) {
    sum[k] = a[k + 1] + a[kRadix - 1 - k];
    difference[k] = quarterBack(a[k + 1] - a[kRadix - 1 - k]);
    a[0] = a[0] + sum[k];
  }
  for (int j = 1; j <= kPairs; ++j) {
    Cx<T> even = first, odd = {};
    for (int k = 1; k <= kPairs; ++k) {
      const int turn = j * k % kRadix;
      const bool isLower = turn > kPairs;
      const int root = (isLower ? kRadix - turn : turn) - 1;
      even = even + sum[k - 1] * static_cast<T>(Roots::kCosine[root]);
      odd = odd + difference[k - 1] * static_cast<T>(isLower ? -Roots::kSine[root] : Roots::kSine[root]);
    }
    a[j] = even + odd, a[kRadix - j] = even - odd;
  }
}

}  // namespace dax

// Transforms of lines: what their tables hold, and the transform of as many lines at once as a point has lanes.
//
// A length without a prime factor above 7 is transformed in stages of radix 4, 2, 3, 5 and 7 (Stockham's order, which
// needs no permutation, but a second array). Any other n is a convolution with e^(i pi k^2 / n) by transforms of a power
// of two >= 2n - 1 (Bluestein 1970).
#pragma once

#include <cstdint>

#include "image/transform/dft_types.h"

namespace dax {

struct DftStages {
  int count;
  uint8_t radix[28];
};

// The radices whose product is n, none if n has a prime factor above 7.
DftStages dftStages(int32_t n);

// What is transformed in stages for a line of n: n itself or the power of two.
int32_t stagedLength(int32_t n);

// How many numbers the twiddles of all stages of a length have.
uint64_t twiddleNumbers(int32_t length);

// e^(-2 pi i k / n), 0 <= k < n, n up to 2^28, from the octant's own angle: within 2e-16.
DaxComplex64f rootOfUnity(int64_t k, int64_t n);

// Tables of lines of n. Complex numbers are pairs.
template <class T>
struct DftLine {
  int32_t n = 1, length = 1;
  const T* twiddles = nullptr;       // of stage after stage, radix - 1 for each step of a stage
  const T* chirp = nullptr;          // n numbers e^(-i pi k^2 / n); none where length is n
  const double* spectrum = nullptr;  // of the conjugate chirp, by `length`
  bool isChirp() const { return length != n; }
};

template <class T>
void makeTwiddles(int32_t length, T* twiddles);
template <class T>
void makeChirp(int32_t n, T* chirp);
// Of a length that is a power of two.
void makeChirpSpectrum(int32_t n, int32_t length, double* spectrum);

// The transform of `length` points in stages; they lie at x, and the result there or at y, as is returned.
template <class T>
T* transformStages(int32_t length, const T* twiddles, T* x, T* y);

// The transform of a line of n points at x: the result is where the pointer says, x or y, which have line.length points.
template <class T>
T* transformLine(const DftLine<T>& line, T* x, T* y);

}  // namespace dax

// Slopes at the knots of a line of values, from the steps between the knots.
#pragma once

#include <cstdint>

namespace dax {

struct LineEnds {
  int32_t condition;  // PRMT_SPLINE_...
  double start, end;
};

// Of the cubic spline through v. `work` of 3 n.
void splineSlopes(const double* steps, const double* v, int32_t n, const LineEnds& ends, double* slopes, double* work);

// The chords of v between two more on either side, which go on linearly, and what rounding may have added to each; n + 3 of both.
void akimaChords(const double* steps, const double* v, int32_t n, double* chords, double* noise);

// The share of the chord before knot i in its slope; the rest is that of the chord behind it.
double akimaShare(const double* chords, const double* noise, int32_t i);

// Their mean.
inline double akimaSlope(double share, double before, double behind) {
  return share * before + (1 - share) * behind;
}

}  // namespace dax

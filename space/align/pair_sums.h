// Moments of paired points.
#pragma once

#include <cstdint>

#include "geometry/matrix33.h"

namespace dax {

// Of points and weights multiplied by these factors: the sum of weights, both means, and about the means the sums of
// from_i to_j, of |from|^2 and of |to|^2.
struct PairMoments {
  double weight;
  Vector3 fromMean, toMean;
  Matrix33 cross;
  double fromSquare, toSquare;
};

template <class T>
struct PairedPoints {
  const T* from;
  const T* to;
  const T* weights;  // null: all 1
  int32_t count;
  double fromFactor = 1, toFactor = 1, weightFactor = 1;
};

// Infinities and NaN among the points, even those of weight 0, make squares that are not finite.
template <class T>
PairMoments pairMoments(const PairedPoints<T>& points);

extern template PairMoments pairMoments(const PairedPoints<float>& points);
extern template PairMoments pairMoments(const PairedPoints<double>& points);

}  // namespace dax

// The algebraic fit of a circle.
#pragma once

#include "measure/fit/circle_points.h"

namespace dax {

// Hyper of Al-Sharadqah and Chernov over the points with a weight above 0. Returns false where they lie on a line or on one place.
bool fitHyper(const CirclePoints& points, const float* weights, Circle* circle);

}  // namespace dax

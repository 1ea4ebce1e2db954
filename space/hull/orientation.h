// On which side of a plane a point lies, exactly.
#pragma once

#include "geometry/vector3.h"

namespace dax {

// The sign of (b - a) x (c - a) . (d - a): 1 where abc is counter-clockwise seen from d. Magnitudes are 0 or
// 1e-60..1e90.
int orientation(const Vector3& a, const Vector3& b, const Vector3& c, const Vector3& d);

// Whether three points lie on a line.
bool areCollinear(const Vector3& a, const Vector3& b, const Vector3& c);

}  // namespace dax

// Convex hull of a domain's pixel centres, and the rectangle that encloses a convex polygon.
#pragma once

#include <cstddef>
#include <cstdint>

#include "measure/domain_runs.h"

namespace dax {

struct PointI32 {
  int32_t x;
  int32_t y;
};

// A rotated rectangle; width >= height, angle of the long side in (-pi/2, pi/2], of a square's side in (-pi/4, pi/4].
struct RotatedBox {
  float x;
  float y;
  float width;
  float height;
  float angle;
};

enum BoxMode : int32_t {
  kLeastArea = 1,      // of equal candidates the last counts
  kLeastPerimeter = 2  // of equal candidates the first counts
};

// Points that the hull of a region of this height needs as work memory.
inline size_t hullPoints(int32_t height) {
  return 3 * static_cast<size_t>(height) + 1;
}

}  // namespace dax

// Writes the hull to points[0..n) and returns n: corners only, from the topmost, of these the leftmost, on by
// increasing angle of x towards y. `points` has room for hullPoints(view.size.height). Integer arithmetic, exact.
extern "C" int32_t _DAXI_DomainConvexHull_ROI(const dax::DomainView* view, dax::PointI32* points);

// The best rectangle with a side along one of the edges of a convex polygon given as by _DAXI_DomainConvexHull_ROI. One
// point gives a box of no size, two a box of no height, no points zeros.
extern "C" void DAXI_REG_EncloseBox(const dax::PointI32* points, int32_t count, int32_t mode, dax::RotatedBox* box);

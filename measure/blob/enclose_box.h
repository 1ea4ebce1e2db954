// Convex hulls of whole-number points, and the rectangle that encloses a convex polygon.
#pragma once

#include <cstdint>

#include "daxi/region.h"
#include "measure/blob/domain_runs.h"

namespace dax {

// Hull of the pixel centres of a domain into points[0..n); returns n. `points` has room for
// DAXI_HULL_POINTS(view.size.height).
int32_t domainHull(const DomainView& view, DaxiPoint32s* points);

// Hull of points sorted by row, then column, into hull[0..n); returns n. `hull` has room for 3 * count + 1 points.
int32_t sortedPointsHull(const DaxiPoint32s* sorted, int32_t count, DaxiPoint32s* hull);

// The best rectangle around a convex polygon as the two functions above give it; zeros for no points.
DaxiRotatedBox encloseBox(const DaxiPoint32s* points, int32_t count, int32_t mode);

// Share of the box that an area fills, at most 1; 1 for an area up to 1.
inline float rectangularity(float area, const DaxiRotatedBox& box) {
  const float boxArea = box.width * box.height;
  return area <= 1 || area >= boxArea ? 1 : area / boxArea;
}

}  // namespace dax

// The rectangle that encloses a convex polygon of whole-number points.
#pragma once

#include <cstdint>

#include "daxi/region.h"

namespace dax {

// The best rectangle around a convex polygon in strict turns (geometry/convex_hull.h); zeros for no points. `mode` is
// one of DAXI_BOX_...
DaxiRotatedBox encloseBox(const DaxiPoint32s* points, int32_t count, int32_t mode);

// Share of the box that an area fills, at most 1; 1 for an area up to 1.
inline float rectangularity(float area, const DaxiRotatedBox& box) {
  const float boxArea = box.width * box.height;
  return area <= 1 || area >= boxArea ? 1 : area / boxArea;
}

}  // namespace dax

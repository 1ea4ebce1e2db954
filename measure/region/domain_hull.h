// Convex hull of a domain of a labelled image.
#pragma once

#include <cstdint>

#include "daxi/region.h"
#include "measure/region/domain_runs.h"

namespace dax {

// Hull of the pixel centres of a domain into points[0..n), in the order of geometry/convex_hull.h; returns n. `points`
// has room for DAXI_HULL_POINTS(view.size.height).
int32_t domainHull(const DomainView& view, DaxiPoint32s* points);

}  // namespace dax

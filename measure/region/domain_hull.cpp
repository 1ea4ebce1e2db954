#include "measure/region/domain_hull.h"

#include "geometry/convex_hull.h"

namespace dax {

int32_t domainHull(const DomainView& view, DaxiPoint32s* points) {
  RowHull hull(points, static_cast<size_t>(view.size.height));
  RunSpan row{-1, 0, 0};
  forEachRun(view, [&](RunSpan run) {
    if (run.row != row.row) {
      if (row.row >= 0) hull.addRow(row.row, row.start, row.end);
      row = run;
    }
    row.end = run.end;
  });
  if (row.row >= 0) hull.addRow(row.row, row.start, row.end);
  return hull.finish();
}

}  // namespace dax

// Iteration over the runs of a domain, clipped to a region.
#pragma once

#include <algorithm>
#include <cstdint>

#include "daxi/blob_find.h"
#include "frame/check.h"

namespace dax {

// Whether both sides are within 1..65536, the range of the 16-bit fields of runs.
inline bool sidesFitRuns(DaxiSize size) {
  return atLeast(size, 1) && atMost(size, DAXI_BLOB_MAX_SIDE);
}

// Part of a row; both ends are inclusive.
struct RunSpan {
  int32_t row;
  int32_t start;
  int32_t end;
  int32_t length() const { return end - start + 1; }
};

// A domain clipped to the region 0..width - 1, 0..height - 1.
struct DomainView {
  const DomainRun* runs;
  const DaxiDomain* domain;
  DaxiSize size;
  bool clips;  // whether runs may extend beyond the region
};

inline DomainView viewDomain(const DaxiDomainList& list, const DaxiDomain& domain, DaxiSize size) {
  return {list.runs, &domain, size, list.size.width > size.width || list.size.height > size.height};
}

// Calls visit(RunSpan) for every run in raster order.
template <class Visit>
void forEachWholeRun(const DomainView& view, Visit&& visit) {
  for (const DomainRun* run = &view.domain->head;; run = view.runs + run->next) {
    visit(RunSpan{run->row, run->start, run->end});
    if (run->next == DAXI_RUN_END) return;
  }
}

// Calls visit(RunSpan) for the part of every run that lies in the region, in raster order.
template <class Visit>
void forEachRun(const DomainView& view, Visit&& visit) {
  if (!view.clips) return forEachWholeRun(view, visit);
  forEachWholeRun(view, [&](RunSpan run) {
    if (run.row >= view.size.height || run.start >= view.size.width) return;
    visit(RunSpan{run.row, run.start, std::min(run.end, view.size.width - 1)});
  });
}

}  // namespace dax

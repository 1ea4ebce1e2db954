// Walking the runs of a domain, as seen through a region.
#pragma once

#include <algorithm>
#include <cstdint>

#include "daxi/blob_find.h"
#include "frame/check.h"

namespace dax {

// Whether the fields of runs can hold the sides.
inline bool sidesFitRuns(DaxiSize size) {
  return atLeast(size, 1) && atMost(size, DAXI_BLOB_MAX_SIDE);
}

// A part of a row, ends inclusive.
struct RunSpan {
  int32_t row;
  int32_t start;
  int32_t end;
  int32_t length() const { return end - start + 1; }
};

// A domain seen through the region 0..width - 1, 0..height - 1.
struct DomainView {
  const DomainRun* runs;
  const DaxiDomain* domain;
  DaxiSize size;
  bool clips;  // whether runs may reach out of the region
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

// The same for the parts of the runs that lie in the region.
template <class Visit>
void forEachRun(const DomainView& view, Visit&& visit) {
  if (!view.clips) return forEachWholeRun(view, visit);
  forEachWholeRun(view, [&](RunSpan run) {
    if (run.row >= view.size.height || run.start >= view.size.width) return;
    visit(RunSpan{run.row, run.start, std::min(run.end, view.size.width - 1)});
  });
}

}  // namespace dax

// Walking the runs of a domain, as seen through a region.
#pragma once

#include <algorithm>
#include <cstdint>

#include "daxi/blob_find.h"

namespace dax {

// A part of a row, ends inclusive.
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
};

// Calls visit(RunSpan) for every run in raster order; runs reaching out of the region are cut.
template <class Visit>
void forEachRun(const DomainView& view, Visit&& visit) {
  for (const DomainRun* run = &view.domain->head;; run = view.runs + run->next) {
    if (run->row < view.size.height && run->start < view.size.width) {
      visit(RunSpan{run->row, run->start, std::min<int32_t>(run->end, view.size.width - 1)});
    }
    if (run->next == DAXI_RUN_END) return;
  }
}

}  // namespace dax

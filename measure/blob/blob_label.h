// Labelling, independent of who owns the memory: joins the runs of successive rows and chains the runs of a domain.
#pragma once

#include <cstdint>

#include "daxi/blob_find.h"
#include "geometry/union_find.h"

namespace dax {

inline bool isFourConnected(int32_t connectivity) {
  return connectivity == 4;
}

// Receives the runs of an image in raster order and joins each with the runs of the row above that it touches; with
// classes, only with those of its own class. Each run gets a label, an element of the union-find.
template <bool kClasses>
class RunJoiner {
 public:
  // Runs touch when the gap between their columns is at most the reach: 0 for a common edge, 1 for an edge or a corner.
  RunJoiner(DomainRun* runs, uint32_t* parents, int32_t connectivity)
      : runs_(runs), labels_(parents), reach_(isFourConnected(connectivity) ? 0 : 1) {}

  // Continues with the same runs and labels in memory that has moved.
  void moveTo(DomainRun* runs, uint32_t* parents) {
    runs_ = runs;
    labels_.moveTo(parents);
  }

  void beginRow(int32_t row) {
    row_ = static_cast<uint16_t>(row);
    above_ = aboveEnd_;
    aboveEnd_ = count_;
  }

  void add(int32_t start, int32_t end, uint16_t cls = 0) {
    while (above_ < aboveEnd_ && runs_[above_].end + reach_ < start) ++above_;
    const uint32_t label = kClasses ? joinClass(end, cls) : join(end);
    runs_[count_++] = {row_, static_cast<uint16_t>(start), static_cast<uint16_t>(end), cls, label, DAXI_RUN_END};
  }

  uint32_t count() const { return count_; }
  UnionFind& labels() { return labels_; }

 private:
  bool touches(uint32_t above, int32_t end) const { return above < aboveEnd_ && runs_[above].start <= end + reach_; }

  // Runs of a row are separated by a gap: of the runs above that this run touches, only the last can touch the next
  // run.
  uint32_t join(int32_t end) {
    if (!touches(above_, end)) return labels_.add();
    uint32_t label = labels_.root(runs_[above_].label);
    while (touches(above_ + 1, end)) {
      const uint32_t other = labels_.root(runs_[++above_].label);
      if (other != label) label = labels_.unite(label, other);
    }
    return label;
  }

  // With classes the next run can begin right behind this one and touch the same runs above: above_ does not advance.
  uint32_t joinClass(int32_t end, uint16_t cls) {
    uint32_t label = DAXI_RUN_END;
    for (uint32_t above = above_; touches(above, end); ++above) {
      if (runs_[above].cls != cls) continue;
      const uint32_t other = labels_.root(runs_[above].label);
      label = label == DAXI_RUN_END || label == other ? other : labels_.unite(label, other);
    }
    return label == DAXI_RUN_END ? labels_.add() : label;
  }

  DomainRun* runs_;
  UnionFind labels_;
  int32_t reach_;
  uint16_t row_ = 0;
  uint32_t count_ = 0;
  uint32_t above_ = 0;     // first run above that may touch the next run
  uint32_t aboveEnd_ = 0;  // end of the runs above
};

// Replaces the labels of the runs by the numbers of their domains, and chains the runs of each domain. In raster order
// the first run with a number is the head of that domain, and new numbers appear in ascending order.
inline void chainRuns(DomainRun* runs, uint32_t runCount, const UnionFind& labels, DaxiDomain* domains,
                      uint32_t domainCount) {
  uint32_t seen = 0;  // domains whose head run has been passed
  for (uint32_t i = 0; i < runCount; ++i) {
    const uint32_t label = labels.numberOf(runs[i].label);
    DaxiDomain& domain = domains[label];
    runs[i].label = label;
    if (label == seen) {
      ++seen;
      domain.runCount = 0;
      domain.head.next = i;  // index of the head run, until it is copied below
    } else {
      runs[domain.last].next = i;
    }
    domain.last = i;
    ++domain.runCount;
  }
  for (uint32_t i = 0; i < domainCount; ++i) domains[i].head = runs[domains[i].head.next];
}

}  // namespace dax

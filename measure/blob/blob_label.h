// Labelling, whatever the memory: label equivalences, joining runs of successive rows, chaining.
#pragma once

#include <algorithm>
#include <cstdint>

#include "daxi/blob_find.h"

namespace dax {

inline bool isFourConnected(int32_t connectivity) {
  return connectivity == 4;
}

// Equivalent labels, as a forest in which the parent of a label is never greater (union-find with path halving).
class LabelForest {
 public:
  explicit LabelForest(uint32_t* parents) : parents_(parents) {}

  // The same labels in memory that has moved.
  void moveTo(uint32_t* parents) { parents_ = parents; }

  uint32_t add() {
    parents_[count_] = count_;
    return count_++;
  }

  uint32_t root(uint32_t label) {
    while (parents_[label] != label) {
      parents_[label] = parents_[parents_[label]];
      label = parents_[label];
    }
    return label;
  }

  uint32_t unite(uint32_t a, uint32_t b) {
    const auto [lower, higher] = std::minmax(a, b);
    parents_[higher] = lower;
    return lower;
  }

  // Replaces every label by its domain's number, in the order of their first labels; returns the number of domains.
  uint32_t number() {
    uint32_t domains = 0;
    for (uint32_t label = 0; label < count_; ++label) {
      parents_[label] = parents_[label] == label ? domains++ : parents_[parents_[label]];
    }
    return domains;
  }

  uint32_t numberOf(uint32_t label) const { return parents_[label]; }
  uint32_t count() const { return count_; }

 private:
  uint32_t* parents_;
  uint32_t count_ = 0;
};

// Takes the runs of an image in raster order and joins each with those of the row above that it touches, and that are
// of its class where there are classes.
template <bool kClasses>
class RunJoiner {
 public:
  // Runs touch when their columns come within a reach of each other: 0 for an edge, 1 for an edge or a corner.
  RunJoiner(DomainRun* runs, uint32_t* parents, int32_t connectivity)
      : runs_(runs), labels_(parents), reach_(isFourConnected(connectivity) ? 0 : 1) {}

  // The same runs and labels in memory that has moved.
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
  LabelForest& labels() { return labels_; }

 private:
  bool touches(uint32_t above, int32_t end) const { return above < aboveEnd_ && runs_[above].start <= end + reach_; }

  // Between runs of a row there is a gap, so that of the runs above only the last one touched can touch the next run
  // too.
  uint32_t join(int32_t end) {
    if (!touches(above_, end)) return labels_.add();
    uint32_t label = labels_.root(runs_[above_].label);
    while (touches(above_ + 1, end)) {
      const uint32_t other = labels_.root(runs_[++above_].label);
      if (other != label) label = labels_.unite(label, other);
    }
    return label;
  }

  // Runs of other classes stand between, and the next run may begin right behind this one: the walk does not move on.
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
  LabelForest labels_;
  int32_t reach_;
  uint16_t row_ = 0;
  uint32_t count_ = 0;
  uint32_t above_ = 0;     // first run above that may touch what comes
  uint32_t aboveEnd_ = 0;  // end of the runs above
};

// Gives the runs their domains' labels and chains them. A domain's number is first met at its head run.
inline void chainRuns(DomainRun* runs, uint32_t runCount, const LabelForest& labels, DaxiDomain* domains,
                      uint32_t domainCount) {
  uint32_t met = 0;
  for (uint32_t i = 0; i < runCount; ++i) {
    const uint32_t label = labels.numberOf(runs[i].label);
    DaxiDomain& domain = domains[label];
    runs[i].label = label;
    if (label == met) {
      ++met;
      domain.runCount = 0;
      domain.head.next = i;  // for now, where the head run is
    } else {
      runs[domain.last].next = i;
    }
    domain.last = i;
    ++domain.runCount;
  }
  for (uint32_t i = 0; i < domainCount; ++i) domains[i].head = runs[domains[i].head.next];
}

}  // namespace dax

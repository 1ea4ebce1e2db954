#include "measure/blob_find.h"

#include <algorithm>
#include <bit>
#include <cstddef>

#include "frame/check.h"
#include "frame/cpu_feature.h"
#include "frame/rows.h"
#include "measure/blob_find_portable.h"
#if DAX_HAVE_NEON
#include "measure/blob_find_neon.h"
#else
namespace dax {
namespace neon = portable;
}
#endif

static_assert(sizeof(DomainRun) == 16 && offsetof(DomainRun, cls) == 6 && offsetof(DomainRun, next) == 12);
static_assert(sizeof(DaxiDomain) == 24 && sizeof(DaxiDomainList) == 32);

namespace dax {
namespace {

bool isFourConnected(int32_t connectivity) {
  return connectivity == 4;
}

uint64_t mostRuns(DaxiSize size) {
  return static_cast<uint64_t>(size.height) * ((static_cast<uint64_t>(size.width) + 1) / 2);
}

// As many pixels as can lie apart from each other.
uint64_t mostDomains(DaxiSize size, int32_t connectivity) {
  const auto w = static_cast<uint64_t>(size.width), h = static_cast<uint64_t>(size.height);
  return isFourConnected(connectivity) ? (w * h + 1) / 2 : ((w + 1) / 2) * ((h + 1) / 2);
}

// A run that touches nothing above it gets a label. Joined domains leave labels unused, so that these can be more than
// the domains; the bound is reached.
uint64_t mostLabels(DaxiSize size, int32_t connectivity) {
  const auto longSide = static_cast<uint64_t>(std::max(size.width, size.height)) + 1;
  const auto shortSide = static_cast<uint64_t>(std::min(size.width, size.height));
  if (shortSide == 1) return longSide / 2 + 1;
  const uint64_t area = shortSide * longSide;
  return isFourConnected(connectivity) ? area / 2 + 1 : (longSide + area) / 4 + 1;
}

// Equivalent labels, as a forest in which the parent of a label is never greater (union-find with path halving).
class LabelForest {
 public:
  explicit LabelForest(uint32_t* parents) : parents_(parents) {}

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

 private:
  uint32_t* parents_;
  uint32_t count_ = 0;
};

// Takes the runs of an image in raster order and joins each with those of the row above that it touches.
class RunJoiner {
 public:
  // Runs touch when their columns come within `reach` of each other: 0 for an edge, 1 for an edge or a corner.
  RunJoiner(DomainRun* runs, LabelForest& labels, int32_t reach) : runs_(runs), labels_(labels), reach_(reach) {}

  void beginRow(int32_t row) {
    row_ = static_cast<uint16_t>(row);
    above_ = aboveEnd_;
    aboveEnd_ = count_;
  }

  void add(int32_t start, int32_t end) {
    while (above_ < aboveEnd_ && runs_[above_].end + reach_ < start) ++above_;
    const uint32_t label = touches(above_, end) ? join(end) : labels_.add();
    runs_[count_++] = {row_, static_cast<uint16_t>(start), static_cast<uint16_t>(end), 0, label, DAXI_RUN_END};
  }

  uint32_t count() const { return count_; }

 private:
  bool touches(uint32_t above, int32_t end) const { return above < aboveEnd_ && runs_[above].start <= end + reach_; }

  // The last run that is touched may touch the next run of this row too, so the walk stops at it.
  uint32_t join(int32_t end) {
    uint32_t label = labels_.root(runs_[above_].label);
    while (touches(above_ + 1, end)) {
      const uint32_t other = labels_.root(runs_[++above_].label);
      if (other != label) label = labels_.unite(label, other);
    }
    return label;
  }

  DomainRun* runs_;
  LabelForest& labels_;
  int32_t reach_;
  uint16_t row_ = 0;
  uint32_t count_ = 0;
  uint32_t above_ = 0;     // first run above that may touch what comes
  uint32_t aboveEnd_ = 0;  // end of the runs above
};

// The places in a word of 64 pixels at which a run starts or ends: where a bit differs from its left neighbour.
class Edges {
 public:
  Edges(uint64_t bits, bool inside, int32_t x) : bits_(bits ^ (bits << 1 | uint64_t{inside})), x_(x) {}
  bool any() const { return bits_ != 0; }
  int32_t take() {
    const int32_t edge = x_ + std::countr_zero(bits_);
    bits_ &= bits_ - 1;
    return edge;
  }

 private:
  uint64_t bits_;
  int32_t x_;
};

// Finds the runs of a row, 64 pixels at a time. Edges are taken in pairs; a run may go on into the next word.
template <class Bits64>
void scanRow(const uint8_t* row, int32_t width, Bits64 foregroundBits64, RunJoiner& joiner) {
  bool inside = false;
  int32_t start = 0;
  for (int32_t x = 0; x < width; x += 64) {
    const int32_t n = width - x;
    Edges edges(n >= 64 ? foregroundBits64(row + x) : portable::foregroundBits(row + x, n), inside, x);
    while (edges.any()) {
      if (!inside) {
        start = edges.take();
        inside = true;
        if (!edges.any()) break;
      }
      joiner.add(start, edges.take() - 1);
      inside = false;
    }
  }
  if (inside) joiner.add(start, width - 1);
}

template <class Bits64>
void scanImage(const uint8_t* src, int32_t srcStep, DaxiSize size, Bits64 foregroundBits64, RunJoiner& joiner) {
  for (int32_t y = 0; y < size.height; ++y) {
    joiner.beginRow(y);
    scanRow(rowAt(src, srcStep, y), size.width, foregroundBits64, joiner);
  }
}

// Gives the runs their domains' labels and chains them. A domain's number is first met at its head run.
void chainRuns(DomainRun* runs, uint32_t runCount, const LabelForest& labels, DaxiDomain* domains,
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

}  // namespace

FindModel::FindModel(DaxiSize size, int32_t connectivity)
    : list(layout.add<DaxiDomainList>(1)),
      runs(layout.add<DomainRun>(mostRuns(size))),
      domains(layout.add<DaxiDomain>(mostDomains(size, connectivity))) {}

FindScratch::FindScratch(DaxiSize size, int32_t connectivity)
    : parents(layout.add<uint32_t>(mostLabels(size, connectivity))) {}

namespace {

DaxStatus checkQuery(DaxiSize size, const uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1) && atMost(size, DAXI_BLOB_MAX_SIDE), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

const DaxiDomainList* _DAXI_FindDomain_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                                              void* model, void* buffer, int32_t isa) {
  const dax::FindModel at(size, connectivity);
  DomainRun* const runs = at.runs.in(model);
  DaxiDomain* const domains = at.domains.in(model);

  dax::LabelForest labels(dax::FindScratch(size, connectivity).parents.in(buffer));
  dax::RunJoiner joiner(runs, labels, dax::isFourConnected(connectivity) ? 0 : 1);
  if (dax::usesNeon(isa)) {
    dax::scanImage(
        src, srcStep, size, [](const uint8_t* p) { return dax::neon::foregroundBits64(p); }, joiner);
  } else {
    dax::scanImage(
        src, srcStep, size, [](const uint8_t* p) { return dax::portable::foregroundBits64(p); }, joiner);
  }
  const uint32_t domainCount = labels.number();
  dax::chainRuns(runs, joiner.count(), labels, domains, domainCount);

  DaxiDomainList* const list = at.list.in(model);
  *list = {runs, domains, joiner.count(), domainCount, size};
  return list;
}

DaxStatus DAXI_BlobFindModelSize_8u(DaxiSize size, int32_t connectivity, uint64_t* bytes) {
  DAX_REQUIRE_OK(dax::checkQuery(size, bytes));
  return dax::FindModel(size, connectivity).layout.store(bytes);
}

DaxStatus DAXI_BlobFindBufferSize_8u(DaxiSize size, int32_t connectivity, uint64_t* bytes) {
  DAX_REQUIRE_OK(dax::checkQuery(size, bytes));
  return dax::FindScratch(size, connectivity).layout.store(bytes);
}

DaxStatus DAXI_BlobFind_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity, void* model,
                               const DaxiDomainList** domains, void* buffer) {
  DAX_REQUIRE(src && model && domains && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::atLeast(size, 1) && dax::atMost(size, DAXI_BLOB_MAX_SIDE), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(dax::rowFits(size.width, srcStep), DAX_STS_BAD_STEP);
  *domains = _DAXI_FindDomain_8u_C1R(src, srcStep, size, connectivity, model, buffer, dax::currentIsa());
  return DAX_STS_OK;
}

uint32_t _DAXI_DomainCount(const DaxiDomainList* domains) {
  return domains ? domains->domainCount : 0;
}

const DaxiDomain* _DAXI_SelectDomainIndex(const DaxiDomainList* domains, uint32_t label) {
  return label < _DAXI_DomainCount(domains) ? domains->domains + label : nullptr;
}

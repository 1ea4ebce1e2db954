// Otsu's criterion for several classes: the best splits of a prefix of the occupied levels into one class more follow
// from those of shorter prefixes. The best place of the last split does not fall as the prefix grows, so a row of the
// table is found by divide and conquer, level by level of the halving.
#include <algorithm>
#include <utility>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "image/threshold/hist_level.h"

namespace dax {
namespace {

constexpr int32_t kMaxClasses = 4;

struct MultiBuffer {
  explicit MultiBuffer(int32_t bins) : entries(static_cast<uint64_t>(bins)) {}
  uint64_t entries;
  BufferLayout layout;
  BufferPiece<uint16_t> levels = layout.add<uint16_t>(entries);
  BufferPiece<uint64_t> counts = layout.add<uint64_t>(entries + 1), sums = layout.add<uint64_t>(entries + 1);
  BufferPiece<double> best = layout.add<double>(entries), next = layout.add<double>(entries);
  BufferPiece<uint16_t> splits = layout.add<uint16_t>(entries * (kMaxClasses - 1));
};

class MultiSplitter {
 public:
  MultiSplitter(const uint64_t* hist, int32_t bins, void* buffer)
      : levels_(MultiBuffer(bins).levels.in(buffer)),
        counts_(MultiBuffer(bins).counts.in(buffer)),
        sums_(MultiBuffer(bins).sums.in(buffer)),
        best_(MultiBuffer(bins).best.in(buffer)),
        next_(MultiBuffer(bins).next.in(buffer)),
        splits_(MultiBuffer(bins).splits.in(buffer)) {
    counts_[0] = sums_[0] = 0;
    for (int32_t v = 0; v < bins; ++v) {
      if (hist[v] == 0) continue;
      levels_[occupied_] = static_cast<uint16_t>(v);
      counts_[occupied_ + 1] = counts_[occupied_] + hist[v];
      sums_[occupied_ + 1] = sums_[occupied_] + static_cast<uint64_t>(v) * hist[v];
      ++occupied_;
    }
  }

  DaxiHistLevel split(int32_t classes) {
    const int32_t used = std::min(classes, occupied_);
    for (int32_t i = 0; i < occupied_; ++i) best_[i] = explainedBy(0, i);
    for (int32_t c = 1; c < used; ++c) {
      addClass(c);
      std::swap(best_, next_);
    }
    DaxiHistLevel level = {{levels_[0], 0, 0}, std::max(used - 1, 1), 0, 0, used > 1 ? best_[occupied_ - 1] : 0};
    int32_t end = occupied_ - 1;
    for (int32_t c = used - 1; c >= 1; --c) {
      end = splitsOf(c)[end];
      level.level[c - 1] = levels_[end];
    }
    if (occupied_ == 1) level.flags |= DAXI_HIST_LEVEL_DEGENERATE;
    if (used < classes) level.flags |= DAXI_HIST_LEVEL_FEWER;
    return level;
  }

 private:
  // Of the class of the occupied levels first..last.
  double explainedBy(int32_t first, int32_t last) const {
    return explained(counts_[last + 1] - counts_[first], sums_[last + 1] - sums_[first]);
  }
  uint16_t* splitsOf(int32_t c) { return splits_ + ptrdiff_t{c - 1} * occupied_; }

  // Entry i: the best value of levels 0..i in c + 1 classes, and the last level before the last class; lowest of
  // equals.
  void addClass(int32_t c) {
    uint16_t* const splits = splitsOf(c);
    const auto solve = [&](int32_t i, int32_t low, int32_t high) {
      splits[i] = static_cast<uint16_t>(low);
      next_[i] = best_[low] + explainedBy(low + 1, i);
      for (int32_t j = low + 1; j <= std::min(high, i - 1); ++j) {
        const double value = best_[j] + explainedBy(j + 1, i);
        if (value > next_[i]) next_[i] = value, splits[i] = static_cast<uint16_t>(j);
      }
    };
    // Strides from the largest power of two down: entries between two solved ones are bounded by theirs.
    int32_t stride = 1;
    while (stride < occupied_) stride *= 2;
    for (; stride >= 1; stride /= 2) {
      for (int32_t i = c - 1 + stride; i < occupied_; i += 2 * stride) {
        const int32_t before = i - stride, after = i + stride;
        solve(i, before >= c ? splits[before] : c - 1, after < occupied_ ? splits[after] : i - 1);
      }
    }
  }

  int32_t occupied_ = 0;
  uint16_t* levels_;
  uint64_t *counts_, *sums_;
  double *best_, *next_;
  uint16_t* splits_;
};

}  // namespace
}  // namespace dax

DaxStatus DAXI_HistLevelBufferSize_OtsuMulti(int32_t bins, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(bins >= 2 && bins <= 65536, DAX_STS_BAD_PARAM);
  return dax::MultiBuffer(bins).layout.store(bytes);
}

DaxStatus DAXI_HistLevel_OtsuMulti(const uint64_t* hist, int32_t bins, const DaxiHistLevelCfg* cfg,
                                   DaxiHistLevel* level, void* buffer) {
  DAX_REQUIRE(hist && cfg && level && buffer, DAX_STS_NULL_POINTER);
  dax::HistSums sums;
  DAX_REQUIRE_OK(dax::checkHistogram(hist, bins, cfg, sums));
  *level = dax::MultiSplitter(hist, bins, buffer).split(cfg->classes);
  return DAX_STS_OK;
}

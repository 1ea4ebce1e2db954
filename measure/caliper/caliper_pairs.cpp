#include "measure/caliper/caliper_pairs.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "frame/check.h"
#include "measure/caliper/caliper_criterion.h"
#include "measure/caliper/caliper_edges.h"

namespace dax {

static_assert(sizeof(CaliperEdgePair) == 88 && sizeof(CaliperEdgePairCfg) == 4 * (10 + 11 * 6 + 1));

namespace {

constexpr uint32_t kPairFlags = 1023, kNeedExpectedWidth = 0xF8;

bool matches(const CaliperEdge& first, const CaliperEdge& second, uint32_t polarity) {
  return polarity == DAXI_CALIPER_ANY || (first.polarity == polarity && second.polarity != polarity);
}

CaliperEdgePair pairOf(const CaliperEdge& first, const CaliperEdge& second) {
  return {first,
          second,
          std::fabs(second.position - first.position),
          (first.position + second.position) * 0.5f,
          std::fabs(first.peak) + std::fabs(second.peak),
          first.gray + second.gray,
          1,
          0};
}

// Calls take(pair) for each pair in order until it returns false.
template <class Take>
void forEachPair(const CaliperEdge* edges, int32_t count, uint32_t polarity, Take take) {
  for (int32_t i = 0; i < count; ++i) {
    for (int32_t j = i + 1; j < count; ++j) {
      if (matches(edges[i], edges[j], polarity) && !take(pairOf(edges[i], edges[j]))) return;
    }
  }
}

bool ranksBefore(const CaliperEdgePair& a, const CaliperEdgePair& b) {
  if (a.score != b.score) return a.score > b.score;
  if (a.first.index != b.first.index) return a.first.index < b.first.index;
  return a.second.index < b.second.index;
}

void offer(CaliperPairHeap& heap, const CaliperEdgePair& pair) {
  if (heap.count < heap.capacity) {
    int32_t place = heap.count++;
    for (; place > 0 && ranksBefore(heap.pairs[(place - 1) / 2], pair); place = (place - 1) / 2) {
      heap.pairs[place] = heap.pairs[(place - 1) / 2];
    }
    heap.pairs[place] = pair;
  } else if (ranksBefore(pair, heap.pairs[0])) {
    heap.pairs[0] = pair;
    DAXI_CalipEdgePair_heap_adjust_descend_32f(heap.pairs, 0, heap.count);
  }
}

int32_t chosenPair(const CaliperEdge* edges, int32_t count, const CaliperEdgePairCfg& cfg, CaliperEdgePair* chosen) {
  int32_t seen = 0;
  forEachPair(edges, count, cfg.polarity, [&](const CaliperEdgePair& pair) {
    *chosen = pair;
    return ++seen < cfg.pairChoice;
  });
  return std::min(seen, 1);
}

int32_t bestPairs(const CaliperEdge* edges, int32_t count, const CaliperEdgePairCfg& cfg, CaliperEdgePair* best) {
  CaliperPairHeap heap{best, 0, cfg.maxPairs};
  forEachPair(edges, count, cfg.polarity, [&](CaliperEdgePair pair) {
    DAXI_CalipEdgePairDetect_comprehensive_assess1(&pair, &cfg);
    if (pair.score >= cfg.minScore) offer(heap, pair);
    return true;
  });
  DAXI_CalipEdgePairDetect_rank_criterion(&heap);
  return heap.count;
}

}  // namespace

void extract(const CaliperSignal& signal, const CaliperGrid& grid, const CaliperEdgePairCfg& cfg,
             CaliperEdgePairResult& result, const CaliperBuffer& at, void* buffer) {
  CaliperEdge* const edges = at.edges.in(buffer);
  const int32_t found = findEdges(signal, DAXI_CALIPER_ANY, cfg.threshold, edges);
  result.count = (cfg.pairChoice >= 1 ? chosenPair : bestPairs)(edges, found, cfg, result.pairs);
  if (!result.points) return;
  for (int32_t i = 0; i < result.count; ++i) {
    result.points[2 * i] = grid.pointAt(result.pairs[i].first.position);
    result.points[2 * i + 1] = grid.pointAt(result.pairs[i].second.position);
  }
}

}  // namespace dax

DaxStatus DAXI_CalipEdgePairDetect_cfg_check(const CaliperEdgePairCfg* cfg) {
  DAX_REQUIRE(cfg->maxPairs >= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::isEdgeSearch(*cfg), DAX_STS_BAD_PARAM);
  const std::pair<uint32_t, const CaliperCriterion&> criteria[] = {
      {DAXI_CALIPER_PAIR_BY_CONTRAST, cfg->contrast},
      {DAXI_CALIPER_PAIR_BY_GRAY, cfg->gray},
      {DAXI_CALIPER_PAIR_BY_POSITION, cfg->position},
      {DAXI_CALIPER_PAIR_BY_POSITION_NORM, cfg->positionNorm},
      {DAXI_CALIPER_PAIR_BY_POSITION_NEG, cfg->positionNeg},
      {DAXI_CALIPER_PAIR_BY_POSITION_NORM_NEG, cfg->positionNormNeg},
      {DAXI_CALIPER_PAIR_BY_SIZE_NORM, cfg->sizeNorm},
      {DAXI_CALIPER_PAIR_BY_SIZE_DIFF_NORM, cfg->sizeDiffNorm},
      {DAXI_CALIPER_PAIR_BY_SIZE_DIFF_ASYM, cfg->sizeDiffBelow},
      {DAXI_CALIPER_PAIR_BY_SIZE_DIFF_ASYM, cfg->sizeDiffAbove},
      {DAXI_CALIPER_PAIR_BY_STRADDLE, cfg->straddle}};
  for (const auto& [flag, criterion] : criteria) {
    DAX_REQUIRE((cfg->scoreFlags & flag) == 0 || dax::isCriterion(criterion), DAX_STS_BAD_PARAM);
  }
  DAX_REQUIRE(cfg->scoreFlags >= 1 && cfg->scoreFlags <= dax::kPairFlags, DAX_STS_BAD_PARAM);
  const bool needsWidth = (cfg->scoreFlags & dax::kNeedExpectedWidth) != 0;
  DAX_REQUIRE(!needsWidth || cfg->expectedWidth >= dax::kCaliperSlack, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

void _DAXI_CalipEdgePairDetect_common_comprehensive_assess(CaliperEdgePair* pair, const CaliperEdgePairCfg* cfg) {
  const auto apply = [pair, cfg](uint32_t flag, const CaliperCriterion& criterion, float value) {
    pair->score *= dax::factorIfActive(cfg->scoreFlags, flag, criterion, value);
  };
  const float position = pair->position, norm = position / cfg->expectedWidth;
  apply(DAXI_CALIPER_PAIR_BY_CONTRAST, cfg->contrast, pair->contrast);
  apply(DAXI_CALIPER_PAIR_BY_GRAY, cfg->gray, pair->gray);
  apply(DAXI_CALIPER_PAIR_BY_POSITION, cfg->position, std::fabs(position));
  apply(DAXI_CALIPER_PAIR_BY_POSITION_NORM, cfg->positionNorm, std::fabs(norm));
  apply(DAXI_CALIPER_PAIR_BY_POSITION_NEG, cfg->positionNeg, position);
  apply(DAXI_CALIPER_PAIR_BY_POSITION_NORM_NEG, cfg->positionNormNeg, norm);
}

void _DAXI_CalipEdgePairDetect_pitch_comprehensive_assess(CaliperEdgePair* pair, const CaliperEdgePairCfg* cfg) {
  const auto apply = [pair, cfg](uint32_t flag, const CaliperCriterion& criterion, float value) {
    pair->score *= dax::factorIfActive(cfg->scoreFlags, flag, criterion, value);
  };
  const float expected = cfg->expectedWidth, difference = (pair->width - expected) / expected;
  apply(DAXI_CALIPER_PAIR_BY_SIZE_NORM, cfg->sizeNorm, pair->width / expected);
  apply(DAXI_CALIPER_PAIR_BY_SIZE_DIFF_NORM, cfg->sizeDiffNorm, std::fabs(difference));
  apply(DAXI_CALIPER_PAIR_BY_SIZE_DIFF_ASYM, difference < 0 ? cfg->sizeDiffBelow : cfg->sizeDiffAbove, difference);
  const float a = pair->first.position, b = pair->second.position;
  const bool straddles = std::min(a, b) <= 0 && std::max(a, b) >= 0;
  apply(DAXI_CALIPER_PAIR_BY_STRADDLE, cfg->straddle, straddles ? 1.0f : 0.0f);
}

void DAXI_CalipEdgePairDetect_comprehensive_assess0(CaliperEdgePair* pair, const CaliperEdgePairCfg* cfg) {
  _DAXI_CalipEdgePairDetect_common_comprehensive_assess(pair, cfg);
  _DAXI_CalipEdgePairDetect_pitch_comprehensive_assess(pair, cfg);
}

void DAXI_CalipEdgePairDetect_comprehensive_assess1(CaliperEdgePair* pair, const CaliperEdgePairCfg* cfg) {
  DAXI_CalipEdgePairDetect_comprehensive_assess0(pair, cfg);
  pair->score = dax::geometricMean(pair->score, cfg->scoreFlags);
}

void DAXI_CalipEdgePair_heap_adjust_descend_32f(CaliperEdgePair* pairs, int32_t place, int32_t count) {
  const CaliperEdgePair moved = pairs[place];
  for (int64_t child = 2 * int64_t{place} + 1; child < count; child = 2 * int64_t{place} + 1) {
    if (child + 1 < count && dax::ranksBefore(pairs[child], pairs[child + 1])) ++child;
    if (!dax::ranksBefore(moved, pairs[child])) break;
    pairs[place] = pairs[child];
    place = static_cast<int32_t>(child);
  }
  pairs[place] = moved;
}

void DAXI_CalipEdgePairDetect_rank_criterion(dax::CaliperPairHeap* heap) {
  for (int32_t last = heap->count - 1; last > 0; --last) {
    std::swap(heap->pairs[0], heap->pairs[last]);
    DAXI_CalipEdgePair_heap_adjust_descend_32f(heap->pairs, 0, last);
  }
}

// Pairs of edges: formation, scores, the best of them.
#pragma once

#include "daxi/caliper_pair.h"
#include "measure/caliper/caliper_profile.h"

namespace dax {

// The best pairs so far, as a heap with the worst at the root.
struct CaliperPairHeap {
  CaliperEdgePair* pairs;
  int32_t count;
  int32_t capacity;
};

// From signal to results.
void extract(const CaliperSignal& signal, const CaliperGrid& grid, const CaliperEdgePairCfg& cfg,
             CaliperEdgePairResult& result, const CaliperBuffer& at, void* buffer);

}  // namespace dax

extern "C" {

DaxStatus DAXI_CalipEdgePairDetect_cfg_check(const CaliperEdgePairCfg* cfg);

// Multiplies the score of a pair by the factors of the criteria that do not concern its width, and of those that do.
void _DAXI_CalipEdgePairDetect_common_comprehensive_assess(CaliperEdgePair* pair, const CaliperEdgePairCfg* cfg);
void _DAXI_CalipEdgePairDetect_pitch_comprehensive_assess(CaliperEdgePair* pair, const CaliperEdgePairCfg* cfg);
// The product of all factors, and its root.
void DAXI_CalipEdgePairDetect_comprehensive_assess0(CaliperEdgePair* pair, const CaliperEdgePairCfg* cfg);
void DAXI_CalipEdgePairDetect_comprehensive_assess1(CaliperEdgePair* pair, const CaliperEdgePairCfg* cfg);
// Moves a pair of the heap down to its place.
void DAXI_CalipEdgePair_heap_adjust_descend_32f(CaliperEdgePair* pairs, int32_t place, int32_t count);
// Sorts a heap, best first.
void DAXI_CalipEdgePairDetect_rank_criterion(dax::CaliperPairHeap* heap);
}

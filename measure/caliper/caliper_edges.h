// Edges of a caliper's signal: extrema, scores, order, image points.
#pragma once

#include "measure/caliper/caliper_profile.h"

namespace dax {

// Finds the edges of a signal in order of the profile; returns how many. There are fewer than its length.
int32_t findEdges(const CaliperSignal& signal, uint32_t polarity, float threshold, CaliperEdge* edges);

// From signal to results.
void extract(const CaliperSignal& signal, const CaliperGrid& grid, const CaliperEdgeCfg& cfg, CaliperEdgeResult& result,
             const CaliperBuffer& at, void* buffer);

}  // namespace dax

extern "C" {

DaxStatus DAXI_CalipEdgeDetect_cfg_check(const CaliperEdgeCfg* cfg);

// findEdges without the refinement.
int32_t DAXI_CalipEdgeDetect_find_local_extremum(const dax::CaliperSignal* signal, uint32_t polarity, float threshold,
                                                 CaliperEdge* edges);
void DAXI_CalipEdgeDetect_comprehensive_assess(CaliperEdge* edges, int32_t count, const CaliperEdgeCfg* cfg);
// Sorts by score, then index. The edges come in order of their index; `scratch` has room for as many.
void DAXI_CalipEdgeDetect_rank_criterion(CaliperEdge* edges, CaliperEdge* scratch, int32_t count);

// Image points of edges.
void DAXI_CalipEdgeDetect_box_hor_output_m(const dax::CaliperGrid* grid, const CaliperEdge* edges, int32_t count,
                                           DaxiPoint32f* points);
void DAXI_CalipEdgeDetect_box_vert_output_m(const dax::CaliperGrid* grid, const CaliperEdge* edges, int32_t count,
                                            DaxiPoint32f* points);
void DAXI_CalipEdgeDetect_rhomboid_hor_output_m(const dax::CaliperGrid* grid, const CaliperEdge* edges, int32_t count,
                                                DaxiPoint32f* points);
void DAXI_CalipEdgeDetect_rhomboid_vert_output_m(const dax::CaliperGrid* grid, const CaliperEdge* edges, int32_t count,
                                                 DaxiPoint32f* points);
void DAXI_CalipEdgeDetect_annulus_output_m(const dax::CaliperGrid* grid, const CaliperEdge* edges, int32_t count,
                                           DaxiPoint32f* points);
}

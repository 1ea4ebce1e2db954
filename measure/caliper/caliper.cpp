#include "measure/caliper/caliper_call.h"

DAX_CALIPER_ANY_REGION(DAXI_CalipEdgeDetect, CaliperBox, CaliperEdgeCfg, CaliperEdgeResult)
DAX_CALIPER_BOX_ONLY(DAXI_CalipEdgeDetect, CaliperEdgeCfg, CaliperEdgeResult)
DAX_CALIPER_ANY_REGION(DAXI_CalipEdgeDetectRhomboid, CaliperRhomboid, CaliperEdgeCfg, CaliperEdgeResult)
DAX_CALIPER_ANY_REGION(DAXI_CalipEdgeDetectAnnulus, CaliperAnnulus, CaliperEdgeCfg, CaliperEdgeResult)

void _DAXI_CalipEdgeDetect_8u_C1R(const dax::CaliperImage<uint8_t>* image, const dax::CaliperGrid* grid,
                                  const CaliperEdgeCfg* cfg, CaliperEdgeResult* result, CaliperProfile* profile,
                                  void* buffer, int32_t isa) {
  dax::detect(*image, *grid, *cfg, *result, profile, buffer, isa);
}

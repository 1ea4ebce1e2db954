#include "measure/caliper/caliper_detect.h"

void _DAXI_CalipEdgeDetect_8u_C1R(const dax::CaliperImage<uint8_t>* image, const dax::CaliperGrid* grid,
                                  const CaliperEdgeCfg* cfg, CaliperEdgeResult* result, CaliperProfile* profile,
                                  void* buffer, int32_t isa) {
  dax::detect(*image, *grid, *cfg, *result, profile, buffer, isa);
}

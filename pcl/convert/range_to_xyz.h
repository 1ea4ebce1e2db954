// Conversions of range images with a choice of kernels, and workers after the checks.
#pragma once

#include <cstdint>

#include "dax3dpcl/range_to_xyz.h"

namespace dax {

struct GridFormula;
struct PinholeFormula;

// T: int16_t, int32_t or float. Formula: GridFormula or PinholeFormula.
template <class T, class Formula>
void rangeToXyz(const DAX3DPCL_RANGE_MAP* map, void* buffer, int32_t organized, float** points,
                DAX3DPCL_CLOUD_SIZE* size, int32_t isa);

}  // namespace dax

#define DAX_XYZ_WORKERS(FORM, SUFFIX)                                                                               \
  uint64_t _DAX3DPCL_PREP_CONVERT_##FORM##2XYZ_ResultSize_##SUFFIX(DaxiSize size);                                  \
  void _DAX3DPCL_PREP_CONVERT_##FORM##2XYZ_##SUFFIX(const DAX3DPCL_RANGE_MAP* map, void* buffer, int32_t organized, \
                                                    float** points, DAX3DPCL_CLOUD_SIZE* size);
extern "C" {
DAX_XYZ_WORKERS(Range, 16s32f)
DAX_XYZ_WORKERS(Range, 32s32f)
DAX_XYZ_WORKERS(Range, 32f32f)
DAX_XYZ_WORKERS(Depth, 16s32f)
DAX_XYZ_WORKERS(Depth, 32s32f)
DAX_XYZ_WORKERS(Depth, 32f32f)
}
#undef DAX_XYZ_WORKERS

// Workers of the normal estimation, after the checks.
#pragma once

#include "dax3dpcl/normals.h"

extern "C" {

DaxStatus _DAX3DPCL_FEATURE_NORM_PCAEstimate_BufferSize(int32_t k, uint64_t* bytes);
void _DAX3DPCL_FEATURE_NORM_PCAEstimate(const float* points, int32_t n, DAX3DPCL_KDTREE* tree, int32_t k,
                                        const float* viewpoint, DAX3DPCL_NORMAL* normals, void* buffer, float radius);
int32_t _DAX3DPCL_FEATURE_NORM_Compute_32f(const float* points, int32_t count, DAX3DPCL_NORMAL* normal);
void _DAX3DPCL_FEATURE_NORM_FlipTowardsViewPoint_I(DAX3DPCL_NORMAL* normal, const float* point, const float* viewpoint);
}

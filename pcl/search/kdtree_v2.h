// Workers of the second generation of the KD-tree, after the checks: sizes, build and relocation.
#pragma once

#include "dax3dpcl/kdtree_v2.h"

extern "C" {

DaxStatus _DAX3DPCL_SEARCH_KDTREE_V2_BufferSize(int32_t n, int32_t d, uint64_t* bytes);
DaxStatus _DAX3DPCL_SEARCH_KDTREE_V2_BufferSize_Inner(int32_t n, int32_t d, uint64_t* bytes);
DaxStatus _DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize(int32_t n, int32_t d, uint64_t* bytes);
DaxStatus _DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize_Inner(int32_t n, int32_t d, uint64_t* bytes);
void _DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2(DAX3DPCL_KDTREE_V2* tree, const float* points, int32_t n, int32_t d,
                                           int32_t leafSize, void* stack);
void _DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2_Inner(DAX3DPCL_KDTREE_V2* tree, const float* points, int32_t n, int32_t d,
                                                 int32_t leafSize, void* stack);
DaxStatus _DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_BufferSize(int32_t n, uint64_t* bytes);
DaxStatus _DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_BufferSize_Inner(int32_t n, uint64_t* bytes);
DaxStatus _DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize(int32_t n, uint32_t threads, uint64_t* bytes);
DaxStatus _DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize_Inner(int32_t n, uint32_t threads, uint64_t* bytes);
void _DAX3DPCL_SEARCH_KDTREE_HandleRerange_V2(DAX3DPCL_KDTREE_V2* tree);
}

namespace dax {

// Builds with a choice of kernels; there is memory for `room` nodes and boxes.
void buildKdTreeV2(DAX3DPCL_KDTREE_V2* tree, const float* points, int32_t n, int32_t d, int32_t leafSize, void* stack,
                   uint64_t room, int32_t isa);

}  // namespace dax

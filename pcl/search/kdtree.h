// Workers of the first generation of the KD-tree, after the checks.
#pragma once

#include "dax3dpcl/kdtree.h"

extern "C" {

DaxStatus _DAX3DPCL_SEARCH_KDTREE_BufferSize(int32_t n, int32_t d, uint64_t* bytes);
// With d < 1 or leafSize < 1 the root stays null.
void _DAX3DPCL_SEARCH_KDTREE_BuildIndex(DAX3DPCL_KDTREE* tree, const float* points, int32_t n, int32_t d,
                                        int32_t leafSize);
void _DAX3DPCL_SEARCH_KDTREE_KNearestSearch(DAX3DPCL_KDTREE* tree, const float* queries, int32_t queryCount, int32_t d,
                                            int32_t k, uint32_t* indices, float* distances, int32_t* count);
void _DAX3DPCL_SEARCH_KDTREE_HandleRerange(DAX3DPCL_KDTREE* tree);
}

namespace dax {

// Builds with a choice of kernels.
void buildKdTree(DAX3DPCL_KDTREE* tree, const float* points, int32_t n, int32_t d, int32_t leafSize, int32_t isa);

}  // namespace dax

// Workers of the KD-tree, after the checks.
#pragma once

#include "dax3dpcl/kdtree.h"
#include "dax3dpcl/kdtree_v2.h"

extern "C" {

DaxStatus _DAX3DPCL_SEARCH_KDTREE_BufferSize(int32_t n, int32_t d, uint64_t* bytes);
// Without a dimension or a leaf size there is no tree: the root is null.
void _DAX3DPCL_SEARCH_KDTREE_BuildIndex(DAX3DPCL_KDTREE* tree, const float* points, int32_t n, int32_t d,
                                        int32_t leafSize);
void _DAX3DPCL_SEARCH_KDTREE_KNearestSearch(DAX3DPCL_KDTREE* tree, const float* queries, int32_t queryCount, int32_t d,
                                            int32_t k, uint32_t* indices, float* distances, int32_t* count);
void _DAX3DPCL_SEARCH_KDTREE_HandleRerange(DAX3DPCL_KDTREE* tree);

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
void _DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2(const DAX3DPCL_KDTREE_V2* tree, const float* queries, int32_t queryCount,
                                               int32_t d, int32_t k, uint32_t* indices, float* distances,
                                               int32_t* count, void* stack);
void _DAX3DPCL_SEARCH_KDTREE_RNearestSearch_V2(const DAX3DPCL_KDTREE_V2* tree, const float* query, int32_t d,
                                               int32_t maxResults, uint32_t* indices, float* distances, int32_t* count,
                                               void* stack, float radius);
void _DAX3DPCL_SEARCH_KDTREE_RNearestSearchMask_V2(const DAX3DPCL_KDTREE_V2* tree, const float* query, int32_t d,
                                                   int32_t maxResults, uint32_t* indices, float* distances,
                                                   int32_t* count, void* stack, float radius, const uint8_t* mask,
                                                   uint32_t* list);
void _DAX3DPCL_SEARCH_KDTREE_HandleRerange_V2(DAX3DPCL_KDTREE_V2* tree);

DaxStatus _DAX3DPCL_KDTREE_KNearestSearch_MT(void* pool, uint32_t threads, const DAX3DPCL_KDTREE_V2* tree,
                                             const float* queries, int32_t queryCount, int32_t d, int32_t k,
                                             uint32_t* indices, float* distances, int32_t* count, void* stack);
DaxStatus _DAX3DPCL_KDTREE_RNearestSearch_MT(void* pool, uint32_t threads, const DAX3DPCL_KDTREE_V2* tree,
                                             const float* queries, int32_t queryCount, int32_t d, int32_t maxResults,
                                             uint32_t* indices, float* distances, int32_t* counts, void* stack,
                                             float radius);
}

namespace dax {

// Builds with a choice of kernels.
void buildKdTree(DAX3DPCL_KDTREE* tree, const float* points, int32_t n, int32_t d, int32_t leafSize, int32_t isa);
void buildKdTreeV2(DAX3DPCL_KDTREE_V2* tree, const float* points, int32_t n, int32_t d, int32_t leafSize, void* stack,
                   uint64_t room, int32_t isa);

}  // namespace dax

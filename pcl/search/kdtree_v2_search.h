// Workers of the searches of the second generation of the KD-tree, after the checks.
#pragma once

#include "dax3dpcl/kdtree_v2.h"

extern "C" {

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

DaxStatus _DAX3DPCL_KDTREE_KNearestSearch_MT(void* pool, uint32_t threads, const DAX3DPCL_KDTREE_V2* tree,
                                             const float* queries, int32_t queryCount, int32_t d, int32_t k,
                                             uint32_t* indices, float* distances, int32_t* count, void* stack);
DaxStatus _DAX3DPCL_KDTREE_RNearestSearch_MT(void* pool, uint32_t threads, const DAX3DPCL_KDTREE_V2* tree,
                                             const float* queries, int32_t queryCount, int32_t d, int32_t maxResults,
                                             uint32_t* indices, float* distances, int32_t* counts, void* stack,
                                             float radius);
}

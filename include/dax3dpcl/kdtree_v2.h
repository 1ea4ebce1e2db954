/* KD-tree, second generation: searches only read the tree's block and use a stack of their own. Any number of
 * threads may search one tree, each with its own stack. Trees, distances, order of results, non-finite points and
 * alignment are those of the first generation (kdtree.h).
 *
 * The _Inner members have a pool of max(n, 100) nodes and stacks to match, about half of the memory. When that is less
 * than the tree needs, as with leafSize 1, some leaves hold more than leafSize points; search results are as
 * exact. Searches, relocation and the MT forms take trees of either kind. */
#ifndef DAX3DPCL_KDTREE_V2_H
#define DAX3DPCL_KDTREE_V2_H

#include "../dax/status.h"
#include "kdtree.h"

DAX_BEGIN_DECLS

/* Starts the block; the pieces follow in the order of the pointers, each rounded up to a multiple of 128 bytes. */
typedef struct DAX3DPCL_KDTREE_V2 {
  int32_t pointCount;
  int32_t dimension;
  int32_t leafSize;
  float* points;
  uint32_t* index;
  float* rootBox;
  DAX3DPCL_KDTREE_NODE* nodes;
  uint32_t nodeCount;
  DAX3DPCL_KDTREE_NODE* root;
} DAX3DPCL_KDTREE_V2;

/* Size of the tree's block: 128 + R(4nd) + R(4n) + R(8d) + R(40(2n - 1)) bytes (_Inner: max(n, 100) nodes), and of the
 * stack of the build: R(8d(2n - 1)) bytes (_Inner: max(n, 100) boxes). Checks as for
 * DAX3DPCL_SEARCH_KDTREE_BufferSize. */
DAX_API DaxStatus DAX3DPCL_SEARCH_KDTREE_V2_BufferSize(int32_t n, int32_t d, uint64_t* bytes);
DAX_API DaxStatus DAX3DPCL_SEARCH_KDTREE_V2_BufferSize_Inner(int32_t n, int32_t d, uint64_t* bytes);
DAX_API DaxStatus DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize(int32_t n, int32_t d, uint64_t* bytes);
DAX_API DaxStatus DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize_Inner(int32_t n, int32_t d, uint64_t* bytes);

/* Builds the tree. The stack is not needed afterwards. Checks, in order: tree, points or stack
 * null -> 0x10000014; n, d or leafSize < 1 -> 0x10000019. A failed call writes nothing. */
DAX_API DaxStatus DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2(DAX3DPCL_KDTREE_V2* tree, const float* points, int32_t n,
                                                       int32_t d, int32_t leafSize, void* stack);
DAX_API DaxStatus DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2_Inner(DAX3DPCL_KDTREE_V2* tree, const float* points, int32_t n,
                                                             int32_t d, int32_t leafSize, void* stack);

/* Size of the stack of a search in a tree over n points: R(24(2n - 1)) bytes (_Inner: max(n, 100) entries); the mt
 * forms: that times the number of threads.
 *
 * Checks, in order: bytes null -> 0x10000014; n < 1 or threads outside 1..64 -> 0x10000019; size beyond a signed
 * 64-bit integer -> 0x10000015. */
DAX_API DaxStatus DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_BufferSize(int32_t n, uint64_t* bytes);
DAX_API DaxStatus DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_BufferSize_Inner(int32_t n, uint64_t* bytes);
DAX_API DaxStatus DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize(int32_t n, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize_Inner(int32_t n, uint32_t threads,
                                                                               uint64_t* bytes);

/* As DAX3DPCL_SEARCH_KDTREE_KNearestSearch, with its checks; the stack is one of the pointers. Thread-safe on distinct
 * outputs and stacks. */
DAX_API DaxStatus DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2(const DAX3DPCL_KDTREE_V2* tree, const float* queries,
                                                           int32_t queryCount, int32_t d, int32_t k, uint32_t* indices,
                                                           float* distances, int32_t* count, void* stack);

/* The points nearer than `radius` to one query, in single precision: squared distance < radius * radius. Only the first
 * three coordinates count (in a plane or on a line: all).
 *
 * THE FIRST maxResults POINTS IN ORDER OF VISIT ARE WRITTEN, NOT THE NEAREST, and unsorted; *count receives their
 * number. A count of maxResults may mean that there are more: ask again with more room. Later entries are not written.
 * WITH radius * radius < FLT_EPSILON NOTHING IS FOUND (radius below 3.45e-4, and small negative ones), not even a point
 * equal to the query: scale such clouds and the radius up by a power of two, which keeps the bits of distances.
 *
 * Checks, in order: a pointer null -> 0x10000014; d < 1, maxResults < 1 or radius < -1.1920929e-7 (or NaN), d not the
 * tree's -> 0x10000019. A failed call writes nothing. Thread-safe on distinct outputs and stacks. */
DAX_API DaxStatus DAX3DPCL_SEARCH_KDTREE_RNearestSearch_V2(const DAX3DPCL_KDTREE_V2* tree, const float* query,
                                                           int32_t d, int32_t maxResults, uint32_t* indices,
                                                           float* distances, int32_t* count, void* stack, float radius);

/* The same for the points whose byte in `mask`, one for each of the caller's points, is not 0. `list`, of maxResults
 * entries, also receives the point numbers found, in ascending order of distance, ties by number. */
DAX_API DaxStatus DAX3DPCL_SEARCH_KDTREE_RNearestSearchMask_V2(const DAX3DPCL_KDTREE_V2* tree, const float* query,
                                                               int32_t d, int32_t maxResults, uint32_t* indices,
                                                               float* distances, int32_t* count, void* stack,
                                                               float radius, const uint8_t* mask, uint32_t* list);

/* As DAX3DPCL_SEARCH_KDTREE_HandleRerange. */
DAX_API DaxStatus DAX3DPCL_SEARCH_KDTREE_HandleRerange_V2(DAX3DPCL_KDTREE_V2* tree);

/* As DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2, with the queries divided among the threads of the host's pool in tiles
 * of ceil(queryCount / threads). The result is the same. `stack` has the size of the mt query for `threads`, which need
 * not be the number of the pool's workers: a tile has a part of it. Without a pool, or with threads < 2, the call runs
 * on the caller's thread. Returns the status of the pool; on failure *count is not written. */
DAX_API DaxStatus DAX3DPCL_KDTREE_KNearestSearch_MT(void* pool, uint32_t threads, const DAX3DPCL_KDTREE_V2* tree,
                                                    const float* queries, int32_t queryCount, int32_t d, int32_t k,
                                                    uint32_t* indices, float* distances, int32_t* count, void* stack);

/* As DAX3DPCL_SEARCH_KDTREE_RNearestSearch_V2 for each of queryCount rows of d floats, on the pool in the same way.
 * indices and distances have queryCount rows of maxResults entries, counts has queryCount entries.
 *
 * Checks, in order: a pointer null -> 0x10000014; d, maxResults or queryCount < 1, radius < -1.1920929e-7 (or NaN), d
 * not the tree's -> 0x10000019. */
DAX_API DaxStatus DAX3DPCL_KDTREE_RNearestSearch_MT(void* pool, uint32_t threads, const DAX3DPCL_KDTREE_V2* tree,
                                                    const float* queries, int32_t queryCount, int32_t d,
                                                    int32_t maxResults, uint32_t* indices, float* distances,
                                                    int32_t* counts, void* stack, float radius);

DAX_END_DECLS

#endif

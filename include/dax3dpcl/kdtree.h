/* KD-tree, first generation: one block of memory that holds tree and search scratch.
 *
 * A static tree over n points of d coordinates, built once and searched for the k nearest neighbours of many points.
 * Distances are squared Euclidean distances in single precision: the squares of four coordinates are added in order and
 * their sum is added to the total; the remaining up to three squares are added one by one.
 *
 * The block has the queried size and an alignment of 8 (malloc's is enough). It starts with the record below; the
 * pieces follow in the order of the record's pointers, each rounded up to a multiple of 128 bytes. It may be copied as
 * a whole: DAX3DPCL_SEARCH_KDTREE_HandleRerange updates the pointers of the copy. A zeroed block without a tree has no
 * root; searches find nothing in it.
 *
 * Non-finite points. A NaN counts as +infinity when points are divided. Points with a NaN or an infinity, and points
 * whose squared distance overflows, are not found; they do not affect the search for others.
 *
 * Searches of this generation write into the block: one thread at a time for each block. No function recurses. */
#ifndef DAX3DPCL_KDTREE_H
#define DAX3DPCL_KDTREE_H

#include "../dax/status.h"

DAX_BEGIN_DECLS

/* A leaf holds the positions lo..hi - 1 in tree order and has no children; an inner node is cut along an axis. */
typedef struct DAX3DPCL_KDTREE_NODE {
  uint32_t lo;
  uint32_t hi;
  int32_t axis;
  float lowBound;  /* largest coordinate along the axis in the first child */
  float highBound; /* smallest coordinate along the axis in the second child */
  struct DAX3DPCL_KDTREE_NODE* first;
  struct DAX3DPCL_KDTREE_NODE* second; /* follows the first in memory */
} DAX3DPCL_KDTREE_NODE;

typedef struct DAX3DPCL_KDTREE {
  int32_t pointCount;
  int32_t dimension;
  int32_t leafSize;            /* maximum number of points in a leaf */
  float* points;               /* pointCount rows of `dimension` floats, in tree order */
  float* work;                 /* `dimension` floats, scratch */
  uint32_t* index;             /* from tree order to the caller's point numbers */
  float* rootBox;              /* {low, high} of every axis */
  DAX3DPCL_KDTREE_NODE* nodes; /* the root comes first */
  uint32_t nodeCount;          /* at most 2 * pointCount - 1 */
  float* boxStack;             /* boxes of the nodes during the build, the stack of a search afterwards */
  DAX3DPCL_KDTREE_NODE* root;  /* null: no tree */
} DAX3DPCL_KDTREE;

/* Size of the block: 128 + R(4nd) + R(4d) + R(4n) + R(8d) + R(40(2n - 1)) + R(8d(2n - 1)) bytes, R rounding up to a
 * multiple of 128.
 *
 * Checks, in order: bytes null -> 0x10000014; n < 1 or d < 1 -> 0x10000019; size beyond a signed 64-bit
 * integer -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAX3DPCL_SEARCH_KDTREE_BufferSize(int32_t n, int32_t d, uint64_t* bytes);

/* Builds the tree over n rows of d floats, which are copied. A node of more than leafSize points is cut in the middle
 * of its longest side (of sides within 1e-7 of the longest, the one along which the points spread most), or at the
 * nearest point when all lie on one side of the middle; points on the cut are divided so as to balance the halves.
 * `points` must not overlap the block.
 *
 * Checks, in order: tree or points null -> 0x10000014; n, d or leafSize < 1 -> 0x10000019. A failed call writes
 * nothing. Thread-safe on distinct blocks. */
DAX_API DaxStatus DAX3DPCL_SEARCH_KDTREE_BuildIndex(DAX3DPCL_KDTREE* tree, const float* points, int32_t n, int32_t d,
                                                    int32_t leafSize);

/* The k nearest neighbours of each of queryCount rows of d floats.
 *
 * indices and distances receive queryCount rows of k entries, in ascending order of the squared distance; of candidates
 * at equal distances those visited first come first and are kept. *count receives min(n, k), 0 without a
 * tree. Entries after the neighbours found are 0, except the last distance of an incomplete row, which is FLT_MAX.
 *
 * Bounds of regions are differences of floats: a neighbour may be replaced by one whose distance differs by rounding
 * only. Queries near the cloud are exact; at 1e5 times its size away about 1 % of the rows differ, by one unit in the
 * last place of the distance.
 *
 * Checks, in order: a pointer null -> 0x10000014; d, k or queryCount < 1 -> 0x10000019; d not the tree's -> 0x10000019.
 * A failed call writes nothing. */
DAX_API DaxStatus DAX3DPCL_SEARCH_KDTREE_KNearestSearch(DAX3DPCL_KDTREE* tree, const float* queries, int32_t queryCount,
                                                        int32_t d, int32_t k, uint32_t* indices, float* distances,
                                                        int32_t* count);

/* Updates the pointers of a block that was copied to this address. Does nothing for a block at its original address or
 * without a tree. The original block is not read. Check: tree null -> 0x10000014. */
DAX_API DaxStatus DAX3DPCL_SEARCH_KDTREE_HandleRerange(DAX3DPCL_KDTREE* tree);

DAX_END_DECLS

#endif

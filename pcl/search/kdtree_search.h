// Searches in a KD-tree, for both generations, with a choice of kernels. A tree without a root holds nothing.
#pragma once

#include <cfloat>

#include "pcl/search/kdtree_tree.h"

namespace dax {

struct KdNearestCall {
  const float* queries;
  int32_t queryCount;  // rows
  int32_t k;
  uint32_t* indices;
  float* distances;
  float limit = FLT_MAX;  // points at this distance or beyond are not wanted
};

// The nearest points of each row; returns how many were found for the last one. The stack has 16 bytes for every point
// of the tree, in three dimensions 24.
int32_t searchNearest(const KdView& tree, const KdNearestCall& call, void* stack, int32_t isa);

// Number of neighbours that a search for k of them finds.
inline int32_t nearestCount(const KdView& tree, int32_t k) {
  return tree.root ? std::min(tree.pointCount, k) : 0;
}

struct KdRadiusCall {
  const float* query;
  int32_t maxResults;
  uint32_t* indices;
  float* distances;
  float radius;
  const uint8_t* mask;  // null, or which points count
};

// The points within a radius of one row; returns their number. The stack has 24 bytes for every point of the tree.
int32_t searchRadius(const KdView& tree, const KdRadiusCall& call, void* stack, int32_t isa);

}  // namespace dax

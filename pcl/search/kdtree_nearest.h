// Search for the k nearest neighbours, with a choice of kernels.
#pragma once

#include "pcl/search/kdtree_call.h"
#include "pcl/search/kdtree_tree.h"

namespace dax {

// The k nearest points of each query; returns the number found for the last one. The stack has 16 bytes for each point
// of the tree, in three dimensions 24.
int32_t searchNearest(const KdView& tree, const KdNearestCall& call, void* stack, int32_t isa);

// Number of neighbours that a search for k of them finds.
inline int32_t nearestCount(const KdView& tree, int32_t k) {
  return tree.root ? std::min(tree.pointCount, k) : 0;
}

}  // namespace dax

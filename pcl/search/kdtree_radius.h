// Search within a radius, with a choice of kernels.
#pragma once

#include "pcl/search/kdtree_call.h"
#include "pcl/search/kdtree_tree.h"

namespace dax {

// The points within the radius of one query; returns their number. The stack has 24 bytes for each point of the tree.
int32_t searchRadius(const KdView& tree, const KdRadiusCall& call, void* stack, int32_t isa);

}  // namespace dax

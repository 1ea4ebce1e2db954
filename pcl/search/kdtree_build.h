// Building a KD-tree, for both generations.
#pragma once

#include "pcl/search/kdtree_tree.h"

namespace dax {

// Memory of the pieces of a tree.
struct KdBuild {
  float* points;
  uint32_t* index;
  float* rootBox;
  KdNode* nodes;
  float* boxes;  // for `room` nodes
  uint64_t room;
  int32_t n;
  int32_t d;
  int32_t leafSize;
};

// Copies the points in tree order, writes index, nodes and root box; returns the number of nodes.
uint32_t buildTree(const KdBuild& build, const float* points, int32_t isa);

// Rebases the child pointers of a copied node pool whose root was at `oldRoot`; returns the new root.
KdNode* rebaseNodes(KdNode* nodes, uint32_t nodeCount, const KdNode* oldRoot);

}  // namespace dax

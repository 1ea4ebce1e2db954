// Building a KD-tree, for both generations.
#pragma once

#include "pcl/search/kdtree_tree.h"

namespace dax {

// Where the pieces of a tree go.
struct KdBuild {
  float* points;
  uint32_t* index;
  float* rootBox;
  KdNode* nodes;
  float* boxes;  // for as many nodes as there is room for
  uint64_t room;
  int32_t n;
  int32_t d;
  int32_t leafSize;
};

// Copies the caller's points in tree order, writes nodes and root box; returns the number of nodes.
uint32_t buildTree(const KdBuild& build, const float* points, int32_t isa);

}  // namespace dax

// Shared by both generations of the KD-tree: memory layouts and the view of a tree for searches.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "dax3dpcl/kdtree.h"
#include "dax3dpcl/kdtree_v2.h"
#include "frame/memory/work_buffer.h"

namespace dax {

using KdNode = DAX3DPCL_KDTREE_NODE;

static_assert(sizeof(KdNode) == 40 && offsetof(KdNode, axis) == 8 && offsetof(KdNode, first) == 24);
static_assert(sizeof(DAX3DPCL_KDTREE) == 80 && offsetof(DAX3DPCL_KDTREE, points) == 16 &&
              offsetof(DAX3DPCL_KDTREE, nodeCount) == 56 && offsetof(DAX3DPCL_KDTREE, root) == 72);
static_assert(sizeof(DAX3DPCL_KDTREE_V2) == 64 && offsetof(DAX3DPCL_KDTREE_V2, nodeCount) == 48);

// Bytes of the record at the start of a block.
inline constexpr uint64_t kKdRecord = 128;

// Initialises a record of either generation without a root; clears all bytes of its piece.
template <class Tree>
void startRecord(Tree* tree, int32_t n, int32_t d, int32_t leafSize) {
  std::memset(static_cast<void*>(tree), 0, kKdRecord);
  tree->pointCount = n;
  tree->dimension = d;
  tree->leafSize = leafSize;
}

// Nodes of a binary tree with n leaves.
inline uint64_t maxNodes(int32_t n) {
  return 2 * uint64_t{static_cast<uint32_t>(n)} - 1;
}

// Nodes in the pool of the _Inner functions.
inline uint64_t innerNodes(int32_t n) {
  return static_cast<uint64_t>(std::max(n, 100));
}

// No overflow: there are less than 2^33 rows and d < 2^31.
template <class T>
BufferPiece<T> addRows(BufferLayout& layout, uint64_t rows, int32_t d) {
  return layout.add<T>(rows * static_cast<uint32_t>(d));
}

struct KdLayout {
  KdLayout(int32_t n, int32_t d)
      : record(layout.add<uint8_t>(kKdRecord)),
        points(addRows<float>(layout, static_cast<uint32_t>(n), d)),
        work(addRows<float>(layout, 1, d)),
        index(layout.add<uint32_t>(static_cast<uint32_t>(n))),
        rootBox(addRows<float>(layout, 2, d)),
        nodes(layout.add<KdNode>(maxNodes(n))),
        boxStack(addRows<float>(layout, 2 * maxNodes(n), d)) {}
  BufferLayout layout;
  BufferPiece<uint8_t> record;
  BufferPiece<float> points, work;
  BufferPiece<uint32_t> index;
  BufferPiece<float> rootBox;
  BufferPiece<KdNode> nodes;
  BufferPiece<float> boxStack;
};

// The node pool comes last, so that the other offsets do not depend on its size.
struct KdLayoutV2 {
  KdLayoutV2(int32_t n, int32_t d, uint64_t nodeCount)
      : record(layout.add<uint8_t>(kKdRecord)),
        points(addRows<float>(layout, static_cast<uint32_t>(n), d)),
        index(layout.add<uint32_t>(static_cast<uint32_t>(n))),
        rootBox(addRows<float>(layout, 2, d)),
        nodes(layout.add<KdNode>(nodeCount)) {}
  BufferLayout layout;
  BufferPiece<uint8_t> record;
  BufferPiece<float> points;
  BufferPiece<uint32_t> index;
  BufferPiece<float> rootBox;
  BufferPiece<KdNode> nodes;
};

// A tree of either generation for searches.
struct KdView {
  template <class Tree>
  explicit KdView(const Tree& tree)
      : pointCount(tree.pointCount),
        dimension(tree.dimension),
        points(tree.points),
        index(tree.index),
        rootBox(tree.rootBox),
        root(tree.root) {}

  const float* row(uint32_t position) const { return points + size_t{position} * static_cast<uint32_t>(dimension); }

  int32_t pointCount;
  int32_t dimension;
  const float* points;
  const uint32_t* index;  // null: a search for the nearest returns positions
  const float* rootBox;   // {low, high} of every axis
  const KdNode* root;
};

// Squared distance along one axis from a query to an interval.
inline float axisDistance(float q, const float* interval) {
  if (q < interval[0]) return (q - interval[0]) * (q - interval[0]);
  if (q > interval[1]) return (q - interval[1]) * (q - interval[1]);
  return 0;
}

// The children of an inner node as seen from a query.
struct KdSides {
  const KdNode* near;
  const KdNode* far;
  float toFar;
};
inline KdSides kdSides(const KdNode& node, const float* query) {
  const float toFirst = query[node.axis] - node.lowBound, toSecond = query[node.axis] - node.highBound;
  if (toFirst + toSecond < 0) return {node.first, node.second, toSecond};
  return {node.second, node.first, toFirst};
}

}  // namespace dax

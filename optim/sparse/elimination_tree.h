// Pattern of a symmetric sparse matrix for its symbolic analysis: the compressed graph of its columns and the
// elimination tree.
#pragma once

#include "optim/sparse/ordering.h"
#include "prmt/msp.h"

namespace dax {

// The whole symmetric pattern, diagonal included, rows ascending.
struct SymmetricPattern {
  SymmetricPattern(Arena& arena, int32_t n, uint64_t elements);

  // From the elements on and below the diagonal; missing diagonal elements are added.
  void fill(const PrmtMsp& matrix);

  int64_t* start;
  int32_t* row;
};

// Columns with the same pattern, such as the parameters of one pose or point, become one node of a graph (Ashcraft
// 1995).
struct CompressedGraph {
  CompressedGraph(Arena& arena, int32_t n, uint64_t elements);

  void compress(const SymmetricPattern& matrix, int32_t n);

  WeightedGraph view(int32_t n) const { return {count, n, weight, start, adjacent}; }

  int32_t* of;     // node of each column
  int32_t* first;  // column of each node
  int32_t* next;   // next column of the same node, or kNone
  int32_t* weight;
  int64_t* start;
  int32_t* adjacent;
  uint64_t* hash;  // of each column's pattern
  int32_t count = 0;

 private:
  void group(const SymmetricPattern& matrix, int32_t n);
  void connect(const SymmetricPattern& matrix);
  bool alike(const SymmetricPattern& matrix, int32_t j, int32_t k) const;
};

// The elimination tree of the nodes in postorder. Nodes are identified by their position in this order.
struct EliminationTree {
  EliminationTree(Arena& arena, int32_t n);

  // From an elimination order in `node`.
  void build(const CompressedGraph& graph);

  int32_t* node;      // at each position
  int32_t* position;  // of each node
  int32_t* parent;    // position, or kNone
  int32_t* below;     // number of rows below the node's own columns
  int32_t* mark;      // this and the following: scratch
  int32_t* child;
  int32_t* sibling;

 private:
  void place(int32_t count);
  void findParents(const CompressedGraph& graph);
  void sortPostorder(int32_t count);
  void countBelow(const CompressedGraph& graph);
};

}  // namespace dax

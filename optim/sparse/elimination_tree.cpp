#include "optim/sparse/elimination_tree.h"

#include <algorithm>
#include <cstring>

#include "optim/sparse/msp.h"

namespace dax {
namespace {

// Visits the elements on and below the diagonal by columns; the diagonal element comes first, present or not.
template <class Visit>
void forEachPair(const PrmtMsp& matrix, const Visit& visit) {
  for (int32_t j = 0; j < matrix.cols; ++j) {
    visit(j, j);
    for (int64_t p = findElement(matrix, j + 1, j); p < matrix.start[j + 1]; ++p) visit(matrix.row[p], j);
  }
}

}  // namespace

SymmetricPattern::SymmetricPattern(Arena& arena, int32_t n, uint64_t elements)
    : start(arena.borrow<int64_t>(unsignedOf(n) + 1)), row(arena.borrow<int32_t>(2 * elements + unsignedOf(n))) {}

void SymmetricPattern::fill(const PrmtMsp& matrix) {
  const int32_t n = matrix.cols;
  std::fill_n(start, n + 1, 0);
  forEachPair(matrix, [&](int32_t i, int32_t j) {
    ++start[j + 1];
    if (i != j) ++start[i + 1];
  });
  for (int32_t j = 0; j < n; ++j) start[j + 1] += start[j];
  // start[j] advances to the start of column j + 1; shifted back below.
  forEachPair(matrix, [&](int32_t i, int32_t j) {
    row[start[j]++] = i;
    if (i != j) row[start[i]++] = j;
  });
  for (int32_t j = n; j > 0; --j) start[j] = start[j - 1];
  start[0] = 0;
}

CompressedGraph::CompressedGraph(Arena& arena, int32_t n, uint64_t elements)
    : of(arena.borrow<int32_t>(unsignedOf(n))),
      first(arena.borrow<int32_t>(unsignedOf(n))),
      next(arena.borrow<int32_t>(unsignedOf(n))),
      weight(arena.borrow<int32_t>(unsignedOf(n))),
      start(arena.borrow<int64_t>(unsignedOf(n) + 1)),
      adjacent(arena.borrow<int32_t>(2 * elements)),
      hash(arena.borrow<uint64_t>(unsignedOf(n))) {}

void CompressedGraph::compress(const SymmetricPattern& matrix, int32_t n) {
  group(matrix, n);
  connect(matrix);
}

void CompressedGraph::group(const SymmetricPattern& matrix, int32_t n) {
  // Multiplicative hash with 2^64 / golden ratio.
  for (int32_t j = 0; j < n; ++j) {
    hash[j] = 0;
    for (int64_t p = matrix.start[j]; p < matrix.start[j + 1]; ++p) {
      hash[j] += (static_cast<uint64_t>(matrix.row[p]) + 1) * 0x9E3779B97F4A7C15u;
    }
    of[j] = kNone;
  }
  for (int32_t j = 0; j < n; ++j) {
    if (of[j] != kNone) continue;
    first[count] = j;
    weight[count] = 0;
    int32_t last = kNone;
    // Columns with the same pattern are neighbours, because the diagonal is included.
    for (int64_t p = matrix.start[j]; p < matrix.start[j + 1]; ++p) {
      const int32_t k = matrix.row[p];
      if (k < j || of[k] != kNone || !alike(matrix, j, k)) continue;
      of[k] = count;
      ++weight[count];
      if (last != kNone) next[last] = k;
      next[k] = kNone;
      last = k;
    }
    ++count;
  }
}

// Neighbours of each node, through its first column.
void CompressedGraph::connect(const SymmetricPattern& matrix) {
  int64_t end = 0;
  for (int32_t u = 0; u < count; ++u) {
    start[u] = end;
    const int32_t j = first[u];
    for (int64_t p = matrix.start[j]; p < matrix.start[j + 1]; ++p) {
      const int32_t k = matrix.row[p];
      if (of[k] != u && first[of[k]] == k) adjacent[end++] = of[k];
    }
  }
  start[count] = end;
}

bool CompressedGraph::alike(const SymmetricPattern& matrix, int32_t j, int32_t k) const {
  const int64_t length = matrix.start[j + 1] - matrix.start[j];
  if (hash[j] != hash[k] || length != matrix.start[k + 1] - matrix.start[k]) return false;
  return std::memcmp(matrix.row + matrix.start[j], matrix.row + matrix.start[k],
                     static_cast<size_t>(length) * sizeof(int32_t)) == 0;
}

EliminationTree::EliminationTree(Arena& arena, int32_t n)
    : node(arena.borrow<int32_t>(unsignedOf(n))),
      position(arena.borrow<int32_t>(unsignedOf(n))),
      parent(arena.borrow<int32_t>(unsignedOf(n))),
      below(arena.borrow<int32_t>(unsignedOf(n))),
      mark(arena.borrow<int32_t>(unsignedOf(n))),
      child(arena.borrow<int32_t>(unsignedOf(n))),
      sibling(arena.borrow<int32_t>(unsignedOf(n))) {}

void EliminationTree::build(const CompressedGraph& graph) {
  place(graph.count);
  findParents(graph);
  sortPostorder(graph.count);
  place(graph.count);
  findParents(graph);
  countBelow(graph);
}

void EliminationTree::place(int32_t count) {
  for (int32_t k = 0; k < count; ++k) position[node[k]] = k;
}

// Liu's algorithm with path compression (Liu 1990); mark holds the compressed paths towards the root.
void EliminationTree::findParents(const CompressedGraph& graph) {
  for (int32_t k = 0; k < graph.count; ++k) {
    parent[k] = mark[k] = kNone;
    const int32_t u = node[k];
    for (int64_t p = graph.start[u]; p < graph.start[u + 1]; ++p) {
      for (int32_t i = position[graph.adjacent[p]]; i != kNone && i < k;) {
        const int32_t up = mark[i];
        mark[i] = k;
        if (up == kNone) parent[i] = k;
        i = up;
      }
    }
  }
}

void EliminationTree::sortPostorder(int32_t count) {
  std::fill_n(child, count, kNone);
  for (int32_t k = count - 1; k >= 0; --k) {
    if (parent[k] == kNone) continue;
    sibling[k] = child[parent[k]];
    child[parent[k]] = k;
  }
  int32_t done = 0;
  for (int32_t root = 0; root < count; ++root) {
    if (parent[root] != kNone) continue;
    for (int32_t k = root;;) {
      while (child[k] != kNone) k = child[k];
      mark[done++] = node[k];
      if (k == root) break;
      // Removes the node from its parent: a node is finished when it has no child left.
      child[parent[k]] = sibling[k];
      k = parent[k];
    }
  }
  std::copy_n(mark, count, node);
}

// Row k of the factor: the nodes on the tree paths from the earlier neighbours of k up to k.
void EliminationTree::countBelow(const CompressedGraph& graph) {
  std::fill_n(below, graph.count, 0);
  std::fill_n(mark, graph.count, kNone);
  for (int32_t k = 0; k < graph.count; ++k) {
    mark[k] = k;
    const int32_t u = node[k];
    for (int64_t p = graph.start[u]; p < graph.start[u + 1]; ++p) {
      for (int32_t i = position[graph.adjacent[p]]; i < k && mark[i] != k; i = parent[i]) {
        below[i] += graph.weight[u];
        mark[i] = k;
      }
    }
  }
}

}  // namespace dax

// Where the parts of a graph lie in parameters, residuals and sparse matrices.
#pragma once

#include "optim/graph/gauge.h"
#include "prmt/lm_hblk.h"
#include "prmt/msp.h"

namespace dax {

enum class Solver { jacobian, gradients, normal, blocks };

inline Solver solverOf(int32_t type) {
  return type == 0 ? Solver::jacobian : type == 2 ? Solver::gradients : type == 3 ? Solver::normal : Solver::blocks;
}

// Free vertices in the order of their parameters; for the solver by blocks points of one kind come last, the second group.
class Layout {
 public:
  // Arrays for so many vertices and edges.
  Layout(Arena& arena, int32_t vertices, int32_t edges);

  // Works in memory borrowed from the arena, which fits.
  void build(Arena& arena, const PrgoGraph& graph, Solver solver);

  int32_t parameters() const { return column[free]; }
  int32_t residuals() const { return row[edges]; }
  int64_t normalElements() const;    // on and below the diagonal
  int64_t jacobianElements() const;  // in whole blocks
  void setNormalPattern(PrmtMsp& h) const;
  void setJacobianPattern(PrmtMsp& jacobian) const;
  PrmtHblkShape shape() const;

  Gauge gauge = {};
  int32_t free = 0, edges = 0;
  uint8_t* held;        // of each vertex
  int32_t* vertexAt;    // vertex at each position
  int32_t* position;    // of each vertex, or -1
  int32_t* column;      // free + 1: first parameter at each position
  int32_t* row;         // edges + 1: first residual of each edge
  int32_t* pairAt;      // of an edge between free vertices: its block within the columns of the earlier one, behind the
                        // diagonal block; for the solver by blocks its first link, or -1 within the first group
  int32_t* edgeAt;      // of each end of an edge: its first row within the columns of the vertex
  PrmtMsp blocks = {};  // pattern by positions, diagonal included
  // Two groups: positions below `groupA` are the first one.
  int32_t groupA = 0, sizeA = 0, sizeB = 0;

 private:
  const PrgoGraph* graph_ = nullptr;
  int32_t* blockAt_;    // of each element of `blocks`, as pairAt
  int32_t* used_;       // at each position: rows of its columns of the Jacobian
  int32_t* linkStart_;  // of each vertex of the second group
  int32_t* linkA_;

  int32_t sizeAt(int32_t p) const { return column[p + 1] - column[p]; }
  void placeVertices(Solver solver);
  void placeEdges();
  void layBlocks(Arena& arena);
  void findBlocks();
  void layLinks(Arena& arena);
};

// Counts in an arena what Layout::build() borrows: it fits where this did.
void countBuild(Arena& arena, int32_t vertices, int32_t edges);

// Counts in a measuring arena what a layout takes, and what is borrowed to build it and to find its order of elimination.
void measureLayout(Arena& arena, int32_t vertices, int32_t edges);

}  // namespace dax

// Symbolic analysis for the sparse Cholesky factor: elimination order, supernodes, pattern of the factor.
#pragma once

#include "frame/memory/arena.h"
#include "optim/sparse/cholesky.h"
#include "prmt/msp.h"

namespace dax {

// Analyses the elements on and below the diagonal of an n x n matrix and takes the factor's memory from the arena.
// Missing diagonal elements count as 0. False when the arena is too small; it then knows the bytes needed. False too,
// with an arena that fits, when the factor would hold more than maxValues.
bool analyse(Arena& arena, const PrmtMsp& matrix, PrmCholesky& factor, int64_t maxValues = INT64_MAX);

// Counts in a measuring arena the memory for any n x n matrix with this number of elements.
void measureCholesky(Arena& arena, int32_t n, uint64_t elements, int64_t maxValues = INT64_MAX);

// What no panel of a factor exceeds.
struct PanelBounds {
  int64_t columns, below;
};

// Counts in a measuring arena exactly what analyse() takes and borrows for a matrix of full blocks, of which it has so many
// elements on and below the diagonal: `blocks` is its pattern by blocks, column[b] the first column of block b. (The update
// of panels is bounded, and so are they.) Finds the order in memory borrowed from `work`; false when that is too small.
bool measureBlocks(Arena& arena, Arena& work, const PrmtMsp& blocks, const int32_t* column, uint64_t elements,
                   PanelBounds* bounds = nullptr);

// Counts what that borrows from `work`, for blocks of at most so many columns.
void measureBlockOrder(Arena& work, int32_t blocks, uint64_t elements, int32_t maxColumns);

}  // namespace dax

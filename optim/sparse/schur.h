// Normal equations in two groups of blocks; the second group is block diagonal:
//
//   (A   W) (x)   (a)        with V_j + lambda I = L_j L_j^T and Y_j = W_j L_j^-T
//   (W^T V) (y) = (b)        S = A + lambda I - sum Y_j Y_j^T,  S x = a - sum Y_j L_j^-1 b_j
//                            y_j = L_j^-T (L_j^-1 b_j - Y_j^T x)
#pragma once

#include "optim/sparse/reduced_system.h"

namespace dax {

PrmtHblk takeBlocks(Arena& arena, const PrmtHblkShape& shape);
void clearBlocks(const PrmtHblk& blocks);

class SchurSolver {
 public:
  SchurSolver(Arena& arena, const PrmtHblkShape& shape);

  // PRMT_STS_FAILURE when a block of B is not positive definite or the reduced system is singular;
  // PRMT_STS_BUFFER_TOO_SMALL when the arena does not hold that system.
  int32_t solve(const PrmtHblk& h, double lambda, double* step);

  // Counts in a measuring arena, after the constructor, what any system takes.
  void measure() { reduced_.measure(); }

 private:
  bool eliminate(const PrmtHblk& h, double lambda, double* step);
  void scaleRows(int32_t height, const double* w, const double* l, double* y) const;
  void reduceRhs(const int32_t* links, int32_t count, const double* y, const double* z, double* rhs) const;
  void subtractSquare(const int32_t* links, int32_t count, const double* y);
  void substituteBack(double* step);

  const PrmtHblkShape& shape_;
  int32_t sideA_;     // sizeA countA
  double* factorsB_;  // L_j
  double* scaledW_;   // Y_j, column by column
  double* square_;    // Y_j Y_j^T; as large as the largest
  ReducedSystem reduced_;
};

}  // namespace dax

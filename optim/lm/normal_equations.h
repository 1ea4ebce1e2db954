// Normal equations of a weighted sparse Jacobian: A = J^T W J on and below the diagonal, and their solution by
// Cholesky.
#pragma once

#include "optim/sparse/cholesky.h"
#include "optim/sparse/msp.h"

namespace dax {

class NormalEquations {
 public:
  explicit NormalEquations(Arena& arena) : arena_(arena), mark_(arena.mark()) {}

  // Forms A and the gradient J^T W r; weights null: all 1. Analyses a new pattern first; false when the arena is too
  // small.
  bool form(const PrmtMsp& jacobian, const double* weights, const double* residuals);

  // (A + lambda I) step = -gradient; false when a pivot is too small.
  bool solve(double lambda, double* step);

  // Counts the memory of the worst case, a full matrix A, in a measuring arena.
  static void measure(Arena& arena, int32_t n, int32_t m, uint64_t elements);

  // The same without the factor, for a Jacobian of so many elements and `lower` elements of A.
  static void measureMatrices(Arena& arena, int32_t n, int32_t m, int64_t elements, int64_t lower);

 private:
  bool adopt(const PrmtMsp& jacobian);
  void takeVectors(int32_t n, int32_t m);
  bool layFull(int32_t n);
  bool laySparse(const PrmtMsp& jacobian);
  template <class Visit, class Finish>
  void forEachProduct(const PrmtMsp& jacobian, const Visit& visit, const Finish& finish);
  int64_t layPattern(const PrmtMsp& jacobian, bool write);
  void formSparse(const PrmtMsp& jacobian, const double* weights);
  void formDense(const PrmtMsp& jacobian, const double* weights);

  Arena& arena_;
  uint64_t mark_;
  int64_t version_ = -1;  // pattern version of the analysed Jacobian
  PrmtMsp rows_ = {};     // the Jacobian by rows: its transpose
  PrmtMsp matrix_ = {};
  PrmCholesky factor_ = {};
  double* gradient_ = nullptr;  // n
  double* weighted_ = nullptr;  // m
  double* sums_ = nullptr;      // n
  int32_t* seen_ = nullptr;     // n
  int64_t* cursor_ = nullptr;   // m: first element of each row at or right of the current column
};

}  // namespace dax

// Normal equations of a weighted sparse Jacobian: A = J^T W J on and below the diagonal, and their solution by Cholesky.
#pragma once

#include "optim/sparse/cholesky.h"
#include "optim/sparse/msp.h"

namespace dax {

class NormalEquations {
 public:
  explicit NormalEquations(Arena& arena) : arena_(arena), mark_(arena.mark()) {}

  // Forms A and the gradient J^T W r; weights null: all 1. A new pattern is analysed first: false when the arena does not
  // suffice for it.
  bool form(const PrmtMsp& jacobian, const double* weights, const double* residuals);

  // (A + lambda I) step = -gradient; false at a pivot that is too small.
  bool solve(double lambda, double* step);

  // Takes note of the worst case.
  static void measure(Arena& arena, int32_t n, int32_t m, uint64_t elements);

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
  int64_t version_ = -1;  // pattern of the Jacobian that was analysed
  PrmtMsp rows_ = {};     // the Jacobian's transpose: its rows
  PrmtMsp matrix_ = {};
  PrmCholesky factor_ = {};
  double* gradient_ = nullptr;  // n
  double* weighted_ = nullptr;  // m
  double* sums_ = nullptr;      // n
  int32_t* seen_ = nullptr;     // n
  int64_t* cursor_ = nullptr;   // m: of each row its first element that has not become a column yet
};

}  // namespace dax

// Conjugate gradients on damped normal equations; J^T J is not formed.
#pragma once

#include "frame/memory/arena.h"
#include "prmt/lm_cg.h"

// Scratch of the solver and its preconditioner.
struct PrmtCgWork {
  double* residual;   // n
  double* direction;  // n
  double* scaled;     // n
  double* product;    // n
  double* image;      // m
  double* blocks;     // factors of the diagonal blocks of J^T J + lambda I, blockSize * blockSize each
};

namespace dax {

constexpr int32_t kMaxCgBlock = 16;

PrmtCgWork takeCgWork(Arena& arena, int32_t n, int32_t m, int32_t blockSize);

// Factors the diagonal blocks; false when a pivot is too small.
bool factorBlocks(const PrmtMsp& jacobian, double lambda, int32_t blockSize, double* blocks);

}  // namespace dax

// Solves (J^T J + lambda I) step = rhs with the factored blocks of `work`. Returns 1, or 0 when the matrix is not
// positive definite.
extern "C" int32_t PRMT_MSP_SolveLinCG_LM_Process_f64(const PrmtMsp* jacobian, double lambda, const double* rhs,
                                                      const PrmtCgParam* param, const PrmtCgWork* work, double* step);

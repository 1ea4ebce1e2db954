// Worker of the Huber variant, and the memory of variants beside that of the factor.
#pragma once

#include "frame/memory/arena.h"
#include "prmt/lm.h"

namespace dax {

// Count in a measuring arena what PRMT_LM_HMSP_Process_f64 and PRMT_LM_Process_f64 take before they analyse the pattern: all but
// the factor. `lower`: elements of J^T J on and below the diagonal.
void measureNormalSolver(Arena& arena, int32_t n, int64_t elements);
void measureJacobianSolver(Arena& arena, int32_t n, int32_t m, int64_t elements, int64_t lower);

}  // namespace dax

// Huber energy of m residuals; writes their weights: 1 for |r| <= threshold, else threshold / |r|.
extern "C" double PRMT_lm_huber_energy(const double* residuals, int32_t m, double threshold, double* weights);

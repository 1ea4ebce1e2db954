/* Levenberg-Marquardt minimisation of E(x) = sum of r_i(x)^2 / 2 over n parameters, in five variants.
 *
 * THE SIZE QUERIES TAKE `elements` AFTER n AND m: the room in the sparse matrix, as in the callbacks' record, 0 for
 * all. BOTH OUTPUTS READ 0 WHEN NO STEP WAS ACCEPTED, which looks like a perfect fit: evaluate E at the x that is
 * returned.
 *
 *   PRMT_LM_Process_f64        residuals, sparse Jacobian   sparse Cholesky of J^T J + lambda I
 *   PRMT_LM_HUBER_Process_f64  the same                     the same, residuals weighted by the Huber function
 *   PRMT_LM_CG_Process_f64     the same                     conjugate gradients, J^T J is never formed
 *   PRMT_LM_HMSP_Process_f64   energy, damped H and b       sparse Cholesky
 *   PRMT_LM_HBLK_Process_f64   energy, blocks of H and b    Schur complement
 *
 * Each iteration solves (J^T J + lambda I) d = -J^T r and tries x' = x (+) d, where (+) is the caller's update
 * function, so that parameters may lie on a manifold: the solver never adds a step itself. When E(x') - E(x) <
 * 2.220446049250313e-16 the step is accepted: x becomes x', lambda becomes max(lambda / dampingFactor,
 * smallestDamping). Otherwise, and when x' is not finite, x is kept and lambda becomes lambda * dampingFactor. The loop
 * ends after maxIterations, or when |E(x') - E(x)| <= energyTolerance or |d| <= stepTolerance, for a rejected step too.
 * At least one iteration runs.
 *
 *      caller                                solver, in the caller's buffer
 *      x[n]  ---- copied at the start ---->  x, trial x', step d, right-hand side     (n each)
 *        ^                                   residuals r, r'                          (m each)
 *        |                                   copies for the callbacks
 *        +------- copied on success -------  sparse matrices and their factor
 *
 * All variants take (x, n, m, functions, user, param, [arguments of the variant,] error, stepNorm, buffer, bytes):
 *
 *   x          n parameters, updated in place; unchanged when the call fails
 *   n, m       number of parameters and of residuals
 *   functions  the callbacks; they must give the same results for the same arguments. They get copies; no pointer to
 *              them may be kept. A status other than 0 ends the call, which returns it
 *   user       passed to the callbacks; not null
 *   param      settings; rewritten when useDefaults is 1
 *   error      0 at the start, then the error of each accepted step: the RMSE sqrt(2 E / m); for HMSP the energy
 *   stepNorm   0 at the start, then the norm of each accepted step
 *   buffer     scratch memory with malloc's alignment
 *   bytes      in: its size. When it is too small, the call fails with -32 and stores here the size needed to
 *              continue. The pattern and its fill become known step by step, so this may happen several times
 *
 * The size queries return what is enough for any pattern. Sparse factors need far less; -32 reports how much.
 *
 * Checks, in order: a pointer null, those in `functions` included -> -21; n or m below 1, or another count, the
 * threshold or a field of `cg` out of its range -> -26; buffer too small -> -32; in the queries a size beyond 64 bits
 * -> -22. Then the status of a callback or of a matrix operation; an energy at the start that is not finite -> -31; a
 * pivot below 2.220446049250313e-16 -> -1. After the checks the two outputs are written; x only when the call succeeds.
 *
 * With verbose = 1 each iteration is printed to standard output. The solvers allocate nothing and are thread-safe on
 * distinct data. Given the same values from the callbacks, they give the same bits on every machine. */
#ifndef PRMT_LM_H
#define PRMT_LM_H

#include "msp.h"

DAX_BEGIN_DECLS

typedef struct PrmtLmParam {
  double stepTolerance;   /* default 1e-6 */
  double energyTolerance; /* default 1e-6 */
  int32_t maxIterations;  /* default 500 */
  double smallestDamping; /* default 1e-6 */
  double initialDamping;  /* default 0.01 */
  double dampingFactor;   /* default 10 */
  uint8_t verbose;        /* 1: print the iterations */
  uint8_t useDefaults;    /* 1: write the defaults into the six fields above */
} PrmtLmParam;

/* Writes the residuals at x, m values. */
typedef int32_t (*PrmtResidualFunction)(const double* x, int32_t n, int32_t m, void* user, double* residuals);

/* Adds the derivatives of the residuals with respect to the parameters to an m x n matrix whose values are 0. The first
 * call of a solve gets an empty matrix, later ones the pattern of the call before. For x on a manifold: derivatives by
 * the step, at 0. The residuals at x were the last to be requested: intermediate results may be kept in `user`. */
typedef int32_t (*PrmtJacobianFunction)(const double* x, int32_t n, int32_t m, void* user, PrmtMsp* jacobian);

/* x <- x (+) step. */
typedef int32_t (*PrmtUpdateFunction)(double* x, const double* step, int32_t n, void* user);

/* Writes the energy at x. */
typedef int32_t (*PrmtEnergyFunction)(const double* x, int32_t n, int32_t m, void* user, double* energy);

/* Callbacks of the variants with a Jacobian. */
typedef struct PrmtLmFunctions {
  PrmtResidualFunction residuals;
  PrmtJacobianFunction jacobian;
  PrmtUpdateFunction update;
  int64_t elements; /* room in the Jacobian; 0: m * n */
} PrmtLmFunctions;

/* Generic variant. Memory grows with elements, m and n, and with the elements of J^T J and its factor, n * n / 2 each
 * in the worst case, which the query returns. elements as in PrmtLmFunctions. */
DAX_API int32_t PRMT_LM_BufferSize_f64(int32_t n, int32_t m, int64_t elements, uint64_t* bytes);
DAX_API int32_t PRMT_LM_Process_f64(double* x, int32_t n, int32_t m, const PrmtLmFunctions* functions, void* user,
                                    PrmtLmParam* param, double* rmse, double* stepNorm, void* buffer, uint64_t* bytes);

/* As the generic variant for the energy sum of rho(r_i), with
 *   rho(r) = r^2 / 2 for |r| <= threshold, else threshold (|r| - threshold / 2),
 * solved by weights: J^T W J + lambda I and J^T W r, W_ii = 1 or threshold / |r_i|. rmse is sqrt(2 E / m) of that
 * energy. The same bits as the generic variant when no residual exceeds the threshold. threshold > 0. */
DAX_API int32_t PRMT_LM_HUBER_BufferSize_f64(int32_t n, int32_t m, int64_t elements, uint64_t* bytes);
DAX_API int32_t PRMT_LM_HUBER_Process_f64(double* x, int32_t n, int32_t m, const PrmtLmFunctions* functions, void* user,
                                          PrmtLmParam* param, double threshold, double* rmse, double* stepNorm,
                                          void* buffer, uint64_t* bytes);

/* Prints a header line and one row to standard output, as verbose solvers do:
 *   iter |lambda     |rmse_init  |rmse_post  |drmse      |dxnorm
 *   0000 |+1.000e-02 |+1.581e+00 |+2.384e-01 |-1.343e+00 |+1.414e+00 */
DAX_API void PRMT_LM_print_iter_info(int32_t iter, double lambda, double rmseInit, double rmsePost, double drmse,
                                     double dxnorm);

DAX_END_DECLS

#endif

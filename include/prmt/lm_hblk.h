/* Levenberg-Marquardt on normal equations in two groups of blocks, as in bundle adjustment: cameras (A) and points (B).
 * The blocks of B are eliminated (Schur complement). Loop, arguments and checks as of PRMT_LM_Process_f64. */
#ifndef PRMT_LM_HBLK_H
#define PRMT_LM_HBLK_H

#include "lm.h"

DAX_BEGIN_DECLS

/* Structure of a block normal matrix: parameters of countA blocks of sizeA values, then countB blocks of sizeB values.
 * Blocks of B are linked to blocks of A only, never to each other. countB may be 0. */
typedef struct PrmtHblkShape {
  int32_t sizeA;  /* 1..64 */
  int32_t countA; /* at least 1 */
  int32_t sizeB;  /* 1..16 */
  int32_t countB; /* at least 0 */
  const int32_t*
      linkStart; /* countB + 1, from 0, ascending: links of block j of B are linkStart[j]..linkStart[j + 1] - 1 */
  const int32_t* linkA; /* block of A of each link, ascending within a block of B */
} PrmtHblkShape;

/* The matrix (A W; W^T B) and the right-hand side (a; b). Matrices are row-major. */
typedef struct PrmtHblk {
  PrmtHblkShape shape;
  double* a;    /* (sizeA countA) x (sizeA countA); only the part on and below the diagonal is used */
  double* b;    /* countB matrices of sizeB x sizeB; only the parts on and below the diagonal are used */
  double* w;    /* for each link a matrix of sizeA x sizeB */
  double* rhsA; /* sizeA countA */
  double* rhsB; /* sizeB countB */
} PrmtHblk;

/* Adds the undamped normal matrix at x and the right-hand side -J^T r to the blocks, which are 0. */
typedef int32_t (*PrmtBlockFunction)(const double* x, int32_t n, int32_t m, void* user, PrmtHblk* h);

typedef struct PrmtLmHblkFunctions {
  PrmtEnergyFunction energy;
  PrmtBlockFunction normal;
  PrmtUpdateFunction update;
  PrmtHblkShape shape; /* n = sizeA countA + sizeB countB, else -26 */
} PrmtLmHblkFunctions;

/* As PRMT_LM_Process_f64 with blocks of the normal matrix from the caller; the solver adds the damping. The reduced
 * system of A is solved by Cholesky, or by least squares when a pivot fails; without blocks of B the whole system is
 * solved by least squares. The size depends on the number of links. Where few pairs of blocks of A meet, the reduced
 * system is sparse and takes far less than the query tells; -32 reports how much, after calls of the callbacks. */
DAX_API int32_t PRMT_LM_HBLK_BufferSize_f64(int32_t n, int32_t m, const PrmtHblkShape* shape, uint64_t* bytes);
DAX_API int32_t PRMT_LM_HBLK_Process_f64(double* x, int32_t n, int32_t m, const PrmtLmHblkFunctions* functions,
                                         void* user, PrmtLmParam* param, double* rmse, double* stepNorm, void* buffer,
                                         uint64_t* bytes);

DAX_END_DECLS

#endif

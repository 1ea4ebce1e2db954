/* Levenberg-Marquardt, solved by conjugate gradients: J^T J is never formed, so that memory grows with elements, m and
 * n only. Loop, arguments and checks as of PRMT_LM_Process_f64. */
#ifndef PRMT_LM_CG_H
#define PRMT_LM_CG_H

#include "lm.h"

DAX_BEGIN_DECLS

/* Settings of the conjugate gradients. The preconditioner is the inverse of the diagonal blocks of J^T J + lambda I. */
typedef struct PrmtCgParam {
  double tolerance;      /* ends at |residual| <= tolerance * |right-hand side|; default 1e-8 */
  int32_t maxIterations; /* at least 1; default 500. the step reached by then is used */
  int32_t blockSize;     /* parameters per block, 1..16; the last block may be smaller; default 1 */
  uint8_t useDefaults;   /* 1: write the defaults into the other fields */
  double modelTolerance; /* 0..1; default 0.1. Ends at iteration k when k times the share of it in what all have lowered
                            the quadratic model by is at most this (Nash and Sofer 1990); 0: never */
} PrmtCgParam;

/* As PRMT_LM_Process_f64, solved by conjugate gradients. */
DAX_API int32_t PRMT_LM_CG_BufferSize_f64(int32_t n, int32_t m, int64_t elements, uint64_t* bytes);
DAX_API int32_t PRMT_LM_CG_Process_f64(double* x, int32_t n, int32_t m, const PrmtLmFunctions* functions, void* user,
                                       PrmtLmParam* param, PrmtCgParam* cg, double* rmse, double* stepNorm,
                                       void* buffer, uint64_t* bytes);

DAX_END_DECLS

#endif

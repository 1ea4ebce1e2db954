/* Levenberg-Marquardt on damped normal equations (J^T J + lambda I) d = -J^T r that the caller forms, solved by sparse
 * Cholesky factors. Loop, arguments and checks as of PRMT_LM_Process_f64. */
#ifndef PRMT_LM_HMSP_H
#define PRMT_LM_HMSP_H

#include "lm.h"

DAX_BEGIN_DECLS

/* Adds to the n x n matrix H, whose values are 0, the normal matrix at x with lambda on its diagonal, and to b, which
 * is 0, the right-hand side -J^T r. Only elements on and below the diagonal are used. The pattern is kept as for a
 * Jacobian. */
typedef int32_t (*PrmtNormalFunction)(const double* x, int32_t n, double lambda, void* user, PrmtMsp* h, double* b);

typedef struct PrmtLmHmspFunctions {
  PrmtEnergyFunction energy;
  PrmtNormalFunction normal;
  PrmtUpdateFunction update;
  int64_t elements; /* room in H; 0: n * n */
} PrmtLmHmspFunctions;

/* As PRMT_LM_Process_f64 with normal equations from the caller, who adds the damping. `normal` is called in every
 * iteration. Memory does not depend on m. */
DAX_API int32_t PRMT_LM_HMSP_BufferSize_f64(int32_t n, int32_t m, int64_t elements, uint64_t* bytes);
DAX_API int32_t PRMT_LM_HMSP_Process_f64(double* x, int32_t n, int32_t m, const PrmtLmHmspFunctions* functions,
                                         void* user, PrmtLmParam* param, double* energy, double* stepNorm, void* buffer,
                                         uint64_t* bytes);

DAX_END_DECLS

#endif

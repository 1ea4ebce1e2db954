/* Jacobians by finite differences. */
#ifndef PRMT_JAC_NUM_H
#define PRMT_JAC_NUM_H

#include "lm.h"

DAX_BEGIN_DECLS

/* Jacobian by forward differences, for the Jacobian function of a caller without derivatives: for each parameter j adds
 * (r_i(x (+) 1e-6 e_j) - r_i(x)) / 1e-6 to the element (i, j) wherever the difference is not 0. `jacobian` is m x n
 * with values 0; `scratch` has 2 m + 2 n doubles. A null argument -> -21; n or m below 1, or another shape -> -26; then
 * the status of the functions, or -30. */
DAX_API int32_t PRMT_JacNum_Process_f64(const double* x, int32_t n, int32_t m, void* user,
                                        PrmtResidualFunction residuals, PrmtUpdateFunction update, PrmtMsp* jacobian,
                                        double* scratch);

DAX_END_DECLS

#endif

/* Rotations, SO(3), and rigid motions, SE(3), for update functions and residuals of the solvers.
 *
 * A rotation R is a 3 x 3 matrix, a rigid motion T a 4 x 4 matrix (R t; 0 1), both row-major. A rotation vector w
 * rotates by |w| radians about w / |w|. A twist is (v, w), the translational part first. Exp and Log are the
 * exponential and the logarithm of the groups; Log gives |w| <= pi. Update is the update function of a solver: the
 * parameters are Log(X), the step is applied on the right, Log(X) <- Log(X Exp(step)).
 *
 * Computed with basic operations and the library's own sine and arc tangent: the same bits on every machine. Errors are
 * below 2e-15, relative to the largest element, of the rotation by the rounded |w|: against that by the exact |w| they
 * grow with it, to 1.5e-13 at 1000 radians; of Log below 1e-14. Matrices must be rotations to about 1e-12. Outputs may be
 * inputs. A null argument -> -21, else 0. Thread-safe. */
#ifndef PRMT_LIE_H
#define PRMT_LIE_H

#include "status.h"

DAX_BEGIN_DECLS

DAX_API int32_t PRMT_SO3_Exp_f64(const double* w, double* rotation);
DAX_API int32_t PRMT_SO3_Log_f64(const double* rotation, double* w);
DAX_API int32_t PRMT_SO3_Compose_f64(const double* a, const double* b, double* ab);
DAX_API int32_t PRMT_SO3_Inverse_f64(const double* rotation, double* inverse);
/* Log(Exp(w) Exp(step)) into w. */
DAX_API int32_t PRMT_SO3_Update_f64(double* w, const double* step);
/* Inverse of the right Jacobian at w, 3 x 3: Log(Exp(w) Exp(d)) = w + J d + O(d^2). |w| < 2 pi. */
DAX_API int32_t PRMT_SO3_LogJacobian_f64(const double* w, double* jacobian);

DAX_API int32_t PRMT_SE3_Exp_f64(const double* twist, double* motion);
DAX_API int32_t PRMT_SE3_Log_f64(const double* motion, double* twist);
DAX_API int32_t PRMT_SE3_Compose_f64(const double* a, const double* b, double* ab);
DAX_API int32_t PRMT_SE3_Inverse_f64(const double* motion, double* inverse);
/* Log(Exp(twist) Exp(step)) into twist. */
DAX_API int32_t PRMT_SE3_Update_f64(double* twist, const double* step);

DAX_END_DECLS

#endif

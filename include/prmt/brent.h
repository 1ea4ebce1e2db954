/* Root and minimum of a function of one variable in an interval, without derivatives (Brent, Algorithms for Minimization without
 * Derivatives, 1973).
 *
 * The function is called with points of the interval, its ends included, on the calling thread; it must give the same value for the same
 * point. A status other than 0 ends the call, which returns it. user is passed to it and may be null. eps below is 2^-52.
 *
 * Checks, in order:
 *   function or a result null                            0x10000014
 *   from, to or tolerance infinite or NaN                0x10000032
 *   tolerance < 0, or maxIterations outside 1..100000    0x10000019
 *   a value of the function infinite or NaN              0x10000032
 *   for a root: the same sign at both ends               0x10000033
 *   more than maxIterations needed                       0x10000000
 * A failed call writes nothing. The results are the same bits on every machine where those of the function are. Thread-safe. */
#ifndef PRMT_BRENT_H
#define PRMT_BRENT_H

#include "../dax/status.h"

DAX_BEGIN_DECLS

/* Writes its value at x; 0, or a status that ends the call. */
typedef int32_t (*PrmtScalarFunction)(double x, void* user, double* value);

/* A root between from and to, in either order, where the function has different signs, or is 0 at one of them: by inverse quadratic
 * interpolation and secants, or bisection where these do not get on. It lies within tolerance + 4 eps |root| of a change of sign, which is
 * the root of a continuous function. value: the function at the root. maxIterations: 100 is ample but for intervals of many powers
 * of ten. */
DAX_API DaxStatus PRMT_EQ_BrentRoot_f64(double from, double to, PrmtScalarFunction function, void* user,
                                        double tolerance, int32_t maxIterations, double* root, double* value);

/* A local minimum between from and to, in either order, the only one where there is one: by parabolas, or golden sections where these do
 * not get on. x lies within tolerance + 3 eps^(1/2) |x| of it; of most functions no more than half the digits of x can be had.
 * value: the function at x. Where x may be 0, tolerance is not to be 0. */
DAX_API DaxStatus PRMT_EQ_BrentMin_f64(double from, double to, PrmtScalarFunction function, void* user,
                                       double tolerance, int32_t maxIterations, double* x, double* value);

DAX_END_DECLS

#endif

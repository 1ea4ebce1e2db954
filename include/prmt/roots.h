/* Roots of polynomials with real coefficients.
 *
 * p(x) = coefficients[0] + coefficients[1] x + ... + coefficients[n] x^n: ascending powers. Leading zeros lower the degree; a
 * constant has no roots. Coefficients and roots may have any magnitude: each power of two is scaled away where p is computed, so
 * nothing overflows on the way, and scaling all coefficients by 2^k changes no bit. eps below is 2^-52.
 *
 * Checks, in order:
 *   a pointer null                                       0x10000014
 *   a coefficient infinite or NaN                        0x10000032
 *   all coefficients zero                                0x10000033
 * and what a function says of its own. A failed call writes nothing but the buffer. The results are the same bits on every machine.
 * Thread-safe on distinct results and buffers. */
#ifndef PRMT_ROOTS_H
#define PRMT_ROOTS_H

#include "../dax/status.h"

DAX_BEGIN_DECLS

typedef struct PrmtRealRoots {
  int32_t count;           /* how many different roots follow */
  int32_t atInfinity;      /* roots beyond the range of doubles, as often as their multiplicities say */
  double root[4];          /* ascending; 0 behind the last one */
  int32_t multiplicity[4]; /* of each; 0 behind the last one */
} PrmtRealRoots;

/* All real roots of a polynomial of degree 2, 3 or 4.
 *
 * The stationary points of p, found in the same way from its derivatives, cut the axis into pieces in which p rises or falls; where the
 * ends differ in sign, Newton's method, held within the piece, finds the root. p is summed with its rounding errors (Graillat, Langlois
 * and Louvet, Compensated Horner scheme, 2009), as if with twice the digits. A stationary point c with |p(c)| <= 16 eps sum |a_i c^i| is a
 * root itself: neighbouring doubles of the coefficients decide between none and two there. Of a quadratic, instead, the sign of the
 * discriminant is exact.
 *
 * Each root x has |p(x)| <= 16 eps sum |a_i x^i| and, where it is a single one of condition sum |a_i x^i| / |x p'(x)| below 2^40, is the
 * exact one to two units of its last place. Stationary points that are roots without anything else between them are one root of all
 * their multiplicities. */
DAX_API DaxStatus PRMT_EQ_Quadratic_f64(const double coefficients[3], PrmtRealRoots* roots);
DAX_API DaxStatus PRMT_EQ_Cubic_f64(const double coefficients[4], PrmtRealRoots* roots);
DAX_API DaxStatus PRMT_EQ_Quartic_f64(const double coefficients[5], PrmtRealRoots* roots);

/* Bytes of work buffer for roots of a degree.
 *
 * Checks, in order: bytes null -> 0x10000014; degree outside 1..512 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus PRMT_EQ_Roots_BufferSize_f64(int32_t degree, uint64_t* bytes);

/* All roots, real and complex, of a polynomial with degree + 1 coefficients, by Aberth's simultaneous iteration, started on circles that
 * Newton's polygon of the coefficients tells (Bini, Numerical computation of polynomial zeros by means of Aberth's method, 1996).
 *
 * real, imaginary, radius: room for `degree` each; the first `count` are roots, the others 0. They come by ascending real part, then by
 * ascending magnitude of the imaginary one, of a pair the root above the axis first. imaginary is exactly 0 of real roots: those near the
 * axis whose real part x has |p(x)| <= max(16, 2 n + 2) eps sum |a_i x^i|; the others come in conjugate pairs. Multiple roots come as often
 * as they count, near each other, k of them with about 1/k of the digits. radius: within it, an exact root of the polynomial lies
 * (Laguerre's n |p / p'|, or the n-th root of |p / a_n|, with what rounding adds to |p|). atInfinity: how many further roots lie beyond the
 * range of doubles.
 *
 * buffer: at least as many bytes as the query says, aligned as by malloc.
 *
 * Checked after the pointers: degree outside 1..512 -> 0x1000001a. More than 100 rounds -> 0x10000000. */
DAX_API DaxStatus PRMT_EQ_Roots_f64(const double* coefficients, int32_t degree, double* real, double* imaginary,
                                    double* radius, int32_t* count, int32_t* atInfinity, void* buffer);

DAX_END_DECLS

#endif

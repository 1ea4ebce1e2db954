/* Least-squares fits of curves to points: polynomials, and B-splines over given knots.
 *
 * Both minimise sum weight_i (curve(x[i]) - y[i])^2 over `count` points in any order; weights may be null: all 1. All is computed on copies
 * that are scaled by powers of two: scaling y or the weights by 2^k changes no bit of the results but their scale. Results must not
 * overlap sources. The results are the same bits on every machine. Thread-safe on distinct results and buffers.
 *
 * coefficients: as many as the function says; rms: the root of the weighted mean of the squared differences.
 *
 * buffer: at least as many bytes as the query of the same name says, aligned as by malloc.
 *
 * Checks of fits, in order:
 *   a pointer null, but for weights                      0x10000014
 *   count < 1, or degree outside its range, or breakCount below 2   0x1000001a
 *   a number that is read infinite or NaN                0x10000032
 *   a weight < 0                                         0x10000019
 *   breaks that do not ascend strictly                   0x10000019
 *   a point outside the breaks                           0x10000032
 *   not as many independent points as coefficients, of a weight that counts, or coefficients that would not be finite  0x10000038
 * A failed call writes nothing but the buffer. */
#ifndef PRMT_CURVE_FIT_H
#define PRMT_CURVE_FIT_H

#include "../dax/status.h"

DAX_BEGIN_DECLS

/* Where a polynomial is near 1: powers are those of t = (x - centre) / halfWidth. */
typedef struct PrmtRange {
  double centre;    /* finite */
  double halfWidth; /* above 0, finite */
} PrmtRange;

/* Bytes of work buffer.
 *
 * Checks, in order: bytes null -> 0x10000014; count < 1, degree outside 0..20 (of B-splines 1..5), breakCount below 2, or more than 2^24
 * coefficients -> 0x10000019. Thread-safe. */
DAX_API DaxStatus PRMT_EQ_PolyFit_BufferSize_f64(int32_t count, int32_t degree, uint64_t* bytes);
DAX_API DaxStatus PRMT_EQ_BSplineFit_BufferSize_f64(int32_t breakCount, int32_t degree, uint64_t* bytes);

/* Fits a polynomial of degree 0..20: c[0] + c[1] t + ... with degree + 1 coefficients c of powers of t = (x - centre) / halfWidth, which is
 * -1..1 over the points; range receives both. By QR with column exchanges in Chebyshev polynomials of t, so that the fit itself loses no
 * digits to high degrees; turning them into powers loses up to 0.4 degree digits of small coefficients. */
DAX_API DaxStatus PRMT_EQ_PolyFit_f64(const double* x, const double* y, const double* weights, int32_t count,
                                      int32_t degree, double* coefficients, PrmtRange* range, double* rms,
                                      void* buffer);

/* Values, or derivatives of an order by x, of a polynomial in powers of (x - centre) / halfWidth at `count` places; of plain powers with
 * centre 0 and halfWidth 1. values may equal at. Values beyond the range of doubles are infinite or NaN.
 *
 * Checks, in order: a pointer null -> 0x10000014; count < 1 or degree outside 0..512 -> 0x1000001a; centre or halfWidth not finite, or
 * halfWidth <= 0 -> 0x10000019; derivative outside 0..3 -> 0x10000019; an element of at infinite or NaN -> 0x10000032. Thread-safe. */
DAX_API DaxStatus PRMT_EQ_PolyValue_f64(const double* coefficients, int32_t degree, const PrmtRange* range,
                                        const double* at, int32_t count, int32_t derivative, double* values);

/* Fits a B-spline of degree 1..5 (3: cubic) over the pieces between breakCount ascending breaks, with degree - 1 continuous derivatives at
 * those within: breakCount - 1 + degree coefficients, of B-splines over knots that are the breaks with the ends degree + 1 times. Points lie
 * between the ends. By Givens rotations of rows, as wide as the degree, in the order of the points (de Boor, A Practical Guide to Splines,
 * 1978, chapter XIV; Dierckx 1993). Pieces without points are bridged as long as each B-spline has a point of its own (Schoenberg and
 * Whitney 1953). */
DAX_API DaxStatus PRMT_EQ_BSplineFit_f64(const double* x, const double* y, const double* weights, int32_t count,
                                         const double* breaks, int32_t breakCount, int32_t degree, double* coefficients,
                                         double* rms, void* buffer);

/* Values, or derivatives of an order, of the B-spline with these breaks, of which breaks are not checked again, at `count` places. Outside
 * the breaks the polynomial of the nearest piece goes on. values may equal at. Values beyond the range of doubles are infinite or
 * NaN.
 *
 * Checks, in order: a pointer null -> 0x10000014; breakCount below 2, degree outside 1..5 or count < 1 -> 0x1000001a; derivative outside
 * 0..3 -> 0x10000019; an element of at infinite or NaN -> 0x10000032. Thread-safe. */
DAX_API DaxStatus PRMT_EQ_BSplineValue_f64(const double* breaks, int32_t breakCount, int32_t degree,
                                           const double* coefficients, const double* at, int32_t count,
                                           int32_t derivative, double* values);

DAX_END_DECLS

#endif

/* Piecewise cubic interpolation in one and two variables: cubic splines, and Akima's curves and surfaces.
 *
 * All give slopes at knots; between knots lies the cubic with the values and slopes at both ends (Hermite), bicubic in two variables.
 * Outside, the polynomial of the nearest piece goes on.
 *
 *   spline  continuous second derivatives; a bend in the data swings on beyond it
 *   Akima   continuous first derivatives; slopes depend on five values only, so that corners and steps hardly swing
 *           (Akima, A new method of interpolation, 1970; A method of bivariate interpolation, 1974)
 *
 * Knots ascend strictly. Values on a grid lie row by row: z[j zStep + i] at (x[i], y[j]); steps count elements. All is computed on copies
 * that are scaled by powers of two: scaling knots or values by 2^k changes no bit of the results but their scale. Results must not
 * overlap sources. The results are the same bits on every machine. Thread-safe on distinct results and buffers.
 *
 * buffer: at least as many bytes as the query of the same name says, aligned as by malloc.
 *
 * Checks of what makes slopes, in order:
 *   a pointer null, but for ends                         0x10000014
 *   n, nx or ny below 2                                  0x1000001a
 *   zStep smaller than nx                                0x1000001b
 *   condition outside 0..3                               0x10000019
 *   a knot, a value or a slope infinite or NaN           0x10000032
 *   knots that do not ascend strictly                    0x10000019
 *   periodic: first and last value differ                0x10000019
 *   slopes that would not be finite                      0x10000032
 * A failed call writes nothing but the buffer. */
#ifndef PRMT_SPLINE_H
#define PRMT_SPLINE_H

#include "../dax/status.h"

DAX_BEGIN_DECLS

enum {
  PRMT_SPLINE_NOT_A_KNOT =
      0, /* one cubic through the first two pieces, and through the last two; of three knots a parabola */
  PRMT_SPLINE_NATURAL = 1, /* second derivatives 0 */
  PRMT_SPLINE_CLAMPED = 2, /* first derivatives given */
  PRMT_SPLINE_PERIODIC = 3 /* first and second derivatives equal at both ends, and the values too */
};

/* What holds at the ends. */
typedef struct PrmtSplineEnds {
  int32_t condition; /* 0..3, PRMT_SPLINE_..., default 0 */
  double startSlope; /* of clamped ends, at all borders of a grid; finite, not used of others */
  double endSlope;   /* of clamped ends; finite, not used of others */
} PrmtSplineEnds;

/* Bytes of work buffer for as many knots.
 *
 * Checks, in order: bytes null -> 0x10000014; n, nx or ny below 2 -> 0x10000019; more than 64 bits -> 0x10000015. Thread-safe. */
DAX_API DaxStatus PRMT_EQ_Spline1_BufferSize_f64(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_EQ_Akima1_BufferSize_f64(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_EQ_Spline2_BufferSize_f64(int32_t nx, int32_t ny, uint64_t* bytes);
DAX_API DaxStatus PRMT_EQ_Akima2_BufferSize_f64(int32_t nx, int32_t ny, uint64_t* bytes);

/* Slopes of the cubic spline through n values (de Boor, A Practical Guide to Splines, 1978, chapter IV). ends may be null: not-a-knot. */
DAX_API DaxStatus PRMT_EQ_Spline1_f64(const double* x, const double* y, int32_t n, const PrmtSplineEnds* ends,
                                      double* slopes, void* buffer);

/* Slopes of Akima's curve through n values: of the chords m0..m3 about a knot (|m3 - m2| m1 + |m1 - m0| m2) / (|m3 - m2| + |m1 - m0|);
 * (m1 + m2) / 2 where both weights are no more than the chords' rounding. Beyond the ends chords go on linearly. */
DAX_API DaxStatus PRMT_EQ_Akima1_f64(const double* x, const double* y, int32_t n, double* slopes, void* buffer);

/* Values, or derivatives of an order, of the piecewise cubic at `count` places. In the last bit of its place a knot has the value that was
 * given there. x, y and slopes are what PRMT_EQ_Spline1_f64 or PRMT_EQ_Akima1_f64 took and gave, and are not checked again; values may
 * equal at. Values beyond the range of doubles are infinite or NaN.
 *
 * Checks, in order: a pointer null -> 0x10000014; n below 2, or count < 1 -> 0x1000001a; derivative outside 0..3 -> 0x10000019; an
 * element of at infinite or NaN -> 0x10000032. Thread-safe. */
DAX_API DaxStatus PRMT_EQ_Interpolate1_f64(const double* x, const double* y, const double* slopes, int32_t n,
                                           const double* at, int32_t count, int32_t derivative, double* values);

/* Slopes of the bicubic spline through nx ny values (de Boor 1962), splines along rows of splines along columns: of value (i, j)
 * derivatives[3 (j nx + i)] is that by x, then come those by y and by x and y. xEnds and yEnds may be null: not-a-knot. */
DAX_API DaxStatus PRMT_EQ_Spline2_f64(const double* x, int32_t nx, const double* y, int32_t ny, const double* z,
                                      int32_t zStep, const PrmtSplineEnds* xEnds, const PrmtSplineEnds* yEnds,
                                      double* derivatives, void* buffer);

/* Slopes of Akima's surface, in the order of PRMT_EQ_Spline2_f64: along each row and each column as PRMT_EQ_Akima1_f64 has them; that by
 * x and y weighs the four cross differences about a point with the weights of both directions. */
DAX_API DaxStatus PRMT_EQ_Akima2_f64(const double* x, int32_t nx, const double* y, int32_t ny, const double* z,
                                     int32_t zStep, double* derivatives, void* buffer);

/* Values, or derivatives of an order in x and one in y, of the piecewise bicubic at the `count` places (atX, atY), as
 * PRMT_EQ_Interpolate1_f64. values may equal atX or atY.
 *
 * Checks, in order: a pointer null -> 0x10000014; nx or ny below 2, or count < 1 -> 0x1000001a; zStep smaller than nx -> 0x1000001b; xOrder
 * or yOrder outside 0..3 -> 0x10000019; an element of atX or atY infinite or NaN -> 0x10000032. Thread-safe. */
DAX_API DaxStatus PRMT_EQ_Interpolate2_f64(const double* x, int32_t nx, const double* y, int32_t ny, const double* z,
                                           int32_t zStep, const double* derivatives, const double* atX,
                                           const double* atY, int32_t count, int32_t xOrder, int32_t yOrder,
                                           double* values);

DAX_END_DECLS

#endif

// Values and derivatives of piecewise cubics.
#include "frame/check.h"
#include "optim/equation/pieces.h"
#include "optim/equation/wide.h"
#include "prmt/spline.h"

namespace dax {
namespace {

// A place in a piece: from its start, from its end, and how long it is.
struct Place {
  Place(const double* x, int32_t i, double at)
      : fromStart(at - x[i]), fromEnd(at - x[i + 1]), length(x[i + 1] - x[i]) {}
  double fromStart, fromEnd, length;
};

// Of the cubic with these values and slopes at both ends; counted from the nearer one, so that knots have their own values.
double hermite(const Place& place, double startValue, double endValue, double startSlope, double endSlope,
               int32_t order) {
  const double h = place.length, chord = (endValue - startValue) / h;
  const bool isEnd = place.fromStart > h / 2;
  const double t = isEnd ? place.fromEnd : place.fromStart;
  const double value = isEnd ? endValue : startValue, slope = isEnd ? endSlope : startSlope;
  const double square =
      isEnd ? (startSlope + 2 * endSlope - 3 * chord) / h : (3 * chord - 2 * startSlope - endSlope) / h;
  const double cube = (startSlope + endSlope - 2 * chord) / h / h;
  switch (order) {
    case 0:
      return value + t * (slope + t * (square + t * cube));
    case 1:
      return slope + t * (2 * square + 3 * t * cube);
    case 2:
      return 2 * square + 6 * t * cube;
    default:
      return 6 * cube;
  }
}

bool isOrder(int32_t order) {
  return order >= 0 && order <= 3;
}

DaxStatus interpolate1(const double* x, const double* y, const double* slopes, int32_t n, const double* at,
                       int32_t count, int32_t derivative, double* values) {
  DAX_REQUIRE(x && y && slopes && at && values, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 2 && count >= 1, DAX_STS_BAD_SIZE);
  DAX_REQUIRE(isOrder(derivative), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(areFinite(at, count), DAX_STS_DATA_RANGE);
  Pieces pieces(x, n);
  for (int32_t k = 0; k < count; ++k) {
    const int32_t i = pieces.find(at[k]);
    values[k] = hermite(Place(x, i, at[k]), y[i], y[i + 1], slopes[i], slopes[i + 1], derivative);
  }
  return DAX_STS_OK;
}

struct Surface {
  const double* z;
  ptrdiff_t step;
  const double* derivatives;
  int32_t nx;

  // Along x on row j, of the value (0) or the slope by y (1).
  double alongRow(const Place& place, int32_t i, int32_t j, bool isSlope, int32_t order) const {
    const double* const slopes = derivatives + 3 * (int64_t{j} * nx + i);
    const double* const row = z + j * step + i;
    const double start = isSlope ? slopes[1] : row[0], end = isSlope ? slopes[4] : row[1];
    return hermite(place, start, end, slopes[isSlope ? 2 : 0], slopes[isSlope ? 5 : 3], order);
  }
};

DaxStatus interpolate2(const double* x, int32_t nx, const double* y, int32_t ny, const Surface& surface,
                       const double* atX, const double* atY, int32_t count, int32_t xOrder, int32_t yOrder,
                       double* values) {
  DAX_REQUIRE(x && y && surface.z && surface.derivatives && atX && atY && values, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(nx >= 2 && ny >= 2 && count >= 1, DAX_STS_BAD_SIZE);
  DAX_REQUIRE(surface.step >= nx, DAX_STS_BAD_STEP);
  DAX_REQUIRE(isOrder(xOrder) && isOrder(yOrder), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(areFinite(atX, count) && areFinite(atY, count), DAX_STS_DATA_RANGE);
  Pieces columns(x, nx), rows(y, ny);
  for (int32_t k = 0; k < count; ++k) {
    const int32_t i = columns.find(atX[k]), j = rows.find(atY[k]);
    const Place inX(x, i, atX[k]), inY(y, j, atY[k]);
    const double start = surface.alongRow(inX, i, j, false, xOrder),
                 end = surface.alongRow(inX, i, j + 1, false, xOrder);
    const double startSlope = surface.alongRow(inX, i, j, true, xOrder);
    const double endSlope = surface.alongRow(inX, i, j + 1, true, xOrder);
    values[k] = hermite(inY, start, end, startSlope, endSlope, yOrder);
  }
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus PRMT_EQ_Interpolate1_f64(const double* x, const double* y, const double* slopes, int32_t n, const double* at,
                                   int32_t count, int32_t derivative, double* values) {
  return dax::interpolate1(x, y, slopes, n, at, count, derivative, values);
}

DaxStatus PRMT_EQ_Interpolate2_f64(const double* x, int32_t nx, const double* y, int32_t ny, const double* z,
                                   int32_t zStep, const double* derivatives, const double* atX, const double* atY,
                                   int32_t count, int32_t xOrder, int32_t yOrder, double* values) {
  return dax::interpolate2(x, nx, y, ny, {z, zStep, derivatives, nx}, atX, atY, count, xOrder, yOrder, values);
}

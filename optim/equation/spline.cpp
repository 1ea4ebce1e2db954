#include "prmt/spline.h"

#include <algorithm>
#include <cmath>

#include "frame/check.h"
#include "optim/equation/slopes.h"
#include "optim/equation/wide.h"

namespace dax {
namespace {

// Knots as steps between them, scaled by 2^-exponent.
struct Knots {
  const double* x;
  int32_t n;
  int exponent = 0;
  double* steps = nullptr;

  bool isFinite() {
    Magnitude magnitude;
    magnitude.add(x, n);
    exponent = magnitude.exponent();
    return magnitude.isFinite();
  }
  bool ascend() const {
    for (int32_t i = 0; i + 1 < n; ++i) {
      if (!(x[i] < x[i + 1])) return false;
    }
    return true;
  }
  void load(double* to) {
    steps = to;
    const PowerOfTwo scale(-exponent);
    for (int32_t i = 0; i + 1 < n; ++i) steps[i] = scale(x[i + 1]) - scale(x[i]);
  }
};

PrmtSplineEnds endsOr(const PrmtSplineEnds* ends) {
  return ends ? *ends : PrmtSplineEnds{PRMT_SPLINE_NOT_A_KNOT, 0, 0};
}
bool isCondition(const PrmtSplineEnds& ends) {
  return ends.condition >= PRMT_SPLINE_NOT_A_KNOT && ends.condition <= PRMT_SPLINE_PERIODIC;
}
bool isPeriodic(const PrmtSplineEnds& ends) {
  return ends.condition == PRMT_SPLINE_PERIODIC;
}
// Slopes that are not used may be anything.
bool areSlopes(const PrmtSplineEnds& ends) {
  return ends.condition != PRMT_SPLINE_CLAMPED || (std::isfinite(ends.startSlope) && std::isfinite(ends.endSlope));
}
LineEnds scaledEnds(const PrmtSplineEnds& ends, int exponent) {
  const PowerOfTwo scale(exponent);
  return {ends.condition, scale(ends.startSlope), scale(ends.endSlope)};
}

// Of slopes in work memory, every `stride`-th.
DaxStatus storeSlopes(const double* from, int exponent, double* to, int64_t count, int32_t stride) {
  const PowerOfTwo scale(exponent);
  Magnitude magnitude;
  for (int64_t i = 0; i < count; ++i) magnitude.add(scale(from[i * stride]));
  DAX_REQUIRE(magnitude.isFinite(), DAX_STS_DATA_RANGE);
  for (int64_t i = 0; to && i < count; ++i) to[i * stride] = scale(from[i * stride]);
  return DAX_STS_OK;
}

DaxStatus needOf(int32_t nx, int32_t ny, int64_t perCell, int64_t perKnot, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(nx >= 2 && ny >= 2, DAX_STS_BAD_PARAM);
  const int64_t cells = int64_t{nx} * ny;
  DAX_REQUIRE(cells <= INT64_MAX / 256, DAX_STS_BUFFER_OVERFLOW);
  *bytes = sizeof(double) * static_cast<uint64_t>(perCell * cells + perKnot * (int64_t{nx} + ny + 3));
  return DAX_STS_OK;
}

// --- One variable ---

// Of either kind: `make` gets steps and values, and returns slopes.
template <class Make>
DaxStatus makeSlopes1(const double* x, const double* y, int32_t n, const PrmtSplineEnds& ends, double* slopes,
                      void* buffer, const Make& make) {
  DAX_REQUIRE(n >= 2, DAX_STS_BAD_SIZE);
  DAX_REQUIRE(isCondition(ends), DAX_STS_BAD_PARAM);
  Knots knots{x, n};
  Magnitude magnitude;
  magnitude.add(y, n);
  DAX_REQUIRE(knots.isFinite() && magnitude.isFinite() && areSlopes(ends), DAX_STS_DATA_RANGE);
  DAX_REQUIRE(knots.ascend(), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(!isPeriodic(ends) || y[0] == y[n - 1], DAX_STS_BAD_PARAM);
  WorkSpace work(buffer);
  knots.load(work.take(n));
  double *const v = work.take(n), *const made = work.take(n);
  store(y, PowerOfTwo(-magnitude.exponent()), v, n);
  const int exponent = magnitude.exponent() - knots.exponent;
  make(knots.steps, v, scaledEnds(ends, -exponent), made, work.take(0));
  DAX_REQUIRE_OK(storeSlopes(made, exponent, nullptr, n, 1));
  return storeSlopes(made, exponent, slopes, n, 1);
}

DaxStatus spline1(const double* x, const double* y, int32_t n, const PrmtSplineEnds* ends, double* slopes,
                  void* buffer) {
  DAX_REQUIRE(x && y && slopes && buffer, DAX_STS_NULL_POINTER);
  const auto make = [n](const double* steps, const double* v, const LineEnds& line, double* to, double* work) {
    splineSlopes(steps, v, n, line, to, work);
  };
  return makeSlopes1(x, y, n, endsOr(ends), slopes, buffer, make);
}

DaxStatus akima1(const double* x, const double* y, int32_t n, double* slopes, void* buffer) {
  DAX_REQUIRE(x && y && slopes && buffer, DAX_STS_NULL_POINTER);
  const auto make = [n](const double* steps, const double* v, const LineEnds&, double* to, double* work) {
    double *const chords = work, *const noise = work + n + 3;
    akimaChords(steps, v, n, chords, noise);
    for (int32_t i = 0; i < n; ++i) to[i] = akimaSlope(akimaShare(chords, noise, i), chords[i + 1], chords[i + 2]);
  };
  return makeSlopes1(x, y, n, endsOr(nullptr), slopes, buffer, make);
}

// --- Two variables ---

// A grid in work memory: values row by row, and three derivatives of each.
struct Grid {
  Knots x, y;
  int exponent;
  double *values, *slopes;

  int64_t cells() const { return int64_t{x.n} * y.n; }
};

// Lines of a grid: the k-th element of line j is from[j line + k element], its slope goes to to[j toLine + k toElement].
struct Lines {
  int32_t count, n;
  const double* from;
  ptrdiff_t line, element;
  double* to;
  ptrdiff_t toLine, toElement;
};
Lines alongX(const Grid& grid, double* to, ptrdiff_t stride) {
  return {grid.y.n, grid.x.n, grid.values, grid.x.n, 1, to, stride * grid.x.n, stride};
}
Lines alongY(const Grid& grid, double* to, ptrdiff_t stride) {
  return {grid.x.n, grid.y.n, grid.values, 1, grid.x.n, to, stride, stride * grid.x.n};
}

DaxStatus checkGrid(const double* x, int32_t nx, const double* y, int32_t ny, const double* z, int32_t zStep,
                    const double* derivatives, const void* buffer) {
  DAX_REQUIRE(x && y && z && derivatives && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(nx >= 2 && ny >= 2, DAX_STS_BAD_SIZE);
  DAX_REQUIRE(zStep >= nx, DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

bool repeats(const MatrixIn<double>& z, bool inX) {
  bool result = true;
  for (int32_t j = 0; inX && j < z.rows; ++j) result &= z.row(j)[0] == z.row(j)[z.cols - 1];
  for (int32_t i = 0; !inX && i < z.cols; ++i) result &= z.row(0)[i] == z.row(z.rows - 1)[i];
  return result;
}

DaxStatus loadGrid(const MatrixIn<double>& z, const PrmtSplineEnds& xEnds, const PrmtSplineEnds& yEnds, Grid& grid,
                   WorkSpace& work) {
  Magnitude magnitude;
  magnitude.add(z);
  const bool areFiniteKnots = grid.x.isFinite() && grid.y.isFinite();
  DAX_REQUIRE(areFiniteKnots && magnitude.isFinite() && areSlopes(xEnds) && areSlopes(yEnds), DAX_STS_DATA_RANGE);
  DAX_REQUIRE(grid.x.ascend() && grid.y.ascend(), DAX_STS_BAD_PARAM);
  DAX_REQUIRE((!isPeriodic(xEnds) || repeats(z, true)) && (!isPeriodic(yEnds) || repeats(z, false)), DAX_STS_BAD_PARAM);
  grid.exponent = magnitude.exponent();
  grid.x.load(work.take(z.cols)), grid.y.load(work.take(z.rows));
  grid.values = work.take(grid.cells()), grid.slopes = work.take(3 * grid.cells());
  loadRows(z, PowerOfTwo(-grid.exponent), {grid.values, z.cols, z.rows, z.cols});
  return DAX_STS_OK;
}

DaxStatus storeGrid(const Grid& grid, double* derivatives) {
  const int exponents[] = {grid.exponent - grid.x.exponent, grid.exponent - grid.y.exponent,
                           grid.exponent - grid.x.exponent - grid.y.exponent};
  for (double* const to : {static_cast<double*>(nullptr), derivatives}) {
    for (int k = 0; k < 3; ++k) {
      DAX_REQUIRE_OK(storeSlopes(grid.slopes + k, exponents[k], to ? to + k : nullptr, grid.cells(), 3));
    }
  }
  return DAX_STS_OK;
}

void splineLines(const Lines& lines, const double* steps, const LineEnds& ends, double* work) {
  const int32_t n = lines.n;
  double *const v = work, *const slopes = work + n;
  for (int32_t j = 0; j < lines.count; ++j) {
    for (int32_t k = 0; k < n; ++k) v[k] = lines.from[j * lines.line + k * lines.element];
    splineSlopes(steps, v, n, ends, slopes, work + 2 * int64_t{n});
    for (int32_t k = 0; k < n; ++k) lines.to[j * lines.toLine + k * lines.toElement] = slopes[k];
  }
}

DaxStatus spline2(const double* x, int32_t nx, const double* y, int32_t ny, const double* z, int32_t zStep,
                  const PrmtSplineEnds* xEnds, const PrmtSplineEnds* yEnds, double* derivatives, void* buffer) {
  DAX_REQUIRE_OK(checkGrid(x, nx, y, ny, z, zStep, derivatives, buffer));
  const PrmtSplineEnds ofX = endsOr(xEnds), ofY = endsOr(yEnds);
  DAX_REQUIRE(isCondition(ofX) && isCondition(ofY), DAX_STS_BAD_PARAM);
  WorkSpace work(buffer);
  Grid grid{{x, nx}, {y, ny}, 0, nullptr, nullptr};
  DAX_REQUIRE_OK(loadGrid({z, zStep, ny, nx}, ofX, ofY, grid, work));
  double* const rest = work.take(0);
  LineEnds inY = scaledEnds(ofY, grid.y.exponent - grid.exponent);
  splineLines(alongX(grid, grid.slopes, 3), grid.x.steps, scaledEnds(ofX, grid.x.exponent - grid.exponent), rest);
  splineLines(alongY(grid, grid.slopes + 1, 3), grid.y.steps, inY, rest);
  // Slopes by x along columns; given ones by y are the same everywhere.
  Lines cross = alongY(grid, grid.slopes + 2, 3);
  cross.from = grid.slopes, cross.line = 3, cross.element = 3 * ptrdiff_t{nx};
  inY.start = inY.end = 0;
  splineLines(cross, grid.y.steps, inY, rest);
  return storeGrid(grid, derivatives);
}

// The shares of all points along lines, and their chords where there is room for them; slopes go to `lines.to`.
void akimaLines(const Lines& lines, const double* steps, double* shares, double* allChords, double* work) {
  const int32_t n = lines.n;
  double *const v = work, *const noise = v + n, *const own = noise + n + 3;
  for (int32_t j = 0; j < lines.count; ++j) {
    double* const chords = allChords ? allChords + j * (int64_t{n} + 3) : own;
    for (int32_t k = 0; k < n; ++k) v[k] = lines.from[j * lines.line + k * lines.element];
    akimaChords(steps, v, n, chords, noise);
    for (int32_t k = 0; k < n; ++k) {
      const double share = akimaShare(chords, noise, k);
      shares[(j * lines.toLine + k * lines.toElement) / 3] = share;
      lines.to[j * lines.toLine + k * lines.toElement] = akimaSlope(share, chords[k + 1], chords[k + 2]);
    }
  }
}

// The difference of the chords by x of column k and row l to those of the next row, over their distance; going on linearly.
double crossDifference(const Grid& grid, const double* chords, int32_t k, int32_t l) {
  const ptrdiff_t step = grid.x.n + 3;
  const auto inside = [&](int32_t row) {
    return (chords[(row + 1) * step + k] - chords[row * step + k]) / grid.y.steps[row];
  };
  const int32_t last = grid.y.n - 2;
  if (l >= 0 && l <= last) return inside(l);
  const int32_t edge = l < 0 ? 0 : last, next = l < 0 ? std::min(1, last) : std::max(last - 1, 0);
  return 2 * inside(edge) - inside(next);
}

DaxStatus akima2(const double* x, int32_t nx, const double* y, int32_t ny, const double* z, int32_t zStep,
                 double* derivatives, void* buffer) {
  DAX_REQUIRE_OK(checkGrid(x, nx, y, ny, z, zStep, derivatives, buffer));
  WorkSpace work(buffer);
  Grid grid{{x, nx}, {y, ny}, 0, nullptr, nullptr};
  DAX_REQUIRE_OK(loadGrid({z, zStep, ny, nx}, endsOr(nullptr), endsOr(nullptr), grid, work));
  double *const inX = work.take(grid.cells()), *const inY = work.take(grid.cells());
  double* const chords = work.take(ny * (int64_t{nx} + 3));
  akimaLines(alongX(grid, grid.slopes, 3), grid.x.steps, inX, chords, work.take(0));
  akimaLines(alongY(grid, grid.slopes + 1, 3), grid.y.steps, inY, nullptr, work.take(0));
  for (int32_t j = 0; j < ny; ++j) {
    for (int32_t i = 0; i < nx; ++i) {
      const int64_t cell = int64_t{j} * nx + i;
      const auto acrossRow = [&](int32_t l) {
        return akimaSlope(inX[cell], crossDifference(grid, chords, i + 1, l), crossDifference(grid, chords, i + 2, l));
      };
      grid.slopes[3 * cell + 2] = akimaSlope(inY[cell], acrossRow(j - 1), acrossRow(j));
    }
  }
  return storeGrid(grid, derivatives);
}

}  // namespace
}  // namespace dax

DaxStatus PRMT_EQ_Spline1_BufferSize_f64(int32_t n, uint64_t* bytes) {
  return dax::needOf(n, 2, 3, 0, bytes);
}

DaxStatus PRMT_EQ_Akima1_BufferSize_f64(int32_t n, uint64_t* bytes) {
  return dax::needOf(n, 2, 2, 2, bytes);
}

DaxStatus PRMT_EQ_Spline2_BufferSize_f64(int32_t nx, int32_t ny, uint64_t* bytes) {
  return dax::needOf(nx, ny, 4, 6, bytes);
}

DaxStatus PRMT_EQ_Akima2_BufferSize_f64(int32_t nx, int32_t ny, uint64_t* bytes) {
  return dax::needOf(nx, ny, 7, 7, bytes);
}

DaxStatus PRMT_EQ_Spline1_f64(const double* x, const double* y, int32_t n, const PrmtSplineEnds* ends, double* slopes,
                              void* buffer) {
  return dax::spline1(x, y, n, ends, slopes, buffer);
}

DaxStatus PRMT_EQ_Akima1_f64(const double* x, const double* y, int32_t n, double* slopes, void* buffer) {
  return dax::akima1(x, y, n, slopes, buffer);
}

DaxStatus PRMT_EQ_Spline2_f64(const double* x, int32_t nx, const double* y, int32_t ny, const double* z, int32_t zStep,
                              const PrmtSplineEnds* xEnds, const PrmtSplineEnds* yEnds, double* derivatives,
                              void* buffer) {
  return dax::spline2(x, nx, y, ny, z, zStep, xEnds, yEnds, derivatives, buffer);
}

DaxStatus PRMT_EQ_Akima2_f64(const double* x, int32_t nx, const double* y, int32_t ny, const double* z, int32_t zStep,
                             double* derivatives, void* buffer) {
  return dax::akima2(x, nx, y, ny, z, zStep, derivatives, buffer);
}

// B-splines through points.
#include "optim/equation/fit_points.h"
#include "optim/equation/pieces.h"
#include "prmt/curve_fit.h"

namespace dax {
namespace {

constexpr int32_t kMaxSplineDegree = 5, kMaxCoefficients = 1 << 24;

// Breaks as knots: the ends degree + 1 times.
struct BSplineKnots {
  const double* breaks;
  int32_t breakCount, degree;

  double at(int32_t i) const { return breaks[std::clamp(i - degree, 0, breakCount - 1)]; }
  int32_t coefficients() const { return breakCount - 1 + degree; }
  bool areSizes() const {
    return breakCount >= 2 && degree >= 1 && degree <= kMaxSplineDegree && breakCount <= kMaxCoefficients - degree;
  }
  bool ascend() const {
    for (int32_t i = 0; i + 1 < breakCount; ++i) {
      if (!(breaks[i] < breaks[i + 1])) return false;
    }
    return true;
  }
};

// The degree + 1 B-splines other than 0 in a piece (Cox 1972, de Boor 1972).
void setBSplines(const BSplineKnots& knots, int32_t piece, double x, double* values) {
  const int32_t span = piece + knots.degree;
  values[0] = 1;
  for (int32_t k = 1; k <= knots.degree; ++k) {
    double carried = 0;
    for (int32_t j = 0; j < k; ++j) {
      const double right = knots.at(span + 1 + j), left = knots.at(span + 1 + j - k);
      const double share = values[j] / (right - left);
      values[j] = carried + (right - x) * share;
      carried = (x - left) * share;
    }
    values[k] = carried;
  }
}

// Triangular factor of a matrix with rows as wide as a B-spline: of row i the elements i .. i + degree; and the right-hand side.
class BandFactor {
 public:
  BandFactor(int32_t n, int32_t degree, WorkSpace& work) : n_(n), width_(degree + 1) {
    band_ = work.take(int64_t{n} * width_), right_ = work.take(n);
    std::fill_n(band_, int64_t{n} * width_, 0.0);
    std::fill_n(right_, n, 0.0);
  }
  // Takes in a row that begins at a column, by rotations.
  void add(int32_t column, double* row, double right) {
    for (; column < n_ && std::any_of(row, row + width_, [](double x) { return x != 0; }); ++column) {
      double* const own = band_ + int64_t{column} * width_;
      const double length = std::sqrt(own[0] * own[0] + row[0] * row[0]);
      if (length > 0) {
        const double cosine = own[0] / length, sine = row[0] / length;
        for (int32_t k = 0; k < width_; ++k) {
          const double above = own[k];
          own[k] = cosine * above + sine * row[k];
          row[k] = cosine * row[k] - sine * above;
        }
        const double above = right_[column];
        right_[column] = cosine * above + sine * right;
        right = cosine * right - sine * above;
      }
      std::copy(row + 1, row + width_, row);
      row[width_ - 1] = 0;
    }
    squares_ += right * right;
  }
  bool isRegular(double tolerance) const {
    double largest = 0, least = INFINITY;
    for (int32_t i = 0; i < n_; ++i) {
      const double element = std::fabs(band_[int64_t{i} * width_]);
      largest = std::max(largest, element), least = std::min(least, element);
    }
    return least > tolerance * largest;
  }
  double* solve() const {
    for (int32_t i = n_ - 1; i >= 0; --i) {
      const double* const own = band_ + int64_t{i} * width_;
      for (int32_t k = 1; k < std::min(width_, n_ - i); ++k) right_[i] -= own[k] * right_[i + k];
      right_[i] /= own[0];
    }
    return right_;
  }
  double squares() const { return squares_; }

 private:
  int32_t n_, width_;
  double *band_, *right_, squares_ = 0;
};

DaxStatus bsplineNeed(int32_t breakCount, int32_t degree, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  const BSplineKnots knots{nullptr, breakCount, degree};
  DAX_REQUIRE(knots.areSizes(), DAX_STS_BAD_PARAM);
  *bytes = sizeof(double) * static_cast<uint64_t>(breakCount + int64_t{knots.coefficients()} * (degree + 2));
  return DAX_STS_OK;
}

DaxStatus bsplineFit(FitPoints points, BSplineKnots knots, double* coefficients, double* rms, void* buffer) {
  const bool areGiven = points.x && points.y && knots.breaks && coefficients && rms && buffer;
  DAX_REQUIRE(areGiven, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(points.count >= 1 && knots.areSizes(), DAX_STS_BAD_SIZE);
  Magnitude magnitude;
  magnitude.add(knots.breaks, knots.breakCount);
  const DaxStatus status = points.check();
  DAX_REQUIRE(status != DAX_STS_DATA_RANGE && magnitude.isFinite(), DAX_STS_DATA_RANGE);
  DAX_REQUIRE_OK(status);
  DAX_REQUIRE(knots.ascend(), DAX_STS_BAD_PARAM);
  const double low = knots.breaks[0], high = knots.breaks[knots.breakCount - 1];
  const bool areInside =
      std::all_of(points.x, points.x + points.count, [=](double x) { return x >= low && x <= high; });
  DAX_REQUIRE(areInside, DAX_STS_DATA_RANGE);
  WorkSpace work(buffer);
  double* const breaks = work.take(knots.breakCount);
  const PowerOfTwo scale(-magnitude.exponent());
  store(knots.breaks, scale, breaks, knots.breakCount);
  knots.breaks = breaks;
  BandFactor factor(knots.coefficients(), knots.degree, work);
  Pieces pieces(breaks, knots.breakCount);
  for (int32_t i = 0; i < points.count; ++i) {
    const double x = scale(points.x[i]), root = points.root(i);
    const int32_t piece = pieces.find(x);
    double row[kMaxSplineDegree + 1];
    setBSplines(knots, piece, x, row);
    for (int32_t k = 0; k <= knots.degree; ++k) row[k] *= root;
    factor.add(piece, row, root * points.value(i));
  }
  const double tolerance = 0x1p-52 * std::max(points.count, knots.coefficients());
  DAX_REQUIRE(factor.isRegular(tolerance), DAX_STS_LEAST_SQUARES);
  return points.store(factor.solve(), knots.coefficients(), factor.squares(), coefficients, rms);
}

// By de Boor's algorithm, with differences of the coefficients first for each order of the derivative.
double bsplineValue(const BSplineKnots& knots, const double* coefficients, int32_t piece, double x, int32_t order) {
  const int32_t degree = knots.degree;
  if (order > degree) return 0;
  double d[kMaxSplineDegree + 1];
  std::copy_n(coefficients + piece, degree + 1, d);
  for (int32_t r = 1; r <= order; ++r) {
    const int32_t width = degree - r + 1;
    for (int32_t j = degree; j >= r; --j) {
      d[j] = width * ((d[j] - d[j - 1]) / (knots.at(piece + j + width) - knots.at(piece + j)));
    }
  }
  for (int32_t r = 1; r <= degree - order; ++r) {
    for (int32_t j = degree; j >= order + r; --j) {
      const double left = knots.at(piece + j), right = knots.at(piece + j + degree - order - r + 1);
      const double share = (x - left) / (right - left);
      d[j] = (1 - share) * d[j - 1] + share * d[j];
    }
  }
  return d[degree];
}

DaxStatus bsplineValues(const BSplineKnots& knots, const double* coefficients, const double* at, int32_t count,
                        int32_t derivative, double* values) {
  DAX_REQUIRE(knots.breaks && coefficients && at && values, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(knots.areSizes() && count >= 1, DAX_STS_BAD_SIZE);
  DAX_REQUIRE(derivative >= 0 && derivative <= 3, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(areFinite(at, count), DAX_STS_DATA_RANGE);
  Pieces pieces(knots.breaks, knots.breakCount);
  for (int32_t k = 0; k < count; ++k) {
    values[k] = bsplineValue(knots, coefficients, pieces.find(at[k]), at[k], derivative);
  }
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus PRMT_EQ_BSplineFit_BufferSize_f64(int32_t breakCount, int32_t degree, uint64_t* bytes) {
  return dax::bsplineNeed(breakCount, degree, bytes);
}

DaxStatus PRMT_EQ_BSplineFit_f64(const double* x, const double* y, const double* weights, int32_t count,
                                 const double* breaks, int32_t breakCount, int32_t degree, double* coefficients,
                                 double* rms, void* buffer) {
  return dax::bsplineFit({x, y, weights, count}, {breaks, breakCount, degree}, coefficients, rms, buffer);
}

DaxStatus PRMT_EQ_BSplineValue_f64(const double* breaks, int32_t breakCount, int32_t degree, const double* coefficients,
                                   const double* at, int32_t count, int32_t derivative, double* values) {
  return dax::bsplineValues({breaks, breakCount, degree}, coefficients, at, count, derivative, values);
}

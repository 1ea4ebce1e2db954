#include "model/curve_model.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>

#include "base/failure.h"
#include "base/text.h"

namespace dax::tool {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;

// Linear least squares of v by basis functions of the points: coefficients and residual sum of squares.
struct LinearFit {
  Values coefficients;
  double squares;
};

// basis(u, v, values) writes the `count` functions at a point.
template <class Basis>
std::optional<LinearFit> fitLinear(const Points& points, const Values& v, size_t count, const Basis& basis) {
  Values matrix(count * count), rhs(count), f(count);
  double squares = 0;
  for (size_t i = 0; i < v.size(); ++i) {
    basis(points.x[i], points.y[i], f.data());
    for (size_t r = 0; r < count; ++r) {
      for (size_t c = 0; c < count; ++c) matrix[r * count + c] += f[r] * f[c];
      rhs[r] += f[r] * v[i];
    }
    squares += v[i] * v[i];
  }
  const Values inverse = inverseOf(matrix, count);
  if (inverse.empty()) return std::nullopt;
  LinearFit fit{Values(count), squares};
  for (size_t r = 0; r < count; ++r) {
    for (size_t c = 0; c < count; ++c) fit.coefficients[r] += inverse[r * count + c] * rhs[c];
    fit.squares -= fit.coefficients[r] * rhs[r];
  }
  return fit;
}

// The best of several linear fits for given values of the nonlinear parameters.
class Search {
 public:
  template <class Basis>
  void tryOut(const Points& points, size_t count, const Values& shape, const Basis& basis) {
    const std::optional<LinearFit> fit = fitLinear(points, points.y, count, basis);
    if (!fit || (found_ && !(fit->squares < best_.squares))) return;
    best_ = *fit;
    shape_ = shape;
    found_ = true;
  }
  const Values& coefficients() const {
    if (!found_) throw Failure(ExitStatus::kRefused, "the points do not tell the parameters of this model");
    return best_.coefficients;
  }
  const Values& shape() const { return shape_; }

 private:
  bool found_ = false;
  LinearFit best_;
  Values shape_;
};

class Function : public CurveModel {
 public:
  using CurveModel::CurveModel;
  double residual(const double* q, double u, double v, double* by) const override { return value(q, u, by) - v; }

 protected:
  virtual double value(const double* q, double u, double* by) const = 0;
};

std::vector<std::string> coefficientNames(int degree) {
  if (degree == 1) return {"intercept", "slope"};
  std::vector<std::string> names;
  for (int k = 0; k <= degree; ++k) names.push_back(std::string("c").append(std::to_string(k)));
  return names;
}

std::string polynomialFormula(int degree) {
  if (degree == 1) return "y = intercept + slope x";
  std::string formula = "y = c0 + c1 x";
  for (int k = 2; k <= degree; ++k) {
    const std::string number = std::to_string(k);
    formula.append(" + c").append(number).append(" x^").append(number);
  }
  return formula;
}

class Polynomial : public Function {
 public:
  Polynomial(std::string modelName, int degree)
      : Function(std::move(modelName), polynomialFormula(degree), coefficientNames(degree)) {}
  Values start(const Points&) const override { return Values(count()); }
  Values fromFrame(const Values& q, const Frame& f) const override {
    Values p = shifted(q, -f.x0 / f.xScale, 1 / f.xScale);
    for (double& c : p) c *= f.yScale;
    p[0] += f.y0;
    return p;
  }
  Values toFrame(const Values& p, const Frame& f) const override {
    Values q = shifted(p, f.x0, f.xScale);
    q[0] -= f.y0;
    for (double& c : q) c /= f.yScale;
    return q;
  }

 protected:
  double value(const double* q, double u, double* by) const override {
    double power = 1, sum = 0;
    for (size_t k = 0; k < count(); ++k, power *= u) by[k] = power, sum += q[k] * power;
    return sum;
  }

 private:
  // Coefficients in t of the polynomial at shift + scale t.
  static Values shifted(Values c, double shift, double scale) {
    for (size_t k = 0; k < c.size(); ++k) {
      for (size_t i = c.size() - 1; i > k; --i) c[i - 1] += shift * c[i];
    }
    double power = 1;
    for (double& value : c) value *= power, power *= scale;
    return c;
  }
};

class Exponential : public Function {
 public:
  Exponential() : Function("exponential", "y = amplitude exp(rate x) + offset", {"amplitude", "rate", "offset"}) {}
  Values start(const Points& framed) const override {
    Search search;
    for (int k = 0; k < 19; ++k) {
      const double rate = 0.05 * std::pow(1.5, k);
      for (const double r : {rate, -rate}) {
        search.tryOut(framed, 2, {r},
                      [r](double u, double, double* f) { f[0] = std::exp(r * u - std::fabs(r)), f[1] = 1; });
      }
    }
    const Values& c = search.coefficients();
    const double r = search.shape()[0];
    return {c[0] * std::exp(-std::fabs(r)), r, c[1]};
  }
  Values fromFrame(const Values& q, const Frame& f) const override {
    return {f.yScale * q[0] * std::exp(-q[1] * f.x0 / f.xScale), q[1] / f.xScale, f.y0 + f.yScale * q[2]};
  }
  Values toFrame(const Values& p, const Frame& f) const override {
    return {p[0] * std::exp(p[1] * f.x0) / f.yScale, p[1] * f.xScale, (p[2] - f.y0) / f.yScale};
  }

 protected:
  double value(const double* q, double u, double* by) const override {
    by[0] = std::exp(q[1] * u), by[1] = q[0] * u * by[0], by[2] = 1;
    return q[0] * by[0] + q[2];
  }
};

class Gaussian : public Function {
 public:
  Gaussian()
      : Function("gaussian", "y = height exp(-(x - centre)^2 / (2 sigma^2)) + offset",
                 {"height", "centre", "sigma", "offset"}) {}
  Values start(const Points& framed) const override {
    Search search;
    for (int k = 0; k < 11; ++k) {
      const double sigma = 0.02 * std::pow(1.5, k);
      const int centres = static_cast<int>(std::ceil(2 / std::min(sigma, 0.1)));
      for (int i = 0; i <= centres; ++i) {
        const double centre = 2.0 * i / centres - 1;
        search.tryOut(framed, 2, {centre, sigma}, [=](double u, double, double* f) {
          const double t = (u - centre) / sigma;
          f[0] = std::exp(-0.5 * t * t), f[1] = 1;
        });
      }
    }
    const Values& c = search.coefficients();
    return {c[0], search.shape()[0], search.shape()[1], c[1]};
  }
  Values fromFrame(const Values& q, const Frame& f) const override {
    return {f.yScale * q[0], f.x0 + f.xScale * q[1], f.xScale * q[2], f.y0 + f.yScale * q[3]};
  }
  Values toFrame(const Values& p, const Frame& f) const override {
    return {p[0] / f.yScale, (p[1] - f.x0) / f.xScale, p[2] / f.xScale, (p[3] - f.y0) / f.yScale};
  }
  void settle(Values& p) const override { p[2] = std::fabs(p[2]); }

 protected:
  double value(const double* q, double u, double* by) const override {
    const double t = (u - q[1]) / q[2];
    by[0] = std::exp(-0.5 * t * t), by[1] = q[0] * by[0] * t / q[2], by[2] = by[1] * t, by[3] = 1;
    return q[0] * by[0] + q[3];
  }
};

class Sine : public Function {
 public:
  Sine()
      : Function("sine", "y = amplitude sin(2 pi frequency x + phase) + offset",
                 {"amplitude", "frequency", "phase", "offset"}) {}
  // From a quarter of a cycle up to the limit that the number of points allows.
  Values start(const Points& framed) const override {
    Search search;
    const auto maxQuarters = std::min<size_t>(2 * framed.x.size(), 1000);
    for (size_t quarters = 1; quarters <= maxQuarters; ++quarters) {
      const double w = std::numbers::pi / 4 * static_cast<double>(quarters);
      search.tryOut(framed, 3, {w},
                    [w](double u, double, double* f) { f[0] = std::sin(w * u), f[1] = std::cos(w * u), f[2] = 1; });
    }
    const Values& c = search.coefficients();
    return {std::hypot(c[0], c[1]), search.shape()[0], std::atan2(c[1], c[0]), c[2]};
  }
  Values fromFrame(const Values& q, const Frame& f) const override {
    return {f.yScale * q[0], q[1] / (kTurn * f.xScale), q[2] - q[1] * f.x0 / f.xScale, f.y0 + f.yScale * q[3]};
  }
  Values toFrame(const Values& p, const Frame& f) const override {
    return {p[0] / f.yScale, kTurn * p[1] * f.xScale, p[2] + kTurn * p[1] * f.x0, (p[3] - f.y0) / f.yScale};
  }
  // Amplitude and frequency positive, the phase in -pi..pi.
  void settle(Values& p) const override {
    if (p[1] < 0) p[1] = -p[1], p[2] = -p[2], p[0] = -p[0];
    if (p[0] < 0) p[0] = -p[0], p[2] += std::numbers::pi;
    p[2] = std::remainder(p[2], kTurn);
  }

 protected:
  double value(const double* q, double u, double* by) const override {
    const double angle = q[1] * u + q[2];
    by[0] = std::sin(angle), by[2] = q[0] * std::cos(angle), by[1] = u * by[2], by[3] = 1;
    return q[0] * by[0] + q[3];
  }
};

class Circle : public CurveModel {
 public:
  Circle()
      : CurveModel("circle", "(x - centre_x)^2 + (y - centre_y)^2 = radius^2", {"centre_x", "centre_y", "radius"}) {}
  // u^2 + v^2 = 2 a u + 2 b v + c is linear in a, b and c.
  Values start(const Points& framed) const override {
    Values squares(framed.x.size());
    std::transform(framed.x.begin(), framed.x.end(), framed.y.begin(), squares.begin(),
                   [](double u, double v) { return u * u + v * v; });
    const std::optional<LinearFit> fit =
        fitLinear(framed, squares, 3, [](double u, double v, double* f) { f[0] = 2 * u, f[1] = 2 * v, f[2] = 1; });
    if (!fit) throw Failure(ExitStatus::kRefused, "the points lie on a line or coincide");
    const Values& c = fit->coefficients;
    return {c[0], c[1], std::sqrt(std::max(c[2] + c[0] * c[0] + c[1] * c[1], 0.0))};
  }
  double residual(const double* q, double u, double v, double* by) const override {
    const double distance = std::hypot(u - q[0], v - q[1]);
    by[0] = distance > 0 ? (q[0] - u) / distance : 0, by[1] = distance > 0 ? (q[1] - v) / distance : 0, by[2] = -1;
    return distance - q[2];
  }
  Values fromFrame(const Values& q, const Frame& f) const override {
    return {f.x0 + f.xScale * q[0], f.y0 + f.yScale * q[1], f.xScale * q[2]};
  }
  Values toFrame(const Values& p, const Frame& f) const override {
    return {(p[0] - f.x0) / f.xScale, (p[1] - f.y0) / f.yScale, p[2] / f.xScale};
  }
  bool isFunction() const override { return false; }
  Points trace(const double* q) const override {
    Points points;
    for (int k = 0; k <= 360; ++k) {
      points.x.push_back(q[0] + q[2] * std::cos(kTurn * k / 360));
      points.y.push_back(q[1] + q[2] * std::sin(kTurn * k / 360));
    }
    return points;
  }
  double along(const Values& p, double x, double y) const override {
    return std::atan2(y - p[1], x - p[0]) * 360 / kTurn;
  }
};

}  // namespace

Points CurveModel::trace(const double* q) const {
  constexpr int kSteps = 600;
  Points points;
  Values by(count());
  for (int k = 0; k <= kSteps; ++k) {
    points.x.push_back(2.0 * k / kSteps - 1);
    points.y.push_back(residual(q, points.x.back(), 0, by.data()));
  }
  return points;
}

std::unique_ptr<CurveModel> parseModel(std::string_view text) {
  if (text == "line") return std::make_unique<Polynomial>("line", 1);
  if (text == "exponential") return std::make_unique<Exponential>();
  if (text == "gaussian") return std::make_unique<Gaussian>();
  if (text == "circle") return std::make_unique<Circle>();
  if (text == "sine") return std::make_unique<Sine>();
  const auto sides = splitPair(text, ':');
  if (!sides || sides->first != "polynomial") return nullptr;
  const std::optional<int> degree = parseInteger(sides->second, 1, 9);
  return degree ? std::make_unique<Polynomial>(std::string(text), *degree) : nullptr;
}

// Gauss-Jordan; a positive definite matrix needs no pivoting.
Values inverseOf(Values a, size_t n) {
  Values diagonal(n);
  for (size_t k = 0; k < n; ++k) diagonal[k] = a[k * n + k];
  for (size_t k = 0; k < n; ++k) {
    const double pivot = a[k * n + k];
    if (!(pivot > 1e-12 * diagonal[k]) || !std::isfinite(pivot)) return {};
    a[k * n + k] = 1;
    for (size_t j = 0; j < n; ++j) a[k * n + j] /= pivot;
    for (size_t i = 0; i < n; ++i) {
      if (i == k) continue;
      const double factor = a[i * n + k];
      a[i * n + k] = 0;
      for (size_t j = 0; j < n; ++j) a[i * n + j] -= factor * a[k * n + j];
    }
  }
  return a;
}

}  // namespace dax::tool

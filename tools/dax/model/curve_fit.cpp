#include "model/curve_fit.h"

#include <prmt.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "base/failure.h"
#include "base/library_call.h"

namespace dax::tool {
namespace {

constexpr int kMaxIterations = 1000;

[[noreturn]] void refuse(const std::string& what) {
  throw Failure(ExitStatus::kRefused, what);
}

struct Range {
  explicit Range(const Values& values) {
    const auto [low, high] = std::minmax_element(values.begin(), values.end());
    middle = *low / 2 + *high / 2;
    half = *high / 2 - *low / 2;
  }
  double middle, half;
};

Frame frameOf(const CurveModel& model, const Points& points) {
  const Range x(points.x), y(points.y);
  if (!std::isnormal(x.half) && (model.isFunction() || !std::isnormal(y.half))) {
    refuse(model.isFunction() ? "all points have the same x" : "the points coincide");
  }
  if (!model.isFunction()) {
    const double scale = std::max(x.half, y.half);
    return {x.middle, scale, y.middle, scale};
  }
  return {x.middle, x.half, y.middle, std::isnormal(y.half) ? y.half : 1};
}

Points framed(const Points& points, const Frame& f) {
  Points result = points;
  for (double& x : result.x) x = (x - f.x0) / f.xScale;
  for (double& y : result.y) y = (y - f.y0) / f.yScale;
  return result;
}

Points unframed(const Points& points, const Frame& f) {
  Points result = points;
  for (double& x : result.x) x = f.x0 + f.xScale * x;
  for (double& y : result.y) y = f.y0 + f.yScale * y;
  return result;
}

// Data of the solver's callbacks.
struct Problem {
  Problem(const CurveModel& curve, const Points& framedPoints)
      : model(curve), points(framedPoints), jacobian(points.x.size() * model.count()) {}

  // Residuals and, column by column, their derivatives.
  void evaluate(const double* q, double* r) {
    const size_t m = points.x.size();
    Values by(model.count());
    for (size_t i = 0; i < m; ++i) {
      r[i] = model.residual(q, points.x[i], points.y[i], by.data());
      for (size_t j = 0; j < by.size(); ++j) jacobian[j * m + i] = by[j];
    }
  }

  static Problem& of(void* user) { return *static_cast<Problem*>(user); }
  static int32_t residuals(const double* q, int32_t, int32_t, void* user, double* r) {
    of(user).evaluate(q, r);
    return 0;
  }
  // The residuals were evaluated at q before.
  static int32_t derivatives(const double*, int32_t n, int32_t m, void* user, PrmtMsp* to) {
    const Values& from = of(user).jacobian;
    for (int32_t j = 0; j < n; ++j) {
      const double* const column = from.data() + static_cast<ptrdiff_t>(j) * m;
      if (const int32_t status = PRMT_MSP_AddBlk_tpl_f64(to, 0, j, column, m, 1, 1)) return status;
    }
    return 0;
  }
  static int32_t update(double* q, const double* step, int32_t n, void* user) {
    ++of(user).iterations;
    for (int32_t j = 0; j < n; ++j) q[j] += step[j];
    return 0;
  }

  const CurveModel& model;
  const Points& points;
  Values jacobian;
  int iterations = 0;
};

void solve(Problem& problem, Values& q) {
  const auto n = static_cast<int32_t>(q.size()), m = static_cast<int32_t>(problem.points.x.size());
  uint64_t bytes = 0;
  if (PRMT_LM_BufferSize_f64(n, m, 0, &bytes) != PRMT_STS_OK) refuse("too many points");
  const Memory memory(bytes);
  const PrmtLmFunctions functions{Problem::residuals, Problem::derivatives, Problem::update, 0};
  PrmtLmParam param{1e-11, 0, kMaxIterations, 1e-13, 1e-3, 10, 0, 0};
  double rmse = 0, norm = 0;
  const int32_t status =
      PRMT_LM_Process_f64(q.data(), n, m, &functions, &problem, &param, &rmse, &norm, memory.get(), &bytes);
  if (status == PRMT_STS_NOT_FINITE) refuse("the start values give no finite residuals");
  if (status == PRMT_STS_FAILURE) refuse("the points do not determine the parameters");
  check(DAX_ZurStatusToDaxAlgStatus(status), "fit");
  if (problem.iterations >= kMaxIterations) refuse("no minimum was found; --start may help");
}

// Covariance of the user's parameters from that in the frame: G C G^T with G by differences.
Values standardErrors(const CurveModel& model, const Values& q, const Frame& frame, const Values& covariance) {
  const size_t n = q.size();
  Values g(n * n), errors(n);
  for (size_t j = 0; j < n; ++j) {
    const double h = 1e-6 * std::max(1.0, std::fabs(q[j]));
    Values before = q, after = q;
    before[j] -= h, after[j] += h;
    const Values low = model.fromFrame(before, frame), high = model.fromFrame(after, frame);
    for (size_t i = 0; i < n; ++i) g[i * n + j] = (high[i] - low[i]) / (2 * h);
  }
  for (size_t i = 0; i < n; ++i) {
    double variance = 0, largest = 0;  // scaled, because squares could overflow
    for (size_t j = 0; j < n; ++j) largest = std::max(largest, std::fabs(g[i * n + j]));
    for (size_t j = 0; j < n && largest > 0; ++j) {
      for (size_t k = 0; k < n; ++k) {
        variance += g[i * n + j] / largest * covariance[j * n + k] * (g[i * n + k] / largest);
      }
    }
    errors[i] = largest * std::sqrt(std::max(variance, 0.0));
  }
  return errors;
}

// (J^T J)^-1
Values cofactors(const Values& jacobian, size_t m, size_t n) {
  Values matrix(n * n);
  for (size_t i = 0; i < n; ++i) {
    for (size_t j = 0; j < n; ++j) {
      matrix[i * n + j] = std::inner_product(jacobian.begin() + static_cast<ptrdiff_t>(i * m),
                                             jacobian.begin() + static_cast<ptrdiff_t>((i + 1) * m),
                                             jacobian.begin() + static_cast<ptrdiff_t>(j * m), 0.0);
    }
  }
  Values inverse = inverseOf(matrix, n);
  if (inverse.empty()) refuse("the points do not determine the parameters");
  return inverse;
}

double squaresOf(const Values& values, double less) {
  return std::accumulate(values.begin(), values.end(), 0.0,
                         [less](double sum, double value) { return sum + (value - less) * (value - less); });
}

}  // namespace

CurveFit fitCurve(const CurveModel& model, const Points& points, const std::optional<Values>& start) {
  const size_t m = points.x.size(), n = model.count();
  if (m <= n) {
    refuse(std::to_string(m) + " points are too few: " + model.name + " and its standard errors need " +
           std::to_string(n + 1));
  }
  if (m > static_cast<size_t>(std::numeric_limits<int32_t>::max())) refuse("too many points");
  const Frame frame = frameOf(model, points);
  const Points inFrame = framed(points, frame);
  Problem problem(model, inFrame);
  Values q = start ? model.toFrame(*start, frame) : model.start(inFrame);
  solve(problem, q);

  CurveFit fit;
  fit.residuals.resize(m);
  problem.evaluate(q.data(), fit.residuals.data());
  const double squares = squaresOf(fit.residuals, 0), variance = squares / static_cast<double>(m - n);
  Values covariance = cofactors(problem.jacobian, m, n);
  for (double& value : covariance) value *= variance;
  fit.parameters = model.fromFrame(q, frame);
  fit.standardErrors = standardErrors(model, q, frame, covariance);
  model.settle(fit.parameters);
  fit.deviation = frame.yScale * std::sqrt(variance);
  fit.iterations = problem.iterations;
  fit.curve = unframed(model.trace(q.data()), frame);
  // Residuals are reported as data minus curve.
  for (double& value : fit.residuals) value *= model.isFunction() ? -frame.yScale : frame.yScale;
  const double mean = std::accumulate(inFrame.y.begin(), inFrame.y.end(), 0.0) / static_cast<double>(m);
  const double total = squaresOf(inFrame.y, mean);
  if (model.isFunction() && total > 0) fit.rSquared = 1 - squares / total;
  const auto isFinite = [](double value) { return std::isfinite(value); };
  if (!std::all_of(fit.parameters.begin(), fit.parameters.end(), isFinite) ||
      !std::all_of(fit.standardErrors.begin(), fit.standardErrors.end(), isFinite)) {
    refuse("the parameters are beyond the range of numbers");
  }
  return fit;
}

}  // namespace dax::tool

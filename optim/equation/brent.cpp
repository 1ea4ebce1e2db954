#include "prmt/brent.h"

#include <algorithm>
#include <cmath>

#include "frame/check.h"
#include "optim/equation/wide.h"

namespace dax {
namespace {

constexpr double kEpsilon = 0x1p-52;

struct Sample {
  double x, value;
};

// The caller's function, and whether it went on.
struct Function {
  PrmtScalarFunction function;
  void* user;

  DaxStatus operator()(Sample& sample) const {
    double value = NAN;
    if (const int32_t status = function(sample.x, user, &value)) return static_cast<DaxStatus>(status);
    DAX_REQUIRE(std::isfinite(value), DAX_STS_DATA_RANGE);
    sample.value = value;
    return DAX_STS_OK;
  }
};

DaxStatus checkSearch(double from, double to, PrmtScalarFunction function, double tolerance, int32_t maxIterations,
                      const double* x, const double* value) {
  DAX_REQUIRE(function && x && value, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(std::isfinite(from) && std::isfinite(to) && std::isfinite(tolerance), DAX_STS_DATA_RANGE);
  DAX_REQUIRE(tolerance >= 0 && maxIterations >= 1 && maxIterations <= 100000, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

// The step from `best` by the line or the parabola through what is known, if it is to be trusted: within three quarters of the way
// to `other`, and less than half of the step before the last.
bool interpolatedStep(const Sample& best, const Sample& last, const Sample& other, double half, double tolerance,
                      double before, double& step) {
  if (!(std::fabs(before) >= tolerance && std::fabs(last.value) > std::fabs(best.value))) return false;
  const double s = best.value / last.value;
  double p, q;
  if (last.x == other.x) {
    p = 2 * half * s, q = 1 - s;
  } else {
    const double u = last.value / other.value, r = best.value / other.value;
    p = s * (2 * half * u * (u - r) - (best.x - last.x) * (r - 1));
    q = (u - 1) * (r - 1) * (s - 1);
  }
  if (p > 0) q = -q;
  p = std::fabs(p);
  if (!(2 * p < std::min(3 * half * q - std::fabs(tolerance * q), std::fabs(before * q)))) return false;
  step = p / q;
  return true;
}

// Brent's `zero`: the root lies between `best`, where the function is smaller, and `other`.
DaxStatus searchRoot(const Function& function, double from, double to, double tolerance, int32_t maxIterations,
                     Sample& root) {
  Sample best{to, 0}, last{from, 0};
  DAX_REQUIRE_OK(function(last));
  DAX_REQUIRE_OK(function(best));
  DAX_REQUIRE((last.value <= 0 && best.value >= 0) || (last.value >= 0 && best.value <= 0), DAX_STS_DEGENERATE);
  Sample other = last;
  double step = best.x - last.x, before = step;
  for (int32_t round = 0; round <= maxIterations; ++round) {
    if ((best.value > 0) == (other.value > 0)) other = last, step = before = best.x - last.x;
    if (std::fabs(other.value) < std::fabs(best.value)) last = best, best = other, other = last;
    const double near = 2 * kEpsilon * std::fabs(best.x) + tolerance / 2, half = other.x / 2 - best.x / 2;
    if (std::fabs(half) <= near || best.value == 0) {
      root = best;
      return DAX_STS_OK;
    }
    double next = half;
    const bool isBetter = interpolatedStep(best, last, other, half, near, before, next);
    before = isBetter ? step : half, step = next;
    last = best;
    best.x += std::fabs(step) > near ? step : half > 0 ? near : -near;
    DAX_REQUIRE_OK(function(best));
  }
  return DAX_STS_FAILURE;
}

// The step to the minimum of the parabola through the three best points, if it is to be trusted: inside low..high, and less
// than half of the step before the last.
bool parabolicStep(const Sample& best, const Sample& second, const Sample& third, double low, double high,
                   double before, double& step) {
  const double r = (best.x - second.x) * (best.value - third.value);
  const double q = (best.x - third.x) * (best.value - second.value);
  double p = (best.x - third.x) * q - (best.x - second.x) * r, divisor = 2 * (q - r);
  if (divisor > 0) p = -p;
  divisor = std::fabs(divisor);
  const bool isInside = p > divisor * (low - best.x) && p < divisor * (high - best.x);
  if (!(std::fabs(p) < std::fabs(divisor * before / 2) && isInside)) return false;
  step = p / divisor;
  return true;
}

// Brent's `localmin`.
DaxStatus searchMinimum(const Function& function, double from, double to, double tolerance, int32_t maxIterations,
                        Sample& minimum) {
  constexpr double kGolden = 0.38196601125010515180, kRoot = 0x1p-26;
  double low = std::min(from, to), high = std::max(from, to), step = 0, before = 0;
  Sample best{low + kGolden * high - kGolden * low, 0};
  DAX_REQUIRE_OK(function(best));
  Sample second = best, third = best;
  for (int32_t round = 0; round <= maxIterations; ++round) {
    const double middle = low / 2 + high / 2, near = kRoot * std::fabs(best.x) + tolerance / 3 + 0x1p-1000;
    if (std::fabs(best.x - middle) <= 2 * near - (high / 2 - low / 2)) {
      minimum = best;
      return DAX_STS_OK;
    }
    const double last = before;
    before = step;
    if (std::fabs(last) > near && parabolicStep(best, second, third, low, high, last, step)) {
      // Not too near the ends.
      const double x = best.x + step;
      if (x - low < 2 * near || high - x < 2 * near) step = best.x < middle ? near : -near;
    } else {
      const double end = best.x < middle ? high : low;
      before = end - best.x;
      step = kGolden * end - kGolden * best.x;
    }
    Sample next{best.x + (std::fabs(step) >= near ? step : step > 0 ? near : -near), 0};
    DAX_REQUIRE_OK(function(next));
    if (next.value <= best.value) {
      (next.x < best.x ? high : low) = best.x;
      third = second, second = best, best = next;
      continue;
    }
    (next.x < best.x ? low : high) = next.x;
    if (next.value <= second.value || second.x == best.x) {
      third = second, second = next;
    } else if (next.value <= third.value || third.x == best.x || third.x == second.x) {
      third = next;
    }
  }
  return DAX_STS_FAILURE;
}

}  // namespace
}  // namespace dax

DaxStatus PRMT_EQ_BrentRoot_f64(double from, double to, PrmtScalarFunction function, void* user, double tolerance,
                                int32_t maxIterations, double* root, double* value) {
  DAX_REQUIRE_OK(dax::checkSearch(from, to, function, tolerance, maxIterations, root, value));
  dax::Sample found{};
  DAX_REQUIRE_OK(dax::searchRoot({function, user}, from, to, tolerance, maxIterations, found));
  *root = found.x, *value = found.value;
  return DAX_STS_OK;
}

DaxStatus PRMT_EQ_BrentMin_f64(double from, double to, PrmtScalarFunction function, void* user, double tolerance,
                               int32_t maxIterations, double* x, double* value) {
  DAX_REQUIRE_OK(dax::checkSearch(from, to, function, tolerance, maxIterations, x, value));
  dax::Sample found{};
  DAX_REQUIRE_OK(dax::searchMinimum({function, user}, from, to, tolerance, maxIterations, found));
  *x = found.x, *value = found.value;
  return DAX_STS_OK;
}

// Fits against what was put in and against normal equations; searches in intervals.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <vector>

#include "prmt.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using Numbers = std::vector<double>;

GuardedBuffer<double> copyOf(const Numbers& values) {
  GuardedBuffer<double> copy(values.size());
  std::copy(values.begin(), values.end(), copy.begin());
  return copy;
}

struct Fit {
  DaxStatus status;
  Numbers coefficients;
  PrmtRange range;
  double rms;
};

Fit fitPolynomial(const Numbers& x, const Numbers& y, int32_t degree, const Numbers& weights = {}) {
  const auto count = static_cast<int32_t>(x.size());
  uint64_t bytes = 0;
  EXPECT_EQ(PRMT_EQ_PolyFit_BufferSize_f64(count, degree, &bytes), DAX_STS_OK);
  GuardedBuffer<double> coefficients(size_t(degree) + 1), work(bytes / sizeof(double));
  Fit fit{};
  const auto factors = copyOf(weights);
  fit.status = PRMT_EQ_PolyFit_f64(copyOf(x).data(), copyOf(y).data(), weights.empty() ? nullptr : factors.data(),
                                   count, degree, coefficients.data(), &fit.range, &fit.rms, work.data());
  fit.coefficients.assign(coefficients.begin(), coefficients.end());
  return fit;
}

double valueOf(const Fit& fit, double at, int32_t derivative = 0) {
  double value = NAN;
  const auto degree = static_cast<int32_t>(fit.coefficients.size()) - 1;
  EXPECT_EQ(PRMT_EQ_PolyValue_f64(copyOf(fit.coefficients).data(), degree, &fit.range, &at, 1, derivative, &value),
            DAX_STS_OK);
  return value;
}

TEST(PolynomialFit, FindsPolynomials) {
  Random random(1);
  for (int32_t degree = 0; degree <= 20; ++degree) {
    Numbers x, y;
    const auto truth = [&](double t) { return std::pow(t, degree) - 2 * t + 1; };
    for (int32_t i = 0; i < 60; ++i) {
      x.push_back(1e6 + random.below(10000) / 10.0);
      y.push_back(truth((x.back() - 1000500) / 500));
    }
    const Fit fit = fitPolynomial(x, y, std::max(degree, 1));
    ASSERT_EQ(fit.status, DAX_STS_OK);
    for (size_t i = 0; i < x.size(); ++i) EXPECT_NEAR(valueOf(fit, x[i]), y[i], 1e-8) << degree;
    EXPECT_LT(fit.rms, 1e-14);
  }
  const Fit fit = fitPolynomial({0, 1, 2, 3}, {1, 0, 3, 10}, 2);  // 1 - 3 x + 2 x^2
  for (int32_t order = 0; order <= 3; ++order) {
    const double expected[] = {3, 5, 4, 0};
    EXPECT_NEAR(valueOf(fit, 2, order), expected[order], 1e-13);
  }
}

TEST(PolynomialFit, WeighsAndRefuses) {
  // A mean, and its spread.
  const Fit mean = fitPolynomial({5, 5, 5}, {0, 4, 8}, 0, {3, 1, 0});
  EXPECT_NEAR(mean.coefficients[0], 1, 1e-15);
  EXPECT_NEAR(mean.rms, std::sqrt(3.0), 1e-15);
  // A weight of 2 is a point twice, and scaling by powers of two changes no bit.
  const Fit heavy = fitPolynomial({0, 1, 2, 3}, {1, 0, 2, 5}, 1, {1, 2, 1, 1});
  const Fit twice = fitPolynomial({0, 1, 1, 2, 3}, {1, 0, 0, 2, 5}, 1);
  const Fit scaled =
      fitPolynomial({0, 1, 2, 3}, {0x1p900, 0, 0x1p901, 5 * 0x1p900}, 1, {0x1p-900, 0x1p-899, 0x1p-900, 0x1p-900});
  for (size_t k = 0; k < 2; ++k) {
    EXPECT_NEAR(heavy.coefficients[k], twice.coefficients[k], 1e-14);
    EXPECT_EQ(scaled.coefficients[k], std::ldexp(heavy.coefficients[k], 900));
  }
  EXPECT_NEAR(heavy.rms, twice.rms, 1e-15);
  EXPECT_EQ(fitPolynomial({1, 1, 2}, {1, 2, 3}, 2).status, DAX_STS_LEAST_SQUARES);
  EXPECT_EQ(fitPolynomial({1, 2}, {1, 2}, 2).status, DAX_STS_LEAST_SQUARES);
  EXPECT_EQ(fitPolynomial({1, 2, 3}, {1, 2, 3}, 1, {1, 0, 0}).status, DAX_STS_LEAST_SQUARES);
  EXPECT_EQ(fitPolynomial({1, 2, 3}, {1, 2, 3}, 1, {1, -1, 1}).status, DAX_STS_BAD_PARAM);
  EXPECT_EQ(fitPolynomial({1, 2, NAN}, {1, 2, 3}, 1).status, DAX_STS_DATA_RANGE);
}

Fit fitSpline(const Numbers& x, const Numbers& y, const Numbers& breaks, int32_t degree, const Numbers& weights = {}) {
  const auto breakCount = static_cast<int32_t>(breaks.size());
  uint64_t bytes = 0;
  EXPECT_EQ(PRMT_EQ_BSplineFit_BufferSize_f64(breakCount, degree, &bytes), DAX_STS_OK);
  GuardedBuffer<double> coefficients(breaks.size() - 1 + size_t(degree)), work(bytes / sizeof(double));
  Fit fit{};
  const auto factors = copyOf(weights);
  fit.status = PRMT_EQ_BSplineFit_f64(copyOf(x).data(), copyOf(y).data(), weights.empty() ? nullptr : factors.data(),
                                      static_cast<int32_t>(x.size()), copyOf(breaks).data(), breakCount, degree,
                                      coefficients.data(), &fit.rms, work.data());
  fit.coefficients.assign(coefficients.begin(), coefficients.end());
  return fit;
}

double splineValue(const Fit& fit, const Numbers& breaks, int32_t degree, double at, int32_t derivative = 0) {
  double value = NAN;
  EXPECT_EQ(PRMT_EQ_BSplineValue_f64(copyOf(breaks).data(), static_cast<int32_t>(breaks.size()), degree,
                                     copyOf(fit.coefficients).data(), &at, 1, derivative, &value),
            DAX_STS_OK);
  return value;
}

TEST(BSplineFit, KeepsPolynomialsAndSplines) {
  const Numbers breaks = {-1, 0, 0.5, 2, 3};
  Random random(4);
  for (int32_t degree = 1; degree <= 5; ++degree) {
    Numbers x, y, kinked;
    for (int32_t i = 0; i < 80; ++i) {
      x.push_back(-1 + random.below(401) / 100.0);
      y.push_back(std::pow(x.back(), degree) - x.back());
      kinked.push_back(y.back() + (x.back() > 0.5 ? std::pow(x.back() - 0.5, degree) : 0));
    }
    x.front() = -1, y.front() = std::pow(-1, degree) + 1, kinked.front() = y.front();
    const Fit fit = fitSpline(x, y, breaks, degree), spline = fitSpline(x, kinked, breaks, degree);
    ASSERT_EQ(fit.status, DAX_STS_OK);
    for (double at = -1.5; at < 3.5; at += 0.1) {  // outside as well
      EXPECT_NEAR(splineValue(fit, breaks, degree, at), std::pow(at, degree) - at, 1e-9) << degree;
      EXPECT_NEAR(splineValue(fit, breaks, degree, at, 1), degree * std::pow(at, degree - 1) - 1, 1e-8) << degree;
    }
    for (size_t i = 0; i < x.size(); ++i) EXPECT_NEAR(splineValue(spline, breaks, degree, x[i]), kinked[i], 1e-11);
    EXPECT_LT(spline.rms, 1e-12);
    for (int32_t order = 0; order < std::min(degree, 4); ++order) {
      EXPECT_NEAR(splineValue(spline, breaks, degree, 0.5 - 1e-10, order),
                  splineValue(spline, breaks, degree, 0.5 + 1e-10, order), 1e-6);
    }
  }
}

// The residuals of a least-squares fit are orthogonal to each B-spline, weighted.
TEST(BSplineFit, MinimisesAndRefuses) {
  const Numbers breaks = {0, 1, 3, 4};
  Random random(9);
  Numbers x, y, weights;
  for (int32_t i = 0; i < 50; ++i) {
    x.push_back(random.below(4001) / 1000.0), y.push_back(random.below(100)), weights.push_back(1 + random.below(5));
  }
  Fit fit = fitSpline(x, y, breaks, 3, weights);
  ASSERT_EQ(fit.status, DAX_STS_OK);
  double squares = 0, sum = 0;
  for (size_t k = 0; k < fit.coefficients.size(); ++k) {
    Fit one = fit;
    one.coefficients.assign(fit.coefficients.size(), 0);
    one.coefficients[k] = 1;
    double product = 0;
    for (size_t i = 0; i < x.size(); ++i) {
      const double rest = splineValue(fit, breaks, 3, x[i]) - y[i];
      product += weights[i] * rest * splineValue(one, breaks, 3, x[i]);
      if (k == 0) squares += weights[i] * rest * rest, sum += weights[i];
    }
    EXPECT_NEAR(product, 0, 1e-9);
  }
  EXPECT_NEAR(fit.rms, std::sqrt(squares / sum), 1e-10);
  EXPECT_EQ(fitSpline({0, 0.5, 4}, {1, 2, 3}, breaks, 3).status, DAX_STS_LEAST_SQUARES);
  EXPECT_EQ(fitSpline({0, 0.1, 0.2, 0.3, 0.4, 0.5}, {1, 2, 3, 1, 2, 3}, breaks, 3).status, DAX_STS_LEAST_SQUARES);
  EXPECT_EQ(fitSpline({0, 5}, {1, 2}, breaks, 1).status, DAX_STS_DATA_RANGE);
  EXPECT_EQ(fitSpline({0, 1}, {1, 2}, {0, 0}, 1).status, DAX_STS_BAD_PARAM);
}

// --- Searches ---

struct Counted {
  std::function<double(double)> function;
  int32_t calls = 0, failingAt = 0;
};

int32_t evaluate(double x, void* user, double* value) {
  auto& counted = *static_cast<Counted*>(user);
  *value = counted.function(x);
  return ++counted.calls == counted.failingAt ? 77 : 0;
}

using Search = DaxStatus (*)(double, double, PrmtScalarFunction, void*, double, int32_t, double*, double*);

double search(Search function, double from, double to, Counted counted, double tolerance, int32_t maxCalls) {
  double x = NAN, value = NAN;
  EXPECT_EQ(function(from, to, evaluate, &counted, tolerance, 200, &x, &value), DAX_STS_OK);
  EXPECT_EQ(value, counted.function(x));
  EXPECT_LE(counted.calls, maxCalls);
  return x;
}

TEST(Brent, FindsRoots) {
  const auto cubic = [](double x) { return (x + 3) * (x - 1) * (x - 1); };
  EXPECT_NEAR(search(PRMT_EQ_BrentRoot_f64, -4, 4.0 / 3, {cubic}, 0, 20), -3, 1e-14);
  EXPECT_NEAR(search(PRMT_EQ_BrentRoot_f64, 2, 0, {[](double x) { return x * x - 2; }}, 0, 15), std::sqrt(2), 1e-15);
  EXPECT_NEAR(search(PRMT_EQ_BrentRoot_f64, 0, 1, {[](double x) { return x < 0.3 ? -1.0 : 1.0; }}, 1e-6, 30), 0.3,
              1e-6);
  EXPECT_NEAR(search(PRMT_EQ_BrentRoot_f64, -1, 4, {[](double x) { return std::pow(x, 9); }}, 1e-9, 120), 0, 1e-9);
  EXPECT_EQ(search(PRMT_EQ_BrentRoot_f64, 2, 7, {[](double x) { return x - 7; }}, 0, 3), 7);
  EXPECT_NEAR(search(PRMT_EQ_BrentRoot_f64, -1e308, 1.7e308, {[](double x) { return x < 5 ? -1.0 : 2.0; }}, 1e290, 70),
              0, 2e290);
}

TEST(Brent, FindsMinima) {
  const auto at2 = [](double x) { return (x - 2) * (x - 2) + 1; };
  EXPECT_NEAR(search(PRMT_EQ_BrentMin_f64, -5, 9, {at2}, 1e-9, 20), 2, 1e-7);
  EXPECT_NEAR(search(PRMT_EQ_BrentMin_f64, 4, 1, {[](double x) { return std::fabs(x - 1.5); }}, 1e-9, 80), 1.5, 1e-7);
  EXPECT_NEAR(search(PRMT_EQ_BrentMin_f64, 3, 9, {at2}, 1e-6, 60), 3, 1e-5);
  EXPECT_NEAR(
      search(PRMT_EQ_BrentMin_f64, -1.7e308, 1.7e308, {[](double x) { return std::fabs(x / 4 - 1e307); }}, 0, 150),
      4e307, 1e302);
}

TEST(Brent, EndsAsItSays) {
  double x = 5, value = 6;
  const auto status = [&](Search function, std::function<double(double)> f, double tolerance, int32_t rounds,
                          int32_t failingAt) {
    Counted counted{std::move(f), 0, failingAt};
    return function(0, 1, evaluate, &counted, tolerance, rounds, &x, &value);
  };
  const auto line = [](double t) { return t - 0.3; };
  const auto never = [](double) { return 1.0; };
  for (const Search function : {PRMT_EQ_BrentRoot_f64, PRMT_EQ_BrentMin_f64}) {
    for (int32_t failing = 1; failing <= 3; ++failing) EXPECT_EQ(status(function, line, 0, 50, failing), 77u);
    EXPECT_EQ(status(
                  function, [](double) { return NAN; }, 0, 50, 0),
              DAX_STS_DATA_RANGE);
    EXPECT_EQ(status(function, line, NAN, 50, 0), DAX_STS_DATA_RANGE);
    EXPECT_EQ(status(function, line, -1, 50, 0), DAX_STS_BAD_PARAM);
  }
  EXPECT_EQ(status(PRMT_EQ_BrentMin_f64, line, 0, 5, 0), DAX_STS_FAILURE);
  EXPECT_EQ(status(
                PRMT_EQ_BrentRoot_f64, [](double t) { return t < 0.3 ? -1.0 : 1.0; }, 0, 9, 0),
            DAX_STS_FAILURE);
  EXPECT_EQ(status(PRMT_EQ_BrentRoot_f64, never, 0, 50, 0), DAX_STS_DEGENERATE);
  EXPECT_EQ(x, 5);
  EXPECT_EQ(value, 6);
}

}  // namespace
}  // namespace dax::test

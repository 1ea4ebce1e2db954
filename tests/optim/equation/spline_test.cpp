// Splines by the conditions that define them, Akima's curves by their formula.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <vector>

#include "prmt.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using Values = std::vector<double>;

// A copy that faults when it is overrun.
GuardedBuffer<double> guarded(const Values& values) {
  GuardedBuffer<double> copy(values.size());
  std::copy(values.begin(), values.end(), copy.begin());
  return copy;
}

GuardedBuffer<double> workOf(uint64_t bytes) {
  return GuardedBuffer<double>(bytes / sizeof(double));
}

struct Curve {
  Values x, y, slopes;

  double operator()(double at, int32_t derivative = 0) const {
    double value = NAN;
    EXPECT_EQ(PRMT_EQ_Interpolate1_f64(guarded(x).data(), guarded(y).data(), guarded(slopes).data(),
                                       static_cast<int32_t>(x.size()), &at, 1, derivative, &value),
              DAX_STS_OK);
    return value;
  }
};

Curve splineOf(const Values& x, const Values& y, const PrmtSplineEnds& ends, DaxStatus expected = DAX_STS_OK) {
  const auto n = static_cast<int32_t>(x.size());
  uint64_t bytes = 0;
  EXPECT_EQ(PRMT_EQ_Spline1_BufferSize_f64(n, &bytes), DAX_STS_OK);
  auto slopes = guarded(x), work = workOf(bytes);
  EXPECT_EQ(PRMT_EQ_Spline1_f64(guarded(x).data(), guarded(y).data(), n, &ends, slopes.data(), work.data()), expected);
  return {x, y, Values(slopes.begin(), slopes.end())};
}

Curve akimaOf(const Values& x, const Values& y) {
  const auto n = static_cast<int32_t>(x.size());
  uint64_t bytes = 0;
  EXPECT_EQ(PRMT_EQ_Akima1_BufferSize_f64(n, &bytes), DAX_STS_OK);
  auto slopes = guarded(x), work = workOf(bytes);
  EXPECT_EQ(PRMT_EQ_Akima1_f64(guarded(x).data(), guarded(y).data(), n, slopes.data(), work.data()), DAX_STS_OK);
  return {x, y, Values(slopes.begin(), slopes.end())};
}

Values knotsOf(size_t n, uint64_t seed) {
  Random random(seed);
  Values x = {-3};
  while (x.size() < n) x.push_back(x.back() + 0.1 + random.below(1000) / 500.0);
  return x;
}

Values valuesAt(const Values& x, const std::function<double(double)>& f) {
  Values y;
  for (const double each : x) y.push_back(f(each));
  return y;
}

// A derivative just before and just behind a knot.
double jumpAt(const Curve& curve, size_t knot, int32_t derivative) {
  const double step = 1e-9;
  return curve(curve.x[knot] + step, derivative) - curve(curve.x[knot] - step, derivative);
}

TEST(Splines, KeepTheirConditions) {
  for (const size_t n : {2, 3, 4, 5, 12}) {
    const Values x = knotsOf(n, n);
    Random random(n);
    Values y;
    for (size_t i = 0; i < n; ++i) y.push_back(random.below(100) / 10.0);
    for (int32_t condition = 0; condition <= 3; ++condition) {
      if (condition == PRMT_SPLINE_PERIODIC) y.back() = y.front();
      const Curve curve = splineOf(x, y, {condition, 2, -1});
      for (size_t i = 0; i < n; ++i) EXPECT_EQ(curve(x[i]), y[i]) << n << ", " << condition;
      for (size_t i = 1; i + 1 < n; ++i) EXPECT_NEAR(jumpAt(curve, i, 2), 0, 1e-5);
      const double first = x.front(), last = x.back();
      if (condition == PRMT_SPLINE_NATURAL) {
        EXPECT_NEAR(curve(first, 2), 0, 1e-10);
        EXPECT_NEAR(curve(last, 2), 0, 1e-10);
      } else if (condition == PRMT_SPLINE_CLAMPED) {
        EXPECT_NEAR(curve(first, 1), 2, 1e-12);
        EXPECT_NEAR(curve(last, 1), -1, 1e-12);
      } else if (condition == PRMT_SPLINE_PERIODIC) {
        EXPECT_NEAR(curve(first, 1), curve(last, 1), 1e-10);
        EXPECT_NEAR(curve(first, 2), curve(last, 2), 1e-9);
      } else if (n > 3) {
        EXPECT_NEAR(jumpAt(curve, 1, 3), 0, 1e-8);
        EXPECT_NEAR(jumpAt(curve, n - 2, 3), 0, 1e-8);
      }
    }
  }
}

// Not-a-knot keeps cubics, outside as well; of fewer knots what these tell.
TEST(Splines, KeepPolynomials) {
  const auto cubic = [](double x) { return 2 - x + 0.5 * x * x - 0.25 * x * x * x; };
  const Values x = knotsOf(9, 4);
  const Curve curve = splineOf(x, valuesAt(x, cubic), {});
  for (double at = x.front() - 2; at < x.back() + 2; at += 0.1) {
    EXPECT_NEAR(curve(at), cubic(at), 1e-10);
    EXPECT_NEAR(curve(at, 1), -1 + at - 0.75 * at * at, 1e-10);
    EXPECT_NEAR(curve(at, 2), 1 - 1.5 * at, 1e-10);
    EXPECT_NEAR(curve(at, 3), -1.5, 1e-9);
  }
  EXPECT_NEAR(splineOf({0, 1, 4}, {0, 1, 16}, {})(3), 9, 1e-14);
  EXPECT_NEAR(splineOf({0, 1}, {3, 5}, {})(3), 9, 1e-14);
}

TEST(Splines, RefuseWhatTheyMust) {
  splineOf({0, 1, 1}, {0, 1, 2}, {}, DAX_STS_BAD_PARAM);
  splineOf({0, 1, 2}, {0, 1, 2}, {PRMT_SPLINE_PERIODIC, 0, 0}, DAX_STS_BAD_PARAM);
  splineOf({0, 1, NAN}, {0, 1, 2}, {}, DAX_STS_DATA_RANGE);
  splineOf({0, 1, 2}, {0, INFINITY, 2}, {}, DAX_STS_DATA_RANGE);
  splineOf({0, 1e-300, 2e-300}, {0, 1e300, 0}, {}, DAX_STS_DATA_RANGE);  // slopes of 1e600
  splineOf({0, 1, 2}, {0, 1, 2}, {PRMT_SPLINE_NATURAL, NAN, 0});         // which is not used
  // Any scale, as long as slopes have one.
  const Curve curve = splineOf({-1e308, 0, 1e308}, {-1e308, 0, 1e308}, {});
  for (const double slope : curve.slopes) EXPECT_NEAR(slope, 1, 1e-15);
}

TEST(Akima, FollowsItsFormula) {
  const Values x = knotsOf(11, 9);
  Random random(2);
  Values y;
  for (size_t i = 0; i < x.size(); ++i) y.push_back(random.below(1000) / 100.0);
  const Curve curve = akimaOf(x, y);
  Values m = {0, 0};
  for (size_t i = 0; i + 1 < x.size(); ++i) m.push_back((y[i + 1] - y[i]) / (x[i + 1] - x[i]));
  m[1] = 2 * m[2] - m[3], m[0] = 2 * m[1] - m[2];
  for (int i = 0; i < 2; ++i) m.push_back(2 * m[m.size() - 1] - m[m.size() - 2]);
  for (size_t i = 0; i < x.size(); ++i) {
    const double before = std::fabs(m[i + 3] - m[i + 2]), behind = std::fabs(m[i + 1] - m[i]);
    EXPECT_NEAR(curve.slopes[i], (before * m[i + 1] + behind * m[i + 2]) / (before + behind), 1e-12);
    EXPECT_EQ(curve(x[i]), y[i]);
  }
  // 0 / 0 is the mean, rounding included; a step stays where it is.
  const Curve corner = akimaOf({0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6}, {0.9, 0.6, 0.3, 0, 0.1, 0.2, 0.3});
  EXPECT_NEAR(corner.slopes[3], -1, 1e-12);
  const Curve step = akimaOf({0, 1, 2, 3, 4, 5, 6, 7}, {0, 0, 0, 0, 1, 1, 1, 1});
  EXPECT_EQ(step(1.5), 0);
  EXPECT_EQ(step(5.5), 1);
  EXPECT_EQ(akimaOf({0, 2}, {1, 5}).slopes, (Values{2, 2}));
}

// --- Two variables ---

struct Surface {
  Values x, y, z, derivatives;
  int32_t step;

  double operator()(double atX, double atY, int32_t xOrder = 0, int32_t yOrder = 0) const {
    double value = NAN;
    EXPECT_EQ(PRMT_EQ_Interpolate2_f64(guarded(x).data(), static_cast<int32_t>(x.size()), guarded(y).data(),
                                       static_cast<int32_t>(y.size()), guarded(z).data(), step,
                                       guarded(derivatives).data(), &atX, &atY, 1, xOrder, yOrder, &value),
              DAX_STS_OK);
    return value;
  }
};

Surface surfaceOf(const Values& x, const Values& y, const std::function<double(double, double)>& f, bool isAkima,
                  const PrmtSplineEnds* xEnds = nullptr, const PrmtSplineEnds* yEnds = nullptr) {
  const auto nx = static_cast<int32_t>(x.size()), ny = static_cast<int32_t>(y.size());
  const int32_t step = nx + 2;
  Values z(size_t(step) * size_t(ny - 1) + size_t(nx), 77);
  for (size_t j = 0; j < y.size(); ++j) {
    for (size_t i = 0; i < x.size(); ++i) z[j * size_t(step) + i] = f(x[i], y[j]);
  }
  uint64_t bytes = 0;
  EXPECT_EQ((isAkima ? PRMT_EQ_Akima2_BufferSize_f64 : PRMT_EQ_Spline2_BufferSize_f64)(nx, ny, &bytes), DAX_STS_OK);
  GuardedBuffer<double> derivatives(3 * x.size() * y.size());
  auto work = workOf(bytes);
  const auto ofX = guarded(x), ofY = guarded(y), ofZ = guarded(z);
  EXPECT_EQ(isAkima
                ? PRMT_EQ_Akima2_f64(ofX.data(), nx, ofY.data(), ny, ofZ.data(), step, derivatives.data(), work.data())
                : PRMT_EQ_Spline2_f64(ofX.data(), nx, ofY.data(), ny, ofZ.data(), step, xEnds, yEnds,
                                      derivatives.data(), work.data()),
            DAX_STS_OK);
  return {x, y, z, Values(derivatives.begin(), derivatives.end()), step};
}

TEST(Surfaces, KeepPolynomialsAndCurves) {
  const Values x = knotsOf(6, 1), y = knotsOf(5, 2);
  const auto bicubic = [](double u, double v) { return (1 + u - 0.2 * u * u * u) * (2 - v + 0.1 * v * v * v); };
  const Surface spline = surfaceOf(x, y, bicubic, false);
  for (double u = x.front(); u < x.back(); u += 0.5) {
    for (double v = y.front(); v < y.back(); v += 0.5) {
      EXPECT_NEAR(spline(u, v), bicubic(u, v), 1e-10);
      EXPECT_NEAR(spline(u, v, 1, 1), (1 - 0.6 * u * u) * (-1 + 0.3 * v * v), 1e-9);
      EXPECT_NEAR(spline(u, v, 2, 0), -1.2 * u * (2 - v + 0.1 * v * v * v), 1e-9);
    }
  }
  // A product of curves is a surface of both kinds, and so are planes.
  const auto wave = [](double t) { return std::sin(3 * t); };
  const auto waves = [&](double u, double v) { return wave(u) * (1 + wave(v)); };
  const auto plane = [](double u, double v) { return 3 - 2 * u + 5 * v; };
  for (const bool isAkima : {false, true}) {
    const Surface surface = surfaceOf(x, y, waves, isAkima), flat = surfaceOf(x, y, plane, isAkima);
    const auto curveOf = [&](const Values& at, const std::function<double(double)>& f) {
      return isAkima ? akimaOf(at, valuesAt(at, f)) : splineOf(at, valuesAt(at, f), {});
    };
    const Curve along = curveOf(x, wave), across = curveOf(y, [&](double v) { return 1 + wave(v); });
    for (double t = 0.05; t < 1; t += 0.1) {
      const double u = x.front() + t * (x.back() - x.front()), v = y.back() - t * (y.back() - y.front());
      EXPECT_NEAR(surface(u, v), along(u) * across(v), 1e-12) << isAkima;
      EXPECT_NEAR(flat(u, v), plane(u, v), 1e-11);
    }
    for (const double v : y) EXPECT_EQ(surface(x[2], v), waves(x[2], v));
  }
}

TEST(Surfaces, HaveEnds) {
  const Values x = {0, 1, 2, 4}, y = {0, 1, 3};
  const PrmtSplineEnds clamped{PRMT_SPLINE_CLAMPED, 2, -1}, natural{PRMT_SPLINE_NATURAL, 0, 0};
  const Surface surface = surfaceOf(
      x, y, [](double u, double v) { return u * u + v * u; }, false, &clamped, &natural);
  for (const double v : {0.0, 0.7, 3.0}) {
    EXPECT_NEAR(surface(0, v, 1, 0), 2, 1e-12);
    EXPECT_NEAR(surface(4, v, 1, 0), -1, 1e-12);
  }
  EXPECT_NEAR(surface(1.5, 0, 0, 2), 0, 1e-12);
  const Surface turned = surfaceOf(
      y, x, [](double u, double v) { return v * v + v * u; }, false, &natural, &clamped);
  EXPECT_NEAR(turned(0.7, 1.3), surface(1.3, 0.7), 1e-13);
}

}  // namespace
}  // namespace dax::test

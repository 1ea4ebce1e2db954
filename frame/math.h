// Elementary functions whose results must not depend on the C library's version or machine.
#pragma once

#include <cmath>
#include <cstdint>
#include <numbers>

namespace dax {

// Arc tangent of t in 0..1 to about 1e-16: the nearest multiple of 1/8 from a table, the rest, at most 1/16, by the
// series r - r^3/3 + r^5/5 - ...
inline double atanUnit(double t) {
  constexpr double kEighths[9] = {0.0,
                                  0.12435499454676144,
                                  0.24497866312686414,
                                  0.35877067027057225,
                                  0.46364760900080609,
                                  0.55859931534356244,
                                  0.64350110879328437,
                                  0.71882999962162453,
                                  0.78539816339744828};
  const int k = static_cast<int>(t * 8 + 0.5);
  const double c = k * 0.125;
  const double r = (t - c) / (1 + c * t);
  const double s = r * r;
  const double series =
      1 + s * (-1.0 / 3 + s * (1.0 / 5 + s * (-1.0 / 7 + s * (1.0 / 9 + s * (-1.0 / 11 + s * (1.0 / 13))))));
  return kEighths[k] + r * series;
}

// Angle of (x, y) in (-pi, pi], 0 for (0, 0). Finite arguments only; a zero counts as positive.
inline double atan2Exact(double y, double x) {
  const double ax = std::fabs(x), ay = std::fabs(y);
  const double longer = ax > ay ? ax : ay;
  if (longer == 0) return 0;
  double angle = atanUnit((ax > ay ? ay : ax) / longer);
  if (ay > ax) angle = std::numbers::pi / 2 - angle;
  if (x < 0) angle = std::numbers::pi - angle;
  return y < 0 ? -angle : angle;
}

struct SinCos {
  double sine;
  double cosine;
};

// Sine and cosine to about 1e-15, for |angle| up to some thousands: what is left of the nearest multiple of pi/2 by the
// power series.
constexpr SinCos sinCosExact(double angle) {
  constexpr double kHalfPi = std::numbers::pi / 2, kHalfPiRest = 6.123233995736766e-17;
  const double turns = angle / kHalfPi;
  const auto quarter = static_cast<int64_t>(turns + (turns < 0 ? -0.5 : 0.5));
  const double r = (angle - static_cast<double>(quarter) * kHalfPi) - static_cast<double>(quarter) * kHalfPiRest;
  const double r2 = r * r;
  double sine = 1, cosine = 1;
  for (int k = 18; k >= 2; k -= 2) {
    sine = 1 - sine * r2 / (k * (k + 1));
    cosine = 1 - cosine * r2 / (k * (k - 1));
  }
  sine *= r;
  switch (quarter & 3) {
    case 0:
      return {sine, cosine};
    case 1:
      return {cosine, -sine};
    case 2:
      return {-sine, -cosine};
    default:
      return {-cosine, sine};
  }
}

// e^x for x in -40..0 to about 1e-15: the power series of x / 64, squared six times.
constexpr double expExact(double x) {
  const double part = x / 64;
  double e = 1;
  for (int k = 16; k >= 1; --k) e = 1 + e * part / k;
  for (int k = 0; k < 6; ++k) e *= e;
  return e;
}

}  // namespace dax

// Elementary functions whose results must not depend on the C library's version or machine.
#pragma once

#include <cmath>
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

struct SineCosine {
  double sine;
  double cosine;
};

// Sine and cosine for |angle| up to 1e6, each within 2e-16; beyond that the angle's own last digits tell. Reduced by the nearest
// multiple of pi/2 in three parts, whose first two have 33 bits, so that their products are exact; then Taylor series.
// Infinities and NaN give NaN.
inline SineCosine sineCosine(double angle) {
  if (!(std::fabs(angle) <= 1e6)) angle = std::fmod(angle, 2 * std::numbers::pi);
  const double quarters = std::floor(angle * (2 / std::numbers::pi) + 0.5);
  const double r =
      ((angle - quarters * 1.5707963267341256) - quarters * 6.077100506303966e-11) - quarters * 2.0222662487959506e-21;
  const double q = r * r;
  const double sine =
      r + r * q *
              (-1.0 / 6 +
               q * (1.0 / 120 +
                    q * (-1.0 / 5040 + q * (1.0 / 362880 + q * (-1.0 / 39916800 + q * (1.0 / 6227020800 +
                                                                                       q * (-1.0 / 1307674368000)))))));
  const double cosine =
      1 + q * (-0.5 + q * (1.0 / 24 +
                           q * (-1.0 / 720 +
                                q * (1.0 / 40320 + q * (-1.0 / 3628800 +
                                                        q * (1.0 / 479001600 + q * (-1.0 / 87178291200 +
                                                                                    q * (1.0 / 20922789888000))))))));
  if (!(std::fabs(quarters) <= 1e6)) return {r - r, r - r};
  const auto turn = static_cast<int>(quarters) & 3;
  const double s = turn & 1 ? cosine : sine, c = turn & 1 ? sine : cosine;
  return {turn & 2 ? -s : s, turn == 1 || turn == 2 ? -c : c};
}

}  // namespace dax

// Rotations and points for the tests of geometry in space, and their arithmetic, written out in extended precision.
#pragma once

#include <array>
#include <cmath>
#include <vector>

#include "tests/support/test_image.h"

namespace dax::test {

using Real3 = std::array<double, 3>;
using Turn = std::array<double, 9>;

// Whole numbers, so that every machine draws the same.
inline double uniform(Random& random, double low, double high) {
  return low + (high - low) * random.below(1 << 24) / (1 << 24);
}

inline Real3 operator-(const Real3& a, const Real3& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
inline double inner(const Real3& a, const Real3& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
inline double norm(const Real3& a) {
  return std::sqrt(inner(a, a));
}

// Rodrigues' formula.
inline Turn turnOf(const Real3& axis, long double angle) {
  const long double size = std::sqrt((long double)inner(axis, axis)), c = std::cos(angle), s = std::sin(angle);
  const long double u[3] = {axis[0] / size, axis[1] / size, axis[2] / size};
  const long double skew[9] = {0, -u[2], u[1], u[2], 0, -u[0], -u[1], u[0], 0};
  Turn turn;
  for (size_t i = 0; i < 9; ++i) {
    turn[i] = static_cast<double>((i % 4 == 0 ? c : 0) + s * skew[i] + (1 - c) * u[i / 3] * u[i % 3]);
  }
  return turn;
}

inline Turn operator*(const Turn& a, const Turn& b) {
  Turn ab{};
  for (size_t i = 0; i < 9; ++i) {
    long double sum = 0;
    for (size_t k = 0; k < 3; ++k) sum += (long double)a[i / 3 * 3 + k] * b[3 * k + i % 3];
    ab[i] = static_cast<double>(sum);
  }
  return ab;
}

inline Real3 operator*(const Turn& a, const Real3& p) {
  return {inner({a[0], a[1], a[2]}, p), inner({a[3], a[4], a[5]}, p), inner({a[6], a[7], a[8]}, p)};
}

inline double difference(const double* a, const double* b, size_t count) {
  double largest = 0;
  for (size_t i = 0; i < count; ++i) largest = std::max(largest, std::fabs(a[i] - b[i]));
  return largest;
}

inline Real3 anyVector(Random& random) {
  return {uniform(random, -1, 1), uniform(random, -1, 1), uniform(random, -1, 1)};
}
inline Turn anyTurn(Random& random) {
  const Real3 axis = anyVector(random);
  return turnOf(axis, uniform(random, -3.1, 3.1));
}

using PoseMatrix = std::array<double, 16>;

inline PoseMatrix poseOf(const Turn& r, const Real3& t) {
  return {r[0], r[1], r[2], t[0], r[3], r[4], r[5], t[1], r[6], r[7], r[8], t[2], 0, 0, 0, 1};
}
inline PoseMatrix anyPose(Random& random) {
  const Turn turn = anyTurn(random);
  return poseOf(turn, anyVector(random));
}

// The point p of the unit cube -1..1 in the frame of a pose.
inline Real3 moved(const PoseMatrix& pose, const Real3& p) {
  const Real3 turned = Turn{pose[0], pose[1], pose[2], pose[4], pose[5], pose[6], pose[8], pose[9], pose[10]} * p;
  return {turned[0] + pose[3], turned[1] + pose[7], turned[2] + pose[11]};
}

inline void append(std::vector<double>& points, const Real3& p) {
  points.insert(points.end(), p.begin(), p.end());
}

}  // namespace dax::test

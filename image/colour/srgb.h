// The curve of sRGB, the curve of Lab, and the matrix between sRGB's linear light and XYZ, in forms that compilers turn
// into vectors.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>

#include "frame/math.h"

namespace dax {

// Of the primaries (0.64, 0.33), (0.30, 0.60), (0.15, 0.06) and the white (0.3127, 0.3290).
inline constexpr double kXyzOfRgb[3][3] = {{0.4123907992659595, 0.357584339383878, 0.1804807884018343},
                                           {0.2126390058715104, 0.715168678767756, 0.0721923153607337},
                                           {0.0193308187155918, 0.119194779794626, 0.9505321522496607}};

struct Matrix3 {
  double m[3][3];
};

// By cofactors.
constexpr Matrix3 inverseOf(const double (&a)[3][3]) {
  Matrix3 inverse{};
  double determinant = 0;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      const int r = (j + 1) % 3, s = (j + 2) % 3, c = (i + 1) % 3, d = (i + 2) % 3;
      inverse.m[i][j] = a[r][c] * a[s][d] - a[r][d] * a[s][c];
    }
    determinant += a[0][i] * inverse.m[i][0];
  }
  for (auto& row : inverse.m) {
    for (double& each : row) each /= determinant;
  }
  return inverse;
}

inline constexpr Matrix3 kRgbOfXyz = inverseOf(kXyzOfRgb);

constexpr double whitePoint(int k) {
  return kXyzOfRgb[k][0] + kXyzOfRgb[k][1] + kXyzOfRgb[k][2];
}

// Where the bend of a curve is not passed, the root of the bend is computed, and not used: roots of 0 and of negative
// numbers go through subnormal ones, which take some processors a hundred cycles each. As integers, so that compilers
// do not choose between two roots instead.
inline float raisedTo(float positive, float x) {
  return std::bit_cast<float>(std::max(std::bit_cast<int32_t>(x), std::bit_cast<int32_t>(positive)));
}

constexpr float kSrgbBend = 0.04045f;

// c^2.4 as c^2 times its fifth root.
inline float linearOfSrgb(float c) {
  const float x = (raisedTo(kSrgbBend, c) + 0.055f) * (1 / 1.055f), square = x * x;
  return c > kSrgbBend ? square * fifthRoot(square) : c * (1 / 12.92f);
}

// x^(5/12) as the cube root of x^(5/4).
inline float srgbOfLinear(float x) {
  constexpr float kBend = kSrgbBend / 12.92f;
  const float raised = raisedTo(kBend, x), power = cubeRoot(raised * std::sqrt(std::sqrt(raised)));
  return x > kBend ? 1.055f * power - 0.055f : x * 12.92f;
}

constexpr float kLabBend = 216.0f / 24389, kLabSlope = 841.0f / 108, kLabOffset = 4.0f / 29;

inline float labOfPart(float t) {
  return t > kLabBend ? cubeRoot(raisedTo(kLabBend, t)) : t * kLabSlope + kLabOffset;
}

inline float partOfLab(float f) {
  return f <= 6.0f / 29 ? (f - kLabOffset) * (1 / kLabSlope) : f * f * f;
}

// Linear light of bytes, made by the compiler: the fifth root by Newton's method.
inline constexpr std::array<float, 256> kLinearOfBytes = [] {
  std::array<float, 256> table{};
  for (size_t i = 0; i < 256; ++i) {
    const double c = static_cast<double>(i) / 255, x = (c + 0.055) / 1.055, square = x * x;
    double root = 1;
    for (int n = 0; n < 60; ++n) root = (4 * root + square / (root * root * root * root)) / 5;
    table[i] = static_cast<float>(c <= 0.04045 ? c / 12.92 : square * root);
  }
  return table;
}();

}  // namespace dax

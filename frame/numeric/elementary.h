// Elementary functions for every argument, with the same bits on every machine: additions, multiplications, divisions and
// integers only, nothing of the C library's that rounds in its own way.
//
// Infinities, signed zeros and poles are as C's Annex F has them; every NaN that is returned is the positive quiet one.
// Errors are stated in units of the result's last place; 0.5 would be the correctly rounded result. Thread-safe. Angles
// are in radians.
#pragma once

#include "frame/math.h"

namespace dax::elementary {

double exp(double x);              // within 0.51; 0.76 where the result is subnormal
double log(double x);              // within 0.501; NaN below 0
double pow(double x, double y);    // within 0.56; 0.8 where the result is subnormal
double cbrt(double x);             // within 0.501
double sin(double x);              // within 0.85, however large the angle
double cos(double x);              // within 0.85
SinCos sinCos(double x);           // both at once
double atan2(double y, double x);  // within 0.502; in [-pi, pi], with the sign of y

// Single precision: the above, rounded, within 0.50001.
inline float exp(float x) {
  return static_cast<float>(exp(double{x}));
}
inline float log(float x) {
  return static_cast<float>(log(double{x}));
}
inline float pow(float x, float y) {
  return static_cast<float>(pow(double{x}, double{y}));
}
inline float cbrt(float x) {
  return static_cast<float>(cbrt(double{x}));
}
inline float sin(float x) {
  return static_cast<float>(sin(double{x}));
}
inline float cos(float x) {
  return static_cast<float>(cos(double{x}));
}
inline float atan2(float y, float x) {
  return static_cast<float>(atan2(double{y}, double{x}));
}

}  // namespace dax::elementary

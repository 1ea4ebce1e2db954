// Numbers that carry their derivatives by kSize parameters.
#pragma once

#include <cmath>

namespace dax::test {

template <int kSize>
struct Dual {
  double value;
  double by[kSize];

  Dual(double constant = 0) : value(constant), by{} {}
  static Dual parameter(double value, int index) {
    Dual dual(value);
    dual.by[index] = 1;
    return dual;
  }
  // f(value) with f' = slope.
  Dual chain(double result, double slope) const {
    Dual dual(result);
    for (int i = 0; i < kSize; ++i) dual.by[i] = slope * by[i];
    return dual;
  }

  friend Dual operator+(const Dual& a, const Dual& b) {
    Dual sum(a.value + b.value);
    for (int i = 0; i < kSize; ++i) sum.by[i] = a.by[i] + b.by[i];
    return sum;
  }
  friend Dual operator-(const Dual& a, const Dual& b) {
    Dual difference(a.value - b.value);
    for (int i = 0; i < kSize; ++i) difference.by[i] = a.by[i] - b.by[i];
    return difference;
  }
  friend Dual operator*(const Dual& a, const Dual& b) {
    Dual product(a.value * b.value);
    for (int i = 0; i < kSize; ++i) product.by[i] = a.by[i] * b.value + a.value * b.by[i];
    return product;
  }
  friend Dual operator/(const Dual& a, const Dual& b) {
    Dual quotient(a.value / b.value);
    for (int i = 0; i < kSize; ++i) quotient.by[i] = (a.by[i] - quotient.value * b.by[i]) / b.value;
    return quotient;
  }
  friend Dual operator-(const Dual& a) { return a.chain(-a.value, -1); }
  friend Dual exp(const Dual& a) {
    const double e = std::exp(a.value);
    return a.chain(e, e);
  }
  friend Dual log(const Dual& a) { return a.chain(std::log(a.value), 1 / a.value); }
  friend Dual sin(const Dual& a) { return a.chain(std::sin(a.value), std::cos(a.value)); }
  friend Dual cos(const Dual& a) { return a.chain(std::cos(a.value), -std::sin(a.value)); }
  friend Dual atan(const Dual& a) { return a.chain(std::atan(a.value), 1 / (1 + a.value * a.value)); }
  friend Dual pow(const Dual& a, const Dual& b) { return exp(b * log(a)); }
};

}  // namespace dax::test

// Numbers as unevaluated sums of two doubles, about 106 bits, without fused multiply-add. Magnitudes are to stay between
// 2^-400 and 2^400: nothing here looks after overflow or underflow.
//
// Dekker, A floating-point technique for extending the available precision, Numerische Mathematik 18, 1971; Knuth, The Art
// of Computer Programming 2, section 4.2.2.
#pragma once

namespace dax {

// |low| is at most half a unit of the last place of `high`.
struct DoubleDouble {
  double high;
  double low;
};

// a + b exactly.
constexpr DoubleDouble twoSum(double a, double b) {
  const double sum = a + b;
  const double ofB = sum - a;
  return {sum, (a - (sum - ofB)) + (b - ofB)};
}

// The same where a is 0 or |a| >= |b|.
constexpr DoubleDouble fastTwoSum(double a, double b) {
  const double sum = a + b;
  return {sum, b - (sum - a)};
}

// A number as a sum of two with 26 bits each.
constexpr DoubleDouble halves(double a) {
  const double spread = a * 134217729;  // 2^27 + 1
  const double high = spread - (spread - a);
  return {high, a - high};
}

// a b exactly.
constexpr DoubleDouble twoProduct(double a, double b) {
  const double product = a * b;
  const DoubleDouble x = halves(a), y = halves(b);
  return {product, ((x.high * y.high - product) + x.high * y.low + x.low * y.high) + x.low * y.low};
}

constexpr DoubleDouble operator-(DoubleDouble a) {
  return {-a.high, -a.low};
}

constexpr DoubleDouble operator+(DoubleDouble a, DoubleDouble b) {
  const DoubleDouble sum = twoSum(a.high, b.high);
  return fastTwoSum(sum.high, sum.low + (a.low + b.low));
}

constexpr DoubleDouble operator-(DoubleDouble a, DoubleDouble b) {
  return a + -b;
}

constexpr DoubleDouble operator*(DoubleDouble a, DoubleDouble b) {
  const DoubleDouble product = twoProduct(a.high, b.high);
  return fastTwoSum(product.high, product.low + (a.high * b.low + a.low * b.high));
}

constexpr DoubleDouble operator/(DoubleDouble a, DoubleDouble b) {
  const double quotient = a.high / b.high;
  const DoubleDouble rest = a - b * DoubleDouble{quotient, 0};
  return fastTwoSum(quotient, rest.high / b.high);
}

}  // namespace dax

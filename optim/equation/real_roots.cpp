#include "optim/equation/real_roots.h"

#include <algorithm>

#include "frame/numeric/double_double.h"

namespace dax {
namespace {

// A share of sum |a_i x^i| that is taken for 0 at stationary points.
constexpr double kNothing = 16 * 0x1p-52;

// b_i = a_i (+-2^exponent)^i over the largest power of two among them: p at +-t 2^exponent for 1 <= t <= 2 without overflow.
struct LocalPolynomial {
  LocalPolynomial(const WidePolynomial& p, int32_t exponent, bool isMirrored) : degree(p.degree) {
    int32_t largest = INT32_MIN;
    for (int32_t i = 0; i <= degree; ++i) {
      if (p.a[i].mantissa != 0) largest = std::max(largest, p.a[i].exponent + i * exponent);
    }
    for (int32_t i = 0; i <= degree; ++i) {
      const double scale = p.a[i].mantissa == 0 ? 0 : powerOrZero(p.a[i].exponent + i * exponent - largest);
      b[i] = (isMirrored && i % 2 == 1 ? -scale : scale) * p.a[i].mantissa;
    }
  }
  // With the rounding errors of each step summed up beside it.
  double operator()(double t) const {
    double sum = b[degree], rest = 0;
    for (int32_t i = degree - 1; i >= 0; --i) {
      const DoubleDouble product = twoProduct(sum, t), next = twoSum(product.high, b[i]);
      sum = next.high;
      rest = rest * t + (product.low + next.low);
    }
    return sum + rest;
  }
  double plain(double t) const {
    double sum = b[degree];
    for (int32_t i = degree - 1; i >= 0; --i) sum = sum * t + b[i];
    return sum;
  }
  double slope(double t) const {
    double sum = degree * b[degree];
    for (int32_t i = degree - 1; i >= 1; --i) sum = sum * t + i * b[i];
    return sum;
  }
  // The sign of p(1), which few polynomials need more than a plain sum for.
  int32_t signAtOne() const {
    const double sum = plain(1), value = std::fabs(sum) > kNothing * magnitude(1) ? sum : (*this)(1);
    return (value > 0) - (value < 0);
  }
  double magnitude(double t) const {
    double sum = 0;
    for (int32_t i = degree; i >= 0; --i) sum = sum * t + std::fabs(b[i]);
    return sum;
  }
  int32_t degree;
  double b[kMaxRealDegree + 1] = {};
};

LocalPolynomial around(const WidePolynomial& p, Wide x) {
  return {p, x.exponent, x.mantissa < 0};
}

// The sign of p at a stationary point; 0 where that is a root.
int32_t signAt(const WidePolynomial& p, Wide x) {
  if (x.mantissa == 0) return signOf(p.a[0]);
  const LocalPolynomial local = around(p, x);
  const double t = std::fabs(x.mantissa), value = local(t);
  return std::fabs(value) <= kNothing * local.magnitude(t) ? 0 : value > 0 ? 1 : -1;
}

int32_t ceilRatio(int32_t a, int32_t b) {
  return a > 0 ? (a + b - 1) / b : -(-a / b);
}

// Exponents between which all roots but 0 lie, complex ones too: 2^low <= |x| < 2^high (Fujiwara 1916, from both ends).
struct Range {
  explicit Range(const WidePolynomial& p) {
    int32_t first = 0;
    while (p.a[first].mantissa == 0) ++first;
    int32_t up = -100000, down = -100000;
    for (int32_t i = first; i <= p.degree; ++i) {
      if (p.a[i].mantissa == 0) continue;
      if (i < p.degree) up = std::max(up, ceilRatio(p.a[i].exponent - p.a[p.degree].exponent + 1, p.degree - i));
      if (i > first) down = std::max(down, ceilRatio(p.a[i].exponent - p.a[first].exponent + 1, i - first));
    }
    high = up + 2, low = -down - 2;
  }
  int32_t low, high;
};

// Where Newton's method leads from t, until a step is no longer than `enough`. It may not leave what is left of the interval, in which
// the sign changes once, and must halve its steps, or else the interval is halved.
template <class Value>
double approach(const LocalPolynomial& p, const Value& valueAt, double t, double low, double high, bool isRising,
                double enough) {
  double step = high - low;
  for (int32_t round = 0; round < 200; ++round) {
    const double value = valueAt(t);
    if (value == 0) break;
    ((value > 0) == isRising ? high : low) = t;
    double next = t - value / p.slope(t);
    if (next == t) break;
    const bool isNewton = next > low && next < high && std::fabs(next - t) <= step / 2;
    if (!isNewton) next = low + (high - low) / 2;
    if (!(next > low && next < high)) break;
    step = std::fabs(next - t);
    t = next;
    if (isNewton && step <= enough) break;
  }
  return t;
}

// The root between `low` and `high`, 1..2: most of the way with plain sums. Stationary points need no more.
double findLocalRoot(const LocalPolynomial& p, double low, double high, bool isRising, bool isStationary) {
  const auto plain = [&p](double t) { return p.plain(t); };
  const double near = approach(p, plain, low + (high - low) / 2, low, high, isRising, isStationary ? 0x1p-30 : 0x1p-20);
  return isStationary ? near : approach(p, p, near, low, high, isRising, 0);
}

// The only root between two points where p has different signs; that at `high` is told.
Wide findRoot(const WidePolynomial& p, const Range& range, Wide low, Wide high, int32_t signAtHigh, bool isStationary) {
  if (low.mantissa < 0 && high.mantissa > 0) {
    const int32_t middle = signOf(p.a[0]);
    if (middle == 0) return {0, 0};
    (middle == signAtHigh ? high : low) = {0, 0};
  }
  // Towards larger magnitudes.
  const bool isMirrored = low.mantissa < 0;
  const Wide near = isMirrored ? high : low, far = isMirrored ? low : high;
  const int32_t signFar = isMirrored ? -signAtHigh : signAtHigh;
  int32_t least = near.mantissa == 0 ? std::min(range.low, far.exponent) : near.exponent, largest = far.exponent;
  while (least < largest) {
    const int32_t middle = least + (largest - least + 1) / 2;
    const int32_t sign = LocalPolynomial(p, middle, isMirrored).signAtOne();
    if (sign == 0) return {isMirrored ? -1.0 : 1.0, middle};
    if (sign == signFar) {
      largest = middle - 1;
    } else {
      least = middle;
    }
  }
  const double from = near.mantissa != 0 && near.exponent == least ? std::fabs(near.mantissa) : 1;
  const double to = far.exponent == least ? std::fabs(far.mantissa) : 2;
  const double t = findLocalRoot({p, least, isMirrored}, from, to, signFar > 0, isStationary);
  return wide(isMirrored ? -t : t, least);
}

// The sign of b^2 - 4 a c, exactly.
int32_t signOfDiscriminant(const WidePolynomial& p) {
  const Wide &a = p.a[2], &b = p.a[1], &c = p.a[0];
  if (a.mantissa * c.mantissa <= 0) return b.mantissa == 0 && c.mantissa == 0 ? 0 : 1;
  const int32_t difference = 2 * b.exponent - (a.exponent + c.exponent + 2);
  if (b.mantissa == 0 || difference < -3) return -1;
  if (difference > 3) return 1;
  const DoubleDouble square = twoProduct(b.mantissa * powerOrZero(difference), b.mantissa);
  const DoubleDouble product = twoProduct(a.mantissa, c.mantissa);
  const double sign = (square.high - product.high) + (square.low - product.low);
  return (sign > 0) - (sign < 0);
}

// The roots, of which stationary points are given, and the signs there.
WideRoots rootsBetween(const WidePolynomial& p, const WideRoots& stationary, const int32_t* signs, bool areStationary) {
  WideRoots found{};
  const Range range(p);
  const int32_t last = signOf(p.a[p.degree]);
  Wide low{-1, range.high};
  int32_t before = p.degree % 2 == 0 ? last : -last;
  for (int32_t k = 0; k <= stationary.count; ++k) {
    const bool isEnd = k == stationary.count;
    const Wide high = isEnd ? Wide{1, range.high} : stationary.at[k].x;
    const int32_t sign = isEnd ? last : signs[k];
    if (before * sign < 0) found.at[found.count++] = {findRoot(p, range, low, high, sign, areStationary), 1};
    if (sign == 0) {
      // Neighbours are one root.
      int32_t end = k, multiplicity = 1;
      while (end < stationary.count && signs[end] == 0) multiplicity += stationary.at[end++].multiplicity;
      found.at[found.count++] = {stationary.at[k + (end - k) / 2].x, multiplicity};
      k = end - 1;
    }
    low = isEnd ? high : stationary.at[k].x;
    before = sign;
  }
  return found;
}

WidePolynomial derivativeOf(const WidePolynomial& p) {
  WidePolynomial result{p.degree - 1, {}};
  for (int32_t i = 0; i < p.degree; ++i) result.a[i] = wide((i + 1) * p.a[i + 1].mantissa, p.a[i + 1].exponent);
  return result;
}

}  // namespace

WideRoots findRealRoots(const WidePolynomial& p) {
  WideRoots roots{};
  if (p.degree == 0) return roots;
  WidePolynomial derivatives[kMaxRealDegree];
  const WidePolynomial* levels[kMaxRealDegree + 1] = {};
  levels[p.degree] = &p;
  for (int32_t degree = p.degree - 1; degree >= 1; --degree) {
    derivatives[degree] = derivativeOf(*levels[degree + 1]);
    levels[degree] = &derivatives[degree];
  }
  const WidePolynomial& line = *levels[1];
  roots.count = 1;
  roots.at[0] = {wide(-line.a[0].mantissa / line.a[1].mantissa, line.a[0].exponent - line.a[1].exponent), 1};
  for (int32_t degree = 2; degree <= p.degree; ++degree) {
    const WidePolynomial& level = *levels[degree];
    int32_t signs[kMaxRealDegree];
    for (int32_t k = 0; k < roots.count; ++k) signs[k] = signAt(level, roots.at[k].x);
    if (p.degree == 2) signs[0] = -signOfDiscriminant(p) * signOf(p.a[2]);
    roots = rootsBetween(level, roots, signs, degree < p.degree);
  }
  return roots;
}

}  // namespace dax

#include "optim/equation/aberth.h"

#include <algorithm>

#include "frame/numeric/elementary.h"

namespace dax {
namespace {

constexpr int kMaxRounds = 100;
constexpr double kLn2 = 0.69314718055994530942;

struct Complex {
  double re, im;
};
Complex operator+(Complex a, Complex b) {
  return {a.re + b.re, a.im + b.im};
}
Complex operator-(Complex a, Complex b) {
  return {a.re - b.re, a.im - b.im};
}
Complex operator*(Complex a, Complex b) {
  return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}
Complex operator*(double a, Complex b) {
  return {a * b.re, a * b.im};
}
double squareSize(Complex a) {
  return a.re * a.re + a.im * a.im;
}
double sizeOf(Complex a) {
  return std::sqrt(squareSize(a));
}
// Of magnitudes near 1.
Complex inverseOf(Complex a) {
  return (1 / squareSize(a)) * Complex{a.re, -a.im};
}

double log2Of(Wide x) {
  return x.exponent + elementary::log(std::fabs(x.mantissa)) / kLn2;
}
Wide powerOfTwo(double exponent) {
  const double whole = std::floor(exponent);
  return wide(elementary::exp((exponent - whole) * kLn2), static_cast<int32_t>(whole));
}

WideComplex wideComplex(Complex z, int32_t exponent) {
  const Wide larger = wide(std::max(std::fabs(z.re), std::fabs(z.im)));
  if (larger.mantissa == 0) return {0, 0, 0};
  const PowerOfTwo scale(-larger.exponent);
  return {scale(z.re), scale(z.im), exponent + larger.exponent};
}

// Coefficients with their exponents and the logarithms of their magnitudes.
struct Aberth {
  int32_t degree;
  Wide* a;
  double* logs;
  int32_t* hull;
  int32_t* isDone;  // 0 or 1
  AberthRoots roots;
};

// p and its derivative at z, as p 2^scale and slope 2^(scale - z.exponent).
struct AberthValue {
  Complex p, slope;
  double magnitude;  // sum |a_i z^i|
  int32_t scale;
};

AberthValue valueAt(const Aberth& all, const WideComplex& z) {
  const Complex t{z.re, z.im};
  const double radius = sizeOf(t), step = z.exponent + elementary::log(radius) / kLn2;
  double largest = -1e9;
  for (int32_t i = 0; i <= all.degree; ++i) largest = std::max(largest, all.logs[i] + i * step);
  AberthValue value{{0, 0}, {0, 0}, 0, static_cast<int32_t>(std::floor(largest))};
  for (int32_t i = all.degree; i >= 0; --i) {
    const Wide& a = all.a[i];
    const double b = a.mantissa == 0 ? 0 : a.mantissa * powerOrZero(a.exponent + i * z.exponent - value.scale);
    value.slope = value.slope * t + value.p;
    value.p = value.p * t + Complex{b, 0};
    value.magnitude = value.magnitude * radius + std::fabs(b);
  }
  return value;
}

// Errors of Horner's rule with a complex argument, about: 2 (n + 1) eps of the sum of magnitudes.
double noiseOf(const Aberth& all) {
  return 2 * (all.degree + 1) * 0x1p-52;
}

// The upper convex hull of (i, log2 |a_i|): its edge from i to j tells j - i roots of about |a_i / a_j|^(1 / (j - i)).
void setStarts(const Aberth& all) {
  int32_t count = 0;
  for (int32_t i = 0; i <= all.degree; ++i) {
    if (all.a[i].mantissa == 0) continue;
    const auto isBelow = [&](int32_t p, int32_t q) {
      return (all.logs[q] - all.logs[p]) * (i - q) <= (all.logs[i] - all.logs[q]) * (q - p);
    };
    while (count >= 2 && isBelow(all.hull[count - 2], all.hull[count - 1])) --count;
    all.hull[count++] = i;
  }
  constexpr double kTurn = 6.2831853071795864769;
  for (int32_t edge = 1; edge < count; ++edge) {
    const int32_t from = all.hull[edge - 1], to = all.hull[edge];
    const Wide radius = powerOfTwo((all.logs[from] - all.logs[to]) / (to - from));
    for (int32_t k = from; k < to; ++k) {
      // Not symmetric about the axis, or pairs could never become two real roots.
      const SinCos at = elementary::sinCos(kTurn * (double(k - from) / (to - from) + double(edge) / all.degree) + 0.7);
      all.roots.at[k] = wideComplex({radius.mantissa * at.cosine, radius.mantissa * at.sine}, radius.exponent);
    }
  }
}

// The sum of 1 / (z_k - z_j) over the other roots, in units of 2^-exponent of z_k.
Complex repulsion(const Aberth& all, int32_t k) {
  const WideComplex& z = all.roots.at[k];
  Complex sum{0, 0};
  for (int32_t j = 0; j < all.degree; ++j) {
    const WideComplex& other = all.roots.at[j];
    const int32_t apart = other.exponent - z.exponent;
    if (j == k || apart > 500) continue;
    const double scale = powerOrZero(apart);
    const Complex difference = Complex{z.re, z.im} - scale * Complex{other.re, other.im};
    if (squareSize(difference) > 0x1p-900) sum = sum + inverseOf(difference);
  }
  return sum;
}

// One correction; true where p is no more than noise.
bool correct(const Aberth& all, int32_t k) {
  WideComplex& z = all.roots.at[k];
  const AberthValue value = valueAt(all, z);
  // N / (1 - N S) with N = p / p', as p / (p' - p S).
  const Complex divisor = value.slope - value.p * repulsion(all, k);
  if (squareSize(divisor) > 0) {
    const Complex step = value.p * inverseOf(divisor);
    const Complex next{z.re - step.re, z.im - step.im};
    if (squareSize(next) > 0 && squareSize(next) < 0x1p200) z = wideComplex(next, z.exponent);
  }
  return sizeOf(value.p) <= noiseOf(all) * value.magnitude;
}

// Within it there is a root: n |p / p'|, or the n-th root of |p / a_n|.
Wide radiusAt(const Aberth& all, const WideComplex& z) {
  const AberthValue value = valueAt(all, z);
  const double size = sizeOf(value.p) + noiseOf(all) * value.magnitude, slope = sizeOf(value.slope);
  const Wide inPower = wide(size, value.scale);
  const double logarithm = (log2Of(inPower) - all.logs[all.degree]) / all.degree;
  const Wide bySlope = slope > 0 ? wide(all.degree * size / slope, z.exponent) : Wide{1, INT32_MAX / 2};
  return bySlope.exponent < std::floor(logarithm) ? bySlope : powerOfTwo(logarithm);
}

// Whether p is nothing at a point of the axis.
bool isRealRoot(const Aberth& all, const WideComplex& z) {
  if (z.re == 0) return false;
  const AberthValue value = valueAt(all, wideComplex({z.re, 0}, z.exponent));
  return std::fabs(value.p.re) <= std::max(16 * 0x1p-52, noiseOf(all)) * value.magnitude;
}

// Real roots onto the axis, the others in exact pairs; what is left over is real.
void setPairs(const Aberth& all) {
  const AberthRoots& roots = all.roots;
  for (int32_t k = 0; k < all.degree; ++k) {
    WideComplex& z = roots.at[k];
    const Wide height = wide(z.im, z.exponent);
    const bool isNear = height.mantissa == 0 || height.exponent <= roots.radius[k].exponent;
    if (isNear && (z.im == 0 || isRealRoot(all, z))) z = wideComplex({z.re, 0}, z.exponent);
    all.isDone[k] = z.im == 0;
  }
  for (int32_t k = 0; k < all.degree; ++k) {
    WideComplex& z = roots.at[k];
    if (all.isDone[k] || z.im < 0) continue;
    int32_t mate = -1;
    double best = INFINITY;
    for (int32_t j = 0; j < all.degree; ++j) {
      const WideComplex& other = roots.at[j];
      const int32_t apart = other.exponent - z.exponent;
      if (all.isDone[j] || other.im > 0 || apart > 500) continue;
      const double scale = powerOrZero(apart);
      const double distance = squareSize({z.re - scale * other.re, z.im + scale * other.im});
      if (distance < best) best = distance, mate = j;
    }
    all.isDone[k] = 1;
    if (mate >= 0) {
      all.isDone[mate] = 1;
      roots.at[mate] = {z.re, -z.im, z.exponent};
      roots.radius[mate] = roots.radius[k];
    } else {
      z = wideComplex({z.re, 0}, z.exponent);
    }
  }
  for (int32_t k = 0; k < all.degree; ++k) {
    if (!all.isDone[k]) roots.at[k] = wideComplex({roots.at[k].re, 0}, roots.at[k].exponent);
  }
}

}  // namespace

bool findRoots(const double* coefficients, int32_t degree, double* work, AberthRoots& roots) {
  static_assert(sizeof(Wide) == 2 * sizeof(double) && sizeof(WideComplex) == 3 * sizeof(double));
  const int64_t n = degree + 1;
  WorkSpace space(work);
  auto* const coefficient = reinterpret_cast<Wide*>(space.take(2 * n));
  double* const logs = space.take(n);
  roots = {reinterpret_cast<WideComplex*>(space.take(3 * n)), reinterpret_cast<Wide*>(space.take(2 * n))};
  const Aberth all{degree, coefficient, logs, space.takeIntegers(n), space.takeIntegers(n), roots};
  for (int32_t i = 0; i <= degree; ++i) {
    all.a[i] = wide(coefficients[i]);
    all.logs[i] = coefficients[i] == 0 ? -1e9 : log2Of(all.a[i]);
  }
  setStarts(all);
  std::fill_n(all.isDone, degree, 0);
  int32_t open = degree;
  for (int round = 0; round < kMaxRounds && open > 0; ++round) {
    for (int32_t k = 0; k < degree; ++k) {
      if (all.isDone[k] || !correct(all, k)) continue;
      all.isDone[k] = 1;
      --open;
    }
  }
  if (open > 0) return false;
  for (int32_t k = 0; k < degree; ++k) roots.radius[k] = radiusAt(all, roots.at[k]);
  setPairs(all);
  return true;
}

}  // namespace dax

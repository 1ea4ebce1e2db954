// Polynomials, searches, curves and fits: how long arrays are, and knots that ascend.
#include <cmath>

#include "prmt.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

// Numbers as they come where the sizes say so, else what `value` gives.
template <class Value>
void numbersOr(Call& c, const char* name, int64_t count, bool areWild, const Value& value) {
  auto* const data = c.reals<double>(name, count);
  const Block* const made = c.block(data);
  if (!made || areWild) return;
  for (size_t i = 0; i < made->bytes / sizeof(double); ++i) {
    if (!(std::fabs(data[i]) <= 1e6)) data[i] = 1;
    data[i] = value(i, data[i]);
  }
}

double asItIs(size_t, double x) {
  return x;
}
// Knots, not evenly spaced.
double ascending(size_t i, double) {
  return -100 + 3 * static_cast<double>(i) + 0.5 * static_cast<double>(i % 3);
}
// Within the first pieces of such knots.
double within(size_t, double x) {
  return -100 + std::fmod(std::fabs(x), 3);
}

// All of them are real work.
int64_t count(Call& c, const char* name, int64_t low, int64_t usual) {
  if (c.number(name, low, usual) > 1000) c.set(name, static_cast<int32_t>(usual));
  return c.integer(name);
}

void roots(Call& c) {
  const int64_t degree = count(c, "degree", 1, 24);
  if (degree > 40) c.set("degree", int32_t{40});
  if (c.has("bytes")) return;
  const int64_t n = c.integer("degree");
  numbersOr(c, "coefficients", n < 1 ? -1 : n + 1, n % 5 == 0, asItIs);
  for (const char* name : {"real", "imaginary", "radius"}) c.array(name, n < 1 ? -1 : n);
  c.worksBeforeFailing = true;
}

// --- Searches ---

constexpr int32_t kOwnStatus = 0x777;

struct Manner {
  int32_t calls, failingAt;
  double root, poison;
};

int32_t line(double x, void* user, double* value) {
  auto* const manner = static_cast<Manner*>(user);
  *value = x - (manner ? manner->root : 0);
  if (!manner) return 0;
  if (manner->poison != 0 && manner->calls > 3) *value = manner->poison;
  return ++manner->calls == manner->failingAt ? kOwnStatus : 0;
}

void search(Call& c) {
  auto* const manner = c.chance(90) ? c.elements<Manner>("user", 1, Role::foreign) : nullptr;
  if (manner) {
    *manner = {0, c.isRound() || c.chance(80) ? 0 : 1 + c.random.below(6), static_cast<double>(c.between(-2, 2)), 0};
    if (!c.isRound() && c.chance(5)) manner->poison = c.hostileReal();
  }
  c.set<void*>("user", manner);
  c.set("function", c.isSpoiled("function") ? nullptr : line);
  c.real("from", -9, -3), c.real("to", 3, 9), c.real("tolerance", 1e-6, 1e-3);
  c.number("maxIterations", c.isRound() ? 100 : 1, 100000, 300);
  c.mayWriteOn(kOwnStatus);
}

// --- Curves ---

void ends(Call& c, const char* name) {
  if (!c.has(name)) return;
  if (!c.isRound() && !c.isSpoiled(name) && c.chance(30)) return c.set<void*>(name, nullptr);
  c.filled<PrmtSplineEnds>(name);
}

void curve(Call& c) {
  const int64_t n = count(c, "n", 2, 30);
  if (c.has("bytes")) return;
  const bool areWild = n % 7 == 6;
  const int64_t length = n < 2 ? -1 : n;
  numbersOr(c, "x", length, areWild, ascending);
  // Of any ends, periodic ones too.
  const auto last = static_cast<size_t>(n - 1);
  numbersOr(c, "y", length, areWild, [last](size_t i, double y) { return i == 0 || i == last ? 1 : y; });
  ends(c, "ends");
  c.worksBeforeFailing = true;
  if (!c.has("at")) return static_cast<void>(c.array("slopes", length));
  numbersOr(c, "slopes", length, areWild, asItIs);
  const int64_t places = count(c, "count", 1, 20);
  numbersOr(c, "at", places < 1 ? -1 : places, areWild, asItIs);
  c.array("values", places < 1 ? -1 : places);
}

void surface(Call& c) {
  const int64_t nx = count(c, "nx", 2, 12), ny = count(c, "ny", 2, 12);
  if (c.has("bytes")) return;
  const bool areWild = nx % 7 == 6, areSizes = nx >= 2 && ny >= 2;
  numbersOr(c, "x", nx < 2 ? -1 : nx, areWild, ascending);
  numbersOr(c, "y", ny < 2 ? -1 : ny, areWild, ascending);
  const auto clip = [](int64_t side) { return static_cast<int32_t>(std::clamp<int64_t>(side, INT32_MIN, INT32_MAX)); };
  c.image("z", "zStep", {clip(nx), clip(ny)});
  if (const Block* const made = c.blockOf("z"); made && !areWild) {
    auto* const z = c.get<double*>("z");
    const auto step = static_cast<size_t>(c.get<int32_t>("zStep"));
    for (size_t i = 0; i < made->bytes / sizeof(double); ++i) {
      const auto column = static_cast<int64_t>(i % step), row = static_cast<int64_t>(i / step);
      const bool isBorder = column == 0 || column == nx - 1 || row == 0 || row == ny - 1;
      z[i] = isBorder ? 1 : static_cast<double>(i % 11) / 4;
    }
  }
  ends(c, "xEnds"), ends(c, "yEnds");
  c.worksBeforeFailing = true;
  const int64_t cells = areSizes ? 3 * nx * ny : -1;
  if (!c.has("atX")) return static_cast<void>(c.array("derivatives", cells));
  numbersOr(c, "derivatives", cells, areWild, asItIs);
  const int64_t places = count(c, "count", 1, 20);
  for (const char* name : {"atX", "atY"}) numbersOr(c, name, places < 1 ? -1 : places, areWild, asItIs);
  c.array("values", places < 1 ? -1 : places);
}

// --- Fits ---

void weights(Call& c, int64_t length, bool areWild) {
  if (!c.has("weights")) return;
  if (!c.isRound() && !c.isSpoiled("weights") && c.chance(30)) return c.set<void*>("weights", nullptr);
  numbersOr(c, "weights", length, areWild, [](size_t, double x) { return 1 + std::fabs(x); });
}

void polynomial(Call& c) {
  const bool isValue = c.has("at");
  const int64_t degree = c.number("degree", 0, isValue ? 512 : 20, 6), points = count(c, "count", isValue ? 1 : 30, 60);
  if (c.has("bytes")) return;
  const int64_t length = points < 1 ? -1 : points, terms = degree < 0 || degree > 512 ? -1 : degree + 1;
  const bool areWild = points % 7 == 6;
  c.worksBeforeFailing = true;
  if (isValue) {
    numbersOr(c, "coefficients", terms, areWild, asItIs);
    numbersOr(c, "at", length, areWild, asItIs);
    c.array("values", length);
    return;
  }
  numbersOr(c, "x", length, areWild, ascending);
  numbersOr(c, "y", length, areWild, asItIs);
  weights(c, length, areWild);
  c.array("coefficients", terms);
}

void bspline(Call& c) {
  const bool isValue = c.has("at");
  const int64_t breaks = count(c, "breakCount", 2, isValue ? 9 : 2), degree = c.number("degree", 1, 5);
  if (c.has("bytes")) return;
  const int64_t points = count(c, "count", isValue ? 1 : 30, 60), length = points < 1 ? -1 : points;
  const bool areSizes = breaks >= 2 && degree >= 1 && degree <= 5, areWild = points % 7 == 6;
  numbersOr(c, "breaks", breaks < 2 ? -1 : breaks, areWild, ascending);
  c.worksBeforeFailing = true;
  const int64_t terms = areSizes ? breaks - 1 + degree : -1;
  if (isValue) {
    numbersOr(c, "coefficients", terms, areWild, asItIs);
    numbersOr(c, "at", length, areWild, asItIs);
    c.array("values", length);
    return;
  }
  // Spread over the first piece.
  numbersOr(c, "x", length, areWild, [](size_t i, double) { return within(i, 0.1 * static_cast<double>(i)); });
  numbersOr(c, "y", length, areWild, asItIs);
  weights(c, length, areWild);
  c.array("coefficients", terms);
}

const Rows rows = {
    {"PRMT_EQ_Roots_*", roots},    {"PRMT_EQ_Brent*", search},          {"PRMT_EQ_Spline1_*", curve},
    {"PRMT_EQ_Akima1_*", curve},   {"PRMT_EQ_Interpolate1_*", curve},   {"PRMT_EQ_Spline2_*", surface},
    {"PRMT_EQ_Akima2_*", surface}, {"PRMT_EQ_Interpolate2_*", surface}, {"PRMT_EQ_Poly*", polynomial},
    {"PRMT_EQ_BSpline*", bspline},
};

}  // namespace
}  // namespace dax::hostile

#include "draw/shapes.h"

#include <array>
#include <cmath>
#include <numbers>

namespace dax::tool {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kRoot3 = std::numbers::sqrt3;

double square(double x) {
  return x * x;
}

bool inRectangle(double u, double v, double length, double width) {
  return std::abs(u) <= length / 2 && std::abs(v) <= width / 2;
}

// A hexagon with an edge along u: three pairs of parallel flats.
bool inHexagon(double u, double v, double acrossFlats) {
  const double h = acrossFlats / 2;
  const double s = v / 2;
  const double t = u * kRoot3 / 2;
  return std::abs(v) <= h && std::abs(t + s) <= h && std::abs(t - s) <= h;
}

// The arms meet in the corner (-a / 2, -b / 2).
bool inBracket(double u, double v, const Shape& s) {
  return inRectangle(u, v, s.a, s.b) && (u <= s.c - s.a / 2 || v <= s.c - s.b / 2);
}

// Centroid of the bracket along the side of length `along` from the corner: an arm of along x t and one of t x the
// rest.
double bracketCentroid(double along, double across, double t) {
  const double arm = along * t;
  const double other = (across - t) * t;
  return (arm * along / 2 + other * t / 2) / (arm + other) - along / 2;
}

}  // namespace

bool Shape::contains(double u, double v) const {
  const double r2 = u * u + v * v;
  switch (kind) {
    case ShapeKind::kDisc:
      return r2 <= square(a);
    case ShapeKind::kRing:
      return r2 <= square(a) && r2 > square(b / 2);
    case ShapeKind::kRectangle:
      return inRectangle(u, v, a, b);
    case ShapeKind::kSlot:
      return inRectangle(u, v, a, b) || square(std::abs(u) - a / 2) + v * v <= square(b / 2);
    case ShapeKind::kHexNut:
      return r2 > square(b / 2) && inHexagon(u, v, a);
    case ShapeKind::kBracket:
      return inBracket(u, v, *this);
  }
  return false;
}

double Shape::area() const {
  switch (kind) {
    case ShapeKind::kDisc:
      return kPi * square(a);
    case ShapeKind::kRing:
      return kPi * (square(a) - square(b / 2));
    case ShapeKind::kRectangle:
      return a * b;
    case ShapeKind::kSlot:
      return a * b + kPi * square(b / 2);
    case ShapeKind::kHexNut:
      return kRoot3 / 2 * square(a) - kPi * square(b / 2);
    case ShapeKind::kBracket:
      return c * (a + b - c);
  }
  return 0;
}

double Shape::centroidU() const {
  return kind == ShapeKind::kBracket ? bracketCentroid(a, b, c) : 0;
}

double Shape::centroidV() const {
  return kind == ShapeKind::kBracket ? bracketCentroid(b, a, c) : 0;
}

double Shape::reach() const {
  switch (kind) {
    case ShapeKind::kDisc:
    case ShapeKind::kRing:
      return a;
    case ShapeKind::kSlot:
      return (a + b) / 2;
    case ShapeKind::kHexNut:
      return a / kRoot3;
    default:
      return std::sqrt(square(a) + square(b)) / 2;
  }
}

double Shape::anglePeriod() const {
  constexpr std::array kPeriods = {0.0, 0.0, 180.0, 180.0, 60.0, 180.0};
  return kPeriods[static_cast<size_t>(kind)];
}

std::string_view Shape::name() const {
  constexpr std::array<std::string_view, kShapeKinds> kNames = {"disc", "ring", "rectangle", "slot", "nut", "bracket"};
  return kNames[static_cast<size_t>(kind)];
}

}  // namespace dax::tool

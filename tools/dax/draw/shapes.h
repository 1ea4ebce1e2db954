// The parts of a sample scene: closed shapes with known area, centroid and direction.
#pragma once

#include <string_view>

namespace dax::tool {

enum class ShapeKind { kDisc, kRing, kRectangle, kSlot, kHexNut, kBracket };
inline constexpr int kShapeKinds = 6;

// A shape around the origin with its long side along x. Only + - * / on doubles: the same on every machine.
struct Shape {
  ShapeKind kind;
  double a;  // disc, ring: radius; rectangle, bracket: length; slot: length between end centres; nut: across flats
  double b;  // ring, nut: diameter of the hole; rectangle, bracket: width; slot: width
  double c;  // bracket: thickness of the arms

  bool contains(double u, double v) const;
  double area() const;
  // Coordinates of the centroid, the same in u and v for all shapes but the bracket.
  double centroidU() const;
  double centroidV() const;
  // Distance of the farthest point from the origin.
  double reach() const;
  // Degrees after which the outline looks the same; 0 for shapes without direction.
  double anglePeriod() const;
  std::string_view name() const;
};

}  // namespace dax::tool

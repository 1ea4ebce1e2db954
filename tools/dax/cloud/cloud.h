#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "cloud/scalar.h"
#include "dax/types.h"

namespace dax::tool {

using Place = std::array<double, 3>;

inline bool isZero(const Place& place) {
  return place[0] == 0 && place[1] == 0 && place[2] == 0;
}

// Points with finite coordinates, and normals if known.
struct Cloud {
  Place origin = {};           // added to the coordinates of all points
  std::vector<float> points;   // x, y, z of each, from the origin
  std::vector<float> normals;  // nx, ny, nz, curvature of each; empty: not known
  bool isWide = false;         // floats from 0 would not hold the file's coordinates
  size_t dropped = 0;          // points of the file without finite coordinates

  std::vector<Column> fields;        // further columns of the file
  std::string values;                // of these, row after row
  std::vector<std::string> leftOut;  // names of what the file holds besides

  DaxiSize grid = {};           // of an organised cloud; else 0 x 0
  std::vector<uint32_t> cells;  // of the grid, one for each point
  std::string viewpoint;        // of a PCD file

  size_t size() const { return points.size() / 3; }
  bool isShifted() const { return !isZero(origin); }
  Place at(size_t i) const {
    return {origin[0] + points[3 * i], origin[1] + points[3 * i + 1], origin[2] + points[3 * i + 2]};
  }
};

// Sets origin and points. Along an axis where the cloud is farther from 0 than four times its size, the origin is a
// round number just below the points, so that floats hold them; else it is 0.
void setPoints(Cloud& cloud, const std::vector<double>& coordinates);

// "450000, 5600000, 300"
std::string placeText(const Place& place);

}  // namespace dax::tool

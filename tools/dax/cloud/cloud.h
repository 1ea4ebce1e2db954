#pragma once

#include <cstddef>
#include <vector>

namespace dax::tool {

// Points with finite coordinates, and normals if known.
struct Cloud {
  std::vector<float> points;   // x, y, z of each
  std::vector<float> normals;  // nx, ny, nz, curvature of each; empty: not known
  size_t dropped = 0;          // points of the file without finite coordinates

  size_t size() const { return points.size() / 3; }
};

}  // namespace dax::tool

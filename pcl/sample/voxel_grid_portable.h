// Keys of points in a voxel grid, any instruction set.
#pragma once

#include <cstdint>

namespace dax {

// One axis: closed interval, cells per length unit, cell of the lower end, step of the key per cell.
struct VoxelAxis {
  float low, high, perUnit;
  int32_t base;
  int32_t stride;
};

struct VoxelGrid {
  VoxelAxis x, y, z;
  uint32_t cells;
};

struct KeyedPoint {
  int32_t key;
  int32_t index;
};

namespace portable {

inline bool isInside(const VoxelAxis& axis, float value) {
  return value >= axis.low && value <= axis.high;
}

// For values inside: the cells of the ends fit 32 bits, so those between them do.
inline int32_t keyPart(const VoxelAxis& axis, float value) {
  return (static_cast<int32_t>(value * axis.perUnit) - axis.base) * axis.stride;
}

// Appends points first..n - 1 that lie in the box, with their keys; returns the new count.
inline int32_t keyPoints(const VoxelGrid& grid, const float* points, int32_t first, int32_t n, KeyedPoint* pairs,
                         int32_t count) {
  for (int32_t i = first; i < n; ++i) {
    const float* const p = points + ptrdiff_t{3} * i;
    if (!isInside(grid.x, p[0]) || !isInside(grid.y, p[1]) || !isInside(grid.z, p[2])) continue;
    pairs[count++] = {keyPart(grid.x, p[0]) + keyPart(grid.y, p[1]) + keyPart(grid.z, p[2]), i};
  }
  return count;
}

}  // namespace portable
}  // namespace dax

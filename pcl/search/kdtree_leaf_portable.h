// Leaf kernel for three axes: passes each of the points lo..hi - 1 that is nearer than the visitor's limit to take(),
// which returns whether to continue.
#pragma once

#include "pcl/search/kdtree_tree.h"

namespace dax::portable {

// The comparison is unpredictable, so candidates are gathered by blocks without a branch.
template <class Visitor>
bool scanLeaf(const float* points, uint32_t lo, uint32_t hi, const float* query, Visitor& visitor) {
  constexpr uint32_t kBlock = 16;
  uint32_t candidates[kBlock];
  float distances[kBlock];
  const float* p = points + size_t{3} * lo;
  for (uint32_t i = lo; i < hi;) {
    const float limit = visitor.limit();
    uint32_t count = 0;
    for (const uint32_t end = std::min(hi, i + kBlock); i < end; ++i, p += 3) {
      const float x = query[0] - p[0], y = query[1] - p[1], z = query[2] - p[2];
      const float distance = x * x + y * y + z * z;
      candidates[count] = i;
      distances[count] = distance;
      count += distance < limit;
    }
    for (uint32_t c = 0; c < count; ++c) {
      if (distances[c] < visitor.limit() && !visitor.take(candidates[c], distances[c])) return false;
    }
  }
  return true;
}

}  // namespace dax::portable

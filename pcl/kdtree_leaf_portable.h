// Kernels of a leaf: the points lo..hi - 1 that are nearer than the visitor's limit, in turn. A visitor's take() says
// whether to go on.
#pragma once

#include "pcl/kdtree_tree.h"

namespace dax::portable {

template <class Visitor>
bool scanLeaf(const float* points, uint32_t lo, uint32_t hi, const float* query, Visitor& visitor) {
  const float* p = points + size_t{3} * lo;
  for (uint32_t i = lo; i < hi; ++i, p += 3) {
    const float x = query[0] - p[0], y = query[1] - p[1], z = query[2] - p[2];
    const float distance = x * x + y * y + z * z;
    if (distance < visitor.limit() && !visitor.take(i, distance)) return false;
  }
  return true;
}

}  // namespace dax::portable

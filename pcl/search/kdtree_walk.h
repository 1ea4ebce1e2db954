// Traversal of a tree by a search in up to three axes, with an explicit stack.
#pragma once

#include "frame/vector4.h"
#include "pcl/search/kdtree_tree.h"

namespace dax {

// A pending region: the contributions of three axes to a lower bound of its squared distance, then the bound. The four
// floats are copied as one vector.
struct KdPending {
  const KdNode* node;
  float parts[4];
  float bound() const { return parts[3]; }
};
static_assert(sizeof(KdPending) == 24);

// The whole tree, with the bound in the first `axes` axes, at most 3; the others contribute 0.
inline KdPending wholeTree(const KdView& tree, const float* query, int32_t axes = 3) {
  KdPending whole{tree.root, {0, 0, 0, 0}};
  for (int32_t a = 0; a < axes; ++a) {
    whole.parts[a] = axisDistance(query[a], tree.rootBox + 2 * a);
    whole.parts[3] += whole.parts[a];
  }
  return whole;
}

// Visits the nearer child first. The visitor's reaches() decides whether to visit a region with this bound, leaf()
// whether to continue. With kFurtherAxes nodes may be cut along axes beyond the third: then both children have the same
// bound.
template <bool kFurtherAxes = false, class Visitor>
void walk(KdPending at, const float* query, KdPending* stack, Visitor& visitor) {
  for (KdPending* top = stack;;) {
    const KdNode* node = at.node;
    const Float4 parts = load4(at.parts);
    const auto wait = [&](const KdNode* region) {
      top->node = region;
      store4(top->parts, parts);
      return top++;
    };
    while (node->first) {
      const int32_t axis = node->axis;
      if (kFurtherAxes && axis >= 3) {
        wait(node->second);
        node = node->first;
        continue;
      }
      const KdSides sides = kdSides(*node, query);
      node = sides.near;
      const float cut = sides.toFar * sides.toFar;
      const float farBound = parts[3] + cut - at.parts[axis];
      if (visitor.reaches(farBound)) {
        float* const farParts = wait(sides.far)->parts;
        farParts[axis] = cut;
        farParts[3] = farBound;
      }
    }
    if (!visitor.leaf(node->lo, node->hi)) return;
    do {
      if (top == stack) return;
      --top;
    } while (!visitor.reaches(top->bound()));
    at = *top;
  }
}

}  // namespace dax

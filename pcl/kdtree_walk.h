// The way of a search through the tree, in up to three axes, on a stack of its own.
#pragma once

#include "pcl/kdtree_tree.h"

namespace dax {

// A region still to be searched: a lower bound of the squared distance to it, and its parts by axis.
struct KdPending {
  const KdNode* node;
  float bound;
  float axes[3];
};
static_assert(sizeof(KdPending) == 24);

// The whole tree, seen from a query in its first axes, up to three; absent ones are 0.
inline KdPending wholeTree(const KdView& tree, const float* query, int32_t axes = 3) {
  KdPending whole{tree.root, 0, {0, 0, 0}};
  for (int32_t a = 0; a < axes; ++a) {
    whole.axes[a] = axisDistance(query[a], tree.rootBox + 2 * a);
    whole.bound += whole.axes[a];
  }
  return whole;
}

// Goes to the nearer child first. A visitor says which bounds are within reach, and at leaves whether to go on. With
// kFurtherAxes nodes may be cut along axes that do not count: then both sides are equally near.
template <bool kFurtherAxes = false, class Visitor>
void walk(KdPending at, const float* query, KdPending* stack, Visitor& visitor) {
  for (KdPending* top = stack;;) {
    const KdNode* node = at.node;
    const float bound = at.bound;
    const auto wait = [&](const KdNode* region, float regionBound) {
      top->node = region;
      top->bound = regionBound;
      std::copy_n(at.axes, 3, top->axes);
      return top++;
    };
    while (node->first) {
      const int32_t axis = node->axis;
      if (kFurtherAxes && axis >= 3) {
        wait(node->second, bound);
        node = node->first;
        continue;
      }
      const KdNode* const first = node->first;
      const KdNode* const second = node->second;
      const float toFirst = query[axis] - node->lowBound, toSecond = query[axis] - node->highBound;
      const bool firstIsNear = toFirst + toSecond < 0;
      const KdNode* const far = firstIsNear ? second : first;
      const float toFar = firstIsNear ? toSecond : toFirst;
      node = firstIsNear ? first : second;
      const float cut = toFar * toFar;
      const float farBound = bound + cut - at.axes[axis];
      if (visitor.reaches(farBound)) wait(far, farBound)->axes[axis] = cut;
    }
    if (!visitor.leaf(node->lo, node->hi)) return;
    do {
      if (top == stack) return;
      --top;
    } while (!visitor.reaches(top->bound));
    at = *top;
  }
}

}  // namespace dax

#include "pcl/search/kdtree_nearest.h"

#include <cfloat>

#include "frame/dispatch.h"
#include "pcl/search/kdtree_leaf_neon.h"
#include "pcl/search/kdtree_nearest_sets.h"
#include "pcl/search/kdtree_walk.h"

namespace dax {
namespace {

// Sums the squares of four axes at a time and stops when the sum exceeds the limit.
float squaredDistance(const float* p, const float* query, int32_t d, float limit) {
  float sum = 0;
  int32_t a = 0;
  for (; a + 4 <= d; a += 4) {
    const float d0 = query[a] - p[a], d1 = query[a + 1] - p[a + 1];
    const float d2 = query[a + 2] - p[a + 2], d3 = query[a + 3] - p[a + 3];
    sum += d0 * d0 + d1 * d1 + d2 * d2 + d3 * d3;
    if (sum > limit) return sum;
  }
  for (; a < d; ++a) sum += (query[a] - p[a]) * (query[a] - p[a]);
  return sum;
}

// One query in any dimension. The contributions of the axes to a bound are too many for the stack. They are looked up
// on the path from the root: the last cut of the axis that the search has crossed, or the distance to the root box.
template <class Set>
class NearestAnywhere {
 public:
  NearestAnywhere(const KdView& tree, void* stack, const float* query, Set& set)
      : tree_(tree), stack_(static_cast<Step*>(stack)), query_(query), set_(set) {}

  void search() {
    const KdNode* node = tree_.root;
    float bound = 0;
    for (int32_t a = 0; a < tree_.dimension; ++a) bound += axisDistance(query_[a], tree_.rootBox + 2 * a);
    do {
      while (node->first) node = descend(*node, bound);
      scanLeaf(*node);
    } while (nextRegion(node, bound));
  }

 private:
  // A pending region, or one that the search has entered: then the node is kEntered, the number of the root.
  struct Step {
    uint32_t node;
    int32_t axis;
    float bound;
    float cut;
  };
  static constexpr uint32_t kEntered = 0;

  const KdNode* descend(const KdNode& node, float bound) {
    const KdSides sides = kdSides(node, query_);
    const float cut = sides.toFar * sides.toFar;
    const float farBound = bound + cut - axisPart(node.axis);
    if (farBound < set_.worst()) {
      stack_[top_++] = {static_cast<uint32_t>(sides.far - tree_.root), node.axis, farBound, cut};
    }
    return sides.near;
  }

  float axisPart(int32_t axis) const {
    for (size_t i = top_; i-- > 0;) {
      if (stack_[i].node == kEntered && stack_[i].axis == axis) return stack_[i].cut;
    }
    return axisDistance(query_[axis], tree_.rootBox + 2 * axis);
  }

  void scanLeaf(const KdNode& leaf) {
    const float limit = set_.worst();
    for (uint32_t i = leaf.lo; i < leaf.hi; ++i) {
      set_.offer(i, squaredDistance(tree_.row(i), query_, tree_.dimension, limit));
    }
  }

  bool nextRegion(const KdNode*& node, float& bound) {
    for (; top_ > 0; --top_) {
      Step& step = stack_[top_ - 1];
      if (step.node == kEntered || !(step.bound < set_.worst())) continue;
      node = tree_.root + step.node;
      bound = step.bound;
      step.node = kEntered;
      return true;
    }
    return false;
  }

  const KdView& tree_;
  Step* stack_;
  size_t top_ = 0;
  const float* query_;
  Set& set_;
};

// One query in three dimensions.
template <bool kNeon, class Set>
struct NearestInSpace {
  const float* points;
  const float* query;
  Set& set;

  bool reaches(float bound) const { return bound < set.worst(); }
  float limit() const { return set.worst(); }
  bool take(uint32_t position, float distance) {
    set.offer(position, distance);
    return true;
  }
  bool leaf(uint32_t lo, uint32_t hi) {
    if constexpr (kNeon) return neon::scanLeaf(points, lo, hi, query, *this);
    return portable::scanLeaf(points, lo, hi, query, *this);
  }
};

template <bool kNeon, class Set>
int32_t searchInSpace(const KdView& tree, const KdNearestCall& call, void* stack) {
  int32_t found = 0;
  const float* query = call.queries;
  for (int32_t i = 0; i < call.queryCount; ++i, query += 3) {
    Set set(tree, call, i);
    NearestInSpace<kNeon, Set> visitor{tree.points, query, set};
    walk(wholeTree(tree, query), query, static_cast<KdPending*>(stack), visitor);
    set.store();
    found = set.count();
  }
  return found;
}

template <bool kNeon>
int32_t searchInSpace(const KdView& tree, const KdNearestCall& call, void* stack) {
  if (call.k == 1) return searchInSpace<kNeon, NearestOne>(tree, call, stack);
  if (call.k <= NearestFew::kMax) return searchInSpace<kNeon, NearestFew>(tree, call, stack);
  return searchInSpace<kNeon, NearestMany>(tree, call, stack);
}

template <class Set>
int32_t searchAnywhere(const KdView& tree, const KdNearestCall& call, void* stack) {
  int32_t found = 0;
  for (int32_t i = 0; i < call.queryCount; ++i) {
    Set set(tree, call, i);
    if (tree.root) NearestAnywhere<Set>(tree, stack, call.queries + ptrdiff_t{i} * tree.dimension, set).search();
    set.store();
    found = set.count();
  }
  return found;
}

}  // namespace

int32_t searchNearest(const KdView& tree, const KdNearestCall& call, void* stack, int32_t isa) {
  if (!tree.root || tree.dimension != 3) {
    const bool few = call.k <= NearestFew::kMax;
    return few ? searchAnywhere<NearestFew>(tree, call, stack) : searchAnywhere<NearestMany>(tree, call, stack);
  }
  return usesNeon(isa) ? searchInSpace<true>(tree, call, stack) : searchInSpace<false>(tree, call, stack);
}

}  // namespace dax

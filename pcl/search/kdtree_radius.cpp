#include "pcl/search/kdtree_radius.h"

#include <cfloat>

#include "frame/dispatch.h"
#include "pcl/search/kdtree_leaf_neon.h"
#include "pcl/search/kdtree_walk.h"

namespace dax {
namespace {

struct WithinRadius {
  const KdView& tree;
  const KdRadiusCall& call;
  float limitSquared;
  int32_t count = 0;

  bool reaches(float bound) const { return bound <= limitSquared; }
  float limit() const { return limitSquared; }
  bool take(uint32_t position, float distance) {
    const uint32_t index = tree.index[position];
    if (call.mask && call.mask[index] == 0) return true;
    call.indices[count] = index;
    call.distances[count] = distance;
    return ++count < call.maxResults;
  }
};

template <bool kNeon>
struct WithinRadiusInSpace : WithinRadius {
  bool leaf(uint32_t lo, uint32_t hi) {
    if constexpr (kNeon) return neon::scanLeaf(tree.points, lo, hi, call.query, *this);
    return portable::scanLeaf(tree.points, lo, hi, call.query, *this);
  }
};

// In other dimensions only the first three axes count.
struct WithinRadiusAnywhere : WithinRadius {
  bool leaf(uint32_t lo, uint32_t hi) {
    for (uint32_t i = lo; i < hi; ++i) {
      const float* const p = tree.row(i);
      float distance = 0;
      for (int32_t a = 0; a < std::min(tree.dimension, 3); ++a) {
        distance += (call.query[a] - p[a]) * (call.query[a] - p[a]);
      }
      if (distance < limitSquared && !take(i, distance)) return false;
    }
    return true;
  }
};

template <class Visitor, bool kFurtherAxes>
int32_t search(const KdView& tree, const KdRadiusCall& call, float limitSquared, void* stack) {
  Visitor visitor{{tree, call, limitSquared}};
  const KdPending whole = wholeTree(tree, call.query, std::min(tree.dimension, 3));
  if (!visitor.reaches(whole.bound())) return 0;
  walk<kFurtherAxes>(whole, call.query, static_cast<KdPending*>(stack), visitor);
  return visitor.count;
}

}  // namespace

int32_t searchRadius(const KdView& tree, const KdRadiusCall& call, void* stack, int32_t isa) {
  const float limitSquared = call.radius * call.radius;
  if (!tree.root || limitSquared < FLT_EPSILON) return 0;
  if (tree.dimension != 3) return search<WithinRadiusAnywhere, true>(tree, call, limitSquared, stack);
  if (usesNeon(isa)) return search<WithinRadiusInSpace<true>, false>(tree, call, limitSquared, stack);
  return search<WithinRadiusInSpace<false>, false>(tree, call, limitSquared, stack);
}

}  // namespace dax

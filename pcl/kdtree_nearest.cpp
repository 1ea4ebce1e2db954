#include <bit>
#include <cfloat>
#include <cstring>

#include "frame/cpu_feature.h"
#include "pcl/kdtree_leaf_portable.h"
#include "pcl/kdtree_search.h"
#include "pcl/kdtree_walk.h"
#if DAX_HAVE_NEON
#include "pcl/kdtree_leaf_neon.h"
#endif

namespace dax {
namespace {

// The nearest point so far.
class NearestOne {
 public:
  NearestOne(const KdNearestCall& call, int32_t row)
      : storedIndex_(call.indices + row), storedDistance_(call.distances + row), distance_(call.limit) {}
  int32_t count() const { return found_ ? 1 : 0; }
  float worst() const { return distance_; }
  void offer(uint32_t index, float distance) {
    if (!(distance < distance_)) return;
    found_ = true;
    index_ = index;
    distance_ = distance;
  }
  void store() const {
    *storedIndex_ = index_;
    *storedDistance_ = found_ ? distance_ : FLT_MAX;
  }

 private:
  uint32_t* storedIndex_;
  float* storedDistance_;
  bool found_ = false;
  uint32_t index_ = 0;
  float distance_;
};

// A few neighbours found so far, in ascending order. An entry is a distance, whose bits order as it does, above an index;
// in front stands one that nothing is less than.
class NearestFew {
 public:
  static constexpr int32_t kMost = 32;

  NearestFew(const KdNearestCall& call, int32_t row)
      : indices_(call.indices + ptrdiff_t{row} * call.k),
        distances_(call.distances + ptrdiff_t{row} * call.k),
        capacity_(call.k),
        worst_(call.limit) {
    entries_[0] = 0;
  }

  int32_t count() const { return count_; }
  float worst() const { return worst_; }

  // At equal distances the earlier one stays in front.
  void offer(uint32_t index, float distance) {
    if (!(distance < worst_)) return;
    const uint64_t entry = uint64_t{std::bit_cast<uint32_t>(distance)} << 32;
    if (count_ < capacity_) ++count_;
    uint64_t* at = entries_ + count_;
    for (; at[-1] > (entry | UINT32_MAX); --at) *at = at[-1];
    *at = entry | index;
    if (count_ == capacity_) worst_ = distanceOf(entries_[count_]);
  }

  void store() const {
    for (int32_t i = 0; i < count_; ++i) {
      indices_[i] = static_cast<uint32_t>(entries_[i + 1]);
      distances_[i] = distanceOf(entries_[i + 1]);
    }
    if (count_ == capacity_) return;
    std::fill(indices_ + count_, indices_ + capacity_, 0u);
    std::fill(distances_ + count_, distances_ + capacity_ - 1, 0.0f);
    distances_[capacity_ - 1] = FLT_MAX;
  }

 private:
  static float distanceOf(uint64_t entry) { return std::bit_cast<float>(static_cast<uint32_t>(entry >> 32)); }

  uint32_t* indices_;
  float* distances_;
  int32_t capacity_;
  int32_t count_ = 0;
  float worst_;
  uint64_t entries_[kMost + 1];
};

// The neighbours found so far, in ascending order, in the caller's arrays.
class NearestSet {
 public:
  NearestSet(const KdNearestCall& call, int32_t row)
      : indices_(call.indices + ptrdiff_t{row} * call.k),
        distances_(call.distances + ptrdiff_t{row} * call.k),
        capacity_(call.k),
        limit_(call.limit),
        worst_(call.limit) {
    std::memset(indices_, 0, sizeof(uint32_t) * static_cast<size_t>(capacity_));
    std::memset(distances_, 0, sizeof(float) * static_cast<size_t>(capacity_));
    distances_[capacity_ - 1] = FLT_MAX;
  }

  int32_t count() const { return count_; }
  float worst() const { return worst_; }

  // At equal distances the earlier one stays in front.
  void offer(uint32_t index, float distance) {
    if (!(distance < worst_)) return;
    int32_t i = count_ < capacity_ ? count_++ : capacity_ - 1;
    for (; i > 0 && distances_[i - 1] > distance; --i) {
      distances_[i] = distances_[i - 1];
      indices_[i] = indices_[i - 1];
    }
    distances_[i] = distance;
    indices_[i] = index;
    worst_ = std::min(limit_, distances_[capacity_ - 1]);
  }
  void store() const {}

 private:
  uint32_t* indices_;
  float* distances_;
  int32_t capacity_;
  int32_t count_ = 0;
  float limit_;
  float worst_;
};

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

// One query in any dimension. The parts of a bound by axis, too many for the stack, are found along the way from the
// root: the last cut of the axis beyond which the search has gone, or the distance to the root box.
class NearestAnywhere {
 public:
  NearestAnywhere(const KdView& tree, void* stack, const float* query, NearestSet& set)
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
  // A region still to be searched, or one that the search is in: then the node is the root's number.
  struct Step {
    uint32_t node;
    int32_t axis;
    float bound;
    float cut;
  };
  static constexpr uint32_t kEntered = 0;

  const KdNode* descend(const KdNode& node, float bound) {
    const float toFirst = query_[node.axis] - node.lowBound, toSecond = query_[node.axis] - node.highBound;
    const bool firstIsNear = toFirst + toSecond < 0;
    const float toFar = firstIsNear ? toSecond : toFirst;
    const float cut = toFar * toFar;
    const float farBound = bound + cut - axisPart(node.axis);
    if (farBound < set_.worst()) {
      const KdNode* const far = firstIsNear ? node.second : node.first;
      stack_[top_++] = {static_cast<uint32_t>(far - tree_.root), node.axis, farBound, cut};
    }
    return firstIsNear ? node.first : node.second;
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
      set_.offer(tree_.index[i], squaredDistance(tree_.row(i), query_, tree_.dimension, limit));
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
  NearestSet& set_;
};

// One query in three dimensions.
template <bool kNeon, class Set>
struct NearestInSpace {
  const float* points;
  const uint32_t* index;
  const float* query;
  Set& set;

  bool reaches(float bound) const { return bound < set.worst(); }
  float limit() const { return set.worst(); }
  bool take(uint32_t position, float distance) {
    set.offer(index[position], distance);
    return true;
  }
  bool leaf(uint32_t lo, uint32_t hi) {
#if DAX_HAVE_NEON
    if (kNeon) return neon::scanLeaf(points, lo, hi, query, *this);
#endif
    return portable::scanLeaf(points, lo, hi, query, *this);
  }
};

template <bool kNeon, class Set>
int32_t searchInSpace(const KdView& tree, const KdNearestCall& call, void* stack) {
  int32_t found = 0;
  const float* query = call.queries;
  for (int32_t i = 0; i < call.queryCount; ++i, query += 3) {
    Set set(call, i);
    NearestInSpace<kNeon, Set> visitor{tree.points, tree.index, query, set};
    walk(wholeTree(tree, query), query, static_cast<KdPending*>(stack), visitor);
    set.store();
    found = set.count();
  }
  return found;
}

template <bool kNeon>
int32_t searchInSpace(const KdView& tree, const KdNearestCall& call, void* stack) {
  if (call.k == 1) return searchInSpace<kNeon, NearestOne>(tree, call, stack);
  if (call.k <= NearestFew::kMost) return searchInSpace<kNeon, NearestFew>(tree, call, stack);
  return searchInSpace<kNeon, NearestSet>(tree, call, stack);
}

int32_t searchAnywhere(const KdView& tree, const KdNearestCall& call, void* stack) {
  int32_t found = 0;
  for (int32_t i = 0; i < call.queryCount; ++i) {
    NearestSet set(call, i);
    if (tree.root) NearestAnywhere(tree, stack, call.queries + ptrdiff_t{i} * tree.dimension, set).search();
    found = set.count();
  }
  return found;
}

}  // namespace

int32_t searchNearest(const KdView& tree, const KdNearestCall& call, void* stack, int32_t isa) {
  if (!tree.root || tree.dimension != 3) return searchAnywhere(tree, call, stack);
  return usesNeon(isa) ? searchInSpace<true>(tree, call, stack) : searchInSpace<false>(tree, call, stack);
}

}  // namespace dax

#include "pcl/search/kdtree_build.h"

#include <cstring>
#include <utility>

#include "frame/dispatch.h"
#include "pcl/search/kdtree_rows_neon.h"

namespace dax {
namespace {

struct RowKernels {
  void (*exactBox)(const KdRows&, uint32_t, uint32_t, float*);
  void (*axisExtent)(const KdRows&, uint32_t, uint32_t, int32_t, float*);
  CutCounts (*countCut)(const KdRows&, uint32_t, uint32_t, int32_t, float);
};

RowKernels rowKernels(int32_t d, int32_t isa) {
  if (usesNeon(isa) && d == 3) return {neon::exactBox, neon::axisExtent, neon::countCut};
  return {portable::exactBox, portable::axisExtent, portable::countCut};
}

// Boxes have the numbers of their nodes. Siblings are adjacent and come after their parent, so that descending order
// unites exact boxes from the leaves up.
class Builder {
 public:
  Builder(const KdBuild& build, int32_t isa)
      : build_(build), rows_{build.points, build.index, build.d}, kernels_(rowKernels(build.d, isa)) {}

  uint32_t run() {
    const auto n = static_cast<uint32_t>(build_.n);
    kernels_.exactBox(rows_, 0, n, build_.rootBox);
    std::memcpy(box(build_.nodes[0]), build_.rootBox, boxBytes());
    makeLeaf(build_.nodes[0], 0, n);
    if (build_.room < maxNodes(build_.n)) {
      divideByLevels();
    } else {
      divideByDepth();
    }
    for (uint32_t i = count_; i-- > 0;) uniteChildren(i);
    return count_;
  }

 private:
  // Clears the padding too, so that equal trees have equal bytes.
  static void makeLeaf(KdNode& node, uint32_t lo, uint32_t hi) {
    std::memset(&node, 0, sizeof node);
    node.lo = lo;
    node.hi = hi;
  }

  float* box(const KdNode& node) const { return build_.boxes + (&node - build_.nodes) * 2 * build_.d; }
  size_t boxBytes() const { return sizeof(float) * 2 * static_cast<size_t>(build_.d); }

  // Depth first, because the rows divided last are still in the cache. Second children wait in a linked list.
  void divideByDepth() {
    KdNode* waiting = nullptr;
    for (KdNode* at = build_.nodes; at;) {
      if (divide(*at)) {
        at->second->second = waiting;
        waiting = at->second;
        at = at->first;
      } else {
        at = waiting;
        if (at) waiting = std::exchange(at->second, nullptr);
      }
    }
  }

  // Breadth first when nodes may run out, so that leaves have about the same size.
  void divideByLevels() {
    for (uint32_t i = 0; i < count_; ++i) divide(build_.nodes[i]);
  }

  // Creates the children of a node, or computes the box of a leaf; returns whether there are children.
  bool divide(KdNode& node) {
    const uint32_t lo = node.lo, hi = node.hi;
    if (hi - lo <= static_cast<uint32_t>(build_.leafSize) || uint64_t{count_} + 2 > build_.room) {
      kernels_.exactBox(rows_, lo, hi, box(node));
      return false;
    }
    const Cut cut = chooseCut(lo, hi, box(node));
    const uint32_t middle = moveToSides(lo, hi, cut);
    node.axis = cut.axis;
    node.first = &build_.nodes[count_];
    node.second = node.first + 1;
    makeLeaf(*node.first, lo, middle);
    makeLeaf(*node.second, middle, hi);
    for (const KdNode* child : {node.first, node.second}) std::memcpy(box(*child), box(node), boxBytes());
    box(*node.first)[2 * cut.axis + 1] = cut.value;
    box(*node.second)[2 * cut.axis] = cut.value;
    count_ += 2;
    return true;
  }

  struct Cut {
    int32_t axis;
    float value;
  };

  // Of the axes whose side is within 1e-7 of the longest one, the axis along which the points spread most, cut at the
  // middle of the box, or at the nearest coordinate. If the longest side is 0, infinite or NaN, its axis is used.
  Cut chooseCut(uint32_t lo, uint32_t hi, const float* nodeBox) const {
    int32_t axis = 0;
    const float longest = longestSide(nodeBox, axis);
    float extent[2] = {}, spread = -1;
    for (int32_t a = 0; a < build_.d; ++a) {
      if (!(nodeBox[2 * a + 1] - nodeBox[2 * a] > longest * 0.9999999f)) continue;
      float interval[2];
      kernels_.axisExtent(rows_, lo, hi, a, interval);
      if (!(interval[1] - interval[0] > spread)) continue;
      spread = interval[1] - interval[0];
      axis = a;
      std::copy_n(interval, 2, extent);
    }
    if (spread < 0) kernels_.axisExtent(rows_, lo, hi, axis, extent);
    const float middle = (nodeBox[2 * axis] + nodeBox[2 * axis + 1]) / 2;
    if (!(middle >= extent[0])) return {axis, extent[0]};
    return {axis, middle <= extent[1] ? middle : extent[1]};
  }

  float longestSide(const float* nodeBox, int32_t& axis) const {
    float longest = 0;
    for (int32_t a = 0; a < build_.d; ++a) {
      const float side = nodeBox[2 * a + 1] - nodeBox[2 * a];
      if (side > longest) {
        longest = side;
        axis = a;
      }
    }
    return longest;
  }

  // Partitions the rows into those below, on and above the cut; returns the first row of the second child. Neither
  // child is empty, since the cut lies between the smallest and the largest coordinate.
  uint32_t moveToSides(uint32_t lo, uint32_t hi, const Cut& cut) const {
    const CutCounts counts = kernels_.countCut(rows_, lo, hi, cut.axis, cut.value);
    const uint32_t below = lo + counts.below, upTo = lo + counts.upTo;
    portable::separate(rows_, lo, below, hi, cut.axis, [v = cut.value](float x) { return x < v; });
    if (below < upTo) portable::separate(rows_, below, upTo, hi, cut.axis, [v = cut.value](float x) { return x <= v; });
    const uint32_t half = (hi - lo) / 2;
    if (counts.below > half) return below;
    return counts.upTo < half ? upTo : lo + half;
  }

  // Bounds and exact box of an inner node.
  void uniteChildren(uint32_t i) const {
    KdNode& node = build_.nodes[i];
    if (!node.first) return;
    const float* const first = box(*node.first);
    const float* const second = box(*node.second);
    node.lowBound = first[2 * node.axis + 1];
    node.highBound = second[2 * node.axis];
    float* const united = box(node);
    for (int32_t side = 0; side < 2 * build_.d; side += 2) {
      united[side] = std::min(first[side], second[side]);
      united[side + 1] = std::max(first[side + 1], second[side + 1]);
    }
  }

  const KdBuild& build_;
  KdRows rows_;
  RowKernels kernels_;
  uint32_t count_ = 1;
};

}  // namespace

uint32_t buildTree(const KdBuild& build, const float* points, int32_t isa) {
  for (int32_t i = 0; i < build.n; ++i) build.index[i] = static_cast<uint32_t>(i);
  std::memcpy(build.points, points, sizeof(float) * static_cast<size_t>(build.n) * static_cast<size_t>(build.d));
  return Builder(build, isa).run();
}

KdNode* rebaseNodes(KdNode* nodes, uint32_t nodeCount, const KdNode* oldRoot) {
  const auto from = reinterpret_cast<uintptr_t>(oldRoot), to = reinterpret_cast<uintptr_t>(nodes);
  const auto rebase = [&](KdNode*& child) {
    if (child) child = reinterpret_cast<KdNode*>(reinterpret_cast<uintptr_t>(child) - from + to);
  };
  for (uint32_t i = 0; i < nodeCount; ++i) {
    rebase(nodes[i].first);
    rebase(nodes[i].second);
  }
  return nodes;
}

}  // namespace dax

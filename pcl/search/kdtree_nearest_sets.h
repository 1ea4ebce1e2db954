// Sets of the nearest points found so far, for k = 1, small k and large k. At equal distances the point visited earlier
// comes first and is kept. All hold positions in tree order; the caller's rows receive point numbers, or positions if
// the view has no index.
#pragma once

#include <bit>
#include <utility>

#include "pcl/search/kdtree_call.h"
#include "pcl/search/kdtree_tree.h"

namespace dax {

// A row of the caller's results.
struct KdNearestRow {
  KdNearestRow(const KdView& tree, const KdNearestCall& call, int32_t row)
      : numbers(tree.index),
        indices(call.indices + ptrdiff_t{row} * call.k),
        distances(call.distances + ptrdiff_t{row} * call.k),
        capacity(call.k) {}

  uint32_t number(uint32_t position) const { return numbers ? numbers[position] : position; }
  void store(int32_t i, uint32_t position, float distance) const {
    indices[i] = number(position);
    distances[i] = distance;
  }
  // The entries after the first `count`.
  void storeRest(int32_t count) const {
    if (count == capacity) return;
    std::fill(indices + count, indices + capacity, 0u);
    std::fill(distances + count, distances + capacity - 1, 0.0f);
    distances[capacity - 1] = FLT_MAX;
  }

  const uint32_t* numbers;
  uint32_t* indices;
  float* distances;
  int32_t capacity;
};

class NearestOne {
 public:
  NearestOne(const KdView& tree, const KdNearestCall& call, int32_t row)
      : row_(tree, call, row), distance_(call.limit) {}

  int32_t count() const { return found_ ? 1 : 0; }
  float worst() const { return distance_; }
  void offer(uint32_t position, float distance) {
    if (!(distance < distance_)) return;
    found_ = true;
    position_ = position;
    distance_ = distance;
  }
  void store() const {
    if (found_) row_.store(0, position_, distance_);
    row_.storeRest(count());
  }

 private:
  KdNearestRow row_;
  bool found_ = false;
  uint32_t position_ = 0;
  float distance_;
};

// Sorted array in ascending order. An entry has the bits of the distance, which order like non-negative floats, above
// the position; entry 0 is a sentinel.
class NearestFew {
 public:
  static constexpr int32_t kMax = 64;  // the entries lie on the stack

  NearestFew(const KdView& tree, const KdNearestCall& call, int32_t row) : row_(tree, call, row), worst_(call.limit) {
    entries_[0] = 0;
  }

  int32_t count() const { return count_; }
  float worst() const { return worst_; }
  void offer(uint32_t position, float distance) {
    if (!(distance < worst_)) return;
    const uint64_t entry = uint64_t{std::bit_cast<uint32_t>(distance)} << 32;
    if (count_ < row_.capacity) ++count_;
    uint64_t* at = entries_ + count_;
    for (; at[-1] > (entry | UINT32_MAX); --at) *at = at[-1];
    *at = entry | position;
    if (count_ == row_.capacity) worst_ = distanceOf(entries_[count_]);
  }
  void store() const {
    for (int32_t i = 0; i < count_; ++i) {
      row_.store(i, static_cast<uint32_t>(entries_[i + 1]), distanceOf(entries_[i + 1]));
    }
    row_.storeRest(count_);
  }

 private:
  static float distanceOf(uint64_t entry) { return std::bit_cast<float>(static_cast<uint32_t>(entry >> 32)); }

  KdNearestRow row_;
  int32_t count_ = 0;
  float worst_;
  uint64_t entries_[kMax + 1];
};

// In the caller's row: in order of visit until it is full, then a heap with the last entry at the root, sorted at the
// end. The tree tells which of two points was visited first, since the row has no memory for it.
class NearestMany {
 public:
  NearestMany(const KdView& tree, const KdNearestCall& call, int32_t row)
      : row_(tree, call, row),
        root_(tree.root),
        query_(call.queries + ptrdiff_t{row} * tree.dimension),
        worst_(call.limit) {}

  int32_t count() const { return count_; }
  float worst() const { return worst_; }
  void offer(uint32_t position, float distance) {
    if (!(distance < worst_)) return;
    if (count_ < row_.capacity) {
      put(count_++, {position, distance});
      if (count_ < row_.capacity) return;
      makeHeap();
    } else {
      sink(0, count_, {position, distance});
    }
    worst_ = row_.distances[0];
  }
  void store() {
    if (count_ < row_.capacity) makeHeap();
    for (int32_t end = count_ - 1; end > 0; --end) {
      const Entry last = at(end);
      put(end, at(0));
      sink(0, end, last);
    }
    for (int32_t i = 0; i < count_; ++i) row_.indices[i] = row_.number(row_.indices[i]);
    row_.storeRest(count_);
  }

 private:
  struct Entry {
    uint32_t position;
    float distance;
  };

  Entry at(int32_t i) const { return {row_.indices[i], row_.distances[i]}; }
  void put(int32_t i, const Entry& entry) const {
    row_.indices[i] = entry.position;
    row_.distances[i] = entry.distance;
  }

  void makeHeap() const {
    for (int32_t i = count_ / 2; i-- > 0;) sink(i, count_, at(i));
  }

  // Replaces entry i by `entry` and sifts it down.
  void sink(int32_t i, int32_t end, const Entry& entry) const {
    while (i < end / 2) {
      int32_t child = 2 * i + 1;
      if (child + 1 < end && isBehind(at(child + 1), at(child))) ++child;
      if (!isBehind(at(child), entry)) break;
      put(i, at(child));
      i = child;
    }
    put(i, entry);
  }

  bool isBehind(const Entry& a, const Entry& b) const {
    return a.distance > b.distance || (a.distance == b.distance && isVisitedAfter(a.position, b.position));
  }

  // At the node where the paths to both points diverge the search visited the nearer side first.
  bool isVisitedAfter(uint32_t a, uint32_t b) const {
    const KdNode* node = root_;
    while (node->first) {
      const uint32_t middle = node->second->lo;
      if ((a < middle) != (b < middle)) return (a < middle) != (kdSides(*node, query_).near == node->first);
      node = a < middle ? node->first : node->second;
    }
    return a > b;
  }

  KdNearestRow row_;
  const KdNode* root_;
  const float* query_;
  int32_t count_ = 0;
  float worst_;
};

}  // namespace dax

// Row kernels for building KD-trees: extents, counts and partition by a cut. A NaN counts as +infinity.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>

namespace dax {

// Rows of d floats with their point numbers.
struct KdRows {
  float* points;
  uint32_t* index;
  int32_t d;

  float* row(uint32_t i) const { return points + size_t{i} * static_cast<uint32_t>(d); }
};

// Number of coordinates < cut and <= cut.
struct CutCounts {
  uint32_t below;
  uint32_t upTo;
};

}  // namespace dax

namespace dax::portable {

inline constexpr float kInfinity = std::numeric_limits<float>::infinity();

inline float orderedKey(float x) {
  return x < kInfinity ? x : kInfinity;
}

// {low, high} of one axis of the rows lo..hi - 1. Zeros become +0.
inline void axisExtent(const KdRows& rows, uint32_t lo, uint32_t hi, int32_t axis, float* interval) {
  const float* x = rows.row(lo) + axis;
  float low = kInfinity, high = -kInfinity;
  for (uint32_t i = lo; i < hi; ++i, x += rows.d) {
    const float key = orderedKey(*x);
    low = key < low ? key : low;
    high = key > high ? key : high;
  }
  interval[0] = low + 0.0f;
  interval[1] = high + 0.0f;
}

inline void exactBox(const KdRows& rows, uint32_t lo, uint32_t hi, float* box) {
  for (int32_t axis = 0; axis < rows.d; ++axis) axisExtent(rows, lo, hi, axis, box + 2 * axis);
}

inline CutCounts countCut(const KdRows& rows, uint32_t lo, uint32_t hi, int32_t axis, float cut) {
  const float* x = rows.row(lo) + axis;
  CutCounts counts{0, 0};
  for (uint32_t i = lo; i < hi; ++i, x += rows.d) {
    const float key = orderedKey(*x);
    counts.below += key < cut;
    counts.upTo += key <= cut;
  }
  return counts;
}

inline void swapRows(const KdRows& rows, uint32_t i, uint32_t j) {
  std::swap(rows.index[i], rows.index[j]);
  if (rows.d == 3) {
    float a[3], b[3];
    std::memcpy(a, rows.row(i), sizeof a);
    std::memcpy(b, rows.row(j), sizeof b);
    std::memcpy(rows.row(i), b, sizeof b);
    std::memcpy(rows.row(j), a, sizeof a);
  } else {
    std::swap_ranges(rows.row(i), rows.row(i) + rows.d, rows.row(j));
  }
}

// Partitions the rows: the middle - lo rows for which inFront(key) holds move to lo..middle - 1. Swaps the first
// misplaced row on the left with the last one on the right, and so on inwards.
template <class InFront>
void separate(const KdRows& rows, uint32_t lo, uint32_t middle, uint32_t hi, int32_t axis, InFront inFront) {
  for (uint32_t left = lo, right = hi;; ++left) {
    while (left < middle && inFront(orderedKey(rows.row(left)[axis]))) ++left;
    if (left == middle) return;
    do {
      --right;
    } while (!inFront(orderedKey(rows.row(right)[axis])));
    swapRows(rows, left, right);
  }
}

}  // namespace dax::portable

// Disjoint sets of numbered elements: union-find with path halving (R. E. Tarjan, J. van Leeuwen, J. ACM 31(2), 1984).
#pragma once

#include <algorithm>
#include <cstdint>

namespace dax {

// A forest in which the parent of an element is never greater than the element: the root of a set is its lowest
// element.
class UnionFind {
 public:
  // `parents` has room for all elements that will be added; the first one is `first`.
  explicit UnionFind(uint32_t* parents, uint32_t first = 0) : parents_(parents), count_(first) {}

  // Continues with the same elements in memory that has moved.
  void moveTo(uint32_t* parents) { parents_ = parents; }

  // Adds a set of one element and returns the element.
  uint32_t add() {
    parents_[count_] = count_;
    return count_++;
  }

  uint32_t root(uint32_t element) {
    while (parents_[element] != element) {
      parents_[element] = parents_[parents_[element]];
      element = parents_[element];
    }
    return element;
  }

  // The same, without shortening the way for others: several threads may ask at once.
  uint32_t rootOf(uint32_t element) const {
    while (parents_[element] != element) element = parents_[element];
    return element;
  }

  // Joins the sets of two roots; returns the root of the result.
  uint32_t unite(uint32_t a, uint32_t b) {
    const auto [lower, higher] = std::minmax(a, b);
    parents_[higher] = lower;
    return lower;
  }

  // Replaces each parent by the number of its set, in order of the roots; returns the number of sets. From then on only
  // numberOf() and count() may be called.
  uint32_t number() {
    uint32_t sets = 0;
    for (uint32_t i = 0; i < count_; ++i) parents_[i] = parents_[i] == i ? sets++ : parents_[parents_[i]];
    return sets;
  }

  uint32_t numberOf(uint32_t element) const { return parents_[element]; }
  uint32_t count() const { return count_; }

 private:
  uint32_t* parents_;
  uint32_t count_;
};

}  // namespace dax

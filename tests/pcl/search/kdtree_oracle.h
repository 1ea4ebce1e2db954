// The KD-tree by its definition: divided and searched by recursion, over a vector of point numbers. Finite points only.
#pragma once

#include <algorithm>
#include <cfloat>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace dax::oracle {

struct Neighbour {
  uint32_t index;
  float distance;
  bool operator==(const Neighbour&) const = default;
};

// Four squares at a time, then one by one.
inline float squaredDistance(const float* p, const float* q, int32_t d) {
  float sum = 0;
  for (int32_t a = 0; a < d;) {
    const int32_t group = a + 4 <= d ? 4 : 1;
    float part = 0;
    for (int32_t end = a + group; a < end; ++a) part += (p[a] - q[a]) * (p[a] - q[a]);
    sum += part;
  }
  return sum;
}

class KdTree {
 public:
  KdTree(const std::vector<float>& points, int32_t d, int32_t leafSize) : points_(points), d_(d), leafSize_(leafSize) {
    for (uint32_t i = 0; i < points.size() / static_cast<size_t>(d); ++i) index_.push_back(i);
    box_ = exactBox(0, count());
    Box box = box_;
    root_ = divide(0, count(), box);
  }

  const std::vector<uint32_t>& index() const { return index_; }
  int32_t nodeCount() const { return nodes_; }

  std::vector<Neighbour> nearest(const float* q, size_t k) const {
    std::vector<Neighbour> found;
    std::vector<float> parts;
    float bound = 0;
    for (size_t a = 0; a < box_.size(); ++a) {
      const auto [low, high] = box_[a];
      const float outside = q[a] < low ? q[a] - low : q[a] > high ? q[a] - high : 0;
      parts.push_back(outside * outside);
      bound += parts.back();
    }
    search(*root_, q, k, bound, parts, found);
    return found;
  }

 private:
  using Box = std::vector<std::pair<float, float>>;
  struct Node {
    size_t lo, hi, axis;
    float lowBound, highBound;
    std::unique_ptr<Node> first, second;
  };

  size_t count() const { return index_.size(); }
  const float* point(size_t i) const { return &points_[index_[i] * static_cast<size_t>(d_)]; }

  std::pair<float, float> extent(size_t lo, size_t hi, size_t axis) const {
    std::pair<float, float> range{point(lo)[axis], point(lo)[axis]};
    for (size_t i = lo; i < hi; ++i) {
      range = {std::min(range.first, point(i)[axis]), std::max(range.second, point(i)[axis])};
    }
    return range;
  }

  Box exactBox(size_t lo, size_t hi) const {
    Box box;
    for (size_t a = 0; a < static_cast<size_t>(d_); ++a) box.push_back(extent(lo, hi, a));
    return box;
  }

  std::unique_ptr<Node> divide(size_t lo, size_t hi, Box& box) {
    ++nodes_;
    auto node = std::make_unique<Node>(Node{lo, hi, 0, 0, 0, nullptr, nullptr});
    if (hi - lo <= static_cast<size_t>(leafSize_)) {
      box = exactBox(lo, hi);
      return node;
    }
    float cut = 0;
    const size_t middle = split(lo, hi, box, node->axis, cut);
    Box first = box, second = box;
    first[node->axis].second = cut;
    second[node->axis].first = cut;
    node->first = divide(lo, middle, first);
    node->second = divide(middle, hi, second);
    node->lowBound = first[node->axis].second;
    node->highBound = second[node->axis].first;
    for (size_t a = 0; a < box.size(); ++a) {
      box[a] = {std::min(first[a].first, second[a].first), std::max(first[a].second, second[a].second)};
    }
    return node;
  }

  size_t split(size_t lo, size_t hi, const Box& box, size_t& axis, float& cut) {
    float longest = 0, spread = -1;
    for (const auto& [low, high] : box) longest = std::max(longest, high - low);
    for (size_t a = 0; a < box.size(); ++a) {
      const auto [low, high] = extent(lo, hi, a);
      if (box[a].second - box[a].first > longest * 0.9999999f && high - low > spread) {
        spread = high - low;
        axis = a;
      }
    }
    const auto [low, high] = extent(lo, hi, axis);
    cut = std::clamp((box[axis].first + box[axis].second) / 2, low, high);
    const size_t below = part(lo, hi, [&](size_t i) { return point(i)[axis] < cut; });
    const size_t upTo = part(below, hi, [&](size_t i) { return point(i)[axis] <= cut; });
    const size_t half = (hi - lo) / 2;
    if (below - lo > half) return below;
    return upTo - lo < half ? upTo : lo + half;
  }

  template <class InFront>
  size_t part(size_t lo, size_t hi, InFront inFront) {
    for (;;) {
      while (lo < hi && inFront(lo)) ++lo;
      while (lo < hi && !inFront(hi - 1)) --hi;
      if (lo >= hi) return lo;
      std::swap(index_[lo++], index_[--hi]);
    }
  }

  void search(const Node& node, const float* q, size_t k, float bound, std::vector<float>& parts,
              std::vector<Neighbour>& found) const {
    const auto worst = [&] { return found.size() < k ? FLT_MAX : found.back().distance; };
    if (!node.first) {
      for (size_t i = node.lo; i < node.hi; ++i) {
        const float distance = squaredDistance(point(i), q, d_);
        if (!(distance < worst())) continue;
        const auto later = [](float value, const Neighbour& n) { return value < n.distance; };
        found.insert(std::upper_bound(found.begin(), found.end(), distance, later), {index_[i], distance});
        if (found.size() > k) found.pop_back();
      }
      return;
    }
    const float a = q[node.axis] - node.lowBound, b = q[node.axis] - node.highBound;
    const bool nearFirst = a + b < 0;
    search(nearFirst ? *node.first : *node.second, q, k, bound, parts, found);
    const float part = parts[node.axis];
    parts[node.axis] = nearFirst ? b * b : a * a;
    bound = bound + parts[node.axis] - part;
    if (bound < worst()) search(nearFirst ? *node.second : *node.first, q, k, bound, parts, found);
    parts[node.axis] = part;
  }

  const std::vector<float>& points_;
  int32_t d_, leafSize_, nodes_ = 0;
  std::vector<uint32_t> index_;
  Box box_;
  std::unique_ptr<Node> root_;
};

// All points nearer than the root of `limit` in the first three axes, ascending by distance, then number.
inline std::vector<Neighbour> within(const std::vector<float>& points, int32_t d, const float* q, float limit) {
  std::vector<Neighbour> found;
  for (uint32_t i = 0; i < points.size() / static_cast<size_t>(d); ++i) {
    const float distance = squaredDistance(&points[i * static_cast<size_t>(d)], q, std::min(d, 3));
    if (distance < limit) found.push_back({i, distance});
  }
  std::sort(found.begin(), found.end(), [](const Neighbour& a, const Neighbour& b) {
    return std::pair(a.distance, a.index) < std::pair(b.distance, b.index);
  });
  return found;
}

// Squared distances of all points, ascending; those that are no number, or too large for one, left out.
inline std::vector<float> sortedDistances(const std::vector<float>& points, int32_t d, const float* q) {
  std::vector<float> all;
  for (size_t i = 0; i < points.size(); i += static_cast<size_t>(d)) {
    const float distance = squaredDistance(&points[i], q, d);
    if (distance < FLT_MAX) all.push_back(distance);
  }
  std::sort(all.begin(), all.end());
  return all;
}

}  // namespace dax::oracle

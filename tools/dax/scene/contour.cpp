#include "scene/contour.h"

#include <array>

namespace dax::tool {
namespace {

struct Step {
  int x;
  int y;
};

// East, south, west, north: clockwise, as y runs down.
constexpr std::array kSteps = {Step{1, 0}, Step{0, 1}, Step{-1, 0}, Step{0, -1}};

constexpr int turnRight(int direction) {
  return (direction + 1) & 3;
}
constexpr int turnLeft(int direction) {
  return (direction + 3) & 3;
}

// The blob of each pixel, with an empty border.
class OwnerMap {
 public:
  explicit OwnerMap(DaxiSize size)
      : width_(static_cast<size_t>(size.width) + 2), owners_(width_ * (static_cast<size_t>(size.height) + 2)) {}

  uint32_t& at(int x, int y) { return owners_[(static_cast<size_t>(y) + 1) * width_ + static_cast<size_t>(x) + 1]; }

  void paint(const DaxiDomainList& domains, const DaxiDomain& domain, uint32_t owner) {
    for (const DomainRun* run = &domain.head;; run = &domains.runs[run->next]) {
      for (int x = run->start; x <= run->end; ++x) at(x, run->row) = owner;
      if (run->next == DAXI_RUN_END) return;
    }
  }

 private:
  size_t width_;
  std::vector<uint32_t> owners_;
};

// A walk along pixel edges with the blob on the right. A corner (x, y) is the upper left one of pixel (x, y).
class EdgeWalk {
 public:
  EdgeWalk(OwnerMap& map, const DomainRun& head, bool diagonals)
      : map_(map), x_(head.start), y_(head.row), owner_(map.at(head.start, head.row)), diagonals_(diagonals) {}

  int direction() const { return direction_; }

  // Middle of the edge ahead.
  Point middle() const {
    const Step step = kSteps[direction_];
    return {x_ + 0.5F * step.x - 0.5F, y_ + 0.5F * step.y - 0.5F};
  }

  void advance() {
    x_ += kSteps[direction_].x;
    y_ += kSteps[direction_].y;
    const bool left = isOwn(turnLeft(direction_));
    const bool right = isOwn(turnRight(direction_));
    if (left && (right || diagonals_)) {
      direction_ = turnLeft(direction_);
    } else if (!right) {
      direction_ = turnRight(direction_);
    }
  }

  bool operator==(const EdgeWalk& other) const {
    return x_ == other.x_ && y_ == other.y_ && direction_ == other.direction_;
  }

 private:
  // The pixel ahead on the given side.
  bool isOwn(int side) const {
    const Step a = kSteps[direction_];
    const Step b = kSteps[side];
    return map_.at(x_ + (a.x + b.x - 1) / 2, y_ + (a.y + b.y - 1) / 2) == owner_;
  }

  OwnerMap& map_;
  int x_;
  int y_;
  uint32_t owner_;
  bool diagonals_;
  int direction_ = 0;
};

bool isStraight(Point a, Point b, Point c) {
  return (b.x - a.x) * (c.y - b.y) == (b.y - a.y) * (c.x - b.x);
}

// The pixel above the first pixel of a domain is outside it, so the walk starts east along its upper edge.
Contour trace(OwnerMap& map, const DomainRun& head, bool diagonals) {
  const EdgeWalk start(map, head, diagonals);
  EdgeWalk walk = start;
  Contour contour;
  do {
    const Point point = walk.middle();
    const size_t n = contour.size();
    if (n >= 2 && isStraight(contour[n - 2], contour[n - 1], point)) contour.pop_back();
    contour.push_back(point);
    walk.advance();
  } while (!(walk == start));
  return contour;
}

}  // namespace

std::vector<Contour> traceContours(const DaxiDomainList& domains, std::span<const DaxiDomain* const> shown,
                                   int connectivity) {
  OwnerMap map(domains.size);
  uint32_t owner = 0;
  for (const DaxiDomain* domain : shown) map.paint(domains, *domain, ++owner);
  std::vector<Contour> contours;
  contours.reserve(shown.size());
  for (const DaxiDomain* domain : shown) contours.push_back(trace(map, domain->head, connectivity != 4));
  return contours;
}

}  // namespace dax::tool

#include "daxi/contour_approx.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

#include "frame/check.h"

namespace dax {
namespace {

struct ChainPoint {
  double x, y;
};

struct Piece {
  int32_t first, last;  // of a closed chain `last` may be the number of points: the first one again
};

template <class Point>
class ChainApproximation {
 public:
  ChainApproximation(const Point* points, int32_t count, double tolerance, uint8_t* isKept)
      : points_(points),
        count_(count),
        tolerance2_(tolerance * tolerance),
        isKept_(isKept),
        budget_(64 * int64_t{count} * std::bit_width(static_cast<uint32_t>(count))) {
    std::fill_n(isKept, count, uint8_t{0});
  }

  void open() {
    isKept_[0] = isKept_[count_ - 1] = 1;
    refine({0, count_ - 1});
  }

  void closed() {
    const auto [far, distance2] = farthest({0, count_});
    isKept_[0] = 1;
    if (!(distance2 > tolerance2_)) return;
    isKept_[far] = 1;
    refine({0, far});
    refine({far, count_});
  }

  bool isLimited() const { return budget_ < 0; }

 private:
  ChainPoint at(int32_t i) const {
    const Point& p = points_[i == count_ ? 0 : i];
    return {static_cast<double>(p.x), static_cast<double>(p.y)};
  }

  // Of the points inside a piece, the first one farthest from its segment.
  std::pair<int32_t, double> farthest(Piece piece) {
    const ChainPoint a = at(piece.first), b = at(piece.last);
    const double dx = b.x - a.x, dy = b.y - a.y, length2 = dx * dx + dy * dy;
    std::pair<int32_t, double> best{piece.first, -1};
    for (int32_t i = piece.first + 1; i < piece.last; ++i) {
      const ChainPoint p = at(i);
      const double px = p.x - a.x, py = p.y - a.y, along = px * dx + py * dy;
      double distance2 = px * px + py * py;
      if (along >= length2 && length2 > 0) distance2 = (p.x - b.x) * (p.x - b.x) + (p.y - b.y) * (p.y - b.y);
      if (along > 0 && along < length2) {
        const double cross = dx * py - dy * px;
        distance2 = cross * cross / length2;
      }
      if (distance2 > best.second) best = {i, distance2};
    }
    budget_ -= piece.last - piece.first;
    return best;
  }

  // The longer part waits, so that the stack holds no more than one piece for each halving.
  void refine(Piece piece) {
    Piece waiting[32];
    int32_t size = 0;
    waiting[size++] = piece;
    while (size > 0) {
      const Piece now = waiting[--size];
      auto [split, distance2] = farthest(now);
      if (!(distance2 > tolerance2_)) continue;
      if (isLimited()) split = now.first + (now.last - now.first) / 2;
      isKept_[split] = 1;
      Piece shorter{now.first, split}, longer{split, now.last};
      if (shorter.last - shorter.first > longer.last - longer.first) std::swap(shorter, longer);
      waiting[size++] = longer;
      waiting[size++] = shorter;
    }
  }

  const Point* points_;
  int32_t count_;
  double tolerance2_;
  uint8_t* isKept_;
  int64_t budget_;  // distances that may still be computed
};

template <class Point>
DaxStatus approximate(const Point* points, int32_t count, uint32_t closed, double tolerance, int32_t* indices,
                      int32_t* kept, uint32_t* flags, void* buffer) {
  DAX_REQUIRE(points && indices && kept && flags && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(count >= 1, DAX_STS_BAD_COUNT);
  DAX_REQUIRE(closed <= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(tolerance >= 0 && std::isfinite(tolerance), DAX_STS_BAD_PARAM);
  const bool areFinite = std::all_of(points, points + count, [](const Point& p) {
    return std::isfinite(static_cast<double>(p.x)) && std::isfinite(static_cast<double>(p.y));
  });
  DAX_REQUIRE(areFinite, DAX_STS_DATA_RANGE);
  auto* const isKept = static_cast<uint8_t*>(buffer);
  ChainApproximation chain(points, count, tolerance, isKept);
  closed ? chain.closed() : chain.open();
  *kept = 0;
  for (int32_t i = 0; i < count; ++i) {
    if (isKept[i]) indices[(*kept)++] = i;
  }
  *flags = chain.isLimited() ? DAXI_CONTOUR_LIMIT : 0;
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAX_ContourApproxBufferSize(int32_t count, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(count >= 1, DAX_STS_BAD_COUNT);
  *bytes = static_cast<uint64_t>(count);
  return DAX_STS_OK;
}

DaxStatus DAXI_ContourApprox_32f(const DaxiPoint32f* points, int32_t count, uint32_t closed, double tolerance,
                                 int32_t* indices, int32_t* kept, uint32_t* flags, void* buffer) {
  return dax::approximate(points, count, closed, tolerance, indices, kept, flags, buffer);
}

DaxStatus DAXI_ContourApprox_32s(const DaxiPoint32s* points, int32_t count, uint32_t closed, double tolerance,
                                 int32_t* indices, int32_t* kept, uint32_t* flags, void* buffer) {
  return dax::approximate(points, count, closed, tolerance, indices, kept, flags, buffer);
}

#include "measure/fit/line_fit_search.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstring>

#include "measure/fit/angle_gate.h"

namespace dax {
namespace {

constexpr double kCoverDistance = 0.5;  // pixels, as documented

// Up to this number of points all pairs are at most 19900 lines, no more than the fixed sequence has.
constexpr int32_t kMaxForAllPairs = 200;
constexpr uint64_t kMinLines = 1000, kMaxLines = 20000;  // of the fixed sequence
constexpr uint64_t kMaxPointTests = 4000000;             // lines times points, between these two

struct Support {
  double sum;     // of distances
  int32_t count;  // of points, and one more
};

// Four sums, each over every fourth point, are added at the end, so that points can be processed four at a time. With
// kCovers, points within kCoverDistance are marked; marks of points before the pair's second one have no effect.
template <bool kCovers>
Support supportOf(const LinePoints& points, const ExactLine& line, double limit, uint8_t* covered) {
  double sums[4] = {};
  int64_t counts[4] = {};
  const auto take = [&](int32_t k, int lane) {
    const double d = std::fabs(line.a * points.x[k] + line.b * points.y[k] + line.c);
    const bool near = d <= limit;
    sums[lane] += near ? d : 0.0;
    counts[lane] += near ? 1 : 0;
    if constexpr (kCovers) covered[k] = static_cast<uint8_t>(covered[k] | (d <= kCoverDistance));
  };
  int32_t k = 0;
  for (; k <= points.count - 4; k += 4) {
    for (int lane = 0; lane < 4; ++lane) take(k + lane, lane);
  }
  for (int lane = 0; k < points.count; ++k, ++lane) take(k, lane);
  return {(sums[0] + sums[1]) + (sums[2] + sums[3]),
          static_cast<int32_t>(1 + counts[0] + counts[1] + counts[2] + counts[3])};
}

// The two candidates: the line with the most points, and of the lines with enough points the one with the smallest mean
// distance.
class Candidates {
 public:
  explicit Candidates(int32_t enough) : enough_(enough) {}

  void offer(const ExactLine& line, const Support& support) {
    if (support.count > maxPoints_) {
      maxPoints_ = support.count;
      fullest_ = line;
    }
    if (support.count < enough_) return;
    const double mean = support.sum / support.count;
    if (!(mean <= minMean_)) return;
    minMean_ = mean;
    closest_ = line;
    hasClosest_ = true;
  }

  bool take(ExactLine& line) const {
    if (maxPoints_ == 0) return false;
    line = hasClosest_ ? closest_ : fullest_;
    return true;
  }

 private:
  int32_t enough_;
  int32_t maxPoints_ = 0;
  double minMean_ = DBL_MAX;
  bool hasClosest_ = false;
  ExactLine fullest_ = {}, closest_ = {};
};

class PairSearch {
 public:
  PairSearch(const LinePoints& points, const LineFitCfg& cfg, uint8_t* covered)
      : points_(points),
        gate_(cfg),
        limit_(cfg.distanceThreshold + kLineSlack),
        covered_(covered),
        candidates_(points.count - cfg.maxRejected) {}

  void tryAll() {
    const int32_t n = points_.count;
    for (int32_t i = 0; i < n - 1; ++i) {
      std::memset(covered_ + i + 1, 0, static_cast<size_t>(n - 1 - i));
      for (int32_t j = i + 1; j < n; ++j) {
        if (!covered_[j]) tryPair<true>(i, j);
      }
    }
  }

  // Tries the fixed sequence of the contract.
  void trySome() {
    const auto n = static_cast<uint64_t>(points_.count);
    const auto lines = std::min(kMaxLines, std::max(kMinLines, kMaxPointTests / n));
    uint64_t state = 0;
    const auto next = [&] {
      state = state * 6364136223846793005u + 1442695040888963407u;  // D. E. Knuth's MMIX generator
      return static_cast<int32_t>((state >> 32) * n >> 32);
    };
    for (uint64_t line = 0; line < lines; ++line) {
      const int32_t i = next(), j = next();
      tryPair<false>(std::min(i, j), std::max(i, j));
    }
  }

  bool take(ExactLine& line) const { return candidates_.take(line); }

 private:
  template <bool kCovers>
  void tryPair(int32_t i, int32_t j) {
    const double xi = points_.x[i], yi = points_.y[i], xj = points_.x[j], yj = points_.y[j];
    const double dx = xj - xi, dy = yj - yi, square = dx * dx + dy * dy;
    if (!(square >= kLineSlack && square <= DBL_MAX)) return;
    const double length = std::sqrt(square);
    if (!gate_.accepts(dx, dy, length)) return;
    const ExactLine line{-dy / length, dx / length, (yj * xi - xj * yi) / length};
    candidates_.offer(line, supportOf<kCovers>(points_, line, limit_, covered_));
  }

  LinePoints points_;
  AngleGate gate_;
  double limit_;
  uint8_t* covered_;
  Candidates candidates_;
};

}  // namespace

bool searchLine(const LinePoints& points, const LineFitCfg& cfg, uint8_t* covered, ExactLine& line) {
  PairSearch search(points, cfg, covered);
  const bool all = cfg.initMethod == DAXI_LINE_INIT_ALL_PAIRS || points.count <= kMaxForAllPairs;
  if (all) {
    search.tryAll();
  } else {
    search.trySome();
  }
  return search.take(line);
}

}  // namespace dax

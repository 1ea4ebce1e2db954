// Where the neighbours of local binary patterns lie.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

#include "daxi/lbp.h"
#include "frame/check.h"
#include "frame/numeric/elementary.h"
#include "frame/numeric/round.h"

namespace dax {

// A neighbour: pixels with weights that add up to 4096. Without the pixel in the centre, whose difference from itself
// is 0.
struct LbpPoint {
  int32_t taps = 0;
  int32_t dx[4], dy[4], weights[4];

  void add(int32_t x, int32_t y, int32_t weight) {
    if (weight == 0 || (x == 0 && y == 0)) return;
    dx[taps] = x, dy[taps] = y, weights[taps] = weight;
    ++taps;
  }
};

struct LbpPattern {
  static constexpr int32_t kMaxPoints = 24, kOne = 4096;

  int32_t count;
  bool isAround;  // of the eight pixels around
  int32_t reach = 0;
  LbpPoint points[kMaxPoints];

  explicit LbpPattern(const DaxiLbpCfg& cfg) : count(cfg.points), isAround(cfg.radius == 0) {
    constexpr int8_t kAround[8][2] = {{1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}, {1, -1}};
    for (int32_t k = 0; k < count; ++k) {
      if (isAround) {
        points[k].add(kAround[k][0], kAround[k][1], kOne);
      } else {
        const SinCos turn = elementary::sinCos(2 * std::numbers::pi * k / count);
        points[k] =
            pointAt(roundTo<int32_t>(kOne * cfg.radius * turn.cosine), roundTo<int32_t>(kOne * cfg.radius * turn.sine));
      }
      for (int32_t t = 0; t < points[k].taps; ++t) {
        reach = std::max({reach, std::abs(points[k].dx[t]), std::abs(points[k].dy[t])});
      }
    }
  }

 private:
  // A place in 1/4096 pixel; rounding down, of negative ones too.
  static LbpPoint pointAt(int32_t x, int32_t y) {
    const int32_t left = x >> 12, top = y >> 12, a = x & (kOne - 1), b = y & (kOne - 1);
    const int32_t both = (a * b + kOne / 2) / kOne;
    LbpPoint point;
    point.add(left, top, kOne - a - b + both);
    point.add(left + 1, top, a - both);
    point.add(left, top + 1, b - both);
    point.add(left + 1, top + 1, both);
    return point;
  }
};

inline DaxStatus checkLbp(const DaxiLbpCfg& cfg, int32_t maxPoints) {
  DAX_REQUIRE(cfg.codes >= DAXI_LBP_PLAIN && cfg.codes <= DAXI_LBP_UNIFORM, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.points >= 4 && cfg.points <= (cfg.codes == DAXI_LBP_UNIFORM ? LbpPattern::kMaxPoints : maxPoints),
              DAX_STS_BAD_PARAM);
  DAX_REQUIRE((cfg.radius == 0 && cfg.points == 8) || (cfg.radius >= 0.5 && cfg.radius <= 32), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.border >= DAXI_BORDER_REPLICATE && cfg.border <= DAXI_BORDER_IN_MEMORY, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::fabs(cfg.value) <= std::numeric_limits<double>::max(), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

inline int32_t lbpCodeCount(const DaxiLbpCfg& cfg) {
  return cfg.codes == DAXI_LBP_UNIFORM ? cfg.points + 2 : 1 << cfg.points;
}

}  // namespace dax

#include "image/warp/polar.h"

#include <cmath>
#include <cstddef>
#include <numbers>

#include "frame/math.h"
#include "frame/numeric/elementary.h"

static_assert(sizeof(DaxiPolarCfg) == 80 && offsetof(DaxiPolarCfg, value) == 64);

namespace dax {
namespace {

constexpr double kCircle = 2 * std::numbers::pi, kCircleSlack = 1e-9;

bool isWithin(double value, double low, double high) {
  return value >= low && value <= high;
}

double logRatioOf(const DaxiPolarCfg& cfg) {
  return cfg.log ? elementary::log(cfg.r1 / cfg.r0) : 0;
}

}  // namespace

DaxStatus checkPolarCfg(const DaxiPolarCfg& cfg) {
  constexpr double kFar = 1e7;
  const auto isRadius = [&](double r) { return isWithin(r, 0, kFar) && (r > 0 || cfg.log == 0); };
  DAX_REQUIRE(isWithin(cfg.cx, -kFar, kFar), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isWithin(cfg.cy, -kFar, kFar), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isRadius(cfg.r0), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isRadius(cfg.r1) && cfg.r1 != cfg.r0, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isWithin(cfg.angle0, -1e6, 1e6), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isWithin(std::fabs(cfg.span), 0, kCircle + kCircleSlack) && cfg.span != 0, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.log == 0 || cfg.log == 1, DAX_STS_BAD_PARAM);
  return checkSampling(cfg);
}

bool isFullCircle(const DaxiPolarCfg& cfg) {
  return std::fabs(cfg.span) >= kCircle - kCircleSlack;
}

// --- From the picture to the rectangle ---

PolarWalk::PolarWalk(const DaxiPolarCfg& cfg, DaxiSize size) : cfg_(cfg), size_(size), logRatio_(logRatioOf(cfg)) {}

void PolarWalk::enter(int32_t x, int32_t count) {
  count_ = count;
  for (int32_t i = 0; i < count; ++i) {
    const double angle = cfg_.angle0 + cfg_.span * ((x + i + 0.5) / size_.width);
    const SinCos turn = elementary::sinCos(angle);
    sines_[i] = turn.sine;
    cosines_[i] = turn.cosine;
  }
}

double PolarWalk::radiusOf(int32_t y) const {
  const double part = (y + 0.5) / size_.height;
  return cfg_.log ? cfg_.r0 * elementary::exp(part * logRatio_) : cfg_.r0 + (cfg_.r1 - cfg_.r0) * part;
}

void PolarWalk::row(int32_t y, Positions& at) const {
  const double radius = radiusOf(y);
  const auto place = [&](int32_t i) {
    return RealPosition<double>{cfg_.cx + radius * cosines_[i], cfg_.cy + radius * sines_[i]};
  };
  fixPositions(count_, place, at);
}

// --- And back ---

PolarBackWalk::PolarBackWalk(const DaxiPolarCfg& cfg, DaxiSize size)
    : cfg_(cfg), size_(size), isFull_(isFullCircle(cfg)), logRatio_(logRatioOf(cfg)) {}

// Turns are counted from the middle of the sector, so that the nearer end of it is what an angle outside lies beyond.
double PolarBackWalk::columnOf(double dx, double dy) const {
  double turns = (atan2Exact(dy, dx) - (cfg_.angle0 + cfg_.span / 2)) / kCircle;
  turns -= std::floor(turns + 0.5);
  double part = 0.5 + turns * (kCircle / cfg_.span);
  if (isFull_) {
    part -= std::floor(part);
    if (!(part < 1)) part = 0;
  }
  return part * size_.width - 0.5;
}

double PolarBackWalk::rowOf(double dx, double dy) const {
  const double radius = std::sqrt(dx * dx + dy * dy);
  const double part =
      cfg_.log ? elementary::log(radius / cfg_.r0) / logRatio_ : (radius - cfg_.r0) / (cfg_.r1 - cfg_.r0);
  return part * size_.height - 0.5;
}

void PolarBackWalk::row(int32_t y, Positions& at) const {
  const double dy = y - cfg_.cy;
  const auto place = [&](int32_t i) {
    const double dx = x_ + i - cfg_.cx;
    return RealPosition<double>{columnOf(dx, dy), rowOf(dx, dy)};
  };
  fixPositions(count_, place, at);
}

}  // namespace dax

DaxStatus DAXI_PolarDefaultCfg(DaxiPolarCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {0, 0, 0, 1, 0, dax::kCircle, 0, DAXI_INTERPOLATION_LINEAR, DAXI_BORDER_CONSTANT, 0, 0, -0.5};
  return DAX_STS_OK;
}

// Rings unrolled, and back.
#include "daxi/polar.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/text.h"
#include "warp/geometry_call.h"

namespace dax::tool {
namespace {

constexpr GeometryCall<DaxiPolarCfg> kPolar = {{DAXI_Polar_8u_C1R, DAXI_Polar_8u_C3R},
                                               {DAXI_Polar_16u_C1R, DAXI_Polar_16u_C3R},
                                               {DAXI_Polar_32f_C1R, DAXI_Polar_32f_C3R}};
constexpr GeometryCall<DaxiPolarCfg> kPolarBack = {{DAXI_PolarBack_8u_C1R, DAXI_PolarBack_8u_C3R},
                                                   {DAXI_PolarBack_16u_C1R, DAXI_PolarBack_16u_C3R},
                                                   {DAXI_PolarBack_32f_C1R, DAXI_PolarBack_32f_C3R}};

struct Ring {
  DaxiPolarCfg cfg;
  std::optional<DaxiSize> size;
};

bool isRing(const DaxiPolarCfg& cfg) {
  const auto isRadius = [&](double r) { return r >= 0 && r <= 1e7 && !(cfg.log && r == 0); };
  return std::fabs(cfg.cx) <= 1e7 && std::fabs(cfg.cy) <= 1e7 && isRadius(cfg.r0) && isRadius(cfg.r1) &&
         cfg.r0 != cfg.r1 && cfg.span != 0 && std::fabs(cfg.span) <= 2 * std::numbers::pi;
}

// CX,CY,R0,R1[,START,SPAN][:WxH][:log]
std::optional<Ring> parseRing(std::string_view text, const Sampling& sampling) {
  std::vector<std::string_view> parts = split(text, ':');
  const bool isShort = parts.front().empty() || std::count(parts.front().begin(), parts.front().end(), ',') == 3;
  const auto numbers = parseNumbers(parts.front(), isShort ? 4 : 6);
  Ring ring;
  check(DAXI_PolarDefaultCfg(&ring.cfg), "--polar");
  sampling.setIn(ring.cfg);
  if (parts.size() > 1 && parts.back() == "log") {
    ring.cfg.log = 1;
    parts.pop_back();
  }
  if (parts.size() == 2) ring.size = parseSides(parts[1]);
  if (!numbers || parts.size() > 2 || (parts.size() == 2 && !ring.size)) return std::nullopt;
  const std::vector<double>& n = *numbers;
  ring.cfg.cx = n[0], ring.cfg.cy = n[1], ring.cfg.r0 = n[2], ring.cfg.r1 = n[3];
  if (!isShort) {
    if (std::fabs(n[4]) > 1e6 || std::fabs(n[5]) > 360) return std::nullopt;
    ring.cfg.angle0 = n[4] * (std::numbers::pi / 180), ring.cfg.span = n[5] / 360 * (2 * std::numbers::pi);
  }
  return isRing(ring.cfg) ? std::optional(ring) : std::nullopt;
}

// As many columns as pixels along the outer arc, as many rows as from radius to radius.
DaxiSize fullSize(const DaxiPolarCfg& cfg) {
  const auto side = [](double length) {
    return static_cast<int32_t>(std::clamp(std::ceil(length - 1e-9), 1.0, 2097152.0));
  };
  return {side(std::fabs(cfg.span) * std::max(cfg.r0, cfg.r1)), side(std::fabs(cfg.r1 - cfg.r0))};
}

ConvertStep parsePolar(std::string_view text, const Sampling& sampling) {
  const auto ring = parseRing(text, sampling);
  if (!ring) return {};
  return [cfg = ring->cfg, size = ring->size.value_or(fullSize(ring->cfg))](const Samples& samples) {
    return sampled(kPolar, "--polar", samples, size, cfg);
  };
}

ConvertStep parsePolarBack(std::string_view text, const Sampling& sampling) {
  const auto ring = parseRing(text, sampling);
  if (!ring || !ring->size) return {};
  return [cfg = ring->cfg, size = *ring->size](const Samples& samples) {
    return sampled(kPolarBack, "--polar-back", samples, size, cfg);
  };
}

const WarpRegistration polarRegistration(
    {60, "--polar", "RING", "X,Y,R0,R1[,START,SPAN][:WxH][:log], R0 and R1 different, SPAN within -360..360 and not 0",
     "unroll a ring about X,Y: columns are angles, rows radii from R0\n"
     "to R1. X,Y,R0,R1, then ,START,SPAN of a sector, degrees clockwise\n"
     "from the right, then :WxH for the size of the result [that of the\n"
     "outer arc], then :log for radii that grow by a factor",
     parsePolar});
const WarpRegistration polarBackRegistration({65, "--polar-back", "RING",
                                              "X,Y,R0,R1[,START,SPAN]:WxH[:log], with the size of the picture",
                                              "roll a ring up again: the same, with the size of the picture",
                                              parsePolarBack});

}  // namespace
}  // namespace dax::tool

// Rings of two different radii, and parts of results.
#include "tests/image/warp/geometry_hostile.h"

namespace dax::hostile {
namespace {

void polar(Call& c) {
  c.filled<DaxiPolarCfg>("cfg", 1, [&](DaxiPolarCfg& cfg) {
    anySampling(c, cfg);
    const auto number = [&](int64_t low, int64_t high) { return static_cast<double>(c.between(low, high)) / 8; };
    const double scale = c.chance(90) ? 1 : 1e4;
    cfg.cx = number(-100, 500) * scale, cfg.cy = number(-100, 500) * scale;
    cfg.r0 = number(1, 300) * scale, cfg.r1 = cfg.r0 + number(1, 300) * scale;
    if (c.chance(30)) std::swap(cfg.r0, cfg.r1);
    if (c.chance(20)) cfg.log = 0, cfg.r0 = 0;
    cfg.angle0 = number(-80, 80);
    cfg.span = c.chance(40) ? 6.283185307179586 : c.pick({1, -1}) * number(1, 50);
  });
  partOfResult(c);
}

const Rows rows = {{"DAXI_Polar_*", polar}, {"DAXI_PolarBack_*", polar}};

}  // namespace
}  // namespace dax::hostile

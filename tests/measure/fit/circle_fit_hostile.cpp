// Circles through points of which some do not belong.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

template <class Point>
void circlePoints(Call& c) {
  if (c.number("count", 3, 60) > 300) c.set("count", 300);
  const auto count = c.get<int32_t>("count");
  const int32_t strays = c.pick({0, 5, 10, 30}), reach = c.pick({40, 300, 300});
  c.filled<Point>("points", count < 1 ? -1 : count, [&](Point& point) {
    const double t = static_cast<double>(c.between(-reach, reach)) / 100;  // a rational point of a circle
    const double r = c.chance(strays) ? 10 + static_cast<double>(c.between(0, 90)) : 100;
    point.x = static_cast<decltype(point.x)>(r * (1 - t * t) / (1 + t * t));
    point.y = static_cast<decltype(point.y)>(r * 2 * t / (1 + t * t));
  });
  auto* const cfg = c.filled<CircleFitCfg>("cfg", 1, [&](CircleFitCfg& each) {
    each.maxRejected = c.chance(80) ? 0 : c.random.below(3);
    each.minRadius = std::min(each.minRadius, c.chance(80) ? 5.0 : 1e9), each.maxRadius += 1000;
    each.distanceThreshold = c.chance(70) ? 0 : each.distanceThreshold + 30;
  });
  if (cfg) cfg->maxIterations = std::min(cfg->maxIterations, 200), cfg->trials = std::min(cfg->trials, 500);
  c.worksBeforeFailing = true;
}

const Rows rows = {
    {"DAXI_CircleFitRegre_32f", circlePoints<DaxiPoint32f>},
    {"DAXI_CircleFitRegre_16s32f", circlePoints<DaxiPoint16s>},
    {"DAXI_CircleFitRegre_32s32f", circlePoints<DaxiPoint32s>},
    {"DAXI_CircleFitLeastSquare_32f", circlePoints<DaxiPoint32f>},
    {"DAXI_CircleFitLeastSquare_16s32f", circlePoints<DaxiPoint16s>},
    {"DAXI_CircleFitLeastSquare_32s32f", circlePoints<DaxiPoint32s>},
    {"DAXI_CircleFitRansac_32f", circlePoints<DaxiPoint32f>},
    {"DAXI_CircleFitRansac_16s32f", circlePoints<DaxiPoint16s>},
    {"DAXI_CircleFitRansac_32s32f", circlePoints<DaxiPoint32s>},
};

}  // namespace
}  // namespace dax::hostile

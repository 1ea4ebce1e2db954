// Lines through points of which some do not belong.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

template <class Point>
void fitLine(Call& c) {
  if (c.number("count", 2, 40) > 200) c.set("count", 200);  // time may grow with the cube
  const auto count = c.get<int32_t>("count");
  const auto slope = static_cast<double>(c.between(-300, 300)) / 100;
  const int32_t strays = c.pick({0, 10, 30, 100});
  c.filled<Point>("points", count < 2 ? -1 : count, [&](Point& point) {
    const auto x = static_cast<double>(c.between(0, 200000)) / 1000,
               noise = static_cast<double>(c.between(0, 1000)) / 1000;
    point.x = static_cast<decltype(point.x)>(x);
    point.y = static_cast<decltype(point.y)>(c.chance(strays) ? 300 * noise : slope * x + 5 * noise);
  });
  auto* const cfg = c.filled<LineFitCfg>("cfg", 1, [&](LineFitCfg& each) {
    each.maxRejected = c.chance(50) ? 0 : c.random.below(std::clamp(count, 2, 21) - 1);
    each.angleConstraint = c.chance(80) ? 0 : 1;
  });
  if (cfg) cfg->maxIterations = std::min(cfg->maxIterations, 1000);  // all of which may be made
  c.worksBeforeFailing = true;
}

const Rows rows = {
    {"DAXI_LineFitRegre_32f", fitLine<DaxiPoint32f>},
    {"DAXI_LineFitRegre_16s32f", fitLine<DaxiPoint16s>},
    {"DAXI_LineFitRegre_32s32f", fitLine<DaxiPoint32s>},
};

}  // namespace
}  // namespace dax::hostile

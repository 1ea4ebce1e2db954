// Matrices of all tempers, quadrangles that are mostly convex, and parts of results.
#include "tests/image/warp/geometry_hostile.h"

namespace dax::hostile {
namespace {

void warpCfg(Call& c, bool isAffine) {
  c.filled<DaxiWarpCfg>("cfg", 1, [&](DaxiWarpCfg& cfg) {
    anySampling(c, cfg);
    anyMatrix(c, cfg.m, isAffine);
  });
}

void affine(Call& c) {
  warpCfg(c, true);
  partOfResult(c);
}

void perspective(Call& c) {
  warpCfg(c, false);
  partOfResult(c);
}

void rotation(Call& c) {
  c.filled<DaxiRotateCfg>("cfg", 1, [&](DaxiRotateCfg& cfg) {
    anySampling(c, cfg);
    cfg.angle = c.chance(80) ? static_cast<double>(c.between(-1000, 1000)) / 128 : 1e300;
  });
  partOfResult(c);
}

void bound(Call& c) {
  c.filled<DaxiWarpCfg>("cfg", 1, [&](DaxiWarpCfg& cfg) {
    anySampling(c, cfg);
    if (c.chance(30)) return anyMatrix(c, cfg.m, c.chance(50));
    const double near[9] = {2, 0.3, 5, -0.3, 1.5, 7, c.pick({0.0, 1e-4}), c.pick({0.0, -1e-4}), 1};
    std::copy_n(near, 9, cfg.m);
  });
  const auto size = c.size("srcSize");
  c.given("region", DaxiRect{0, 0, size.width, size.height});
}

void corners(Call& c) {
  for (const char* const each : {"from", "to"}) c.around(each, {0, 0, 100, 0, 120, 90, 10, 80}, 8);
}

void triangle(Call& c) {
  for (const char* const each : {"from", "to"}) c.around(each, {0, 0, 100, 0, 120, 90}, 8);
}

const Rows rows = {{"DAXI_WarpAffine_*", affine},      {"DAXI_WarpPerspective_*", perspective},
                   {"DAXI_Rotate_*", rotation},        {"DAXI_WarpBound", bound},
                   {"DAXI_PerspectiveFrom4", corners}, {"DAXI_AffineFrom3", triangle}};

}  // namespace
}  // namespace dax::hostile

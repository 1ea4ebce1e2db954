// Images warped by matrices.
#pragma once

#include <string>

#include "daxi/warp.h"
#include "warp/warp_step.h"

namespace dax::tool {

// The defaults with this sampling.
DaxiWarpCfg warpCfg(const Sampling& sampling);

Samples warpedAffine(const Samples& samples, const std::string& step, DaxiSize size, const DaxiWarpCfg& cfg);

}  // namespace dax::tool

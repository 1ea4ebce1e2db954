// What makes results of calipers doubtful.
#pragma once

#include <string>
#include <vector>

#include "model/calipers.h"

namespace dax::tool {

// Lines for the user: regions beyond the image, stripes narrower than the kernel.
std::vector<std::string> warningsOf(DaxiSize size, const std::vector<Caliper>& calipers,
                                    const CaliperSettings& settings);

}  // namespace dax::tool

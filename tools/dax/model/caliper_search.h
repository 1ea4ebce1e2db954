// What is made of several searches of a region: pairs of either polarity, two samplings.
#pragma once

#include <vector>

#include "model/calipers.h"

namespace dax::tool {

// Results without those of score 0. Pairs of any polarity are of opposite edges, unless the settings ask for
// staircases; with `fine`, positions are the means of two samplings half a pixel apart. Throws Failure(kRefused) with a
// message that describes the region.
Caliper measure(const GreyImage& image, const Region& region, const CaliperSettings& settings);
std::vector<Caliper> measureAll(const GreyImage& image, const std::vector<Region>& regions,
                                const CaliperSettings& settings);

}  // namespace dax::tool

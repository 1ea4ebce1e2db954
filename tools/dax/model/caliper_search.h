// What is made of several searches of one region: pairs of either polarity, two samplings.
#pragma once

#include <functional>

#include "model/calipers.h"

namespace dax::tool {

using Search = std::function<Caliper(const Region& region, const CaliperSettings& settings)>;

// Results without those of score 0. Pairs of any polarity are of opposite edges, unless the settings ask for
// staircases; with `fine`, positions are the means of two samplings half a pixel apart.
Caliper searchRegion(const Region& region, const CaliperSettings& settings, const Search& search);

// Half a pixel further in the direction of the search.
Region halfPixelOn(const Region& region, bool alongHeight);

}  // namespace dax::tool

// A sample range image: machined parts on a plate, as a laser profiler to the left sees them.
#pragma once

#include <cstdint>

#include "io/range_image.h"

namespace dax::tool {

// Millimetres, 0.1 a pixel. With noise, reflections that look like patches in the wrong place, and drop-outs: single
// ones, and the shadows of the parts. The same bits on every machine: integers, and doubles with + - * / and roots
// alone.
RangeImage renderRangeScene(DaxiSize size, uint64_t seed);

}  // namespace dax::tool

// A sample range image: machined parts on a plate, as a laser profiler to the left sees them.
#pragma once

#include <cstdint>

#include "io/range_image.h"

namespace dax::tool {

// Millimetres, 0.1 per pixel. With noise, displaced patches (reflections) and drop-outs: single pixels and the shadows
// of the parts. The same bits on every machine: only integers, and doubles with + - * / and square roots.
RangeImage renderRangeScene(DaxiSize size, uint64_t seed);

}  // namespace dax::tool

// Range images and heights as pictures.
#pragma once

#include <string>
#include <utility>

#include "io/range_image.h"

namespace dax::tool {

// The 1st and 99th percentile of the valid heights; {0, 1} without valid pixels.
std::pair<float, float> usualHeights(const RangeImage& image);

// A PNG: heights in colours from `low` to `high`, invalid pixels dark, and below a scale with its ends.
// Throws Failure(kRefused) for pictures that cannot be drawn.
std::string drawHeights(const RangeImage& image, float low, float high);

}  // namespace dax::tool

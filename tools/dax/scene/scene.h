// A sample scene with known truth: parts and specks of dust on an uneven background, with noise.
#pragma once

#include <cstdint>

#include "io/grey_image.h"
#include "io/truth.h"

namespace dax::tool {

inline constexpr int kLeastSceneSide = 150;
inline constexpr int kMostSceneSide = 8192;

struct Scene {
  GreyImage image;
  Truth truth;  // of the parts; dust, below 20 pixels, is not in it
};

// The same pixels on every machine: integers, and doubles with + - * / alone.
Scene renderScene(DaxiSize size, uint64_t seed);

}  // namespace dax::tool

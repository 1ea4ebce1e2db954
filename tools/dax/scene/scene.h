// Sample scenes with known truth: parts and specks of dust on an uneven background, and scratches on brushed metal; with
// noise.
#pragma once

#include <cstdint>

#include "io/grey_image.h"
#include "io/truth.h"

namespace dax::tool {

inline constexpr int kMinSceneSide = 150;
inline constexpr int kMaxSceneSide = 8192;

struct Scene {
  GreyImage image;
  Truth truth;  // of the parts; without dust, which is below 20 pixels
};

// The same pixels on every machine: only integers, and doubles with + - * /.
Scene renderScene(DaxiSize size, uint64_t seed);
Scene renderBrushedMetal(DaxiSize size, uint64_t seed);

}  // namespace dax::tool

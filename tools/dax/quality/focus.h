// How sharp pictures are.
#pragma once

#include <array>

#include "io/picture.h"

namespace dax::tool {

inline constexpr std::array kFocusMeasures = {"tenengrad", "laplacian", "brenner"};
using Focus = std::array<double, kFocusMeasures.size()>;

// By each measure, of the values of the file. Throws Failure(kRefused).
Focus measureFocus(const Picture& picture);

}  // namespace dax::tool

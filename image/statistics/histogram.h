// Histograms of grey levels.
#pragma once

#include <array>
#include <cstdint>

#include "dax/types.h"

namespace dax {

// The number of pixels of each level.
using Histogram = std::array<uint64_t, 256>;

Histogram histogram(const uint8_t* src, int32_t srcStep, DaxiSize size);

}  // namespace dax

// Dark pixels, by the Otsu level of the image or by the local mean.
#pragma once

#include <cstdint>

#include "dax/types.h"

namespace dax {

// Sets dark pixels of the mask to a value other than 0, all others to 0. `mode` is DAXI_CHESSBOARD_OTSU or
// DAXI_CHESSBOARD_LOCAL_MEAN; `columns` has a number for every column.
void maskDark(const uint8_t* src, int32_t srcStep, uint8_t* mask, int32_t maskStep, DaxiSize size, int32_t mode,
              uint32_t* columns, int32_t isa);

// Side of the window of the local mean for a side of the image: a power of two.
int32_t meanWindowSide(int32_t side);

}  // namespace dax

// The quad detector: the search for one board in one image.
#pragma once

#include <cstdint>

#include "dax/status.h"
#include "daxi/chessboard.h"

namespace dax {

// Bytes of the work buffer.
DaxStatus chessboardBufferSize(DaxiSize size, ChessboardPatternSize pattern, uint64_t* bytes);

}  // namespace dax

extern "C" {

// The detector with the arguments of its export; it cannot fail.
void _DAXI_ChessboardCorner_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, ChessboardPatternSize pattern,
                                   DaxiPoint32f* corners, int32_t* cornerCount, int32_t* found, int32_t thresholdMode,
                                   int32_t maxLevel, void* buffer);
void _DAXI_ChessboardCorner_8u_C1R_IS(const uint8_t* src, int32_t srcStep, DaxiSize size, ChessboardPatternSize pattern,
                                      DaxiPoint32f* corners, int32_t* cornerCount, int32_t* found,
                                      int32_t thresholdMode, int32_t maxLevel, void* buffer, int32_t isa);
}

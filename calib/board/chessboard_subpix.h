// Workers of the subpixel refinement.
#pragma once

#include <cstdint>

#include "calib/board/corner_ring.h"
#include "dax/types.h"
#include "daxi/point.h"

extern "C" {

void _DAXI_ChessboardCornerGetSubpix_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                            const DaxiPoint32f* corners, int32_t count, DaxiSize halfWindow,
                                            int32_t maxIter, DaxiPoint32f* refined, float epsilon);

// Also writes whether each point looks like a corner, and the edges of those that do; both outputs may be null.
void _DAXI_ChessboardCornerGetSubpix_8u_C1R_v2(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                               const DaxiPoint32f* corners, int32_t count, DaxiSize halfWindow,
                                               int32_t maxIter, DaxiPoint32f* refined, float epsilon,
                                               dax::CornerEdges* edges, uint8_t* isCorner);
}

// Subpixel refinement as other files of the library call it.
#pragma once

#include <cstdint>

#include "calib/board/corner_ring.h"
#include "dax/types.h"

extern "C" {

// 3 x 3 Sobel gradients without scaling. `size` is that of the result, which lies one pixel inside the source: src
// begins a row above and a column left of it.
void _DAXI_FilterSobelHori_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
void _DAXI_FilterSobelVert_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);

void _DAXI_ChessboardCornerGetSubpix_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                            const DaxiPoint32f* corners, int32_t count, DaxiSize halfWindow,
                                            int32_t maxIter, DaxiPoint32f* refined, float epsilon);

// Writes for each corner whether it looks like one, and its edges where it does; both may be null.
void _DAXI_ChessboardCornerGetSubpix_8u_C1R_v2(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                               const DaxiPoint32f* corners, int32_t count, DaxiSize halfWindow,
                                               int32_t maxIter, DaxiPoint32f* refined, float epsilon,
                                               dax::CornerEdges* edges, uint8_t* isCorner);
}

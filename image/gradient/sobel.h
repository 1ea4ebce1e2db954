// 3 x 3 Sobel gradients of float images, without scaling.
#pragma once

#include <cstdint>

#include "dax/types.h"

extern "C" {

// Horizontal gradients ([1 2 1] down, [-1 0 1] along) and vertical ones. `size` is that of the result, which lies one
// pixel inside the source: src points to the row above and the column left of it.
void _DAXI_FilterSobelHori_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
void _DAXI_FilterSobelVert_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
}

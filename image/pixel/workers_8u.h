// Operations on 8-bit images without checks, by the names under which other families know them.
#pragma once

#include <cstdint>

#include "dax/types.h"

extern "C" {

// dst = src, row by row; the images do not overlap.
void _DAXI_Copy_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size);

// dst = 255 - src. In place as well.
void _DAXI_Not_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t isa);

// 255 from the Otsu level on, else 0. In place as well.
void _DAXI_AdpThresholdOtsu_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                   int32_t isa);

// In place as well; `buffer` as for the export.
void _DAXI_Erode3x3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                           int32_t iterations, void* buffer, int32_t isa);

// At least 3 x 3 pixels.
void _DAXI_FilterMedian3x3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                  int32_t isa);
}

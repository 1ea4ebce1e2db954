// The erosion and its two passes, unchecked, with a choice of kernels.
#pragma once

#include <cstdint>

#include "dax/types.h"

// dst may be src with the same step. `buffer` holds the queried bytes.
extern "C" void _DAXI_Erode3x3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                      int32_t iterations, void* buffer, int32_t isa);

namespace dax {

// dst may be src.
void erodeRows(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t isa);

// dst must not overlap src. There is one kernel, which compilers vectorise.
void erodeColumns(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size);

}  // namespace dax

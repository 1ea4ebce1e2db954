// Bitwise operations.
#pragma once

#include <cstdint>

#include "dax/types.h"

// dst = ~src, which is 255 - src; dst may be src.
extern "C" void _DAXI_Not_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                 int32_t isa);

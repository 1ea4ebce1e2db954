// Copies of images.
#pragma once

#include <cstdint>

#include "dax/types.h"

// dst = src; the images do not overlap.
extern "C" void _DAXI_Copy_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size);

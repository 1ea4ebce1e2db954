// Integral images: the worker of bytes, whose rows have a twin.
#pragma once

#include <cstdint>

#include "dax/types.h"

namespace dax {

void integral(const uint8_t* src, int32_t srcStep, uint32_t* dst, int32_t dstStep, DaxiSize size, int32_t isa);

}  // namespace dax

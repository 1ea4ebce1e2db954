// The erosion and its passes with a choice of kernels.
#pragma once

#include <cstdint>

#include "dax/types.h"

namespace dax {

// dst may equal src with the same step. `buffer` holds the queried bytes.
void erode3x3(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t iterations,
              void* buffer, int32_t isa);

// In place as well.
void erodeRows(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t isa);

// Not in place. One kernel only, which compilers vectorise.
void erodeColumns(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size);

}  // namespace dax

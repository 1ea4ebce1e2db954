// Gaussian smoothing: 13 x 13 pixels, sigma 3.
#pragma once

#include <cstdint>

#include "dax/types.h"
#include "frame/memory/work_buffer.h"

namespace dax {

struct GaussBuffer {
  explicit GaussBuffer(DaxiSize size);
  BufferLayout layout;
  BufferPiece<float> padded;  // a row, extended by its edge pixels
  BufferPiece<float> rows;    // 13 rows, smoothed horizontally
  int32_t rowStep;
};

}  // namespace dax

// The image is extended by its edge pixels. Any size from 1 x 1 on. `buffer` is laid out by dax::GaussBuffer.
extern "C" void _DAXI_FilterGauss_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                            DaxiSize size, void* buffer);

// Smoothing with a Gaussian of 13 x 13 pixels and sigma 3, as other families know it.
#pragma once

#include <cstdint>

#include "dax/types.h"
#include "frame/memory/work_buffer.h"

namespace dax {

struct GaussBuffer {
  explicit GaussBuffer(DaxiSize size);
  BufferLayout layout;
  BufferPiece<float> padded;  // a row with its edges carried on
  BufferPiece<float> rows;    // of 13 rows, smoothed along
  int32_t rowStep;
};

}  // namespace dax

// The edge goes on outside the image. Any size from 1 x 1 on. `buffer` holds dax::GaussBuffer.
extern "C" void _DAXI_FilterGauss_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                            DaxiSize size, void* buffer);

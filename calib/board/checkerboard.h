// What the two detectors share that find corners one by one.
#pragma once

#include <cstdint>

#include "daxi/chessboard_hessian.h"
#include "frame/check.h"

namespace dax {

// Whether both sides are 64..65536.
bool isBoardImage(DaxiSize size);

// For a buffer whose layout follows from the size of the image.
template <class Buffer>
DaxStatus boardBufferSize(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(isBoardImage(size), DAX_STS_IMAGE_SIZE);
  return Buffer(size).layout.store(bytes);
}

// DAXI_CHECKERBOARD_MEDIAN or a copy; rows of `grey` are as long as the image is wide.
void prefilter(const uint8_t* src, int32_t srcStep, uint8_t* grey, DaxiSize size, int32_t filter, int32_t isa);

// Whether a corner found where a grid expected one continues the grid: it is not far off, and its edges are those of
// the neighbour with their senses swapped.
bool continuesGrid(const CheckerboardCorner& corner, DaxiPoint32f expected, float spacing,
                   const CheckerboardCorner& neighbour);

}  // namespace dax

// Every factor-th pixel of every factor-th row. `size` is that of the result.
extern "C" void DAXI_Commom_sample_img(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size, int32_t factor);

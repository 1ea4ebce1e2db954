// Images of the detectors that find corners one by one: checks, sub-sampling, prefilter.
#pragma once

#include <cstdint>

#include "dax/types.h"
#include "frame/check.h"

namespace dax {

constexpr int32_t kMinBoardSide = 64;

// Whether both sides are 64..65536.
bool isBoardImage(DaxiSize size);

// The size query of a buffer whose layout follows from the size of the image.
template <class Buffer>
DaxStatus boardBufferSize(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(isBoardImage(size), DAX_STS_IMAGE_SIZE);
  return Buffer(size).layout.store(bytes);
}

// Copies the image, through a median filter for DAXI_CHECKERBOARD_MEDIAN; the step of `grey` is the image's width.
void prefilter(const uint8_t* src, int32_t srcStep, uint8_t* grey, DaxiSize size, int32_t filter, int32_t isa);

}  // namespace dax

// Every factor-th pixel of every factor-th row. `size` is that of the result.
extern "C" void DAXI_Commom_sample_img(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size, int32_t factor);

// Sampling: grey values at the positions of a grid.
#pragma once

#include <cstdint>
#include <type_traits>

#include "measure/caliper/caliper_region.h"

namespace dax {

template <class T>
struct CaliperImage {
  const T* pixels;
  int32_t step;
  const uint8_t* mask;  // null: all pixels count
  int32_t maskStep;
  DaxiSize size;
};

// Samples are whole numbers of 1/256 grey level.
template <class T>
using CaliperSample = std::conditional_t<std::is_same_v<T, uint8_t>, uint16_t, int32_t>;

}  // namespace dax

extern "C" {

// Sample the rows firstRow..firstRow + rows - 1 of the grid. With a mask, valid is 1 for samples that count, else 0,
// and the others become 0.
void _DAXI_CaliperBoxCopyBLV1_8u_C1R(const dax::CaliperImage<uint8_t>* image, const dax::CaliperGrid* grid,
                                     int32_t firstRow, int32_t rows, uint16_t* patch, uint8_t* valid, int32_t isa);
void _DAXI_CaliperBoxCopyBLV1_16s_C1R(const dax::CaliperImage<int16_t>* image, const dax::CaliperGrid* grid,
                                      int32_t firstRow, int32_t rows, int32_t* patch, uint8_t* valid, int32_t isa);
void DAXI_CalipEdgeDetect_RhomboidCopyBL_8u_C1R(const dax::CaliperImage<uint8_t>* image, const dax::CaliperGrid* grid,
                                                int32_t firstRow, int32_t rows, uint16_t* patch, uint8_t* valid,
                                                int32_t isa);

// One sample, at a position in units of 1/2048 pixel inside the image.
uint16_t DAXI_CalipEdgeDetectAnnulus_bl_interp(const dax::CaliperImage<uint8_t>* image, int64_t x, int64_t y);
}

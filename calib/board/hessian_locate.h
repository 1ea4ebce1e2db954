// The locator of the Hessian detector: saddle points of the smoothed image, verified on circles.
#pragma once

#include <cstdint>

#include "daxi/chessboard_hessian.h"
#include "frame/memory/work_buffer.h"

namespace dax {

// The images of the locator.
struct HessianPlanes {
  const uint8_t* grey;  // after the prefilter
  const float* smooth;
  DaxiSize size;  // its width is the step of both
};

struct LocateBuffer {
  explicit LocateBuffer(DaxiSize size);
  BufferLayout layout;
  BufferPiece<uint8_t> grey;
  BufferPiece<float> smooth;
  BufferPiece<float> response;
  BufferPiece<uint8_t> gauss;
  BufferPiece<int32_t> near;
};

// Fills and returns the images of the locator's work buffer.
HessianPlanes prepareHessian(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t filter, void* buffer,
                             int32_t isa);

// Looks for a corner at an expected position: CornerProber::probe with HessianPlanes as context.
bool probeSaddle(const void* planes, DaxiPoint32f expected, float spacing, const CheckerboardCorner& neighbour,
                 CheckerboardCorner* corner);

}  // namespace dax

extern "C" {

// Finds the saddle point of the quadric fitted to the 5 x 5 values around a pixel; moves to the pixel of the saddle and
// repeats where that is another one. Returns false where there is none within 3 pixels. Sets point, edges and response.
bool DAXI_CBL_Hessian_subpixel(const dax::HessianPlanes* planes, int32_t x, int32_t y, CheckerboardCorner* corner);

// Refines the edges by the gradients within 2 * scale of the corner. Each gradient belongs to the edge to which it is
// more nearly perpendicular.
void _DAXI_CBL_Hessian_orien(const dax::HessianPlanes* planes, float scale, CheckerboardCorner* corner);

// The locator; returns the number of corners.
int32_t _DAXI_CheckerboardCornerHessian_Loc_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                   CheckerboardCorner* corners, int32_t maxCorners, void* buffer,
                                                   const CheckerboardHessianParam* param, int32_t isa);
}

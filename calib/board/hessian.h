// Stages of the Hessian detector.
#pragma once

#include <cstdint>

#include "calib/board/corner_grid.h"
#include "daxi/chessboard_hessian.h"
#include "frame/memory/work_buffer.h"
#include "image/gauss/filter_gauss.h"

namespace dax {

// The images of the locator.
struct HessianPlanes {
  const uint8_t* grey;  // after the prefilter
  const float* smooth;
  DaxiSize size;  // rows of both are as long as the image is wide
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

// Images of a locator's work buffer, filled.
HessianPlanes prepareHessian(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t filter, void* buffer,
                             int32_t isa);

// A corner where the grid expects one, as a CornerProber with HessianPlanes as context.
bool probeSaddle(const void* planes, DaxiPoint32f expected, float spacing, const CheckerboardCorner& neighbour,
                 CheckerboardCorner* corner);

// The angle between two lines in degrees, or its supplement, lies within the limits.
bool angleFits(DaxiPoint32f a, DaxiPoint32f b, float least, float most);

}  // namespace dax

extern "C" {

// The saddle point of the quadric through the 5 x 5 values around a pixel, moving on where it lies outside the pixel.
// False where there is none within 3 pixels. The corner's point, edges and response are set.
bool DAXI_CBL_Hessian_subpixel(const dax::HessianPlanes* planes, int32_t x, int32_t y, CheckerboardCorner* corner);

// Betters the edges by the gradients within 2 scale of the corner: each belongs to the edge that it is more nearly
// perpendicular to.
void _DAXI_CBL_Hessian_orien(const dax::HessianPlanes* planes, float scale, CheckerboardCorner* corner);

int32_t _DAXI_CheckerboardCornerHessian_Loc_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                   CheckerboardCorner* corners, int32_t maxCorners, void* buffer,
                                                   const CheckerboardHessianParam* param, int32_t isa);

// Return the number of boards.
int32_t _DAXI_CheckerboardCornerHessian_Sort(const CheckerboardCorner* corners, int32_t count,
                                             CheckerboardCorner* sorted, void* buffer,
                                             const CheckerboardHessianParam* param, CheckerboardGrid* result);
int32_t _DAXI_MulCheckerboardCornerHessian_Sort(const CheckerboardCorner* corners, int32_t count,
                                                CheckerboardCorner* sorted, void* buffer,
                                                const CheckerboardHessianParam* param, CheckerboardGrid* boards,
                                                int32_t maxBoards);
void _DAXI_CheckerboardCornerHessian_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, DaxiPoint32f* points,
                                            CheckerboardCorner* corners, void* buffer,
                                            const CheckerboardHessianParam* param, CheckerboardGrid* result);
int32_t _DAXI_MulCheckerboardCornerHessian_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                  DaxiPoint32f* points, CheckerboardCorner* corners, void* buffer,
                                                  const CheckerboardHessianParam* param, CheckerboardGrid* boards,
                                                  int32_t maxBoards);
}

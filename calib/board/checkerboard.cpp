#include "calib/board/checkerboard.h"

#include <cstddef>

#include "frame/rows.h"
#include "geometry/vector2.h"
#include "image/pixel/workers_8u.h"

namespace dax {

bool isBoardImage(DaxiSize size) {
  constexpr int32_t kLeastSide = 64, kMostSide = 65536;
  return atLeast(size, kLeastSide) && atMost(size, kMostSide);
}

void prefilter(const uint8_t* src, int32_t srcStep, uint8_t* grey, DaxiSize size, int32_t filter, int32_t isa) {
  if (filter == DAXI_CHECKERBOARD_MEDIAN) {
    _DAXI_FilterMedian3x3_8u_C1R(src, srcStep, grey, size.width, size, isa);
  } else {
    _DAXI_Copy_8u_C1R(src, srcStep, grey, size.width, size);
  }
}

bool continuesGrid(const CheckerboardCorner& corner, DaxiPoint32f expected, float spacing,
                   const CheckerboardCorner& neighbour) {
  constexpr float kMostOffset = 0.3f, kLeastCosine = 0.94f;  // of the spacing; 20 degrees
  const DaxiPoint32f offset = corner.point - expected;
  const float most = kMostOffset * spacing;
  return dot(offset, offset) <= most * most && alike(corner.intoDark, neighbour.intoLight) >= kLeastCosine &&
         alike(corner.intoLight, neighbour.intoDark) >= kLeastCosine;
}

}  // namespace dax

void DAXI_Commom_sample_img(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                            int32_t factor) {
  for (int32_t y = 0; y < size.height; ++y) {
    const uint8_t* const from = src + ptrdiff_t{y} * factor * srcStep;
    uint8_t* const to = dax::rowAt(dst, dstStep, y);
    for (int32_t x = 0; x < size.width; ++x) to[x] = from[ptrdiff_t{x} * factor];
  }
}

#include "calib/board/board_image.h"

#include <cstddef>

#include "daxi/chessboard_hessian.h"
#include "frame/rows.h"
#include "image/pixel/copy.h"
#include "image/rank/filter_median3x3.h"

namespace dax {

bool isBoardImage(DaxiSize size) {
  constexpr int32_t kMaxSide = 65536;
  return atLeast(size, kMinBoardSide) && atMost(size, kMaxSide);
}

void prefilter(const uint8_t* src, int32_t srcStep, uint8_t* grey, DaxiSize size, int32_t filter, int32_t isa) {
  if (filter == DAXI_CHECKERBOARD_MEDIAN) {
    _DAXI_FilterMedian3x3_8u_C1R(src, srcStep, grey, size.width, size, isa);
  } else {
    _DAXI_Copy_8u_C1R(src, srcStep, grey, size.width, size);
  }
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

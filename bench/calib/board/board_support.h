// The board of the benchmarks.
#pragma once

#include <vector>

#include "bench/support/image.h"
#include "daxi.h"

namespace bench {

constexpr DaxiSize kUsualBoardSize{640, 480};
constexpr int32_t kUsualCorners = 54;

// 9 x 6 inner corners, at 640 x 480 pixels squares of 52, turned and a little tilted, blurred and with noise; the corners
// as they truly are.
struct Board {
  Image<uint8_t> image;
  std::vector<DaxiPoint32f> corners;
};

const Board& board();

// Starts of the refinement, up to a pixel from the corners; the amount is their number.
std::vector<DaxiPoint32f> starts();

// The same size without a board: smooth noise.
Image<uint8_t> noBoard();

}  // namespace bench

// The board of the benchmarks.
#pragma once

#include <vector>

#include "daxi.h"
#include "support/image.h"

namespace bench {

// 640 x 480 pixels, 9 x 6 inner corners, squares of 52 pixels, turned and a little tilted, blurred and with noise; the
// corners as they truly are.
struct Board {
  Image<uint8_t> image;
  std::vector<DaxiPoint32f> corners;
};

const Board& board();

// The same size without a board: smooth noise.
Image<uint8_t> noBoard();

}  // namespace bench

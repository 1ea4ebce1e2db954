// Chessboards in images.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "daxi/chessboard.h"
#include "io/grey_image.h"

namespace dax::tool {

struct Board {
  ChessboardPatternSize pattern;
  std::string detector;               // the one that found it
  std::vector<DaxiPoint32f> corners;  // refined, row by row
};

// A board of a given size, or the board with the maximum number of corners. Throws Failure(kRefused).
std::optional<Board> findBoard(const GreyImage& image, const std::optional<ChessboardPatternSize>& size);

// The image with the corners in order: each row in its own colour, the first corner marked.
std::string drawBoard(const GreyImage& image, const std::optional<Board>& board);

}  // namespace dax::tool

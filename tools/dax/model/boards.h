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
  std::vector<bool> refined = {};     // of each corner; false: it lies where the detector saw it, or is no corner
  bool ambiguous = false;             // the colours of the squares do not tell which corner is the first
};

// A board of exactly a given size, or the board with the maximum number of corners, rows being the shorter side.
// Throws Failure(kRefused).
std::optional<Board> findBoard(const GreyImage& image, const std::optional<ChessboardPatternSize>& size);

// The image with the corners in order: each row in its own colour, the first corner marked.
std::string drawBoard(const GreyImage& image, const std::optional<Board>& board);

}  // namespace dax::tool

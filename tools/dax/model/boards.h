// Chessboards in images.
#pragma once

#include <optional>
#include <string>

#include "io/grey_image.h"
#include "model/board.h"

namespace dax::tool {

// A board of exactly a given size, or the board with the maximum number of corners, rows being the shorter side.
// Throws Failure(kRefused).
std::optional<Board> findBoard(const GreyImage& image, const std::optional<ChessboardPatternSize>& size);

// The image with the corners in order: each row in its own colour, the first corner marked.
std::string drawBoard(const GreyImage& image, const std::optional<Board>& board);

}  // namespace dax::tool

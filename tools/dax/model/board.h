#pragma once

#include <string>
#include <vector>

#include "daxi/chessboard.h"

namespace dax::tool {

// A chessboard in an image.
struct Board {
  ChessboardPatternSize pattern;
  std::string detector;               // the one that found it
  std::vector<DaxiPoint32f> corners;  // refined, row by row
  std::vector<bool> refined = {};     // of each corner; false: it lies where the detector saw it, or is no corner
  bool ambiguous = false;             // the colours of the squares do not tell which corner is the first
};

}  // namespace dax::tool

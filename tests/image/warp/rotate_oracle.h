// Where a pixel goes when an image is mirrored, transposed or turned.
#pragma once

#include <cstdint>

#include "dax/types.h"

namespace dax::oracle {

struct Place {
  int32_t x, y;
};

enum class Turn { mirrorColumns, mirrorRows, mirrorBoth, transpose, quarters0, quarters1, quarters2, quarters3 };

inline Place placeAfter(Turn turn, Place p, DaxiSize size) {
  const int32_t right = size.width - 1 - p.x, up = size.height - 1 - p.y;
  switch (turn) {
    case Turn::mirrorColumns:
      return {right, p.y};
    case Turn::mirrorRows:
      return {p.x, up};
    case Turn::mirrorBoth:
    case Turn::quarters2:
      return {right, up};
    case Turn::transpose:
      return {p.y, p.x};
    case Turn::quarters1:
      return {up, p.x};
    case Turn::quarters3:
      return {p.y, right};
    default:
      return p;
  }
}

inline bool rowsBecomeColumns(Turn turn) {
  return turn == Turn::transpose || turn == Turn::quarters1 || turn == Turn::quarters3;
}

}  // namespace dax::oracle

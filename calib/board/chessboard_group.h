// Groups of linked quads: their places on the board.
#pragma once

#include "calib/board/chessboard_quads.h"

namespace dax {

// The place of a quad in its group: the cell of the board, and the rotation of its corners against those of the first
// quad, in quarter turns.
struct QuadPlace {
  int32_t column;
  int32_t row;
  int32_t turn;
  bool placed;
};

// Scratch of the group stages, for kMaxQuads quads.
struct GroupScratch {
  QuadPlace* places;      // by quad index
  DaxiPoint32s* centres;  // by index in the group
  DaxiPoint32s* hull;     // of the centres and their mean
  void* boxBuffer;        // for the enclosing box of as many points
};

}  // namespace dax

// Gives the quads of a group their places on the board by walking over the links. Quads that contradict each other, or
// lie outside the extent of the board, lose their links and leave the group; links between adjacent places are added.
extern "C" void DAXI_ChessboardCorner_order_connected_quads(const dax::QuadTable* table, dax::QuadGroup* group,
                                                            ChessboardPatternSize pattern,
                                                            const dax::GroupScratch* scratch);

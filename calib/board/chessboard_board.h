// The corner graph of a group of quads, and the board that is read from it.
#pragma once

#include "calib/board/chessboard_quads.h"

extern "C" {

// Builds the corner graph of a group and reads the board from it: ids of columns * rows corner points, row by row.
// Returns false when the group does not have the shape of the board.
bool DAXI_ChessboardCorner_check_quad_group(const dax::QuadTable* table, const dax::QuadGroup* group,
                                            ChessboardPatternSize pattern, int32_t* ids);

// Whether the corners advance in one direction along every row and column.
bool DAXI_ChessboardCorner_check_board_monotony(const DaxiPoint32f* corners, ChessboardPatternSize pattern);
}

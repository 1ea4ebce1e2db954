// Removal of surplus quads from a group.
#pragma once

#include "calib/board/chessboard_group.h"

// Removes quads from a group until it has at most `max`: each time the one without which the box around the centres
// becomes smallest, and one more, so that the count falls by two. Empties a group where no removal shrinks the box.
extern "C" void DAXI_ChessboardCorner_clean_surplus_quads(const dax::QuadTable* table, dax::QuadGroup* group,
                                                          int32_t max, const dax::GroupScratch* scratch);

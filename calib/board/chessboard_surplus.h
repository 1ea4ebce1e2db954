// Removal of surplus quads from a group.
#pragma once

#include "calib/board/chessboard_group.h"

// Removes quads from a group until it has at most `max`: each time the one without which the box around the centres
// becomes smallest, and one more, so that the count falls by two. Empties a group whose box stays at 10^6 square pixels
// or more.
extern "C" void DAXI_ChessboardCorner_clean_surplus_quads(const dax::QuadTable* table, dax::QuadGroup* group,
                                                          int32_t max, const dax::GroupScratch* scratch);

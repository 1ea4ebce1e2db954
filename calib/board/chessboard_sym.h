// The detector by symmetry: prefilter, locator and sorter.
#pragma once

#include "calib/board/symmetry_locate.h"

namespace dax {

struct BoardOutputs {
  DaxiPoint32f* points;
  CheckerboardCorner* corners;
  CheckerboardGrid* boards;
  int32_t maxBoards;
  int32_t* boardCount;
};

}  // namespace dax

extern "C" {

DaxStatus DAXI_CheckerboardCornerSym_check_cfg(const CheckerboardSymCfg* cfg);

// Arrange the located corners into one board, and into all boards.
void _DAXI_CheckerboardCornerSort_8u_C1R(const dax::SymmetryCall* call, int32_t count, const dax::BoardOutputs* to);
void _DAXI_CheckerboardCornerSortMul_8u_C1R(const dax::SymmetryCall* call, int32_t count, const dax::BoardOutputs* to);

// All stages, without and with the call's mask, for one board and for all. They return the host's status.
DaxStatus _DAXI_CheckerboardCornerSym_8u_C1R(const dax::SymmetryCall* call, const dax::BoardOutputs* to);
DaxStatus _DAXI_CheckerboardCornerSym_8u_C1RM(const dax::SymmetryCall* call, const dax::BoardOutputs* to);
DaxStatus _DAXI_CheckerboardCornerSymMul_8u_C1R(const dax::SymmetryCall* call, const dax::BoardOutputs* to);
DaxStatus _DAXI_CheckerboardCornerSymMul_8u_C1RM(const dax::SymmetryCall* call, const dax::BoardOutputs* to);
}

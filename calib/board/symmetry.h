// Stages of the detector by symmetry.
#pragma once

#include <cstdint>

#include "calib/board/corner_grid.h"
#include "daxi/chessboard_sym.h"
#include "frame/memory/work_buffer.h"

namespace dax {

inline constexpr int32_t kMostScales = 25;
inline constexpr int32_t kMostSymmetryCandidates = 8192;  // of one scale

// A pixel whose response is greatest around, and what became of it.
struct SymmetryCandidate {
  int32_t x;  // in the sub-sampled image
  int32_t y;
  int32_t response;
  bool accepted;
  CheckerboardCorner corner;
};

struct SymmetryBuffer {
  explicit SymmetryBuffer(DaxiSize size);
  BufferLayout layout;
  BufferPiece<uint8_t> grey;     // after the prefilter
  BufferPiece<uint8_t> sampled;  // of one scale
  BufferPiece<int16_t> response;
  BufferPiece<SymmetryCandidate> candidates;
  BufferPiece<int32_t> near;
  BufferPiece<CheckerboardCorner> corners;
  BufferPiece<uint8_t> grid;
};

// A call, after its checks.
struct SymmetryCall {
  const uint8_t* src;
  int32_t srcStep;
  const uint8_t* mask;  // null: all of the image
  int32_t maskStep;
  DaxiSize size;
  const CheckerboardSymCfg* cfg;
  void* buffer;
  void* pool;
};

struct BoardOutputs {
  DaxiPoint32f* points;
  CheckerboardCorner* corners;
  CheckerboardGrid* boards;
  int32_t maxBoards;
  int32_t* boardCount;
};

// A corner where the grid expects one, as a CornerProber with a SymmetryCall as context.
bool probeSymmetric(const void* call, DaxiPoint32f expected, float spacing, const CheckerboardCorner& neighbour,
                    CheckerboardCorner* corner);

}  // namespace dax

extern "C" {

DaxStatus DAXI_CheckerboardCornerSym_check_cfg(const CheckerboardSymCfg* cfg);

// The ladder of radii, at most kMostScales; returns how many.
int32_t DAXI_CheckerboardCornerSym_cfg_cal(DaxiSize size, uint32_t largestRadius, int32_t* radii);

// Corners of the filtered image in call->buffer, in the order of the scales, at most kMostGridCorners. Runs on the
// host's pool where there is one.
DaxStatus _DAXI_CheckerboardLocSym_8u_C1R_mt(const dax::SymmetryCall* call, int32_t* count);

// Boards among the located corners.
void _DAXI_CheckerboardCornerSort_8u_C1R(const dax::SymmetryCall* call, int32_t count, const dax::BoardOutputs* to);
void _DAXI_CheckerboardCornerSortMul_8u_C1R(const dax::SymmetryCall* call, int32_t count, const dax::BoardOutputs* to);

DaxStatus _DAXI_CheckerboardCornerSym_8u_C1R(const dax::SymmetryCall* call, const dax::BoardOutputs* to);
DaxStatus _DAXI_CheckerboardCornerSym_8u_C1RM(const dax::SymmetryCall* call, const dax::BoardOutputs* to);
DaxStatus _DAXI_CheckerboardCornerSymMul_8u_C1R(const dax::SymmetryCall* call, const dax::BoardOutputs* to);
DaxStatus _DAXI_CheckerboardCornerSymMul_8u_C1RM(const dax::SymmetryCall* call, const dax::BoardOutputs* to);
}

// The locator of the detector by symmetry: corners scale by scale.
#pragma once

#include <cstdint>

#include "daxi/chessboard_sym.h"
#include "frame/memory/work_buffer.h"

namespace dax {

inline constexpr int32_t kMaxScales = 25;                // of the ladder
inline constexpr int32_t kMaxSymmetryCandidates = 8192;  // of one scale

// A local maximum of the response, and the result of its verification.
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

// The arguments of a call.
struct SymmetryCall {
  const uint8_t* src;
  int32_t srcStep;
  const uint8_t* mask;  // null: the whole image
  int32_t maskStep;
  DaxiSize size;
  const CheckerboardSymCfg* cfg;
  void* buffer;
  void* pool;
};

// Looks for a corner at an expected position: CornerProber::probe with a SymmetryCall as context.
bool probeSymmetric(const void* call, DaxiPoint32f expected, float spacing, const CheckerboardCorner& neighbour,
                    CheckerboardCorner* corner);

}  // namespace dax

extern "C" {

// Writes the ladder of radii, at most kMaxScales; returns how many.
int32_t DAXI_CheckerboardCornerSym_cfg_cal(DaxiSize size, uint32_t lastRadius, int32_t* radii);

// Finds the corners of the filtered image in call->buffer, in order of the scales, at most kMaxGridCorners. Runs on the
// host's pool where there is one.
DaxStatus _DAXI_CheckerboardLocSym_8u_C1R_mt(const dax::SymmetryCall* call, int32_t* count);
}

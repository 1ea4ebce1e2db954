// Matrices of warps: 3 x 3, row by row; they map (x, y, 1).
#pragma once

#include "daxi/warp.h"

namespace dax {

// Adjugate over determinant, in products without error. False where the determinant is 0 within what its own sum loses, or
// where the inverse has no finite numbers.
bool invertMatrix(const double (&m)[9], double (&inverse)[9]);

struct WarpMatrices {
  double forward[9];  // from source to destination
  double back[9];
};

// Both matrices of a configuration, with the sign that makes the denominator of the forward one positive at the source's
// centre; that of the backward one is then positive where something is to be seen.
DaxStatus orientWarp(const DaxiWarpCfg& cfg, DaxiSize srcSize, WarpMatrices* matrices);

// Fields of a configuration, but for the matrix's being singular.
DaxStatus checkWarpCfg(const DaxiWarpCfg& cfg);
bool isAffine(const double (&m)[9]);

}  // namespace dax

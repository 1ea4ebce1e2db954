// Sparse Cholesky factor of a symmetric matrix, by supernodes: runs of columns that have the same rows below them and are
// held as one dense panel (Ng and Peyton 1993). The pattern is analysed once; factors of new values reuse the analysis.
#pragma once

#include "frame/memory/arena.h"
#include "prmt/msp.h"

struct PrmCholesky {
  int32_t n;
  int32_t panels;
  int64_t patternVersion;  // of the matrix that was analysed
  int32_t* original;       // n: the column of the matrix that column i of the factor comes from
  int32_t* firstColumn;    // panels + 1: of each panel
  int64_t* firstRow;       // panels + 1: of each panel in `rows`
  int32_t* rows;           // row numbers of each panel, its own columns first, ascending
  int64_t* at;             // panels + 1: of each panel in `values`; a panel has as many rows as in `rows`
  double* values;
  int64_t* place;     // for each element of the matrix its place in `values`, -1 above the diagonal
  int64_t* diagonal;  // n: places of the matrix' diagonal
  // Scratch of factoring and solving.
  int32_t* position;  // n: of a row within the panel in work
  int32_t* waiting;   // panels: first of those whose next rows belong to this panel
  int32_t* nextWaiting;
  int32_t* done;     // panels: rows of a panel that earlier panels took care of
  double* update;    // product of two panels
  double* permuted;  // n
};

namespace dax {

// Analyses the elements on and below the diagonal of an n x n matrix and takes the factor's memory from the arena. A diagonal
// that is missing counts as 0. False when the arena does not suffice; it then knows the need.
bool analyse(Arena& arena, const PrmtMsp& matrix, PrmCholesky& factor);

// Takes note in a measuring arena of the need for any n x n matrix of so many elements.
void measureCholesky(Arena& arena, int32_t n, uint64_t elements);

}  // namespace dax

// Factors (matrix + shift I), given the values of the matrix' elements, and solves for the right-hand side in `solution`, in
// place. 1, or 0 at a pivot below 2.220446049250313e-16.
extern "C" int32_t PRM_Cholesky_Process_64f(PrmCholesky* factor, const double* values, int64_t elements, double shift,
                                            double* solution);

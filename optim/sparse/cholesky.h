// Sparse Cholesky factor of a symmetric matrix by supernodes: runs of columns with the same pattern below them, stored
// as one dense panel (Ng and Peyton 1993). The pattern is analysed once (cholesky_analysis.h) and reused for new
// values.
#pragma once

#include <cstdint>

struct PrmCholesky {
  int32_t n;
  int32_t panels;
  int64_t patternVersion;  // of the analysed matrix
  int32_t* original;       // n: column of the matrix for each column of the factor
  int32_t* firstColumn;    // panels + 1: of each panel
  int64_t* firstRow;       // panels + 1: of each panel in `rows`
  int32_t* rows;           // row numbers of each panel, its own columns first, ascending
  int64_t* at;             // panels + 1: of each panel in `values`, column by column with all rows of the panel
  double* values;
  int64_t* place;     // of each element of the matrix in `values`, -1 above the diagonal
  int64_t* diagonal;  // n: places of the diagonal elements
  // Scratch of factoring and solving.
  int32_t* position;  // n: of a row within the current panel
  int32_t* waiting;   // panels: first earlier panel whose next rows belong to this panel
  int32_t* nextWaiting;
  int32_t* done;     // panels: number of rows whose updates are applied
  double* update;    // product of two panels
  double* permuted;  // n
};

// Factors (matrix + shift I) from the values of the elements and solves in place for the right-hand side in `solution`.
// Returns 1, or 0 at a pivot below 2.220446049250313e-16 (DBL_EPSILON).
extern "C" int32_t PRM_Cholesky_Process_64f(PrmCholesky* factor, const double* values, int64_t elements, double shift,
                                            double* solution);

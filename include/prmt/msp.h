/* Sparse matrices of doubles in compressed columns.
 *
 *   start  0 | 2 | 3 | 5          column j owns the elements start[j] .. start[j + 1] - 1
 *   row    0 2 | 1 | 0 2          ascending within a column, each at most once
 *   value  a b | c | d e
 *
 * The set of elements, the pattern, is kept while values change: SetZero keeps it; AddEle and AddBlk add to existing
 * elements and insert missing ones. patternVersion changes with the pattern, so that an analysis of it can be reused.
 * Inserting an element costs time in proportion to the elements after it, so fill a matrix column by column or set its
 * pattern first (PRMT_MSP_SetPattern_f64); adding to an existing element costs a binary search.
 *
 * The caller provides the memory of a matrix: PRMT_MSP_BufSize_f64 returns its size, PRMT_MSP_Init_f64 initialises it.
 * A call that would exceed the capacity returns PRMT_STS_FULL and leaves the matrix unchanged.
 *
 * Checks, in order: a pointer null (records, their arrays, outputs) -> -21; shapes that do not fit, an index outside
 * the matrix, a count out of its range -> -26; no room -> -30. Outputs must not overlap inputs. Sums are added in the
 * order of the elements, so results are the same on every machine. Thread-safe on distinct outputs. */
#ifndef PRMT_MSP_H
#define PRMT_MSP_H

#include "status.h"

DAX_BEGIN_DECLS

typedef struct PrmtMsp {
  int32_t rows;
  int32_t cols;
  int64_t capacity;       /* elements that fit into row and value */
  int64_t patternVersion; /* changes whenever the pattern does */
  int64_t* start;         /* cols + 1; start[cols] is the number of elements */
  int32_t* row;           /* capacity */
  double* value;          /* capacity */
} PrmtMsp;

/* Bytes for a matrix of `capacity` elements; rows, cols >= 1, capacity >= 0. A size beyond 64 bits -> -22. */
DAX_API int32_t PRMT_MSP_BufSize_f64(int32_t rows, int32_t cols, int64_t capacity, uint64_t* bytes);

/* Makes an empty matrix in `buffer`, which has the queried size and malloc's alignment. */
DAX_API int32_t PRMT_MSP_Init_f64(PrmtMsp* matrix, int32_t rows, int32_t cols, int64_t capacity, void* buffer);

/* Sets the pattern to the pairs (row[k], col[k]), k < count, and all values to 0. Pairs may repeat, but the capacity
 * must be at least `count`. */
DAX_API int32_t PRMT_MSP_SetPattern_f64(PrmtMsp* matrix, int64_t count, const int32_t* row, const int32_t* col);

/* Sets all values to 0; the pattern is kept. */
DAX_API int32_t PRMT_MSP_SetZero_tpl_f64(PrmtMsp* matrix);

/* Sets each element (i, i) to `value`; inserts missing ones. */
DAX_API int32_t PRMT_MSP_SetDiag_tpl_f64(PrmtMsp* matrix, double value);

/* Adds `value` to the element (row, col). */
DAX_API int32_t PRMT_MSP_AddEle_tpl_f64(PrmtMsp* matrix, int32_t row, int32_t col, double value);

/* Adds a block of blockRows x blockCols, whose rows are `step` doubles apart (step >= blockCols), with its first
 * element at (row, col). */
DAX_API int32_t PRMT_MSP_AddBlk_tpl_f64(PrmtMsp* matrix, int32_t row, int32_t col, const double* block,
                                        int32_t blockRows, int32_t blockCols, int32_t step);

/* transposed = matrix^T, with the same pattern transposed. */
DAX_API int32_t PRMT_MSP_Trans_f64(const PrmtMsp* matrix, PrmtMsp* transposed);

/* product = a b; the pattern holds all elements that can differ from 0. `buffer` has the queried size. */
DAX_API int32_t PRMT_MSP_Mul_bufsize_f64(const PrmtMsp* a, const PrmtMsp* b, uint64_t* bytes);
DAX_API int32_t PRMT_MSP_Mul_f64(const PrmtMsp* a, const PrmtMsp* b, PrmtMsp* product, void* buffer);

/* sum = alpha a + beta b; the pattern is the union of both. `buffer` has the queried size. */
DAX_API int32_t PRMT_MSP_Add_bufsize_f64(const PrmtMsp* a, const PrmtMsp* b, uint64_t* bytes);
DAX_API int32_t PRMT_MSP_Add_f64(double alpha, const PrmtMsp* a, double beta, const PrmtMsp* b, PrmtMsp* sum,
                                 void* buffer);

/* result = matrix vector (rows values), result = matrix^T vector (cols values). */
DAX_API int32_t PRMT_MSP_MulVec_f64(const PrmtMsp* matrix, const double* vector, double* result);
DAX_API int32_t PRMT_MSP_TransMulVec_f64(const PrmtMsp* matrix, const double* vector, double* result);

/* Writes all elements, zeros included, to rows that are `step` doubles apart, step >= cols. */
DAX_API int32_t PRMT_MSP_MspToMat_f64(const PrmtMsp* matrix, double* dense, int32_t step);

DAX_END_DECLS

#endif

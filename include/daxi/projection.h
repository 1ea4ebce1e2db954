/* Projections: the sum of each row, or of each column, of a region.
 *
 * Integers: exact. Floats: doubles; of a row in the order that daxi/sum.h describes; of a column from top to bottom, 32767 rows
 * at a time.
 *
 *   src, srcStep    image, step in elements
 *   size            of the region
 *   sums            receives a number for each row, or for each column
 *
 * No work buffer. Thread-safe. The results are the same bits on every machine.
 *
 * Checks, in order:
 *   sums or src null             0x10000014
 *   width < 1 or height < 1      0x1000001a
 *   srcStep < width              0x1000001b
 * A failed call writes nothing. */
#ifndef DAXI_PROJECTION_H
#define DAXI_PROJECTION_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* sums(y) = sum over x of src(x, y): `height` numbers. */
DAX_API DaxStatus DAXI_ProjectRows_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* sums);
DAX_API DaxStatus DAXI_ProjectRows_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double* sums);
DAX_API DaxStatus DAXI_ProjectRows_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double* sums);
DAX_API DaxStatus DAXI_ProjectRows_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* sums);

/* sums(x) = sum over y of src(x, y): `width` numbers. */
DAX_API DaxStatus DAXI_ProjectColumns_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* sums);
DAX_API DaxStatus DAXI_ProjectColumns_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double* sums);
DAX_API DaxStatus DAXI_ProjectColumns_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double* sums);
DAX_API DaxStatus DAXI_ProjectColumns_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* sums);

DAX_END_DECLS

#endif

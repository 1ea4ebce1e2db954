/* Box filter: sums over square windows, clipped to the image.
 *
 * SUMS OF FLOATS LOSE DIGITS WITH THE SIZE OF THE IMAGE, NOT OF THE WINDOW. Grey values 0..255 evenly distributed, sums
 * of 9 x 9 pixels, greatest error in grey levels:
 *   640 x 480  0.2     1280 x 1024  0.4     2448 x 2048  0.9     5120 x 4096  2.1
 * The clipped mean in double precision (filter_mean.h) is below 1e-5.
 *
 *   dst(x, y) = sum of src(i, j) over |i - x| <= radius, |j - y| <= radius, inside the image; no division.
 *
 * Sums of 32-bit integers wrap around modulo 2^32. Sums of floats are differences of running sums in single precision:
 * along every row b(0) = s(0), b(x) = b(x - 1) + s(x), then
 *   d(x) = b(x + r)                     for x = 0..r
 *   d(x) = b(x + r) - b(x - r - 1)      for x = r + 1..width - r - 1
 *   d(x) = b(width - 1) - b(x - r - 1)  for the last r columns,
 * and the same down every column of d. So the error grows with the running sums from the edge on, not with the window,
 * and an infinity or NaN spreads to what follows it in its row and in the columns below. The cost does not depend on
 * the radius.
 *
 * Steps count elements. src and dst must not overlap, except that the C1IR members work in place. `buffer` holds at
 * least the queried bytes and lies at a multiple of 4. Thread-safe.
 *
 * Checks, in order:
 *   an image or the buffer null                                0x10000014
 *   width < 1 or height < 1                                    0x1000001a
 *   width above the smaller of the steps (C1IR: the one step)  0x1000001b
 *   radius < 1, or 2 * radius >= min(width, height)            0x10000019
 * A failed call writes nothing. */
#ifndef DAXI_FILTER_BOX_H
#define DAXI_FILTER_BOX_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Work-buffer need: 4 * max(width, height) bytes, rounded up to a multiple of 128.
 *
 * Checks, in order: bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019. */
DAX_API DaxStatus DAXI_FilterBoxBufferSize_8u32s(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterBoxBufferSize_16s32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterBoxBufferSize_32s(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterBoxBufferSize_32f(DaxiSize size, uint64_t* bytes);

DAX_API DaxStatus DAXI_FilterBox_8u32s_C1R(const uint8_t* src, int32_t srcStep, int32_t* dst, int32_t dstStep,
                                           DaxiSize size, int32_t radius, void* buffer);
DAX_API DaxStatus DAXI_FilterBox_16s32f_C1R(const int16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                            DaxiSize size, int32_t radius, void* buffer);
DAX_API DaxStatus DAXI_FilterBox_32s_C1R(const int32_t* src, int32_t srcStep, int32_t* dst, int32_t dstStep,
                                         DaxiSize size, int32_t radius, void* buffer);
DAX_API DaxStatus DAXI_FilterBox_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                         int32_t radius, void* buffer);

/* In place, with the same result. */
DAX_API DaxStatus DAXI_FilterBox_32s_C1IR(int32_t* srcDst, int32_t step, DaxiSize size, int32_t radius, void* buffer);
DAX_API DaxStatus DAXI_FilterBox_32f_C1IR(float* srcDst, int32_t step, DaxiSize size, int32_t radius, void* buffer);

DAX_END_DECLS

#endif

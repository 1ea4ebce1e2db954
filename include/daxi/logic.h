/* Operations on the bits of pixels, of two images or of an image and a constant.
 *
 * C1IR works in place: srcDst is the first operand. The destination may be one of the sources, with the same step;
 * else they must not overlap. Steps count elements. An image of three interleaved channels is one of three times the
 * width. No work buffer. Thread-safe. The results are the same bits on every machine.
 *
 * Checks, in order:
 *   an image null                              0x10000014
 *   width < 1 or height < 1                    0x1000001a
 *   width above the smallest step              0x1000001b
 *   8u: count outside 0..7; 16u: count outside 0..15; 16s: count outside 0..15    0x10000019
 * A failed call writes nothing. */
#ifndef DAXI_LOGIC_H
#define DAXI_LOGIC_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* dst = src1 & src2. */
DAX_API DaxStatus DAXI_And_8u_C1R(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2, uint8_t* dst,
                                  int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_And_8u_C1IR(const uint8_t* src, int32_t srcStep, uint8_t* srcDst, int32_t srcDstStep,
                                   DaxiSize size);
DAX_API DaxStatus DAXI_And_16u_C1R(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                   uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_And_16u_C1IR(const uint16_t* src, int32_t srcStep, uint16_t* srcDst, int32_t srcDstStep,
                                    DaxiSize size);
DAX_API DaxStatus DAXI_And_16s_C1R(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2, int16_t* dst,
                                   int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_And_16s_C1IR(const int16_t* src, int32_t srcStep, int16_t* srcDst, int32_t srcDstStep,
                                    DaxiSize size);

/* dst = src1 | src2. */
DAX_API DaxStatus DAXI_Or_8u_C1R(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2, uint8_t* dst,
                                 int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Or_8u_C1IR(const uint8_t* src, int32_t srcStep, uint8_t* srcDst, int32_t srcDstStep,
                                  DaxiSize size);
DAX_API DaxStatus DAXI_Or_16u_C1R(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                  uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Or_16u_C1IR(const uint16_t* src, int32_t srcStep, uint16_t* srcDst, int32_t srcDstStep,
                                   DaxiSize size);
DAX_API DaxStatus DAXI_Or_16s_C1R(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2, int16_t* dst,
                                  int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Or_16s_C1IR(const int16_t* src, int32_t srcStep, int16_t* srcDst, int32_t srcDstStep,
                                   DaxiSize size);

/* dst = src1 ^ src2. */
DAX_API DaxStatus DAXI_Xor_8u_C1R(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2, uint8_t* dst,
                                  int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Xor_8u_C1IR(const uint8_t* src, int32_t srcStep, uint8_t* srcDst, int32_t srcDstStep,
                                   DaxiSize size);
DAX_API DaxStatus DAXI_Xor_16u_C1R(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                   uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Xor_16u_C1IR(const uint16_t* src, int32_t srcStep, uint16_t* srcDst, int32_t srcDstStep,
                                    DaxiSize size);
DAX_API DaxStatus DAXI_Xor_16s_C1R(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2, int16_t* dst,
                                   int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Xor_16s_C1IR(const int16_t* src, int32_t srcStep, int16_t* srcDst, int32_t srcDstStep,
                                    DaxiSize size);

/* dst = src & value. dst may equal src. */
DAX_API DaxStatus DAXI_AndC_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                   uint8_t value);
DAX_API DaxStatus DAXI_AndC_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, uint8_t value);
DAX_API DaxStatus DAXI_AndC_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                    uint16_t value);
DAX_API DaxStatus DAXI_AndC_16u_C1IR(uint16_t* srcDst, int32_t step, DaxiSize size, uint16_t value);
DAX_API DaxStatus DAXI_AndC_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                                    int16_t value);
DAX_API DaxStatus DAXI_AndC_16s_C1IR(int16_t* srcDst, int32_t step, DaxiSize size, int16_t value);

/* dst = src | value. dst may equal src. */
DAX_API DaxStatus DAXI_OrC_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                  uint8_t value);
DAX_API DaxStatus DAXI_OrC_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, uint8_t value);
DAX_API DaxStatus DAXI_OrC_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                   uint16_t value);
DAX_API DaxStatus DAXI_OrC_16u_C1IR(uint16_t* srcDst, int32_t step, DaxiSize size, uint16_t value);
DAX_API DaxStatus DAXI_OrC_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                                   int16_t value);
DAX_API DaxStatus DAXI_OrC_16s_C1IR(int16_t* srcDst, int32_t step, DaxiSize size, int16_t value);

/* dst = src ^ value. dst may equal src. */
DAX_API DaxStatus DAXI_XorC_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                   uint8_t value);
DAX_API DaxStatus DAXI_XorC_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, uint8_t value);
DAX_API DaxStatus DAXI_XorC_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                    uint16_t value);
DAX_API DaxStatus DAXI_XorC_16u_C1IR(uint16_t* srcDst, int32_t step, DaxiSize size, uint16_t value);
DAX_API DaxStatus DAXI_XorC_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                                    int16_t value);
DAX_API DaxStatus DAXI_XorC_16s_C1IR(int16_t* srcDst, int32_t step, DaxiSize size, int16_t value);

/* dst = ~src. dst may equal src. */
DAX_API DaxStatus DAXI_Not_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Not_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Not_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Not_16u_C1IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Not_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Not_16s_C1IR(int16_t* srcDst, int32_t step, DaxiSize size);

/* dst = src << count: bits beyond the type are dropped. dst may equal src. */
DAX_API DaxStatus DAXI_LShiftC_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                      int32_t count);
DAX_API DaxStatus DAXI_LShiftC_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t count);
DAX_API DaxStatus DAXI_LShiftC_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                       DaxiSize size, int32_t count);
DAX_API DaxStatus DAXI_LShiftC_16u_C1IR(uint16_t* srcDst, int32_t step, DaxiSize size, int32_t count);
DAX_API DaxStatus DAXI_LShiftC_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                       DaxiSize size, int32_t count);
DAX_API DaxStatus DAXI_LShiftC_16s_C1IR(int16_t* srcDst, int32_t step, DaxiSize size, int32_t count);

/* dst = src >> count; 16s keeps its sign, which rounds down. dst may equal src. */
DAX_API DaxStatus DAXI_RShiftC_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                      int32_t count);
DAX_API DaxStatus DAXI_RShiftC_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t count);
DAX_API DaxStatus DAXI_RShiftC_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                       DaxiSize size, int32_t count);
DAX_API DaxStatus DAXI_RShiftC_16u_C1IR(uint16_t* srcDst, int32_t step, DaxiSize size, int32_t count);
DAX_API DaxStatus DAXI_RShiftC_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                       DaxiSize size, int32_t count);
DAX_API DaxStatus DAXI_RShiftC_16s_C1IR(int16_t* srcDst, int32_t step, DaxiSize size, int32_t count);

DAX_END_DECLS

#endif

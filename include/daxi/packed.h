/* Pixels of 10 and 12 bits as cameras pack them, into 16 bits each and back. Values are not scaled.
 *
 * Mono10p, Mono12p: a stream of bits, the least significant bit of a pixel first, into the least significant free bit of a
 * byte: 0x123, 0x456 of 12 bits are the bytes 23 61 45. Images of a Bayer pattern (BayerRG12p, ...) are packed in the same way.
 *
 * Mono10Packed, Mono12Packed, of GigE Vision: two pixels in three bytes, the upper eight bits of the first one, the lower
 * bits of both, those of the first one in bits 0..3 and those of the second in bits 4..7, the upper eight bits of the second one:
 * 0x123, 0x456 are 12 63 45.
 *
 * packedStep counts bytes, from row to row; it is at least ceil(width * bits / 8), where Mono10Packed has 12 bits a pixel too.
 * With packedStep 0 the pixels run on through the rows, and only the last byte of all may have unused bits. Those are ignored
 * when read, and 0 when written. dstStep and srcStep count pixels. src and dst must not overlap. No work buffer. Thread-safe.
 *
 * Checks, in order:
 *   src null or dst null                                                          0x10000014
 *   width < 1 or height < 1                                                       0x1000001a
 *   a step below a row, but for a packedStep of 0                                 0x1000001b
 * A failed call writes nothing. */
#ifndef DAXI_PACKED_H
#define DAXI_PACKED_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* From packed pixels. */
DAX_API DaxStatus DAXI_UnpackMono10p_8u16u_C1R(const uint8_t* src, int32_t packedStep, uint16_t* dst, int32_t dstStep,
                                               DaxiSize size);
DAX_API DaxStatus DAXI_UnpackMono12p_8u16u_C1R(const uint8_t* src, int32_t packedStep, uint16_t* dst, int32_t dstStep,
                                               DaxiSize size);
DAX_API DaxStatus DAXI_UnpackMono10Packed_8u16u_C1R(const uint8_t* src, int32_t packedStep, uint16_t* dst,
                                                    int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_UnpackMono12Packed_8u16u_C1R(const uint8_t* src, int32_t packedStep, uint16_t* dst,
                                                    int32_t dstStep, DaxiSize size);

/* To packed pixels. Values above 1023, or 4095, become these. */
DAX_API DaxStatus DAXI_PackMono10p_16u8u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t packedStep,
                                             DaxiSize size);
DAX_API DaxStatus DAXI_PackMono12p_16u8u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t packedStep,
                                             DaxiSize size);
DAX_API DaxStatus DAXI_PackMono10Packed_16u8u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst,
                                                  int32_t packedStep, DaxiSize size);
DAX_API DaxStatus DAXI_PackMono12Packed_16u8u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst,
                                                  int32_t packedStep, DaxiSize size);

DAX_END_DECLS

#endif

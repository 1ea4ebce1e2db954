/* Gamma curves.
 *
 * dst = M (src / M)^gamma with the greatest value M of the type, 255 or 65535: the power within 0.56 units of the last place of a
 * double, rounded to the nearest integer. Below 1 dark parts become brighter.
 *
 * Layouts: C1R has one channel, C3R three interleaved ones; C1IR and C3IR work in place. In the other forms dst may equal src with the
 * same step; else they must not overlap. Steps count elements. 16u needs a work buffer for its table, aligned as by malloc.
 * Thread-safe for distinct destinations and buffers. The results are the same bits on every machine.
 *
 * Checks, in order:
 *   an image or buffer null                             0x10000014
 *   width < 1 or height < 1                             0x1000001a
 *   width, three times for C3, above the smallest step  0x1000001b
 *   gamma outside 0.01..100                             0x10000019
 * A failed call writes nothing. */
#ifndef DAXI_GAMMA_H
#define DAXI_GAMMA_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* dst = M (src / M)^gamma. */
DAX_API DaxStatus DAXI_Gamma_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                    double gamma);
DAX_API DaxStatus DAXI_Gamma_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                    double gamma);
DAX_API DaxStatus DAXI_Gamma_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, double gamma);
DAX_API DaxStatus DAXI_Gamma_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, double gamma);
DAX_API DaxStatus DAXI_Gamma_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                     DaxiSize size, double gamma, void* buffer);
DAX_API DaxStatus DAXI_Gamma_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                     DaxiSize size, double gamma, void* buffer);
DAX_API DaxStatus DAXI_Gamma_16u_C1IR(uint16_t* srcDst, int32_t step, DaxiSize size, double gamma, void* buffer);
DAX_API DaxStatus DAXI_Gamma_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size, double gamma, void* buffer);

/* Bytes of work buffer. bytes null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_GammaBufferSize_16u(uint64_t* bytes);

DAX_END_DECLS

#endif

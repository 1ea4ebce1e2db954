/* Grey reconstruction, and what is made of it: holes, objects at the edge, peaks of some height, extrema. On masks of 0 and 255
 * they do the same with objects.
 *
 * A reconstruction by dilation lets a marker grow below a mask: it is the highest image that nowhere exceeds the mask, and from
 * each pixel of which a path leads to the marker (clamped to the mask) without getting lower. One by erosion is the same upside
 * down. Neighbours are 4 or 8 pixels; outside the image there is nothing.
 *
 * Pixels are visited by falling levels, each once, so the time does not depend on how paths wind. Values are exact. Floats are
 * ordered as by totalOrder of IEEE 754-2008: -0 before +0, and NaN beyond the infinity of its sign.
 *
 * Steps count elements. dst may equal src with the same step; else they must not overlap.
 * Thread-safe for distinct destinations and buffers.
 *
 * Checks, in order:
 *   a pointer null                                        0x10000014
 *   width or height below 1 or above 32768                0x1000001a
 *   width above the smallest step                         0x1000001b
 *   connectivity other than 4 and 8                       0x10000012
 *   32f: h < 0 or not finite                              0x10000019
 * A failed call writes nothing. */
#ifndef DAXI_RECONSTRUCT_H
#define DAXI_RECONSTRUCT_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Bytes of work buffer for the same arguments.
 *
 * Checks, in order: bytes null -> 0x10000014; width or height below 1 or above 32768 -> 0x10000019; connectivity other than 4
 * and 8 -> 0x10000012. Thread-safe. */
DAX_API DaxStatus DAXI_ReconstructDilateBufferSize_8u(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_ReconstructDilateBufferSize_16u(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_ReconstructDilateBufferSize_32f(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_ReconstructErodeBufferSize_8u(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_ReconstructErodeBufferSize_16u(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_ReconstructErodeBufferSize_32f(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_FillHolesBufferSize_8u(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_FillHolesBufferSize_16u(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_FillHolesBufferSize_32f(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_ClearBorderBufferSize_8u(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_ClearBorderBufferSize_16u(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_ClearBorderBufferSize_32f(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_HMaximaBufferSize_8u(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_HMaximaBufferSize_16u(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_HMaximaBufferSize_32f(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_HMinimaBufferSize_8u(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_HMinimaBufferSize_16u(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_HMinimaBufferSize_32f(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_RegionalMaximaBufferSize_8u(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_RegionalMaximaBufferSize_16u(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_RegionalMaximaBufferSize_32f(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_RegionalMinimaBufferSize_8u(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_RegionalMinimaBufferSize_16u(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_RegionalMinimaBufferSize_32f(DaxiSize size, int32_t connectivity, uint64_t* bytes);

/* src1, the marker, grown below src2, the mask; dst must not overlap them. buffer, here and below: at least as many bytes
 * as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_ReconstructDilate_8u_C1R(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2,
                                                uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t connectivity,
                                                void* buffer);
DAX_API DaxStatus DAXI_ReconstructDilate_16u_C1R(const uint16_t* src1, int32_t step1, const uint16_t* src2,
                                                 int32_t step2, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                                 int32_t connectivity, void* buffer);
DAX_API DaxStatus DAXI_ReconstructDilate_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2,
                                                 float* dst, int32_t dstStep, DaxiSize size, int32_t connectivity,
                                                 void* buffer);

/* src1, the marker, shrunk above src2, the mask; dst must not overlap them. */
DAX_API DaxStatus DAXI_ReconstructErode_8u_C1R(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2,
                                               uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t connectivity,
                                               void* buffer);
DAX_API DaxStatus DAXI_ReconstructErode_16u_C1R(const uint16_t* src1, int32_t step1, const uint16_t* src2,
                                                int32_t step2, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                                int32_t connectivity, void* buffer);
DAX_API DaxStatus DAXI_ReconstructErode_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2,
                                                float* dst, int32_t dstStep, DaxiSize size, int32_t connectivity,
                                                void* buffer);

/* Dark regions that do not reach the edge of the image are raised to the lowest level from which they would: reconstruction by
 * erosion from the pixels at the edge. connectivity: of bright objects; a path out of a hole has the other one, 4 where
 * objects have 8. */
DAX_API DaxStatus DAXI_FillHoles_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size, int32_t connectivity, void* buffer);
DAX_API DaxStatus DAXI_FillHoles_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                         DaxiSize size, int32_t connectivity, void* buffer);
DAX_API DaxStatus DAXI_FillHoles_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                         int32_t connectivity, void* buffer);

/* src less its reconstruction by dilation from the pixels at the edge: bright objects that touch the edge vanish. Equal values
 * leave 0, infinite ones too. */
DAX_API DaxStatus DAXI_ClearBorder_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                          DaxiSize size, int32_t connectivity, void* buffer);
DAX_API DaxStatus DAXI_ClearBorder_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                           DaxiSize size, int32_t connectivity, void* buffer);
DAX_API DaxStatus DAXI_ClearBorder_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                           DaxiSize size, int32_t connectivity, void* buffer);

/* Peaks that rise by at most h above the pass to a higher one vanish, higher ones lose h: reconstruction by dilation from
 * src - h, which saturates; of 32f it is rounded once. */
DAX_API DaxStatus DAXI_HMaxima_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                      uint8_t h, int32_t connectivity, void* buffer);
DAX_API DaxStatus DAXI_HMaxima_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                       DaxiSize size, uint16_t h, int32_t connectivity, void* buffer);
DAX_API DaxStatus DAXI_HMaxima_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                       float h, int32_t connectivity, void* buffer);

/* The same of hollows: reconstruction by erosion from src + h. */
DAX_API DaxStatus DAXI_HMinima_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                      uint8_t h, int32_t connectivity, void* buffer);
DAX_API DaxStatus DAXI_HMinima_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                       DaxiSize size, uint16_t h, int32_t connectivity, void* buffer);
DAX_API DaxStatus DAXI_HMinima_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                       float h, int32_t connectivity, void* buffer);

/* 255 where a pixel belongs to a region of one value all of whose neighbours are lower, else 0. A constant image is such a
 * region. dst must not overlap src. */
DAX_API DaxStatus DAXI_RegionalMaxima_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, int32_t connectivity, void* buffer);
DAX_API DaxStatus DAXI_RegionalMaxima_16u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                              DaxiSize size, int32_t connectivity, void* buffer);
DAX_API DaxStatus DAXI_RegionalMaxima_32f_C1R(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                              DaxiSize size, int32_t connectivity, void* buffer);

/* 255 where a pixel belongs to a region of one value all of whose neighbours are higher, else 0. dst must not overlap src. */
DAX_API DaxStatus DAXI_RegionalMinima_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, int32_t connectivity, void* buffer);
DAX_API DaxStatus DAXI_RegionalMinima_16u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                              DaxiSize size, int32_t connectivity, void* buffer);
DAX_API DaxStatus DAXI_RegionalMinima_32f_C1R(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                              DaxiSize size, int32_t connectivity, void* buffer);

DAX_END_DECLS

#endif

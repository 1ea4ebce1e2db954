/* Copies of images, and constants, where a mask says so.
 *
 * A pixel is written where the mask is not 0; the others of dst stay as they are. Copies keep every bit. Layouts: C1MR has one
 * channel, C3MR three interleaved ones; the mask has one. Steps count elements. The images must not overlap. No work buffer.
 * Thread-safe for distinct destinations.
 *
 * Checks, in order:
 *   an image, the mask or the array of constants null   0x10000014
 *   width < 1 or height < 1                             0x1000001a
 *   width above the step of the mask, or, three times for C3,
 *   above the smallest of the other steps               0x1000001b
 * A failed call writes nothing. */
#ifndef DAXI_MASKED_COPY_H
#define DAXI_MASKED_COPY_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* dst = src where mask is not 0. */
DAX_API DaxStatus DAXI_Copy_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                    uint8_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Copy_8u_C3MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                    uint8_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Copy_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                     uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Copy_16u_C3MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                     uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Copy_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                     int16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Copy_16s_C3MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                     int16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Copy_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                     float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Copy_32f_C3MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                     float* dst, int32_t dstStep, DaxiSize size);

/* dst = value where mask is not 0; C3: one value for each channel. */
DAX_API DaxStatus DAXI_Set_8u_C1MR(const uint8_t* mask, int32_t maskStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                   uint8_t value);
DAX_API DaxStatus DAXI_Set_8u_C3MR(const uint8_t* mask, int32_t maskStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                   const uint8_t value[3]);
DAX_API DaxStatus DAXI_Set_16u_C1MR(const uint8_t* mask, int32_t maskStep, uint16_t* dst, int32_t dstStep,
                                    DaxiSize size, uint16_t value);
DAX_API DaxStatus DAXI_Set_16u_C3MR(const uint8_t* mask, int32_t maskStep, uint16_t* dst, int32_t dstStep,
                                    DaxiSize size, const uint16_t value[3]);
DAX_API DaxStatus DAXI_Set_16s_C1MR(const uint8_t* mask, int32_t maskStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                                    int16_t value);
DAX_API DaxStatus DAXI_Set_16s_C3MR(const uint8_t* mask, int32_t maskStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                                    const int16_t value[3]);
DAX_API DaxStatus DAXI_Set_32f_C1MR(const uint8_t* mask, int32_t maskStep, float* dst, int32_t dstStep, DaxiSize size,
                                    float value);
DAX_API DaxStatus DAXI_Set_32f_C3MR(const uint8_t* mask, int32_t maskStep, float* dst, int32_t dstStep, DaxiSize size,
                                    const float value[3]);

DAX_END_DECLS

#endif

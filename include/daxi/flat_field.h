/* Correction of sensors: what the dark frame adds to each pixel is taken away, and what the lens and the lights take
 * away is given back.
 *
 *   dst = (src - dark) * gain, and 0 where src <= dark,
 *
 * in single precision, rounded half to even and saturated. A gain that is negative or NaN gives 0. Of a flat image, a
 * white surface without structure, gain = mean(flat - dark) / (flat - dark), of a Bayer pattern with a mean for each of
 * its four places.
 *
 * The forms that end in IR work in place. dst may equal src with the same step, else it must not overlap the other
 * images. Steps count elements. No work buffer. Thread-safe. The results are the same bits on every machine.
 *
 * _MT: on the host's thread pool, in bands of ceil(height / threads) rows, where pool is not null and threads > 1; else
 * on the calling thread. The result does not depend on it. Returns the status of the host's parallel-for, unchanged.
 *
 * Checks, in order:
 *   an image null                                       0x10000014
 *   width < 1 or height < 1                             0x1000001a
 *   width above the smallest step                       0x1000001b
 * When a check fails, nothing is written. */
#ifndef DAXI_FLAT_FIELD_H
#define DAXI_FLAT_FIELD_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

DAX_API DaxStatus DAXI_FlatField_8u_C1R(const uint8_t* src, int32_t srcStep, const uint8_t* dark, int32_t darkStep,
                                        const float* gain, int32_t gainStep, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_FlatField_16u_C1R(const uint16_t* src, int32_t srcStep, const uint16_t* dark, int32_t darkStep,
                                         const float* gain, int32_t gainStep, uint16_t* dst, int32_t dstStep,
                                         DaxiSize size);
DAX_API DaxStatus DAXI_FlatField_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                           const uint8_t* dark, int32_t darkStep, const float* gain, int32_t gainStep,
                                           uint8_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_FlatField_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                            const uint16_t* dark, int32_t darkStep, const float* gain, int32_t gainStep,
                                            uint16_t* dst, int32_t dstStep, DaxiSize size);

DAX_API DaxStatus DAXI_FlatField_8u_C1IR(const uint8_t* dark, int32_t darkStep, const float* gain, int32_t gainStep,
                                         uint8_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_FlatField_16u_C1IR(const uint16_t* dark, int32_t darkStep, const float* gain, int32_t gainStep,
                                          uint16_t* srcDst, int32_t step, DaxiSize size);

DAX_END_DECLS

#endif

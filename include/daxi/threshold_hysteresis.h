/* A threshold of two levels: 255 where a pixel above `low` hangs together with one above `high` through pixels above
 * `low`, else 0 (Canny 1986). NaN is above nothing.
 *
 * connectivity: 4, neighbours in the row and in the column, or 8, diagonal ones too. Steps count elements; src and dst
 * must not overlap. Forms ending in _MT run on the host's pool, in at most `threads` tiles and at most 64; any number
 * works with any pool, results do not depend on it, and pool may be null. Thread-safe for distinct destinations and
 * buffers.
 *
 * Checks, in order:
 *   src, dst or buffer null                                      0x10000014
 *   width < 1 or height < 1, or more than 2^31 pixels            0x1000001a
 *   width above the smaller step                                 0x1000001b
 *   not low <= high                                              0x10000019
 *   connectivity other than 4 and 8                              0x10000012
 * A failed call writes nothing; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_THRESHOLD_HYSTERESIS_H
#define DAXI_THRESHOLD_HYSTERESIS_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Bytes of work buffer, for the forms ending in _MT too. Checks, in order: bytes null -> 0x10000014; width < 1 or height < 1, or more than 2^31 pixels
 * -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_ThresholdHysteresisBufferSize_8u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_ThresholdHysteresisBufferSize_16u8u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_ThresholdHysteresisBufferSize_32f8u(DaxiSize size, uint64_t* bytes);

/* buffer: at least as many bytes as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_ThresholdHysteresis_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                  DaxiSize size, uint8_t low, uint8_t high, int32_t connectivity,
                                                  void* buffer);
DAX_API DaxStatus DAXI_ThresholdHysteresis_16u8u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst,
                                                     int32_t dstStep, DaxiSize size, uint16_t low, uint16_t high,
                                                     int32_t connectivity, void* buffer);
DAX_API DaxStatus DAXI_ThresholdHysteresis_32f8u_C1R(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                     DaxiSize size, float low, float high, int32_t connectivity,
                                                     void* buffer);
DAX_API DaxStatus DAXI_ThresholdHysteresis_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                     uint8_t* dst, int32_t dstStep, DaxiSize size, uint8_t low,
                                                     uint8_t high, int32_t connectivity, void* buffer);
DAX_API DaxStatus DAXI_ThresholdHysteresis_16u8u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src,
                                                        int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                                        uint16_t low, uint16_t high, int32_t connectivity,
                                                        void* buffer);
DAX_API DaxStatus DAXI_ThresholdHysteresis_32f8u_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                        uint8_t* dst, int32_t dstStep, DaxiSize size, float low,
                                                        float high, int32_t connectivity, void* buffer);

DAX_END_DECLS

#endif

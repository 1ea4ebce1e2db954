/* Percentiles and the median of a region, or of the pixels that a mask chooses: exact, without sorting the image.
 *
 * The percentile of a share p is the pixel of rank max(1, ceil(p n)) among the n pixels in ascending order, so it is one of the
 * pixels: 0 is the least, 1 the greatest, and 0.5 the median, of an even number of pixels the lower one. p n is lowered by 2^-50
 * of itself before it is rounded up, for what its rounding may have added. Floats: NaN does not count; -0 comes before +0.
 *
 *   src, srcStep    image, step in elements
 *   mask, maskStep  of the same size: pixels where it is not 0 count (C1MR)
 *   size            of the region
 *   shares          `count` numbers 0..1; floats take another pass for each that differs much from the one before
 *   values          receives `count` percentiles
 *   buffer          as many bytes as the query says, aligned as by malloc; bytes need none
 *
 * _MT: on the host's thread pool, in at most four bands of rows, where pool is not null and threads > 1; else on the
 * calling thread. The work buffer has a query of its own, which is to get the same number of threads. The result does not
 * depend on the threads. Returns the status of the host's parallel-for, unchanged.
 *
 * Thread-safe for distinct outputs and buffers. The results are the same bits on every machine.
 *
 * Checks, in order:
 *   a pointer null               0x10000014
 *   width < 1 or height < 1      0x1000001a
 *   srcStep < width              0x1000001b
 *   maskStep < width             0x1000001b
 *   count outside 1..256       0x10000019
 *   a share outside 0..1         0x10000019
 *   no pixel, or only NaN        0x10000033
 * A failed call has written nothing but the buffer. */
#ifndef DAXI_PERCENTILE_H
#define DAXI_PERCENTILE_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Bytes of work buffer for regions of this size.
 *
 * Checks, in order: bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_PercentilesBufferSize_16u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_PercentilesBufferSize_16s(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_PercentilesBufferSize_32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_MedianBufferSize_16u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_MedianBufferSize_16s(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_MedianBufferSize_32f(DaxiSize size, uint64_t* bytes);
/* The same for the forms ending in _MT; threads as for the call. */
DAX_API DaxStatus DAXI_PercentilesBufferSize_16u_MT(DaxiSize size, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_PercentilesBufferSize_16s_MT(DaxiSize size, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_PercentilesBufferSize_32f_MT(DaxiSize size, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_MedianBufferSize_16u_MT(DaxiSize size, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_MedianBufferSize_16s_MT(DaxiSize size, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_MedianBufferSize_32f_MT(DaxiSize size, uint32_t threads, uint64_t* bytes);

/* The percentile of each share. */
DAX_API DaxStatus DAXI_Percentiles_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, const double* shares,
                                          int32_t count, uint8_t* values);
DAX_API DaxStatus DAXI_Percentiles_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                           DaxiSize size, const double* shares, int32_t count, uint8_t* values);

/* The percentile of each share. */
DAX_API DaxStatus DAXI_Percentiles_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, const double* shares,
                                           int32_t count, uint16_t* values, void* buffer);
DAX_API DaxStatus DAXI_Percentiles_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                              DaxiSize size, const double* shares, int32_t count, uint16_t* values,
                                              void* buffer);
DAX_API DaxStatus DAXI_Percentiles_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                            DaxiSize size, const double* shares, int32_t count, uint16_t* values,
                                            void* buffer);
DAX_API DaxStatus DAXI_Percentiles_16u_C1MR_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                               const uint8_t* mask, int32_t maskStep, DaxiSize size,
                                               const double* shares, int32_t count, uint16_t* values, void* buffer);
DAX_API DaxStatus DAXI_Percentiles_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, const double* shares,
                                           int32_t count, int16_t* values, void* buffer);
DAX_API DaxStatus DAXI_Percentiles_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                              DaxiSize size, const double* shares, int32_t count, int16_t* values,
                                              void* buffer);
DAX_API DaxStatus DAXI_Percentiles_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                            DaxiSize size, const double* shares, int32_t count, int16_t* values,
                                            void* buffer);
DAX_API DaxStatus DAXI_Percentiles_16s_C1MR_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                               const uint8_t* mask, int32_t maskStep, DaxiSize size,
                                               const double* shares, int32_t count, int16_t* values, void* buffer);
DAX_API DaxStatus DAXI_Percentiles_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, const double* shares,
                                           int32_t count, float* values, void* buffer);
DAX_API DaxStatus DAXI_Percentiles_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                              DaxiSize size, const double* shares, int32_t count, float* values,
                                              void* buffer);
DAX_API DaxStatus DAXI_Percentiles_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                            DaxiSize size, const double* shares, int32_t count, float* values,
                                            void* buffer);
DAX_API DaxStatus DAXI_Percentiles_32f_C1MR_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                               const uint8_t* mask, int32_t maskStep, DaxiSize size,
                                               const double* shares, int32_t count, float* values, void* buffer);

/* The percentile of 0.5. */
DAX_API DaxStatus DAXI_Median_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, uint8_t* median);
DAX_API DaxStatus DAXI_Median_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                      DaxiSize size, uint8_t* median);

/* The percentile of 0.5. */
DAX_API DaxStatus DAXI_Median_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, uint16_t* median,
                                      void* buffer);
DAX_API DaxStatus DAXI_Median_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                         DaxiSize size, uint16_t* median, void* buffer);
DAX_API DaxStatus DAXI_Median_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                       DaxiSize size, uint16_t* median, void* buffer);
DAX_API DaxStatus DAXI_Median_16u_C1MR_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                          const uint8_t* mask, int32_t maskStep, DaxiSize size, uint16_t* median,
                                          void* buffer);
DAX_API DaxStatus DAXI_Median_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, int16_t* median,
                                      void* buffer);
DAX_API DaxStatus DAXI_Median_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                         DaxiSize size, int16_t* median, void* buffer);
DAX_API DaxStatus DAXI_Median_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                       DaxiSize size, int16_t* median, void* buffer);
DAX_API DaxStatus DAXI_Median_16s_C1MR_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                          const uint8_t* mask, int32_t maskStep, DaxiSize size, int16_t* median,
                                          void* buffer);
DAX_API DaxStatus DAXI_Median_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, float* median, void* buffer);
DAX_API DaxStatus DAXI_Median_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, DaxiSize size,
                                         float* median, void* buffer);
DAX_API DaxStatus DAXI_Median_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                       DaxiSize size, float* median, void* buffer);
DAX_API DaxStatus DAXI_Median_32f_C1MR_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                          const uint8_t* mask, int32_t maskStep, DaxiSize size, float* median,
                                          void* buffer);

DAX_END_DECLS

#endif

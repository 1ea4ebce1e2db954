/* Images of another pixel type.
 *
 * Real numbers become integers by rounding to the nearest one, halves to the even one, and saturating to the range of the type;
 * NaN becomes 0. Layouts: C1R has one channel, C3R three interleaved ones, which are converted alike. Steps count elements. Source
 * and destination must not overlap. No work buffer. Thread-safe for distinct destinations. The results are the same bits on every
 * machine (NaN payloads apart).
 *
 * _MT: on the host's thread pool, in bands of ceil(height / threads) rows, where pool is not null and threads > 1; else on the
 * calling thread. The result does not depend on it. Returns the status of the host's parallel-for, unchanged.
 *
 * Checks, in order:
 *   src, dst or cfg null                                0x10000014
 *   width < 1 or height < 1                             0x1000001a
 *   width, three times for C3, above the smallest step  0x1000001b
 *   scale, then offset, not finite                      0x10000019
 * When a check fails, nothing is written. */
#ifndef DAXI_CONVERT_H
#define DAXI_CONVERT_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Configuration of DAXI_Convert. 16 bytes. */
typedef struct DaxiConvertCfg {
  double scale;  /* finite, default 1 */
  double offset; /* finite, default 0 */
} DaxiConvertCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_ConvertDefaultCfg(DaxiConvertCfg* cfg);

/* dst = src * scale + offset: the product and the sum in double precision, each rounded there, the sum then once more to the type
 * of the destination. With the defaults values stay, and saturate: 300 becomes 255 in 8u. */
DAX_API DaxStatus DAXI_Convert_8u16u_C1R(const uint8_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                         DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_8u16u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            uint16_t* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_8u16u_C3R(const uint8_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                         DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_8u16u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            uint16_t* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_8u16s_C1R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                         DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_8u16s_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            int16_t* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_8u16s_C3R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                         DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_8u16s_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            int16_t* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                         DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_8u32f_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            float* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_8u32f_C3R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                         DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_8u32f_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            float* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16u8u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16u8u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                            uint8_t* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16u8u_C3R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16u8u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                            uint8_t* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16u16s_C1R(const uint16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                          DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16u16s_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                             int16_t* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16u16s_C3R(const uint16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                          DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16u16s_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                             int16_t* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                          DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16u32f_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                             float* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16u32f_C3R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                          DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16u32f_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                             float* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16s8u_C1R(const int16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16s8u_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                            uint8_t* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16s8u_C3R(const int16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16s8u_C3R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                            uint8_t* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16s16u_C1R(const int16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                          DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16s16u_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                             uint16_t* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16s16u_C3R(const int16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                          DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16s16u_C3R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                             uint16_t* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16s32f_C1R(const int16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                          DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16s32f_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                             float* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16s32f_C3R(const int16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                          DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_16s32f_C3R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                             float* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_32f8u_C1R(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_32f8u_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                            uint8_t* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_32f8u_C3R(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_32f8u_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                            uint8_t* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_32f16u_C1R(const float* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                          DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_32f16u_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                             uint16_t* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_32f16u_C3R(const float* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                          DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_32f16u_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                             uint16_t* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_32f16s_C1R(const float* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                          DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_32f16s_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                             int16_t* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_32f16s_C3R(const float* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                          DaxiSize size, const DaxiConvertCfg* cfg);
DAX_API DaxStatus DAXI_Convert_32f16s_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                             int16_t* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg);

/* dst = src * M / m, M and m the greatest values of the types of destination and source: 255, 65535, 32767 and, of 32f, 1. The exact
 * quotient is rounded once: 16u 65535 becomes 8u 255, 8u 255 becomes 32f 1. Negative numbers become 0 in unsigned types. */
DAX_API DaxStatus DAXI_ConvertFullRange_8u16u_C1R(const uint8_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                                  DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_8u16u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                     uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_8u16u_C3R(const uint8_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                                  DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_8u16u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                     uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_8u16s_C1R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                                  DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_8u16s_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                     int16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_8u16s_C3R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                                  DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_8u16s_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                     int16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                  DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_8u32f_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                     float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_8u32f_C3R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                  DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_8u32f_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                     float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16u8u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                  DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16u8u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                     uint8_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16u8u_C3R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                  DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16u8u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                     uint8_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16u16s_C1R(const uint16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                                   DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16u16s_C1R_MT(void* pool, uint32_t threads, const uint16_t* src,
                                                      int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16u16s_C3R(const uint16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                                   DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16u16s_C3R_MT(void* pool, uint32_t threads, const uint16_t* src,
                                                      int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                   DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16u32f_C1R_MT(void* pool, uint32_t threads, const uint16_t* src,
                                                      int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16u32f_C3R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                   DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16u32f_C3R_MT(void* pool, uint32_t threads, const uint16_t* src,
                                                      int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16s8u_C1R(const int16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                  DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16s8u_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                     uint8_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16s8u_C3R(const int16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                  DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16s8u_C3R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                     uint8_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16s16u_C1R(const int16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                                   DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16s16u_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                      uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16s16u_C3R(const int16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                                   DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16s16u_C3R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                      uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16s32f_C1R(const int16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                   DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16s32f_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                      float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16s32f_C3R(const int16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                   DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_16s32f_C3R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                      float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_32f8u_C1R(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                  DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_32f8u_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                     uint8_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_32f8u_C3R(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                  DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_32f8u_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                     uint8_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_32f16u_C1R(const float* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                                   DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_32f16u_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                      uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_32f16u_C3R(const float* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                                   DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_32f16u_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                      uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_32f16s_C1R(const float* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                                   DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_32f16s_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                      int16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_32f16s_C3R(const float* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                                   DaxiSize size);
DAX_API DaxStatus DAXI_ConvertFullRange_32f16s_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                      int16_t* dst, int32_t dstStep, DaxiSize size);

DAX_END_DECLS

#endif

/* Masks by a level of the image's own histogram (hist_level.h).
 *
 * The level, or the levels of OtsuMulti, are those of the histogram of all pixels of the region. A pixel of class k of
 * c classes becomes 255 k / (c - 1), rounded: with one level, 0 up to the level and 255 above it. `polarity` chooses
 * what is set:
 *   BRIGHT   as it is
 *   DARK     255 minus it: what is at most the level
 *   AUTO     what is not ground: ground is the class of most pixels of the region's frame, its first and last rows and
 *            columns, of equal ones the darker; DARK where that class is above the middle
 *
 * For 8u, Otsu's level of DAXI_AdpThresholdOtsu (threshold.h) differs in its rounding; OtsuMulti with two classes is
 * the one of here.
 *
 * Steps count elements. src and dst must not overlap. buffer: at least as many bytes as the query says, aligned as by
 * malloc. Thread-safe for distinct outputs and buffers.
 *
 * Checks, in order:
 *   src, dst, cfg, level or buffer null                0x10000014
 *   width < 1 or height < 1, or more than 2^46 pixels  0x1000001a
 *   width above the smaller step                       0x1000001b
 *   configuration, in the order of its fields          0x10000019
 * A failed call writes nothing. */
#ifndef DAXI_THRESHOLD_GLOBAL_H
#define DAXI_THRESHOLD_GLOBAL_H

#include "hist_level.h"

DAX_BEGIN_DECLS

enum { DAXI_POLARITY_BRIGHT = 0, DAXI_POLARITY_DARK = 1, DAXI_POLARITY_AUTO = 2 };

/* Configuration. 24 bytes. */
typedef struct DaxiThresholdGlobalCfg {
  DaxiHistLevelCfg level; /* its defaults */
  int32_t polarity;       /* 0..2: DAXI_POLARITY_BRIGHT, the default, ..._DARK or ..._AUTO */
  int32_t reserved;       /* not read */
} DaxiThresholdGlobalCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_ThresholdGlobalDefaultCfg(DaxiThresholdGlobalCfg* cfg);

/* Bytes of work buffer of OtsuMulti, and of all others. Checks: bytes null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_ThresholdOtsuMultiBufferSize_8u(uint64_t* bytes);
DAX_API DaxStatus DAXI_ThresholdOtsuMultiBufferSize_16u(uint64_t* bytes);
DAX_API DaxStatus DAXI_ThresholdGlobalBufferSize_8u(uint64_t* bytes);
DAX_API DaxStatus DAXI_ThresholdGlobalBufferSize_16u(uint64_t* bytes);

/* level receives the level or levels; its flag DARK says that the dark class was set. */
DAX_API DaxStatus DAXI_ThresholdOtsu_16u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, const DaxiThresholdGlobalCfg* cfg, DaxiHistLevel* level,
                                             void* buffer);
DAX_API DaxStatus DAXI_ThresholdKapur_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, const DaxiThresholdGlobalCfg* cfg, DaxiHistLevel* level,
                                             void* buffer);
DAX_API DaxStatus DAXI_ThresholdKapur_16u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                              DaxiSize size, const DaxiThresholdGlobalCfg* cfg, DaxiHistLevel* level,
                                              void* buffer);
DAX_API DaxStatus DAXI_ThresholdYen_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size, const DaxiThresholdGlobalCfg* cfg, DaxiHistLevel* level,
                                           void* buffer);
DAX_API DaxStatus DAXI_ThresholdYen_16u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                            DaxiSize size, const DaxiThresholdGlobalCfg* cfg, DaxiHistLevel* level,
                                            void* buffer);
DAX_API DaxStatus DAXI_ThresholdLi_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                          DaxiSize size, const DaxiThresholdGlobalCfg* cfg, DaxiHistLevel* level,
                                          void* buffer);
DAX_API DaxStatus DAXI_ThresholdLi_16u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size, const DaxiThresholdGlobalCfg* cfg, DaxiHistLevel* level,
                                           void* buffer);
DAX_API DaxStatus DAXI_ThresholdKittler_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                               DaxiSize size, const DaxiThresholdGlobalCfg* cfg, DaxiHistLevel* level,
                                               void* buffer);
DAX_API DaxStatus DAXI_ThresholdKittler_16u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                DaxiSize size, const DaxiThresholdGlobalCfg* cfg, DaxiHistLevel* level,
                                                void* buffer);
DAX_API DaxStatus DAXI_ThresholdIsodata_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                               DaxiSize size, const DaxiThresholdGlobalCfg* cfg, DaxiHistLevel* level,
                                               void* buffer);
DAX_API DaxStatus DAXI_ThresholdIsodata_16u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                DaxiSize size, const DaxiThresholdGlobalCfg* cfg, DaxiHistLevel* level,
                                                void* buffer);
DAX_API DaxStatus DAXI_ThresholdIntermodes_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                  DaxiSize size, const DaxiThresholdGlobalCfg* cfg,
                                                  DaxiHistLevel* level, void* buffer);
DAX_API DaxStatus DAXI_ThresholdIntermodes_16u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                   DaxiSize size, const DaxiThresholdGlobalCfg* cfg,
                                                   DaxiHistLevel* level, void* buffer);
DAX_API DaxStatus DAXI_ThresholdTriangle_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                DaxiSize size, const DaxiThresholdGlobalCfg* cfg, DaxiHistLevel* level,
                                                void* buffer);
DAX_API DaxStatus DAXI_ThresholdTriangle_16u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                 DaxiSize size, const DaxiThresholdGlobalCfg* cfg, DaxiHistLevel* level,
                                                 void* buffer);
DAX_API DaxStatus DAXI_ThresholdPercentile_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                  DaxiSize size, const DaxiThresholdGlobalCfg* cfg,
                                                  DaxiHistLevel* level, void* buffer);
DAX_API DaxStatus DAXI_ThresholdPercentile_16u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                   DaxiSize size, const DaxiThresholdGlobalCfg* cfg,
                                                   DaxiHistLevel* level, void* buffer);
DAX_API DaxStatus DAXI_ThresholdOtsuMulti_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                 DaxiSize size, const DaxiThresholdGlobalCfg* cfg, DaxiHistLevel* level,
                                                 void* buffer);
DAX_API DaxStatus DAXI_ThresholdOtsuMulti_16u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                  DaxiSize size, const DaxiThresholdGlobalCfg* cfg,
                                                  DaxiHistLevel* level, void* buffer);

DAX_END_DECLS

#endif

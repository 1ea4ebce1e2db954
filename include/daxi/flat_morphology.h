/* Erosion and dilation by windows of any shape: lines at any angle, and masks. Grey ones are minima and maxima; binary ones
 * take masks, in which a pixel is set when it is not 0, and store 0 and 255.
 *
 * A window is a set B of offsets (i, j) from its anchor, the pixel of it that lies on the pixel that is computed:
 *   erosion   dst(x, y) = min of src(x + i, y + j) over B
 *   dilation  dst(x, y) = max of src(x - i, y - j) over B: the window is turned by half a circle, so that the dilation of an
 *             erosion never exceeds the source
 * Of a mask of W x H pixels B is (c - ax, r - ay) of each pixel (c, r) that is not 0. Of a line (dx, dy) it is the n =
 * max(|dx|, |dy|) + 1 pixels (floor((2 k dx + m) / 2 m), floor((2 k dy + m) / 2 m)), k = 0..m, m = n - 1, less the pixel k of the
 * anchor.
 *
 * Borders: replicated, mirrored, symmetric, circular, constant, in memory (the pixels that the window reaches must be there),
 * or clipped, the default, where pixels outside do not count; where none counts, an erosion gives the greatest value of the
 * type, a dilation the least (of 32f NaN of that sign).
 *
 * Values are exact. Floats are ordered as by totalOrder of IEEE 754-2008: -0 before +0, and NaN beyond the infinity of its
 * sign. The cost of a pixel grows with the number of chords, the parts of the window along rows.
 *
 * Steps count elements. Images must not overlap. Forms ending in _MT run on the host's pool, in at most 8 tiles; results do
 * not depend on it, and pool may be null. Thread-safe for distinct destinations and buffers.
 *
 * Checks, in order:
 *   a pointer null                                                  0x10000014
 *   width < 1 or height < 1                                         0x1000001a
 *   W or H below 1 or above 255                                     0x10000019
 *   width above the smaller step, or W above its step               0x1000001b
 *   configuration, in the order of its fields                       0x10000019
 *   no pixel of the mask set                                        0x10000019
 * When a check fails, nothing is written but the buffer; _MT forms return the status of the host's parallel-for,
 * unchanged. */
#ifndef DAXI_FLAT_MORPHOLOGY_H
#define DAXI_FLAT_MORPHOLOGY_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"

DAX_BEGIN_DECLS

/* A line. 24 bytes. */
typedef struct DaxiFlatLineCfg {
  int32_t dx;     /* columns from the first to the last pixel: -1023..1023; default 10 */
  int32_t dy;     /* rows, downwards: -1023..1023; default 0 */
  int32_t anchor; /* the pixel of the line that lies on the pixel that is computed, -1 to max(|dx|, |dy|); -1, the
                   * default: max(|dx|, |dy|) / 2 */
  int32_t border; /* 0..6: DAXI_BORDER_REPLICATE to ..._CLIP, the default */
  double value;   /* of a constant border: 0; finite, taken to the nearest value of the type */
} DaxiFlatLineCfg;

/* What belongs to a mask of W x H pixels. 24 bytes. */
typedef struct DaxiFlatMaskCfg {
  int32_t anchorX;  /* a column of the mask, -1 to W - 1; -1, the default: W / 2 */
  int32_t anchorY;  /* a row of the mask, -1 to H - 1; -1, the default: H / 2 */
  int32_t border;   /* 0..6: DAXI_BORDER_REPLICATE to ..._CLIP, the default */
  int32_t reserved; /* ignored */
  double value;     /* of a constant border: 0; finite, taken to the nearest value of the type */
} DaxiFlatMaskCfg;

/* Fill in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_FlatLineDefaultCfg(DaxiFlatLineCfg* cfg);
DAX_API DaxStatus DAXI_FlatMaskDefaultCfg(DaxiFlatMaskCfg* cfg);

/* Bytes of work buffer for the same arguments, for the forms ending in _MT too.
 *
 * Checks, in order: a pointer null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; W or H below 1 or above 255 ->
 * 0x10000019; W above its step -> 0x1000001b; the configuration, in the order of its fields -> 0x10000019; a need that does not fit a
 * signed 64-bit integer -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_GrayErodeLineBufferSize_8u(DaxiSize size, const DaxiFlatLineCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayErodeLineBufferSize_16u(DaxiSize size, const DaxiFlatLineCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayErodeLineBufferSize_16s(DaxiSize size, const DaxiFlatLineCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayErodeLineBufferSize_32f(DaxiSize size, const DaxiFlatLineCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayDilateLineBufferSize_8u(DaxiSize size, const DaxiFlatLineCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayDilateLineBufferSize_16u(DaxiSize size, const DaxiFlatLineCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayDilateLineBufferSize_16s(DaxiSize size, const DaxiFlatLineCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayDilateLineBufferSize_32f(DaxiSize size, const DaxiFlatLineCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayErodeMaskBufferSize_8u(DaxiSize size, const uint8_t* element, int32_t elementStep,
                                                  DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayErodeMaskBufferSize_16u(DaxiSize size, const uint8_t* element, int32_t elementStep,
                                                   DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayErodeMaskBufferSize_16s(DaxiSize size, const uint8_t* element, int32_t elementStep,
                                                   DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayErodeMaskBufferSize_32f(DaxiSize size, const uint8_t* element, int32_t elementStep,
                                                   DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayDilateMaskBufferSize_8u(DaxiSize size, const uint8_t* element, int32_t elementStep,
                                                   DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayDilateMaskBufferSize_16u(DaxiSize size, const uint8_t* element, int32_t elementStep,
                                                    DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayDilateMaskBufferSize_16s(DaxiSize size, const uint8_t* element, int32_t elementStep,
                                                    DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayDilateMaskBufferSize_32f(DaxiSize size, const uint8_t* element, int32_t elementStep,
                                                    DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_ErodeMaskBufferSize_8u(DaxiSize size, const uint8_t* element, int32_t elementStep,
                                              DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_DilateMaskBufferSize_8u(DaxiSize size, const uint8_t* element, int32_t elementStep,
                                               DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_HitOrMissBufferSize_8u(DaxiSize size, const uint8_t* hit, int32_t hitStep, const uint8_t* miss,
                                              int32_t missStep, DaxiSize elementSize, const DaxiFlatMaskCfg* cfg,
                                              uint64_t* bytes);

/* The minimum along a line. */
DAX_API DaxStatus DAXI_GrayErodeLine_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                            DaxiSize size, const DaxiFlatLineCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayErodeLine_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                               uint8_t* dst, int32_t dstStep, DaxiSize size, const DaxiFlatLineCfg* cfg,
                                               void* buffer);
DAX_API DaxStatus DAXI_GrayErodeLine_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                             DaxiSize size, const DaxiFlatLineCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayErodeLine_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                uint16_t* dst, int32_t dstStep, DaxiSize size,
                                                const DaxiFlatLineCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayErodeLine_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                             DaxiSize size, const DaxiFlatLineCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayErodeLine_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                int16_t* dst, int32_t dstStep, DaxiSize size,
                                                const DaxiFlatLineCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayErodeLine_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                             DaxiSize size, const DaxiFlatLineCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayErodeLine_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                float* dst, int32_t dstStep, DaxiSize size, const DaxiFlatLineCfg* cfg,
                                                void* buffer);

/* The maximum along a line. */
DAX_API DaxStatus DAXI_GrayDilateLine_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, const DaxiFlatLineCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayDilateLine_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                uint8_t* dst, int32_t dstStep, DaxiSize size,
                                                const DaxiFlatLineCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayDilateLine_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                              DaxiSize size, const DaxiFlatLineCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayDilateLine_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                 uint16_t* dst, int32_t dstStep, DaxiSize size,
                                                 const DaxiFlatLineCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayDilateLine_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                              DaxiSize size, const DaxiFlatLineCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayDilateLine_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                 int16_t* dst, int32_t dstStep, DaxiSize size,
                                                 const DaxiFlatLineCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayDilateLine_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                              DaxiSize size, const DaxiFlatLineCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayDilateLine_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                 float* dst, int32_t dstStep, DaxiSize size, const DaxiFlatLineCfg* cfg,
                                                 void* buffer);

/* The minimum over the set pixels of a mask. */
DAX_API DaxStatus DAXI_GrayErodeMask_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                            DaxiSize size, const uint8_t* element, int32_t elementStep,
                                            DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayErodeMask_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                               uint8_t* dst, int32_t dstStep, DaxiSize size, const uint8_t* element,
                                               int32_t elementStep, DaxiSize elementSize, const DaxiFlatMaskCfg* cfg,
                                               void* buffer);
DAX_API DaxStatus DAXI_GrayErodeMask_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                             DaxiSize size, const uint8_t* element, int32_t elementStep,
                                             DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayErodeMask_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                uint16_t* dst, int32_t dstStep, DaxiSize size, const uint8_t* element,
                                                int32_t elementStep, DaxiSize elementSize, const DaxiFlatMaskCfg* cfg,
                                                void* buffer);
DAX_API DaxStatus DAXI_GrayErodeMask_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                             DaxiSize size, const uint8_t* element, int32_t elementStep,
                                             DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayErodeMask_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                int16_t* dst, int32_t dstStep, DaxiSize size, const uint8_t* element,
                                                int32_t elementStep, DaxiSize elementSize, const DaxiFlatMaskCfg* cfg,
                                                void* buffer);
DAX_API DaxStatus DAXI_GrayErodeMask_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                             DaxiSize size, const uint8_t* element, int32_t elementStep,
                                             DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayErodeMask_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                float* dst, int32_t dstStep, DaxiSize size, const uint8_t* element,
                                                int32_t elementStep, DaxiSize elementSize, const DaxiFlatMaskCfg* cfg,
                                                void* buffer);

/* The maximum over the set pixels of a mask. */
DAX_API DaxStatus DAXI_GrayDilateMask_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, const uint8_t* element, int32_t elementStep,
                                             DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayDilateMask_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                uint8_t* dst, int32_t dstStep, DaxiSize size, const uint8_t* element,
                                                int32_t elementStep, DaxiSize elementSize, const DaxiFlatMaskCfg* cfg,
                                                void* buffer);
DAX_API DaxStatus DAXI_GrayDilateMask_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                              DaxiSize size, const uint8_t* element, int32_t elementStep,
                                              DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayDilateMask_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                 uint16_t* dst, int32_t dstStep, DaxiSize size, const uint8_t* element,
                                                 int32_t elementStep, DaxiSize elementSize, const DaxiFlatMaskCfg* cfg,
                                                 void* buffer);
DAX_API DaxStatus DAXI_GrayDilateMask_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                              DaxiSize size, const uint8_t* element, int32_t elementStep,
                                              DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayDilateMask_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                 int16_t* dst, int32_t dstStep, DaxiSize size, const uint8_t* element,
                                                 int32_t elementStep, DaxiSize elementSize, const DaxiFlatMaskCfg* cfg,
                                                 void* buffer);
DAX_API DaxStatus DAXI_GrayDilateMask_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                              DaxiSize size, const uint8_t* element, int32_t elementStep,
                                              DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayDilateMask_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                 float* dst, int32_t dstStep, DaxiSize size, const uint8_t* element,
                                                 int32_t elementStep, DaxiSize elementSize, const DaxiFlatMaskCfg* cfg,
                                                 void* buffer);

/* 255 where all pixels under the mask are set. */
DAX_API DaxStatus DAXI_ErodeMask_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size, const uint8_t* element, int32_t elementStep,
                                        DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_ErodeMask_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                           uint8_t* dst, int32_t dstStep, DaxiSize size, const uint8_t* element,
                                           int32_t elementStep, DaxiSize elementSize, const DaxiFlatMaskCfg* cfg,
                                           void* buffer);

/* 255 where a pixel under the turned mask is set. */
DAX_API DaxStatus DAXI_DilateMask_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, const uint8_t* element, int32_t elementStep,
                                         DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_DilateMask_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            uint8_t* dst, int32_t dstStep, DaxiSize size, const uint8_t* element,
                                            int32_t elementStep, DaxiSize elementSize, const DaxiFlatMaskCfg* cfg,
                                            void* buffer);

/* 255 where all pixels under `hit` are set and all under `miss` are clear, two masks of W x H pixels with one anchor; one of them
 * may be empty. Checked last: a pixel set in both, or in none -> 0x10000019. */
DAX_API DaxStatus DAXI_HitOrMiss_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size, const uint8_t* hit, int32_t hitStep, const uint8_t* miss,
                                        int32_t missStep, DaxiSize elementSize, const DaxiFlatMaskCfg* cfg,
                                        void* buffer);
DAX_API DaxStatus DAXI_HitOrMiss_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                           uint8_t* dst, int32_t dstStep, DaxiSize size, const uint8_t* hit,
                                           int32_t hitStep, const uint8_t* miss, int32_t missStep, DaxiSize elementSize,
                                           const DaxiFlatMaskCfg* cfg, void* buffer);

DAX_END_DECLS

#endif

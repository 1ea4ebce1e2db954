/* Pyramids of images: each level is a smoothed half of the one below it.
 *
 * Down: the image is smoothed by [1 4 6 4 1] / 16 along rows and columns, and every second pixel of every second row
 * is kept: pixel x of the result lies on pixel 2x of the source (not at 2x + 0.5, as a resize to half the size has
 * it). n pixels become (n + 1) / 2, rounded down. Up: pixel x lies on pixel 2x of the result, zeros between, smoothed
 * by [1 4 6 4 1] / 8: of a row, those at 2x become (p(x - 1) + 6 p(x) + p(x + 1)) / 8, those at 2x + 1 become (p(x) +
 * p(x + 1)) / 2. n pixels become 2n or 2n - 1. Borders of the source are mirrored (b a b c), those of a single pixel
 * repeat it. Laplacian: what a level has that its half, taken up again, has not.
 *
 * Integers are exact sums, rounded once, halves to even. 32f: 6 p(x) + 4 (p(x - 1) + p(x + 1)) + (p(x - 2) + p(x +
 * 2)), or 6 p(x) + (p(x - 1) + p(x + 1)) and 4 (p(x) + p(x + 1)), along rows first, then so along columns, then times
 * a power of two. The results are the same bits on every machine (NaN payloads apart).
 *
 * Steps count elements. Images must not overlap. Forms that end in _MT run on the host's pool, in at most 8 tiles of
 * rows, with the same result; pool may be null, and they return the host's status. Thread-safe for distinct
 * destinations and buffers.
 *
 * Checks, in order:
 *   a pointer null                                                          0x10000014
 *   width < 1 or height < 1                                                 0x1000001a
 *   DAXI_PyrUp: a side of dstSize neither 2n nor 2n - 1 of its n pixels     0x1000001a
 *   a step below a row of its image                                         0x1000001b
 * A failed call writes nothing. */
#ifndef DAXI_PYRAMID_H
#define DAXI_PYRAMID_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* A level of a pyramid that lies in one piece of memory. 24 bytes. */
typedef struct DaxiPyramidLevel {
  DaxiSize size;
  int32_t step;     /* elements from row to row */
  int32_t reserved; /* 0 */
  uint64_t offset;  /* bytes from the start of the memory to the first pixel; a multiple of 128 */
} DaxiPyramidLevel;

/* Where the levels lie: levels[0] is half of the image, levels[k] half of levels[k - 1], in all `count` levels.
 *
 * Checks, in order: levels null -> 0x10000014; width < 1 or height < 1 -> 0x1000001a; count < 1 or count > 31 -> 0x10000019; more bytes
 * than 2^63 - 1 -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_PyramidLevels_8u_C1R(DaxiSize size, int32_t count, DaxiPyramidLevel* levels);
DAX_API DaxStatus DAXI_PyramidLevels_8u_C3R(DaxiSize size, int32_t count, DaxiPyramidLevel* levels);
DAX_API DaxStatus DAXI_PyramidLevels_16u_C1R(DaxiSize size, int32_t count, DaxiPyramidLevel* levels);
DAX_API DaxStatus DAXI_PyramidLevels_16u_C3R(DaxiSize size, int32_t count, DaxiPyramidLevel* levels);
DAX_API DaxStatus DAXI_PyramidLevels_32f_C1R(DaxiSize size, int32_t count, DaxiPyramidLevel* levels);
DAX_API DaxStatus DAXI_PyramidLevels_32f_C3R(DaxiSize size, int32_t count, DaxiPyramidLevel* levels);

/* Bytes of the memory that holds all levels.
 *
 * Checks, in order: bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; count < 1 or count > 31 -> 0x10000019; more bytes
 * than 2^63 - 1 -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_PyramidBuildModelSize_8u_C1R(DaxiSize size, int32_t count, uint64_t* bytes);
DAX_API DaxStatus DAXI_PyramidBuildModelSize_8u_C3R(DaxiSize size, int32_t count, uint64_t* bytes);
DAX_API DaxStatus DAXI_PyramidBuildModelSize_16u_C1R(DaxiSize size, int32_t count, uint64_t* bytes);
DAX_API DaxStatus DAXI_PyramidBuildModelSize_16u_C3R(DaxiSize size, int32_t count, uint64_t* bytes);
DAX_API DaxStatus DAXI_PyramidBuildModelSize_32f_C1R(DaxiSize size, int32_t count, uint64_t* bytes);
DAX_API DaxStatus DAXI_PyramidBuildModelSize_32f_C3R(DaxiSize size, int32_t count, uint64_t* bytes);

/* Bytes of work buffer for the same arguments, of the forms for three channels and of those ending in _MT too.
 *
 * Checks, in order: bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; of PyrUp a side of dstSize
 * neither 2n nor 2n - 1 of its
 * n pixels -> 0x10000019; of PyramidBuild count < 1 or count > 31 -> 0x10000019; a need that does not fit a signed 64-bit integer -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_PyrDownBufferSize_8u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_PyrDownBufferSize_16u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_PyrDownBufferSize_32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_PyrUpBufferSize_8u(DaxiSize size, DaxiSize dstSize, uint64_t* bytes);
DAX_API DaxStatus DAXI_PyrUpBufferSize_16u(DaxiSize size, DaxiSize dstSize, uint64_t* bytes);
DAX_API DaxStatus DAXI_PyrUpBufferSize_32f(DaxiSize size, DaxiSize dstSize, uint64_t* bytes);
DAX_API DaxStatus DAXI_LaplacianBuildBufferSize_8u16s(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_LaplacianBuildBufferSize_16u32s(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_LaplacianBuildBufferSize_32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_LaplacianCollapseBufferSize_16s8u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_LaplacianCollapseBufferSize_32s16u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_LaplacianCollapseBufferSize_32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_PyramidBuildBufferSize_8u(DaxiSize size, int32_t count, uint64_t* bytes);
DAX_API DaxStatus DAXI_PyramidBuildBufferSize_16u(DaxiSize size, int32_t count, uint64_t* bytes);
DAX_API DaxStatus DAXI_PyramidBuildBufferSize_32f(DaxiSize size, int32_t count, uint64_t* bytes);

/* Half of an image of `size`, which has (width + 1) / 2 columns and (height + 1) / 2 rows. */
DAX_API DaxStatus DAXI_PyrDown_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                      void* buffer);
DAX_API DaxStatus DAXI_PyrDown_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                         uint8_t* dst, int32_t dstStep, DaxiSize size, void* buffer);
DAX_API DaxStatus DAXI_PyrDown_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                      void* buffer);
DAX_API DaxStatus DAXI_PyrDown_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                         uint8_t* dst, int32_t dstStep, DaxiSize size, void* buffer);
DAX_API DaxStatus DAXI_PyrDown_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                       DaxiSize size, void* buffer);
DAX_API DaxStatus DAXI_PyrDown_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                          uint16_t* dst, int32_t dstStep, DaxiSize size, void* buffer);
DAX_API DaxStatus DAXI_PyrDown_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                       DaxiSize size, void* buffer);
DAX_API DaxStatus DAXI_PyrDown_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                          uint16_t* dst, int32_t dstStep, DaxiSize size, void* buffer);
DAX_API DaxStatus DAXI_PyrDown_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                       void* buffer);
DAX_API DaxStatus DAXI_PyrDown_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                          int32_t dstStep, DaxiSize size, void* buffer);
DAX_API DaxStatus DAXI_PyrDown_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                       void* buffer);
DAX_API DaxStatus DAXI_PyrDown_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                          int32_t dstStep, DaxiSize size, void* buffer);

/* An image of `size` in twice its size, dstSize. */
DAX_API DaxStatus DAXI_PyrUp_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                    DaxiSize dstSize, void* buffer);
DAX_API DaxStatus DAXI_PyrUp_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                       int32_t dstStep, DaxiSize size, DaxiSize dstSize, void* buffer);
DAX_API DaxStatus DAXI_PyrUp_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                    DaxiSize dstSize, void* buffer);
DAX_API DaxStatus DAXI_PyrUp_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                       int32_t dstStep, DaxiSize size, DaxiSize dstSize, void* buffer);
DAX_API DaxStatus DAXI_PyrUp_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                     DaxiSize size, DaxiSize dstSize, void* buffer);
DAX_API DaxStatus DAXI_PyrUp_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                        uint16_t* dst, int32_t dstStep, DaxiSize size, DaxiSize dstSize, void* buffer);
DAX_API DaxStatus DAXI_PyrUp_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                     DaxiSize size, DaxiSize dstSize, void* buffer);
DAX_API DaxStatus DAXI_PyrUp_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                        uint16_t* dst, int32_t dstStep, DaxiSize size, DaxiSize dstSize, void* buffer);
DAX_API DaxStatus DAXI_PyrUp_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                     DaxiSize dstSize, void* buffer);
DAX_API DaxStatus DAXI_PyrUp_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                        int32_t dstStep, DaxiSize size, DaxiSize dstSize, void* buffer);
DAX_API DaxStatus DAXI_PyrUp_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                     DaxiSize dstSize, void* buffer);
DAX_API DaxStatus DAXI_PyrUp_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                        int32_t dstStep, DaxiSize size, DaxiSize dstSize, void* buffer);

/* dst = src - coarse in twice its size: exact, of 32f rounded once. `coarse` has (width + 1) / 2 columns and (height + 1) / 2 rows. */
DAX_API DaxStatus DAXI_LaplacianBuild_8u16s_C1R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                                DaxiSize size, const uint8_t* coarse, int32_t coarseStep, void* buffer);
DAX_API DaxStatus DAXI_LaplacianBuild_8u16s_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                   int16_t* dst, int32_t dstStep, DaxiSize size, const uint8_t* coarse,
                                                   int32_t coarseStep, void* buffer);
DAX_API DaxStatus DAXI_LaplacianBuild_8u16s_C3R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                                DaxiSize size, const uint8_t* coarse, int32_t coarseStep, void* buffer);
DAX_API DaxStatus DAXI_LaplacianBuild_8u16s_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                   int16_t* dst, int32_t dstStep, DaxiSize size, const uint8_t* coarse,
                                                   int32_t coarseStep, void* buffer);
DAX_API DaxStatus DAXI_LaplacianBuild_16u32s_C1R(const uint16_t* src, int32_t srcStep, int32_t* dst, int32_t dstStep,
                                                 DaxiSize size, const uint16_t* coarse, int32_t coarseStep,
                                                 void* buffer);
DAX_API DaxStatus DAXI_LaplacianBuild_16u32s_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                    int32_t* dst, int32_t dstStep, DaxiSize size,
                                                    const uint16_t* coarse, int32_t coarseStep, void* buffer);
DAX_API DaxStatus DAXI_LaplacianBuild_16u32s_C3R(const uint16_t* src, int32_t srcStep, int32_t* dst, int32_t dstStep,
                                                 DaxiSize size, const uint16_t* coarse, int32_t coarseStep,
                                                 void* buffer);
DAX_API DaxStatus DAXI_LaplacianBuild_16u32s_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                    int32_t* dst, int32_t dstStep, DaxiSize size,
                                                    const uint16_t* coarse, int32_t coarseStep, void* buffer);
DAX_API DaxStatus DAXI_LaplacianBuild_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                              DaxiSize size, const float* coarse, int32_t coarseStep, void* buffer);
DAX_API DaxStatus DAXI_LaplacianBuild_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                 float* dst, int32_t dstStep, DaxiSize size, const float* coarse,
                                                 int32_t coarseStep, void* buffer);
DAX_API DaxStatus DAXI_LaplacianBuild_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                              DaxiSize size, const float* coarse, int32_t coarseStep, void* buffer);
DAX_API DaxStatus DAXI_LaplacianBuild_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                 float* dst, int32_t dstStep, DaxiSize size, const float* coarse,
                                                 int32_t coarseStep, void* buffer);

/* dst = src + coarse in twice its size, saturated: with what DAXI_LaplacianBuild made and the same coarse image,
 * integers are the image
 * itself, 32f but for the rounding of both. `coarse` has (width + 1) / 2 columns and (height + 1) / 2 rows. */
DAX_API DaxStatus DAXI_LaplacianCollapse_16s8u_C1R(const int16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                   DaxiSize size, const uint8_t* coarse, int32_t coarseStep,
                                                   void* buffer);
DAX_API DaxStatus DAXI_LaplacianCollapse_16s8u_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                      uint8_t* dst, int32_t dstStep, DaxiSize size,
                                                      const uint8_t* coarse, int32_t coarseStep, void* buffer);
DAX_API DaxStatus DAXI_LaplacianCollapse_16s8u_C3R(const int16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                   DaxiSize size, const uint8_t* coarse, int32_t coarseStep,
                                                   void* buffer);
DAX_API DaxStatus DAXI_LaplacianCollapse_16s8u_C3R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                      uint8_t* dst, int32_t dstStep, DaxiSize size,
                                                      const uint8_t* coarse, int32_t coarseStep, void* buffer);
DAX_API DaxStatus DAXI_LaplacianCollapse_32s16u_C1R(const int32_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                                    DaxiSize size, const uint16_t* coarse, int32_t coarseStep,
                                                    void* buffer);
DAX_API DaxStatus DAXI_LaplacianCollapse_32s16u_C1R_MT(void* pool, uint32_t threads, const int32_t* src,
                                                       int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                                       const uint16_t* coarse, int32_t coarseStep, void* buffer);
DAX_API DaxStatus DAXI_LaplacianCollapse_32s16u_C3R(const int32_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                                    DaxiSize size, const uint16_t* coarse, int32_t coarseStep,
                                                    void* buffer);
DAX_API DaxStatus DAXI_LaplacianCollapse_32s16u_C3R_MT(void* pool, uint32_t threads, const int32_t* src,
                                                       int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                                       const uint16_t* coarse, int32_t coarseStep, void* buffer);
DAX_API DaxStatus DAXI_LaplacianCollapse_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                 DaxiSize size, const float* coarse, int32_t coarseStep, void* buffer);
DAX_API DaxStatus DAXI_LaplacianCollapse_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                    float* dst, int32_t dstStep, DaxiSize size, const float* coarse,
                                                    int32_t coarseStep, void* buffer);
DAX_API DaxStatus DAXI_LaplacianCollapse_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                 DaxiSize size, const float* coarse, int32_t coarseStep, void* buffer);
DAX_API DaxStatus DAXI_LaplacianCollapse_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                    float* dst, int32_t dstStep, DaxiSize size, const float* coarse,
                                                    int32_t coarseStep, void* buffer);

/* All `count` levels above an image of `size`, as DAXI_PyramidLevels says where, into one piece of memory, of as many
 * bytes as DAXI_PyramidBuildModelSize says, aligned as by malloc. What lies between levels is not written. Checked
 * last: count < 1 or count > 31
 * -> 0x10000019; more bytes than 2^63 - 1 -> 0x10000015. The query checks `count` after the size. */
DAX_API DaxStatus DAXI_PyramidBuild_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t count,
                                           void* model, void* buffer);
DAX_API DaxStatus DAXI_PyramidBuild_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                              DaxiSize size, int32_t count, void* model, void* buffer);
DAX_API DaxStatus DAXI_PyramidBuild_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t count,
                                           void* model, void* buffer);
DAX_API DaxStatus DAXI_PyramidBuild_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                              DaxiSize size, int32_t count, void* model, void* buffer);
DAX_API DaxStatus DAXI_PyramidBuild_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, int32_t count,
                                            void* model, void* buffer);
DAX_API DaxStatus DAXI_PyramidBuild_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                               DaxiSize size, int32_t count, void* model, void* buffer);
DAX_API DaxStatus DAXI_PyramidBuild_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize size, int32_t count,
                                            void* model, void* buffer);
DAX_API DaxStatus DAXI_PyramidBuild_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                               DaxiSize size, int32_t count, void* model, void* buffer);
DAX_API DaxStatus DAXI_PyramidBuild_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, int32_t count,
                                            void* model, void* buffer);
DAX_API DaxStatus DAXI_PyramidBuild_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                               DaxiSize size, int32_t count, void* model, void* buffer);
DAX_API DaxStatus DAXI_PyramidBuild_32f_C3R(const float* src, int32_t srcStep, DaxiSize size, int32_t count,
                                            void* model, void* buffer);
DAX_API DaxStatus DAXI_PyramidBuild_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                               DaxiSize size, int32_t count, void* model, void* buffer);

DAX_END_DECLS

#endif

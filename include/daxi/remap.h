/* Images read at places that a map tells: dst(x, y) = src(mapX(x, y), mapY(x, y)).
 *
 * Maps are floats, in pixels of the source, whose centres are whole numbers. Their numbers are taken as they are, cut
 * off at 2^-32 pixels; floats themselves are 2^-11 pixels apart at column 8192. What is NaN or more than 2^30 pixels
 * away gets the constant, whatever the border, and with a border that leaves is not written. Interpolation, rounding
 * and borders are those of DAXI_WarpAffine_8u_C1R.
 *
 * For streams a map is prepared once, as whole numbers of 2^-12 pixels, rounded to the nearest, and used for each
 * frame: DAXI_RemapPrepare, DAXI_RemapPrepared. Prepared positions reach 2^19 - 1 pixels; what is further off counts
 * as NaN.
 *
 * Source and destination must not overlap. Steps count elements. Sides are at most 2^20. No work buffer. Forms ending
 * in _MT run on the host's pool, in at most `threads` bands; any number works with any pool, results do not depend on
 * it, and pool may be null. Thread-safe for distinct destinations. The results are the same bits on every machine. */
#ifndef DAXI_REMAP_H
#define DAXI_REMAP_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"
#include "interpolation.h"

DAX_BEGIN_DECLS

/* Configuration. 24 bytes. */
typedef struct DaxiRemapCfg {
  int32_t interpolation; /* 0..3: DAXI_INTERPOLATION_NEAREST to ..._LANCZOS3; default linear */
  int32_t border;        /* DAXI_BORDER_REPLICATE to ..._CONSTANT, the default, or ..._LEAVE */
  double value;          /* of a constant border: finite, default 0, taken to the nearest value of the type */
  double cubicA;         /* of cubic interpolation: finite, default -0.5 */
} DaxiRemapCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_RemapDefaultCfg(DaxiRemapCfg* cfg);

/* Bytes of the model of a map.
 *
 * Checks, in order: bytes null -> 0x10000014; size outside 1..1048576 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_RemapPrepareModelSize(DaxiSize size, uint64_t* bytes);

/* Prepares a map. The model is a block of the caller's, at a multiple of 8, of as many bytes as the query says, which
 * may be copied, written to a file and read again.
 *
 * Checks, in order: mapX, mapY or model null -> 0x10000014; size outside 1..1048576 -> 0x1000001a; mapXStep or
 * mapYStep below size.width -> 0x1000001b. A failed call writes nothing. Thread-safe. */
DAX_API DaxStatus DAXI_RemapPrepare(const float* mapX, int32_t mapXStep, const float* mapY, int32_t mapYStep,
                                    DaxiSize size, void* model);

/* Whether a model is whole, to the last bit, and its size. Reads nothing beyond modelBytes.
 *
 * Checks, in order: model or size null -> 0x10000014; a model of another kind, cut short or damaged, or at an
 * address that is no multiple of 8 -> 0x10000019; of another version -> 0x10000020. A failed call writes nothing.
 * Thread-safe. */
DAX_API DaxStatus DAXI_RemapCheckModel(const void* model, uint64_t modelBytes, DaxiSize* size);

/* Where the pixel (x, y) lies in the source. A status other than 0 ends the call. */
typedef DaxStatus (*DaxiMapFunction)(void* user, double x, double y, double* sourceX, double* sourceY);

/* A map from a function, called for each pixel, row by row, from the calling thread. `user` is passed on and may be
 * null. Doubles are rounded to floats; what they cannot hold is NaN.
 *
 * Checks, in order: function, mapX or mapY null -> 0x10000014; size outside 1..1048576 -> 0x1000001a; mapXStep or
 * mapYStep below size.width -> 0x1000001b. Then the status of the function, unchanged, after which the maps are
 * written in part. A call that fails a check writes nothing. Thread-safe. */
DAX_API DaxStatus DAXI_MapFromFunction(DaxiMapFunction function, void* user, float* mapX, int32_t mapXStep, float* mapY,
                                       int32_t mapYStep, DaxiSize size);

/* The map of two remaps, `outer` first: map(x, y) = outer(inner(x, y)), linearly between its pixels, in double
 * precision with 24 bits of the fraction, rounded once; NaN where inner lies outside of outer.
 *
 * Maps must not overlap. Checks, in order: a map null -> 0x10000014; outerSize or size outside 1..1048576 ->
 * 0x1000001a; outerXStep or outerYStep below outerSize.width, innerXStep, innerYStep, mapXStep or mapYStep below
 * size.width -> 0x1000001b. A failed call writes nothing. Thread-safe. */
DAX_API DaxStatus DAXI_MapCompose(const float* outerX, int32_t outerXStep, const float* outerY, int32_t outerYStep,
                                  DaxiSize outerSize, const float* innerX, int32_t innerXStep, const float* innerY,
                                  int32_t innerYStep, float* mapX, int32_t mapXStep, float* mapY, int32_t mapYStep,
                                  DaxiSize size);

/* By two maps of the destination's size.
 *
 * Checks, in order:
 *   src, mapX, mapY, dst or cfg null                                               0x10000014
 *   srcSize or dstSize outside 1..1048576                                          0x1000001a
 *   srcStep below a row of the source, the others below one of the destination     0x1000001b
 *   configuration, in the order of its fields                                      0x10000019
 * A failed call writes nothing; _MT forms return the status of the host's parallel-for, unchanged. */
DAX_API DaxStatus DAXI_Remap_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, const float* mapX,
                                    int32_t mapXStep, const float* mapY, int32_t mapYStep, uint8_t* dst,
                                    int32_t dstStep, DaxiSize dstSize, const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_Remap_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                       DaxiSize srcSize, const float* mapX, int32_t mapXStep, const float* mapY,
                                       int32_t mapYStep, uint8_t* dst, int32_t dstStep, DaxiSize dstSize,
                                       const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_Remap_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, const float* mapX,
                                    int32_t mapXStep, const float* mapY, int32_t mapYStep, uint8_t* dst,
                                    int32_t dstStep, DaxiSize dstSize, const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_Remap_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                       DaxiSize srcSize, const float* mapX, int32_t mapXStep, const float* mapY,
                                       int32_t mapYStep, uint8_t* dst, int32_t dstStep, DaxiSize dstSize,
                                       const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_Remap_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, const float* mapX,
                                     int32_t mapXStep, const float* mapY, int32_t mapYStep, uint16_t* dst,
                                     int32_t dstStep, DaxiSize dstSize, const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_Remap_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                        DaxiSize srcSize, const float* mapX, int32_t mapXStep, const float* mapY,
                                        int32_t mapYStep, uint16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                        const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_Remap_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, const float* mapX,
                                     int32_t mapXStep, const float* mapY, int32_t mapYStep, uint16_t* dst,
                                     int32_t dstStep, DaxiSize dstSize, const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_Remap_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                        DaxiSize srcSize, const float* mapX, int32_t mapXStep, const float* mapY,
                                        int32_t mapYStep, uint16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                        const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_Remap_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, const float* mapX,
                                     int32_t mapXStep, const float* mapY, int32_t mapYStep, int16_t* dst,
                                     int32_t dstStep, DaxiSize dstSize, const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_Remap_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                        DaxiSize srcSize, const float* mapX, int32_t mapXStep, const float* mapY,
                                        int32_t mapYStep, int16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                        const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_Remap_16s_C3R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, const float* mapX,
                                     int32_t mapXStep, const float* mapY, int32_t mapYStep, int16_t* dst,
                                     int32_t dstStep, DaxiSize dstSize, const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_Remap_16s_C3R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                        DaxiSize srcSize, const float* mapX, int32_t mapXStep, const float* mapY,
                                        int32_t mapYStep, int16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                        const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_Remap_32f_C1R(const float* src, int32_t srcStep, DaxiSize srcSize, const float* mapX,
                                     int32_t mapXStep, const float* mapY, int32_t mapYStep, float* dst, int32_t dstStep,
                                     DaxiSize dstSize, const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_Remap_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                        DaxiSize srcSize, const float* mapX, int32_t mapXStep, const float* mapY,
                                        int32_t mapYStep, float* dst, int32_t dstStep, DaxiSize dstSize,
                                        const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_Remap_32f_C3R(const float* src, int32_t srcStep, DaxiSize srcSize, const float* mapX,
                                     int32_t mapXStep, const float* mapY, int32_t mapYStep, float* dst, int32_t dstStep,
                                     DaxiSize dstSize, const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_Remap_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                        DaxiSize srcSize, const float* mapX, int32_t mapXStep, const float* mapY,
                                        int32_t mapYStep, float* dst, int32_t dstStep, DaxiSize dstSize,
                                        const DaxiRemapCfg* cfg);

/* By a prepared map of the destination's size. A model is as safe as any: one with other numbers in it, which only
 * DAXI_RemapCheckModel notices, gives another picture and nothing worse.
 *
 * Checks, in order:
 *   src, model, dst or cfg null                                                    0x10000014
 *   srcSize outside 1..524288, dstSize outside 1..1048576                          0x1000001a
 *   srcStep below a row of the source, dstStep below one of the destination        0x1000001b
 *   a model of another kind, cut short, not of dstSize, or at no multiple of 8     0x10000019
 *   a model of another version                                                     0x10000020
 *   configuration, in the order of its fields                                      0x10000019
 * A failed call writes nothing; _MT forms return the status of the host's parallel-for, unchanged. */
DAX_API DaxStatus DAXI_RemapPrepared_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, const void* model,
                                            uint64_t modelBytes, uint8_t* dst, int32_t dstStep, DaxiSize dstSize,
                                            const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_RemapPrepared_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                               DaxiSize srcSize, const void* model, uint64_t modelBytes, uint8_t* dst,
                                               int32_t dstStep, DaxiSize dstSize, const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_RemapPrepared_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, const void* model,
                                            uint64_t modelBytes, uint8_t* dst, int32_t dstStep, DaxiSize dstSize,
                                            const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_RemapPrepared_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                               DaxiSize srcSize, const void* model, uint64_t modelBytes, uint8_t* dst,
                                               int32_t dstStep, DaxiSize dstSize, const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_RemapPrepared_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, const void* model,
                                             uint64_t modelBytes, uint16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                             const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_RemapPrepared_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                DaxiSize srcSize, const void* model, uint64_t modelBytes, uint16_t* dst,
                                                int32_t dstStep, DaxiSize dstSize, const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_RemapPrepared_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, const void* model,
                                             uint64_t modelBytes, uint16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                             const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_RemapPrepared_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                DaxiSize srcSize, const void* model, uint64_t modelBytes, uint16_t* dst,
                                                int32_t dstStep, DaxiSize dstSize, const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_RemapPrepared_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, const void* model,
                                             uint64_t modelBytes, int16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                             const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_RemapPrepared_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                DaxiSize srcSize, const void* model, uint64_t modelBytes, int16_t* dst,
                                                int32_t dstStep, DaxiSize dstSize, const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_RemapPrepared_16s_C3R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, const void* model,
                                             uint64_t modelBytes, int16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                             const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_RemapPrepared_16s_C3R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                DaxiSize srcSize, const void* model, uint64_t modelBytes, int16_t* dst,
                                                int32_t dstStep, DaxiSize dstSize, const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_RemapPrepared_32f_C1R(const float* src, int32_t srcStep, DaxiSize srcSize, const void* model,
                                             uint64_t modelBytes, float* dst, int32_t dstStep, DaxiSize dstSize,
                                             const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_RemapPrepared_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                DaxiSize srcSize, const void* model, uint64_t modelBytes, float* dst,
                                                int32_t dstStep, DaxiSize dstSize, const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_RemapPrepared_32f_C3R(const float* src, int32_t srcStep, DaxiSize srcSize, const void* model,
                                             uint64_t modelBytes, float* dst, int32_t dstStep, DaxiSize dstSize,
                                             const DaxiRemapCfg* cfg);
DAX_API DaxStatus DAXI_RemapPrepared_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                DaxiSize srcSize, const void* model, uint64_t modelBytes, float* dst,
                                                int32_t dstStep, DaxiSize dstSize, const DaxiRemapCfg* cfg);

DAX_END_DECLS

#endif

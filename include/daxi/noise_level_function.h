/* Noise against grey level: the variance of the noise where the image is dark, and where it is bright. The noise of light
 * itself has a variance that grows with it, so that one number does not tell the noise of a camera's image.
 *
 * The levels found, from the least to the greatest, are split in `bins` bins of one width; each bin with at least
 * `minCount` members gives a point, the mean level of its members and the variance of the noise there.
 *
 *   NoiseLevelFunction  from one image. Members are the blocks of block x block pixels that lie side by side from the
 *                       region's corner on; what is left at the right and at the bottom is not looked at. The level of
 *                       a block is its mean, its variance the mean of r^2 / 36 over the windows of 3 x 3 inside it,
 *                       r being the difference of two Laplace operators (noise.h), which takes out even shading.
 *                       Texture and edges raise the variance of a block, never lower it; so the variance of a bin is
 *                       that of the block of rank ceil(share n) of n, divided by what that rank is on the average of
 *                       blocks without texture. With the share of 0.25, 20 % of blocks with texture raise a deviation
 *                       from blocks of 16 by 2 %, 50 % by 7 %
 *   NoiseLevelFrames    from frames of one scene that stands still. Members are pixels; the level of one is its mean
 *                       over the N frames. The variance of a bin is the mean over its pixels of the variance over the
 *                       frames (divided by N - 1), less that of the means of the frames over the bin: of two frames
 *                       half the mean square difference minus half the squared mean difference. So a light that
 *                       flickers is no noise, nor is texture; what moves is. The mean of a pixel scatters by the noise
 *                       divided by sqrt(N): bins should be wider, else their points, those at the ends before all, are
 *                       told by pixels of other levels
 *
 * Quantile of a rank: a block's variance is that of the noise times a chi-square of k degrees of freedom divided by k,
 * k = (m / (1 + 8 (1 - 1 / m) / 9 + (1 - 2 / m) / 18))^2 with m = block - 2, since responses overlap. Its quantile is
 * (1 - 2 / (9 k) + z sqrt(2 / (9 k)))^3 (Wilson and Hilferty 1931), z that of the normal distribution at
 * (rank - 3 / 8) / (n + 1 / 4) (Blom 1958), from a rational approximation within 4.5e-4 (Hastings 1955).
 *
 * Integers carry the noise of their rounding, a variance of 1/12, which is subtracted; a variance is at least 0.
 *
 * Clipped pixels do not vary: blocks count of which all pixels lie between the limits, low < v < high, pixels that do so
 * in all frames. NaN and infinities never count.
 *
 * Sums of integers are exact, floats are doubles added in raster order of a block, or of the image. Results are the same
 * bits on every machine. Forms ending in _MT run on the host's pool, in at most `threads` tiles; any number works with
 * any pool, results do not depend on it, and pool may be null. Thread-safe for distinct outputs and buffers. */
#ifndef DAXI_NOISE_LEVEL_FUNCTION_H
#define DAXI_NOISE_LEVEL_FUNCTION_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Configuration. 40 bytes. */
typedef struct DaxiNoiseLevelCfg {
  int32_t block;    /* pixels; 8..64, default 16: of one image */
  int32_t bins;     /* 1..256, default 16 */
  int32_t minCount; /* blocks or pixels of a point; at least 1, default 8 */
  int32_t reserved; /* not read */
  double share;     /* 0.01..0.5, default 0.25: of one image */
  double low;       /* the limits of what counts, both excluded; infinities are possible. Default: */
  double high;      /* the ends of the type, of floats infinities */
} DaxiNoiseLevelCfg;

/* A point. 24 bytes. */
typedef struct DaxiNoiseLevel {
  double level;    /* mean of the blocks or pixels */
  double variance; /* of the noise, the square of its deviation */
  uint64_t count;  /* of blocks or pixels */
} DaxiNoiseLevel;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_NoiseLevelDefaultCfg_8u(DaxiNoiseLevelCfg* cfg);
DAX_API DaxStatus DAXI_NoiseLevelDefaultCfg_16u(DaxiNoiseLevelCfg* cfg);
DAX_API DaxStatus DAXI_NoiseLevelDefaultCfg_16s(DaxiNoiseLevelCfg* cfg);
DAX_API DaxStatus DAXI_NoiseLevelDefaultCfg_32f(DaxiNoiseLevelCfg* cfg);

/* Bytes of work buffer for the same arguments, of all pixel types and for the forms ending in _MT too.
 *
 * Checks, in order: cfg or bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; the configuration, in the
 * order of its fields -> 0x10000019. */
DAX_API DaxStatus DAXI_NoiseLevelFunctionBufferSize(DaxiSize size, const DaxiNoiseLevelCfg* cfg, uint64_t* bytes);

/* From one image.
 *
 *   src, srcStep    image, step in elements
 *   size            of the region
 *   cfg             configuration
 *   points          receives up to cfg->bins points, by level
 *   count           receives how many
 *   buffer          as many bytes as the query says, aligned as by malloc
 *
 * Checks, in order:
 *   src, cfg, points, count or buffer null                          0x10000014
 *   width < 1 or height < 1                                         0x1000001a
 *   srcStep < width                                                 0x1000001b
 *   configuration, in the order of its fields; not low < high       0x10000019
 *   no bin has enough blocks                                        0x10000033
 * A failed call has written nothing but the buffer; _MT forms return the status of the host's parallel-for, unchanged. */
DAX_API DaxStatus DAXI_NoiseLevelFunction_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                 const DaxiNoiseLevelCfg* cfg, DaxiNoiseLevel* points, int32_t* count,
                                                 void* buffer);
DAX_API DaxStatus DAXI_NoiseLevelFunction_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size,
                                                  const DaxiNoiseLevelCfg* cfg, DaxiNoiseLevel* points, int32_t* count,
                                                  void* buffer);
DAX_API DaxStatus DAXI_NoiseLevelFunction_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size,
                                                  const DaxiNoiseLevelCfg* cfg, DaxiNoiseLevel* points, int32_t* count,
                                                  void* buffer);
DAX_API DaxStatus DAXI_NoiseLevelFunction_32f_C1R(const float* src, int32_t srcStep, DaxiSize size,
                                                  const DaxiNoiseLevelCfg* cfg, DaxiNoiseLevel* points, int32_t* count,
                                                  void* buffer);
DAX_API DaxStatus DAXI_NoiseLevelFunction_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                    DaxiSize size, const DaxiNoiseLevelCfg* cfg, DaxiNoiseLevel* points,
                                                    int32_t* count, void* buffer);
DAX_API DaxStatus DAXI_NoiseLevelFunction_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                     DaxiSize size, const DaxiNoiseLevelCfg* cfg,
                                                     DaxiNoiseLevel* points, int32_t* count, void* buffer);
DAX_API DaxStatus DAXI_NoiseLevelFunction_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                     DaxiSize size, const DaxiNoiseLevelCfg* cfg,
                                                     DaxiNoiseLevel* points, int32_t* count, void* buffer);
DAX_API DaxStatus DAXI_NoiseLevelFunction_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                     DaxiSize size, const DaxiNoiseLevelCfg* cfg,
                                                     DaxiNoiseLevel* points, int32_t* count, void* buffer);

/* Bytes of work buffer of NoiseLevelFrames, of all pixel types.
 *
 * Checks, in order: cfg or bytes null -> 0x10000014; frameCount outside 2..1024 -> 0x10000019; the configuration, in the
 * order of its fields -> 0x10000019. */
DAX_API DaxStatus DAXI_NoiseLevelFramesBufferSize(int32_t frameCount, const DaxiNoiseLevelCfg* cfg, uint64_t* bytes);

/* From frames of one scene.
 *
 *   frames       pointers to the frames
 *   frameCount   how many, 2..1024
 *   step         of each frame, in elements
 *   others       as above
 *
 * Checks, in order:
 *   frames, cfg, points, count or buffer null                       0x10000014
 *   frameCount outside 2..1024                                      0x10000019
 *   a frame null                                                    0x10000014
 *   width < 1 or height < 1                                         0x1000001a
 *   step < width                                                    0x1000001b
 *   configuration, in the order of its fields; not low < high       0x10000019
 *   no bin has enough pixels                                        0x10000033
 * A failed call has written nothing but the buffer. */
DAX_API DaxStatus DAXI_NoiseLevelFrames_8u_C1R(const uint8_t* const* frames, int32_t frameCount, int32_t step,
                                               DaxiSize size, const DaxiNoiseLevelCfg* cfg, DaxiNoiseLevel* points,
                                               int32_t* count, void* buffer);
DAX_API DaxStatus DAXI_NoiseLevelFrames_16u_C1R(const uint16_t* const* frames, int32_t frameCount, int32_t step,
                                                DaxiSize size, const DaxiNoiseLevelCfg* cfg, DaxiNoiseLevel* points,
                                                int32_t* count, void* buffer);
DAX_API DaxStatus DAXI_NoiseLevelFrames_16s_C1R(const int16_t* const* frames, int32_t frameCount, int32_t step,
                                                DaxiSize size, const DaxiNoiseLevelCfg* cfg, DaxiNoiseLevel* points,
                                                int32_t* count, void* buffer);
DAX_API DaxStatus DAXI_NoiseLevelFrames_32f_C1R(const float* const* frames, int32_t frameCount, int32_t step,
                                                DaxiSize size, const DaxiNoiseLevelCfg* cfg, DaxiNoiseLevel* points,
                                                int32_t* count, void* buffer);

DAX_END_DECLS

#endif

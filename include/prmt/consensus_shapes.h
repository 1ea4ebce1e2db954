/* Lines, circles, planes and spheres among points of which many lie elsewhere, by sample consensus (consensus.h, which says how
 * and lists the methods).
 *
 *   function          a point is    model
 *   PRMT_SAC_Line2    x, y          a, b, c        a x + b y + c = 0, (a, b) of length 1
 *   PRMT_SAC_Circle   x, y          x, y, r        centre and radius
 *   PRMT_SAC_Plane    x, y, z       a, b, c, d     a x + b y + c z + d = 0, (a, b, c) of length 1
 *   PRMT_SAC_Sphere   x, y, z       x, y, z, r     centre and radius
 *
 * The largest component of a normal is positive, of equal ones the first. Residuals are distances from the shape. Fits to inliers
 * minimise the sum of their squares: lines and planes by the axes of the points' covariance, circles and spheres by at most 20
 * Gauss-Newton steps. Points that are not finite are outliers.
 *
 * points: n points, `step` elements from one to the next. Coordinates are taken relative to the
 * medians of those of up to 255 points. f64 computes in
 * double precision. f32 rates models in single precision, so distances in cost and in inliers err by up to 2^-21 of the extent of
 * the points; fits and the model are in double precision.
 *
 * inlierMask: receives n bytes, 1 for inliers and 0 for others; may be null. buffer: at least as many bytes as the query says,
 * aligned as by malloc.
 *
 * Checks, in order: points, cfg, result or buffer null -> -21; n below the size of a sample, for LMEDS below twice of it -> -26; a field
 * of cfg outside its range, in their order -> -26; a step smaller than a point -> -26. Then no sample had a model that is better
 * than none -> -35. A failed call writes nothing but the buffer.
 * Samples have 2 points
 * for lines, 3 for circles and planes, 4 for spheres. Thread-safe on distinct results and buffers. _MT as in consensus.h. */
#ifndef PRMT_CONSENSUS_SHAPES_H
#define PRMT_CONSENSUS_SHAPES_H

#include "consensus.h"

DAX_BEGIN_DECLS

/* Bytes of work buffer for n points of any of these functions.
 *
 * Checks, in order: cfg or bytes null -> -21; n below 1 -> -26; a field of cfg outside its range -> -26. Thread-safe. */
DAX_API int32_t PRMT_SAC_ShapeBufferSize(int32_t n, const PrmtSacCfg* cfg, uint32_t threads, uint64_t* bytes);

DAX_API int32_t PRMT_SAC_Line2_f64(const double* points, int32_t step, int32_t n, const PrmtSacCfg* cfg,
                                   PrmtSacResult* result, uint8_t* inlierMask, void* buffer);
DAX_API int32_t PRMT_SAC_Line2_f64_MT(void* pool, uint32_t threads, const double* points, int32_t step, int32_t n,
                                      const PrmtSacCfg* cfg, PrmtSacResult* result, uint8_t* inlierMask, void* buffer);
DAX_API int32_t PRMT_SAC_Line2_f32(const float* points, int32_t step, int32_t n, const PrmtSacCfg* cfg,
                                   PrmtSacResult* result, uint8_t* inlierMask, void* buffer);
DAX_API int32_t PRMT_SAC_Line2_f32_MT(void* pool, uint32_t threads, const float* points, int32_t step, int32_t n,
                                      const PrmtSacCfg* cfg, PrmtSacResult* result, uint8_t* inlierMask, void* buffer);

DAX_API int32_t PRMT_SAC_Circle_f64(const double* points, int32_t step, int32_t n, const PrmtSacCfg* cfg,
                                    PrmtSacResult* result, uint8_t* inlierMask, void* buffer);
DAX_API int32_t PRMT_SAC_Circle_f64_MT(void* pool, uint32_t threads, const double* points, int32_t step, int32_t n,
                                       const PrmtSacCfg* cfg, PrmtSacResult* result, uint8_t* inlierMask, void* buffer);
DAX_API int32_t PRMT_SAC_Circle_f32(const float* points, int32_t step, int32_t n, const PrmtSacCfg* cfg,
                                    PrmtSacResult* result, uint8_t* inlierMask, void* buffer);
DAX_API int32_t PRMT_SAC_Circle_f32_MT(void* pool, uint32_t threads, const float* points, int32_t step, int32_t n,
                                       const PrmtSacCfg* cfg, PrmtSacResult* result, uint8_t* inlierMask, void* buffer);

DAX_API int32_t PRMT_SAC_Plane_f64(const double* points, int32_t step, int32_t n, const PrmtSacCfg* cfg,
                                   PrmtSacResult* result, uint8_t* inlierMask, void* buffer);
DAX_API int32_t PRMT_SAC_Plane_f64_MT(void* pool, uint32_t threads, const double* points, int32_t step, int32_t n,
                                      const PrmtSacCfg* cfg, PrmtSacResult* result, uint8_t* inlierMask, void* buffer);
DAX_API int32_t PRMT_SAC_Plane_f32(const float* points, int32_t step, int32_t n, const PrmtSacCfg* cfg,
                                   PrmtSacResult* result, uint8_t* inlierMask, void* buffer);
DAX_API int32_t PRMT_SAC_Plane_f32_MT(void* pool, uint32_t threads, const float* points, int32_t step, int32_t n,
                                      const PrmtSacCfg* cfg, PrmtSacResult* result, uint8_t* inlierMask, void* buffer);

DAX_API int32_t PRMT_SAC_Sphere_f64(const double* points, int32_t step, int32_t n, const PrmtSacCfg* cfg,
                                    PrmtSacResult* result, uint8_t* inlierMask, void* buffer);
DAX_API int32_t PRMT_SAC_Sphere_f64_MT(void* pool, uint32_t threads, const double* points, int32_t step, int32_t n,
                                       const PrmtSacCfg* cfg, PrmtSacResult* result, uint8_t* inlierMask, void* buffer);
DAX_API int32_t PRMT_SAC_Sphere_f32(const float* points, int32_t step, int32_t n, const PrmtSacCfg* cfg,
                                    PrmtSacResult* result, uint8_t* inlierMask, void* buffer);
DAX_API int32_t PRMT_SAC_Sphere_f32_MT(void* pool, uint32_t threads, const float* points, int32_t step, int32_t n,
                                       const PrmtSacCfg* cfg, PrmtSacResult* result, uint8_t* inlierMask, void* buffer);

DAX_END_DECLS

#endif

/* Planes, lines, spheres, circles and cylinders through points in space.
 *
 * The sum of the squared distances of the points from the shape is least (total least squares, orthogonal distances).
 * Points are shifted to their mean and scaled by a power of two first, so that clouds far from the origin and of any
 * unit lose no digits. Coordinates are at most 1e150 in magnitude. The same bits on every machine. Thread-safe.
 *
 * points     n of them, as triples x, y, z
 * rms        receives the root mean square of the distances
 *
 * Checks, in order:
 *   a pointer null                                       0x10000014
 *   Line: n < 2; Plane: n < 3; Circle: n < 3; PlaneRobust: n < 4; Sphere: n < 4; Cylinder: n < 6   0x10000019
 *   a coordinate out of range or NaN                     0x10000032
 *   no unique answer                                     0x10000033
 * A failed call writes nothing but the buffer. */
#ifndef DAX3D_FIT_H
#define DAX3D_FIT_H

#include "status.h"

DAX_BEGIN_DECLS

/* a, b, c, d of a x + b y + c z + d = 0 with a unit normal, its component of largest magnitude positive: through the
 * mean, the normal along the axis of least variance. No unique answer: the two smaller variances within 1e-12 of the
 * largest one, as of points on a line. */
DAX_API DaxStatus DAX3D_FIT_Plane_f64(const double* points, int32_t n, double plane[4], double* rms);
DAX_API DaxStatus DAX3D_FIT_Plane_f32(const float* points, int32_t n, double plane[4], double* rms);

/* Bytes of work buffer for n points.
 *
 * Checks, in order: bytes null -> 0x10000014; n < 4 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAX3D_FIT_PlaneRobust_BufferSize(int32_t n, uint64_t* bytes);

/* The same of points of which less than half lie elsewhere. First the best of 200 planes through three points, drawn by
 * the library's generator from seed 1, by the median distance of 256 points (Rousseeuw 1984); then least squares
 * weighted again and again (Tukey's biweight with 4.685 sigma, sigma = 1.4826 (1 + 5 / (n - 3)) median |distance|, held
 * from the sixth of at most 50 rounds on). rms is that of the weighted points, *inliers the number of points with a
 * weight above 0. */
DAX_API DaxStatus DAX3D_FIT_PlaneRobust_f64(const double* points, int32_t n, double plane[4], double* rms,
                                            int32_t* inliers, void* buffer);
DAX_API DaxStatus DAX3D_FIT_PlaneRobust_f32(const float* points, int32_t n, double plane[4], double* rms,
                                            int32_t* inliers, void* buffer);

/* The mean, and the unit direction of largest variance, its component of largest magnitude positive. No unique answer:
 * the two larger variances within 1e-12 of the largest. */
DAX_API DaxStatus DAX3D_FIT_Line_f64(const double* points, int32_t n, double line[6], double* rms);
DAX_API DaxStatus DAX3D_FIT_Line_f32(const float* points, int32_t n, double line[6], double* rms);

/* Centre and radius: from the algebraic fit by Levenberg-Marquardt steps. No unique answer: points in a plane, or on a
 * cap so flat that the radius is more than 1e5 of the extent. */
DAX_API DaxStatus DAX3D_FIT_Sphere_f64(const double* points, int32_t n, double sphere[4], double* rms);
DAX_API DaxStatus DAX3D_FIT_Sphere_f32(const float* points, int32_t n, double sphere[4], double* rms);

/* Centre, unit normal (its component of largest magnitude positive) and radius: from the plane and the algebraic circle
 * in it by Levenberg-Marquardt steps on the distances in space. No unique answer: points on a line, or on an arc as
 * flat as above. */
DAX_API DaxStatus DAX3D_FIT_Circle_f64(const double* points, int32_t n, double circle[7], double* rms);
DAX_API DaxStatus DAX3D_FIT_Circle_f32(const float* points, int32_t n, double circle[7], double* rms);

/* The point of the axis nearest to the mean, the axis' unit direction (its component of largest magnitude positive) and
 * radius. The axis starts at the best three of 403 directions, by the algebraic circle seen along each (Eberly 2015),
 * whose Levenberg-Marquardt steps end with the least sum. No unique answer: points in a plane, on a line, or on a strip
 * as flat as above. */
DAX_API DaxStatus DAX3D_FIT_Cylinder_f64(const double* points, int32_t n, double cylinder[7], double* rms);
DAX_API DaxStatus DAX3D_FIT_Cylinder_f32(const float* points, int32_t n, double cylinder[7], double* rms);

DAX_END_DECLS

#endif

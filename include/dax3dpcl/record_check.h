/* Checks of small geometric records. Each returns 0 or the code stated; a null pointer gives 0x10000014. Limits are
 * 32-bit float constants unless stated, eps = FLT_EPSILON = 1.1920929e-7, 0.001 and 1.0000001 = 1 + eps included. A NaN
 * fails every comparison, unless stated. Thread-safe. */
#ifndef DAX3DPCL_RECORD_CHECK_H
#define DAX3DPCL_RECORD_CHECK_H

#include "range_record.h"

DAX_BEGIN_DECLS

/* A 3 x 3 camera matrix, row-major: fx (element 0), fy (4), cx (2), cy (5) all >= eps, else 0x10000019. The other
 * elements are not checked. */
DAX_API DaxStatus DAX3DPCL_UTILS_Check_Intrins_32f(const float* matrix);
DAX_API DaxStatus DAX3DPCL_UTILS_Check_Intrins_64f(const double* matrix);

/* {fx, fy, cx, cy} all >= eps, else 0x10000019. */
DAX_API DaxStatus DAX3DPCL_UTILS_Check_CamIntrins(const double* intrinsics);

/* A record's header read as directions of a depth camera: scale.x, scale.y and scale.z >= eps, sign bits of offset.x
 * and offset.y set (-0 and a NaN of negative sign pass), else 0x10000019. */
DAX_API DaxStatus DAX3DPCL_UTILS_Check_RANGE_V4_DepthIntrins(const DAX3D_RANGE_V4* record);

/* An oriented box: centre x, y, z; sizes x, y, z; angles about x, y, z in radians. Sizes >= FLT_EPSILON (_64f:
 * DBL_EPSILON), angles in [-2 pi, 2 pi] (6.2831855f, _64f: 6.283185307179586), else 0x10000019. */
DAX_API DaxStatus DAX3DPCL_UTILS_Check_Box3d_32f(const float* box);
DAX_API DaxStatus DAX3DPCL_UTILS_Check_Box3d_64f(const double* box);

/* A rigid transform, 4 x 4 row-major. The products of every two columns of the rotation, and the squared norm of every
 * column less 1, lie in [-0.001, 0.001]. A reflection passes. _32f: rotation not orthonormal -> 0x1000030e; _64f:
 * rotation not orthonormal -> 0x10000000. */
DAX_API DaxStatus DAX3DPCL_UTILS_Check_SE3_32f(const float* matrix);
DAX_API DaxStatus DAX3DPCL_UTILS_Check_SE3_64f(const double* matrix);

/* A transform close to the identity. _32f: rotation not orthonormal -> 0x1000030e; _64f: rotation not orthonormal ->
 * 0x10000000; then a diagonal element not within 0.001 of 1, or a translation not within 0.001 of 0 -> 0x10000000. The
 * differences of the _64f form are rounded to float. */
DAX_API DaxStatus DAX3DPCL_UTILS_Check_EyeSE3_32f(const float* matrix);
DAX_API DaxStatus DAX3DPCL_UTILS_Check_EyeSE3_64f(const double* matrix);

/* A quaternion {w, x, y, z}: w in [-1.0000001, 1.0000001] and x^2 + y^2 + z^2 <= 1.0000001, else 0x10000000. The norm
 * of the whole is not checked. */
DAX_API DaxStatus DAX3DPCL_UTILS_Check_Quat_32f(const float* quaternion);
DAX_API DaxStatus DAX3DPCL_UTILS_Check_Quat_64f(const double* quaternion);

/* A normal: all three components in [-eps, eps] -> 0x10000019. A NaN component passes. */
DAX_API DaxStatus DAX3DPCL_UTILS_Check_Normal_32f(float nx, float ny, float nz);
DAX_API DaxStatus DAX3DPCL_UTILS_Check_Normal_64f(double nx, double ny, double nz);

DAX_END_DECLS

#endif

/* Rotations in space: matrices to and from quaternions, rotation vectors and Euler angles.
 *
 * A rotation is a 3 x 3 matrix, row by row, that turns column vectors: p' = R p. A quaternion is (w, x, y, z) with
 * Hamilton's product; that of a rotation by t about the unit axis u is (cos t/2, u sin t/2). A rotation vector is t u.
 * Angles are radians.
 *
 * Matrices that are read are rotations: the products of every two of their columns, and each squared norm less 1, lie
 * in [-0.001, 0.001], and the determinant is positive; what rounding or measuring left of such a matrix is taken out by
 * normalising its quaternion. Results may lie where arguments did not. Errors are below 2e-15 (of angles: radians) for
 * matrices that are rotations to rounding, at every angle, half turns included. The same bits on every machine.
 * Thread-safe.
 *
 * Checks, in order:
 *   a pointer null                                       0x10000014
 *   an order of axes other than the 24                   0x10000019
 *   an angle, vector or quaternion infinite or NaN       0x10000032
 *   a matrix that is no rotation, or has a NaN           0x1000030e
 * A failed call writes nothing. */
#ifndef DAX3D_ROTATION_H
#define DAX3D_ROTATION_H

#include "status.h"

DAX_BEGIN_DECLS

/* The rotation of a quaternion of any length. A quaternion of length 0 -> 0x10000019, checked last. */
DAX_API DaxStatus DAX3D_ROT_FromQuat_f64(const double quaternion[4], double rotation[9]);

/* The unit quaternion of a rotation: w > 0, or w = 0 and the first of x, y and z that is not 0 positive. By the largest
 * of the four squared components (Shepperd 1978). */
DAX_API DaxStatus DAX3D_ROT_ToQuat_f64(const double rotation[9], double quaternion[4]);

/* The rotation of a rotation vector of any length (Rodrigues); beyond a few turns it is that of the rounded length. */
DAX_API DaxStatus DAX3D_ROT_FromRotVec_f64(const double rotVec[3], double rotation[9]);

/* The rotation vector, at most pi long; of half a turn the first of its components that is not 0 is positive. By
 * 2 atan2(|v|, w) of the quaternion (w, v). */
DAX_API DaxStatus DAX3D_ROT_ToRotVec_f64(const double rotation[9], double rotVec[3]);

/* The rotation of three angles about the axes that `order` names, a string of three letters, neighbours different:
 * "ZYX", capitals, about the axes that turn along (intrinsic), Rz(a0) Ry(a1) Rx(a2); "zyx" about axes that stay
 * (extrinsic), Rx(a2) Ry(a1) Rz(a0). 12 orders each. */
DAX_API DaxStatus DAX3D_ROT_FromEuler_f64(const double angles[3], const char* order, double rotation[9]);

/* The angles of a rotation: the middle one in [-pi/2, pi/2], in [0, pi] where the first axis is also the third ("ZYZ");
 * the others in (-pi, pi]. At both ends of the middle range the outer axes coincide: where the middle angle is within
 * about 1e-12 of them the third angle is 0 and *locked 1, else 0. By half-angles of the quaternion (Bernardes and
 * Viollet 2022). */
DAX_API DaxStatus DAX3D_ROT_ToEuler_f64(const double rotation[9], const char* order, double angles[3], int32_t* locked);

DAX_END_DECLS

#endif

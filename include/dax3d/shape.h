/* Planes, lines, spheres, cylinders, circles, triangles and boxes in space: distances, nearest points, intersections,
 * angles.
 *
 * Shapes are numbers:
 *   point      x, y, z
 *   line       a point, a direction of any length; without end
 *   segment    both ends
 *   plane      a, b, c, d: a x + b y + c z + d = 0, (a, b, c) of any length
 *   sphere     centre, radius
 *   cylinder   a point of the axis, the axis' direction, radius; without end
 *   circle     centre, normal of its plane, radius
 *   triangle   three corners
 *   Dax3dBox   pose and sizes (box.h)
 *
 * Angles come from arc tangents, not from cosines: small ones keep their digits. Errors are a few units of the last
 * place of the coordinates where the shapes are well conditioned and no length is below 1e-70. Results may lie where
 * shapes did. The same bits on every machine. Thread-safe.
 *
 * Checks, in order, of the first shape, then of the second:
 *   a pointer null (of both shapes and the results first)        0x10000014
 *   a number NaN or above 1e70 in magnitude (then of both)      0x10000032
 *   a radius or a size below 0                                   0x10000019
 *   axes of a box that are no rotation                           0x1000030e
 *   a direction or normal of length 0, a triangle without area (to 1e-14 of its sides' product)   0x10000033
 * and what a function says of shapes that do not meet. A failed call writes nothing. */
#ifndef DAX3D_SHAPE_H
#define DAX3D_SHAPE_H

#include "box.h"

DAX_BEGIN_DECLS

/* The distance of a point from a shape, and the nearest point of it, `foot`, which may be null. Of planes the distance
 * is positive on the side of the normal; of spheres, cylinders and boxes it is that from the surface, negative inside;
 * else it is not negative. Where several points are as near (a centre, an axis), foot is one of them. Checks as above.
 * */
DAX_API DaxStatus DAX3D_DIST_PointLine_f64(const double point[3], const double line[6], double* distance,
                                           double foot[3]);
DAX_API DaxStatus DAX3D_DIST_PointSegment_f64(const double point[3], const double segment[6], double* distance,
                                              double foot[3]);
DAX_API DaxStatus DAX3D_DIST_PointPlane_f64(const double point[3], const double plane[4], double* distance,
                                            double foot[3]);
DAX_API DaxStatus DAX3D_DIST_PointSphere_f64(const double point[3], const double sphere[4], double* distance,
                                             double foot[3]);
DAX_API DaxStatus DAX3D_DIST_PointCylinder_f64(const double point[3], const double cylinder[7], double* distance,
                                               double foot[3]);
DAX_API DaxStatus DAX3D_DIST_PointCircle_f64(const double point[3], const double circle[7], double* distance,
                                             double foot[3]);
DAX_API DaxStatus DAX3D_DIST_PointTriangle_f64(const double point[3], const double triangle[9], double* distance,
                                               double foot[3]);
DAX_API DaxStatus DAX3D_DIST_PointBox_f64(const double point[3], const Dax3dBox* box, double* distance, double foot[3]);

/* The distance of two lines or segments, and the points at which they are nearest, that of a, then that of b, in
 * `feet`, which may be null. Of parallel lines it is one of many pairs. A segment may be a point. Checks as above. */
DAX_API DaxStatus DAX3D_DIST_LineLine_f64(const double a[6], const double b[6], double* distance, double feet[6]);
DAX_API DaxStatus DAX3D_DIST_SegmentSegment_f64(const double a[6], const double b[6], double* distance, double feet[6]);

/* Where a line meets a plane. The sine of the angle between them within 1.1920929e-7 of 0, even if the line lies in the
 * plane -> 0x10000204, checked last. */
DAX_API DaxStatus DAX3D_INTERSECT_LinePlane_f64(const double line[6], const double plane[4], double point[3]);

/* Where a segment meets a plane; the first end of one that lies in it. Both ends on one side -> 0x10000203, checked
 * last. */
DAX_API DaxStatus DAX3D_INTERSECT_SegmentPlane_f64(const double segment[6], const double plane[4], double point[3]);

/* The line of two planes: its point nearest to the origin, a unit direction, normal of a x normal of b. The sine of
 * their angle within 1.1920929e-7 of 0 -> 0x10000033, checked last. */
DAX_API DaxStatus DAX3D_INTERSECT_PlanePlane_f64(const double a[4], const double b[4], double line[6]);

/* The point of three planes, one behind the other. The volume that their unit normals span within 1.1920929e-7 of 0 ->
 * 0x10000033, checked last. */
DAX_API DaxStatus DAX3D_INTERSECT_ThreePlanes_f64(const double planes[12], double point[3]);

/* Where a line enters and leaves a sphere, a cylinder, a box, in the line's direction; of a line that touches, one point
 * twice. Checked last: a line along a cylinder's axis, to a sine of 1.1920929e-7 -> 0x10000204; they do not meet ->
 * 0x10000203. */
DAX_API DaxStatus DAX3D_INTERSECT_LineSphere_f64(const double line[6], const double sphere[4], double points[6]);
DAX_API DaxStatus DAX3D_INTERSECT_LineCylinder_f64(const double line[6], const double cylinder[7], double points[6]);
DAX_API DaxStatus DAX3D_INTERSECT_LineBox_f64(const double line[6], const Dax3dBox* box, double points[6]);

/* Where a line meets a triangle, its edges among it. The sine of their angle within 1.1920929e-7 of 0 -> 0x10000204;
 * the line goes past it -> 0x10000203; checked last (Moeller and Trumbore 1997). */
DAX_API DaxStatus DAX3D_INTERSECT_LineTriangle_f64(const double line[6], const double triangle[9], double point[3]);

/* The circle of a plane and a sphere. They do not meet -> 0x10000203, checked last. */
DAX_API DaxStatus DAX3D_INTERSECT_PlaneSphere_f64(const double plane[4], const double sphere[4], double circle[7]);

/* The circle of two spheres, its normal from a to b. They do not meet, or one lies within the other -> 0x10000203; they
 * are the same -> 0x10000033; checked last. */
DAX_API DaxStatus DAX3D_INTERSECT_SphereSphere_f64(const double a[4], const double b[4], double circle[7]);

/* Whether two boxes, with what is inside, have a point in common, by separating axes (Gottschalk, Lin and Manocha, 1996).
 *
 * Checked last: the boxes do not meet -> 0x10000203. */
DAX_API DaxStatus DAX3D_INTERSECT_BoxBox_f64(const Dax3dBox* a, const Dax3dBox* b);

/* Angles: of two vectors 0..pi; of two lines, a line and a plane, two planes 0..pi/2. Checks as
 * DAX3D_DIST_LineLine_f64. */
DAX_API DaxStatus DAX3D_ANGLE_Vectors_f64(const double a[3], const double b[3], double* angle);
DAX_API DaxStatus DAX3D_ANGLE_Lines_f64(const double a[6], const double b[6], double* angle);
DAX_API DaxStatus DAX3D_ANGLE_LinePlane_f64(const double line[6], const double plane[4], double* angle);
DAX_API DaxStatus DAX3D_ANGLE_Planes_f64(const double a[4], const double b[4], double* angle);

DAX_END_DECLS

#endif

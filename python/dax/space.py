"""Elementary geometry in space: distances, intersections and angles of shapes, shapes through points, boxes, hulls.

Clouds are (n, 3), of single or double precision; everything is computed in double precision. Angles are radians.
Results are the same bits on every machine. What has no answer raises dax.Error.
"""
from typing import Any, Optional, Union

import numpy as np
from numpy.typing import ArrayLike

from ._arrays import Array, pointer, within
from ._interface import ffi
from ._library import buffer, call
from ._space import (
    Box,
    Circle,
    Cylinder,
    Doubles,
    Fit,
    Line,
    Nearest,
    Plane,
    Segment,
    Shape,
    Sphere,
    Triangle,
    address,
    box_of,
    cloud,
    new_box,
    of_shape,
    shape_address,
)

NAMESPACE = True
__all__ = [
    "Box",
    "Circle",
    "Cylinder",
    "Fit",
    "Line",
    "Nearest",
    "Plane",
    "Segment",
    "Sphere",
    "Triangle",
    "angle",
    "box",
    "convex_hull",
    "distance_to",
    "fit_circle",
    "fit_cylinder",
    "fit_line",
    "fit_plane",
    "fit_sphere",
    "intersect",
]


def distance_to(a: Union[ArrayLike, Line, Segment], b: Shape) -> Nearest:
    """The distance of a point from a shape and the nearest point of it; of planes positive on the side of the normal,
    of spheres, cylinders and boxes negative inside. Or the distance of two lines, or of two segments, and where they
    are nearest, (2, 3).

    >>> dax.space.distance_to([0, 0, 5], dax.space.Sphere([0, 0, 0], 2))
    Nearest(distance=3.0, foot=array([0., 0., 2.]))
    """
    first, second = of_shape(a), of_shape(b)
    pair = isinstance(a, (Line, Segment))
    if pair and type(a) is not type(b):
        raise TypeError(f"no distance of {type(a).__name__} and {type(b).__name__}")
    kind = type(a).__name__ * 2 if pair else "Point" + type(b).__name__
    gap, feet = np.empty(1), np.empty((2, 3) if pair else 3)
    call(f"DAX3D_DIST_{kind}_f64", address(first), shape_address(b, second), address(gap), address(feet))
    return Nearest(float(gap[0]), feet)


# Kinds of both shapes: the numbers of the result.
_MEETINGS = {
    "LinePlane": 3,
    "SegmentPlane": 3,
    "PlanePlane": 6,
    "LineSphere": 6,
    "LineCylinder": 6,
    "LineBox": 6,
    "LineTriangle": 3,
    "PlaneSphere": 7,
    "SphereSphere": 7,
    "BoxBox": 0,
}


def intersect(a: Shape, b: Shape, c: Optional[Plane] = None) -> Any:
    """Where two shapes meet: a point (3,) of a line or segment and a plane or triangle, and of three planes; two points
    (2, 3) of a line and a sphere, cylinder or box; the Line of two planes; the Circle of a sphere and a plane or
    sphere; of two boxes nothing. Raises dax.Error where they do not meet.

    >>> dax.space.intersect(dax.space.Line([0, 0, 0], [1, 1, 1]), dax.space.Plane([0, 0, 1], -2))
    array([2., 2., 2.])
    """
    first, second = of_shape(a), of_shape(b)
    result = np.empty(7)
    if c is not None:
        planes = np.concatenate([first, second, of_shape(c)])
        if len(planes) != 12:
            raise TypeError("three shapes: only planes meet")
        call("DAX3D_INTERSECT_ThreePlanes_f64", address(planes), address(result))
        return result[:3]
    kind = type(a).__name__ + type(b).__name__
    if kind not in _MEETINGS:
        raise TypeError(f"no intersection of {type(a).__name__} and {type(b).__name__}")
    count = _MEETINGS[kind]
    outputs = [address(result)] if count else []
    call(f"DAX3D_INTERSECT_{kind}_f64", shape_address(a, first), shape_address(b, second), *outputs)
    if kind == "PlanePlane":
        return Line(result[:3], result[3:6])
    if count == 7:
        return Circle(result[:3], result[3:6], float(result[6]))
    return None if count == 0 else result[:3] if count == 3 else result[:6].reshape(2, 3)


def angle(a: Union[ArrayLike, Line, Plane], b: Union[ArrayLike, Line, Plane]) -> float:
    """The angle of two vectors, 0..pi, or of two lines, a line and a plane, two planes, 0..pi/2.

    >>> dax.space.angle([1, 0, 0], [0, 2, 0]) == np.pi / 2
    True
    """
    kinds = type(a).__name__, type(b).__name__
    names = {("Line", "Line"): "Lines", ("Line", "Plane"): "LinePlane", ("Plane", "Plane"): "Planes"}
    first, second, found = of_shape(a), of_shape(b), np.empty(1)
    name = names.get(kinds, "Vectors")
    if name == "Vectors" and {Line, Plane} & {type(a), type(b)}:
        raise TypeError(f"no angle of {kinds[0]} and {kinds[1]}: a line comes first, vectors go together")
    call(f"DAX3D_ANGLE_{name}_f64", address(first), address(second), address(found))
    return float(found[0])


def fit_plane(points: ArrayLike, robust: bool = False) -> Fit:
    """The plane with the least sum of squared distances from points (n, 3); with robust one that less than half of the
    points, lying elsewhere, cannot carry away.

    >>> dax.space.fit_plane([[0, 0, 1], [1, 0, 1], [0, 1, 1], [1, 1, 1]]).shape
    Plane(normal=array([0., 0., 1.]), offset=-1.0)
    """
    given, suffix = cloud("points", points)
    found, rms, inliers = np.empty(4), np.empty(1), ffi.new("int32_t*", len(given))
    if robust:
        work = buffer("DAX3D_FIT_PlaneRobust_BufferSize", len(given))
        name = f"DAX3D_FIT_PlaneRobust_{suffix}"
        call(name, address(given), len(given), address(found), address(rms), inliers, work)
    else:
        call(f"DAX3D_FIT_Plane_{suffix}", address(given), len(given), address(found), address(rms))
    return Fit(Plane(found[:3], float(found[3])), float(rms[0]), int(inliers[0]))


def fit_line(points: ArrayLike) -> Fit:
    """The line with the least sum of squared distances.

    >>> dax.space.fit_line([[0, 0, 0], [1, 0, 0], [5, 0, 0]]).shape.direction
    array([1., 0., 0.])
    """
    found, rms, n = _fitted("Line", 6, points)
    return Fit(Line(found[:3], found[3:]), rms, n)


def fit_sphere(points: ArrayLike) -> Fit:
    """The sphere with the least sum of squared distances.

    >>> dax.space.fit_sphere([[1, 0, 0], [-1, 0, 0], [0, 1, 0], [0, 0, 1]]).shape.radius
    1.0
    """
    found, rms, n = _fitted("Sphere", 4, points)
    return Fit(Sphere(found[:3], float(found[3])), rms, n)


def fit_circle(points: ArrayLike) -> Fit:
    """The circle in space with the least sum of squared distances.

    >>> dax.space.fit_circle([[1, 0, 0], [-1, 0, 0], [0, 1, 0], [0, -1, 0]]).shape.radius
    1.0
    """
    found, rms, n = _fitted("Circle", 7, points)
    return Fit(Circle(found[:3], found[3:6], float(found[6])), rms, n)


def fit_cylinder(points: ArrayLike) -> Fit:
    """The cylinder with the least sum of squared distances.

    >>> t = np.arange(12)
    >>> dax.space.fit_cylinder(np.c_[np.cos(t), np.sin(t), t % 5]).shape.radius.__round__(9)
    1.0
    """
    found, rms, n = _fitted("Cylinder", 7, points)
    return Fit(Cylinder(found[:3], found[3:6], float(found[6])), rms, n)


def box(points: ArrayLike, kind: str = "least") -> Box:
    """A box around points (n, 3): "least" the one of least volume, "principal" along the principal axes, "upright"
    along the coordinates' axes.

    >>> dax.space.box([[0, 0, 0], [1, 2, 3]], "upright").size
    array([1., 2., 3.])
    """
    given, suffix = cloud("points", points)
    if kind == "upright":
        lower, upper = np.empty(3), np.empty(3)
        call(f"DAX3D_BOX_Upright_{suffix}", address(given), len(given), address(lower), address(upper))
        pose = np.eye(4)
        pose[:3, 3] = lower + (upper - lower) / 2
        return Box(pose, upper - lower)
    record = new_box()
    if kind == "principal":
        call(f"DAX3D_BOX_Pca_{suffix}", address(given), len(given), record)
    elif kind == "least":
        within("number of points", len(given), 4)
        work = buffer("DAX3D_BOX_MinVolume_BufferSize", len(given))
        call(f"DAX3D_BOX_MinVolume_{suffix}", address(given), len(given), record, work)
    else:
        raise ValueError(f"kind: {kind!r}, possible are least, principal, upright")
    return box_of(record)


def convex_hull(points: ArrayLike) -> Array:
    """The triangles (m, 3) of the convex hull of points (n, 3): indices, counter-clockwise seen from outside.

    >>> dax.space.convex_hull([[0, 0, 0], [1, 0, 0], [0, 1, 0], [0, 0, 1], [0.1, 0.1, 0.1]]).shape
    (4, 3)
    """
    given, suffix = cloud("points", points)
    within("number of points", len(given), 4)
    work, count = buffer("DAX3D_HULL_BufferSize", len(given)), ffi.new("int32_t*")
    triangles = np.empty((2 * len(given) - 4, 3), np.int32)
    call(f"DAX3D_HULL_{suffix}", address(given), len(given), pointer(triangles, "int32_t"), count, work)
    return triangles[: count[0]].copy()


def _fitted(kind: str, count: int, points: ArrayLike) -> tuple[Doubles, float, int]:
    given, suffix = cloud("points", points)
    found, rms = np.empty(count), np.empty(1)
    call(f"DAX3D_FIT_{kind}_{suffix}", address(given), len(given), address(found), address(rms))
    return found, float(rms[0]), len(given)

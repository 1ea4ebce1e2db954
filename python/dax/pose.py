"""Rotations and poses, and the alignment of points.

A rotation is a matrix (3, 3), a pose a matrix (4, 4) that moves points: p' = R p + t. Quaternions are (w, x, y, z),
angles radians. Functions of single rotations and poses broadcast leading axes. Clouds are (n, 3); those of single
precision stay so where they are moved, and everything else is computed in double precision. Results are the same bits
on every machine. What has no answer raises dax.Error.
"""
from typing import Any, Optional

import numpy as np
from numpy.typing import ArrayLike

from ._arrays import Array, numbers
from ._interface import ffi
from ._library import call
from ._space import (
    Alignment,
    Distance,
    Doubles,
    address,
    cloud,
    each,
    spread,
    weights_of,
)
from .pool import Pool, handle_of

NAMESPACE = True
__all__ = [
    "Alignment",
    "Distance",
    "align",
    "apply",
    "apply_normals",
    "compose",
    "distance",
    "from_euler",
    "from_quaternion",
    "from_rotation_vector",
    "interpolate",
    "inverse",
    "mean",
    "to_euler",
    "to_quaternion",
    "to_rotation_vector",
]


def from_quaternion(quaternion: ArrayLike) -> Doubles:
    """The rotation of a quaternion (w, x, y, z) of any length.

    >>> dax.pose.from_quaternion([0, 0, 0, 2])
    array([[-1.,  0.,  0.],
           [ 0., -1.,  0.],
           [ 0.,  0.,  1.]])
    """
    return each("DAX3D_ROT_FromQuat_f64", (3, 3), (quaternion, (4,)))


def to_quaternion(rotation: ArrayLike) -> Doubles:
    """The unit quaternion (w, x, y, z) of a rotation, w not negative.

    >>> dax.pose.to_quaternion(np.diag([1.0, -1, -1]))
    array([0., 1., 0., 0.])
    """
    return each("DAX3D_ROT_ToQuat_f64", (4,), (rotation, (3, 3)))


def from_rotation_vector(vector: ArrayLike) -> Doubles:
    """The rotation by a vector's length about its direction.

    >>> dax.pose.from_rotation_vector([0, 0, np.pi / 2]).round(12) + 0
    array([[ 0., -1.,  0.],
           [ 1.,  0.,  0.],
           [ 0.,  0.,  1.]])
    """
    return each("DAX3D_ROT_FromRotVec_f64", (3, 3), (vector, (3,)))


def to_rotation_vector(rotation: ArrayLike) -> Doubles:
    """The rotation vector of a rotation, at most pi long.

    >>> dax.pose.to_rotation_vector(dax.pose.from_rotation_vector([0.1, 0.2, 0.3])).round(12)
    array([0.1, 0.2, 0.3])
    """
    return each("DAX3D_ROT_ToRotVec_f64", (3,), (rotation, (3, 3)))


def from_euler(order: str, angles: ArrayLike) -> Doubles:
    """The rotation of three angles. order: "ZYX", capitals, about axes that turn along, Rz(a0) Ry(a1) Rx(a2); "zyx"
    about axes that stay, Rx(a2) Ry(a1) Rz(a0); any of the 24 orders of three letters.

    >>> dax.pose.from_euler("ZYX", [np.pi / 2, 0, 0]).round(12) + 0
    array([[ 0., -1.,  0.],
           [ 1.,  0.,  0.],
           [ 0.,  0.,  1.]])
    """
    return each("DAX3D_ROT_FromEuler_f64", (3, 3), (angles, (3,)), between=(_order(order),))


def to_euler(order: str, rotation: ArrayLike) -> Doubles:
    """The angles of a rotation, as from_euler takes them: the middle one in [-pi/2, pi/2], or [0, pi] where the first
    axis is also the third. Where the outer axes coincide the third angle is 0.

    >>> dax.pose.to_euler("ZYX", dax.pose.from_euler("ZYX", [0.3, 0.2, 0.1])).round(12)
    array([0.3, 0.2, 0.1])
    """
    leading, (rotations,) = spread(((rotation, (3, 3)),))
    angles, locked, name = np.empty((len(rotations), 3)), ffi.new("int32_t*"), _order(order)
    for row in range(len(angles)):
        call("DAX3D_ROT_ToEuler_f64", address(rotations[row]), name, address(angles[row]), locked)
    return angles.reshape(*leading, 3)


def compose(a: ArrayLike, b: ArrayLike) -> Doubles:
    """What b does, then a.

    >>> dax.pose.compose(np.eye(4), np.eye(4)).shape
    (4, 4)
    """
    return each("DAX3D_POSE_Compose_f64", (4, 4), (a, (4, 4)), (b, (4, 4)))


def inverse(pose: ArrayLike) -> Doubles:
    """The motion back.

    >>> move = np.eye(4)
    >>> move[:3, 3] = 1, 2, 3
    >>> dax.pose.inverse(move)[:3, 3]
    array([-1., -2., -3.])
    """
    return each("DAX3D_POSE_Inverse_f64", (4, 4), (pose, (4, 4)))


def apply(pose: ArrayLike, points: ArrayLike, pool: Optional[Pool] = None) -> Array:
    """R p + t of a point (3,), or of a cloud (n, 3) in the precision of its points; on a pool where one is given.

    >>> move = np.eye(4)
    >>> move[:3, 3] = 1, 2, 3
    >>> dax.pose.apply(move, [[0, 0, 0], [1, 1, 1]])
    array([[1., 2., 3.],
           [2., 3., 4.]])
    """
    if np.ndim(points) == 1:
        return each("DAX3D_POSE_Apply_f64", (3,), (pose, (4, 4)), (points, (3,)))
    return _moved("ApplyCloud", pose, points, pool)


def apply_normals(pose: ArrayLike, normals: ArrayLike) -> Array:
    """R n of normals (n, 3), in their precision.

    >>> dax.pose.apply_normals(np.eye(4), [[0, 0, 1]])
    array([[0., 0., 1.]])
    """
    return _moved("ApplyNormals", pose, normals, None)


def interpolate(a: ArrayLike, b: ArrayLike, t: float) -> Doubles:
    """Between two poses, t from 0 to 1: on a line, turning by the shorter arc at constant speed.

    >>> half_turn = np.diag([-1.0, -1, 1, 1])
    >>> dax.pose.interpolate(np.eye(4), half_turn, 0.5)[:2, :2].round(12) + 0
    array([[ 0., -1.],
           [ 1.,  0.]])
    """
    return each("DAX3D_POSE_Interpolate_f64", (4, 4), (a, (4, 4)), (b, (4, 4)), between=(float(t),))


def distance(a: ArrayLike, b: ArrayLike) -> Distance:
    """How far two poses are apart: in translation, and by which angle.

    >>> dax.pose.distance(np.eye(4), np.diag([-1.0, -1, 1, 1]))
    Distance(translation=0.0, angle=3.141592653589793)
    """
    leading, (first, second) = spread(((a, (4, 4)), (b, (4, 4))))
    translation, turn = np.empty(len(first)), np.empty(len(first))
    for row in range(len(first)):
        results = address(translation[row:]), address(turn[row:])
        call("DAX3D_POSE_Distance_f64", address(first[row]), address(second[row]), *results)
    if not leading:
        return Distance(float(translation[0]), float(turn[0]))
    return Distance(translation.reshape(leading), turn.reshape(leading))


def mean(poses: ArrayLike, weights: Optional[ArrayLike] = None, robust: bool = False) -> Doubles:
    """The mean of poses (n, 4, 4), or with robust their geometric median, which less than half of the weight cannot
    carry away.

    >>> dax.pose.mean([np.eye(4), np.eye(4)])[0]
    array([1., 0., 0., 0.])
    """
    all_poses = numbers("poses", poses, (None, 4, 4), np.float64)
    heavy, result = weights_of(weights, all_poses), np.empty((4, 4))
    name = "DAX3D_POSE_MeanRobust_f64" if robust else "DAX3D_POSE_Mean_f64"
    null = ffi.NULL if heavy is None else address(heavy)
    call(name, address(all_poses), null, len(all_poses), address(result))
    return result


def align(
    points: ArrayLike, to: ArrayLike, weights: Optional[ArrayLike] = None, scale: bool = False
) -> Alignment:
    """The motion that takes points (n, 3) nearest to those that they belong to, with a scale if wished; no reflection.

    >>> corners = np.array([[0, 0, 0], [1, 0, 0], [0, 2, 0], [0, 0, 3]])
    >>> round(dax.pose.align(corners, 2 * corners + 1, scale=True).scale, 12)
    2.0
    """
    source, suffix = cloud("points", points)
    target = np.ascontiguousarray(np.asarray(to), source.dtype)
    if target.shape != source.shape:
        raise ValueError(f"to: shape {target.shape}, needed is {source.shape}")
    heavy, found = weights_of(weights, source), ffi.new("Dax3dAlignment*")
    name = f"DAX3D_ALIGN_{'Similarity' if scale else 'Rigid'}_{suffix}"
    null = ffi.NULL if heavy is None else address(heavy)
    call(name, address(source), address(target), null, len(source), found)
    return Alignment(np.array(list(found.pose)).reshape(4, 4), found.scale, found.rms, bool(found.isMirrored))


def _order(order: str) -> Any:
    if not isinstance(order, str):
        raise TypeError(f"order: {order!r}, needed are three letters")
    return ffi.new("char[]", order.encode())


def _moved(operation: str, pose: ArrayLike, points: ArrayLike, pool: Optional[Pool]) -> Array:
    given, suffix = cloud("points", points)
    motion = numbers("pose", pose, (4, 4), np.float64)
    result = np.empty_like(given)
    if len(given) == 0:
        return result
    arguments = address(motion), address(given), len(given), address(result)
    threads, handle = handle_of(pool)
    name = f"DAX3D_POSE_{operation}_{suffix}"
    call(*((name,) if pool is None else (name + "_MT", handle, threads)), *arguments)
    return result

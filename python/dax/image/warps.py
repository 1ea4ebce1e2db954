"""Images moved, turned, scaled and seen in another perspective. Matrices are 3 x 3 and map (x, y, 1)."""
from typing import Any, Optional

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, numbers, pointer, source
from .._interface import ffi
from .._library import call
from ..pool import Pool
from ._sampling import WARPED, Interpolation, WarpMode, configured, sampled

__all__ = [
    "affine_from_points",
    "perspective_from_points",
    "rotate",
    "rotation_matrix",
    "warp_affine",
    "warp_bound",
    "warp_perspective",
]


def _matrix_field(matrix: ArrayLike) -> Any:
    return numbers("matrix", matrix, (3, 3), np.float64).ravel().tolist()


def warp_affine(
    image: ArrayLike,
    matrix: ArrayLike,
    shape: Optional[tuple[int, int]] = None,
    *,
    inverse: bool = False,
    interpolation: Interpolation = "linear",
    mode: WarpMode = "constant",
    value: float = 0,
    cubic_a: float = -0.5,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The image moved by an affine matrix, at positions that are exact to 2^-16 pixel.

    image: uint8, uint16, int16 or float32, (height, width) or (height, width, 3). matrix: 3 x 3 with the last row 0, 0,
    1, from image to result; inverse: from result to image. shape: (rows, columns) of the result, that of the image if
    None. mode: what lies outside the image; leave: the pixels of out stay. value: of mode constant. cubic_a: Keys'
    parameter.

    >>> dax.warp_affine(np.array([[0, 100, 200, 50]], np.uint8), [[1, 0, 0.5], [0, 1, 0], [0, 0, 1]])
    array([[  0,  50, 150, 125]], dtype=uint8)
    """
    src = source("image", image, WARPED, "C1 C3")
    cfg = configured("Warp", interpolation, mode, value, cubic_a, m=_matrix_field(matrix), inverse=int(inverse))
    return sampled("WarpAffine", src, shape or (src.size["height"], src.size["width"]), cfg, out, pool)


def warp_perspective(
    image: ArrayLike,
    matrix: ArrayLike,
    shape: Optional[tuple[int, int]] = None,
    *,
    inverse: bool = False,
    interpolation: Interpolation = "linear",
    mode: WarpMode = "constant",
    value: float = 0,
    cubic_a: float = -0.5,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The image through a homography. What lies beyond the horizon gets `value`. Arguments as of warp_affine.

    >>> dax.warp_perspective(np.eye(3, dtype=np.uint8), [[0, 2, 0], [2, 0, 0], [0, 0, 2]])
    array([[1, 0, 0],
           [0, 1, 0],
           [0, 0, 1]], dtype=uint8)
    """
    src = source("image", image, WARPED, "C1 C3")
    cfg = configured("Warp", interpolation, mode, value, cubic_a, m=_matrix_field(matrix), inverse=int(inverse))
    return sampled("WarpPerspective", src, shape or (src.size["height"], src.size["width"]), cfg, out, pool)


def rotate(
    image: ArrayLike,
    angle: float,
    shape: Optional[tuple[int, int]] = None,
    *,
    interpolation: Interpolation = "linear",
    mode: WarpMode = "constant",
    value: float = 0,
    cubic_a: float = -0.5,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The image turned about its centre by an angle in radians, clockwise on the screen.

    shape: (rows, columns) of the result, what holds all of it if None. The rest as of warp_affine.

    >>> dax.rotate(np.array([[1, 2, 3]], np.uint8), np.pi / 2).ravel()
    array([1, 2, 3], dtype=uint8)
    """
    src = source("image", image, WARPED, "C1 C3")
    if shape is None:
        size = ffi.new("DaxiSize*")
        call("DAXI_RotateSize", src.size, angle, size)
        shape = (size.height, size.width)
    return sampled(
        "Rotate", src, shape, configured("Rotate", interpolation, mode, value, cubic_a, angle=angle), out, pool
    )


def warp_bound(
    shape: tuple[int, ...],
    matrix: ArrayLike,
    region: Optional[tuple[int, int, int, int]] = None,
    *,
    inverse: bool = False,
) -> tuple[int, int, int, int]:
    """(x, y, width, height) of the pixels that an image of this shape, or a region (x, y, width, height) of it, comes
    to fill.

    >>> dax.warp_bound((10, 20), [[2, 0, 5], [0, 2, 0], [0, 0, 1]])
    (4, -1, 41, 21)
    """
    height, width = shape[:2]
    of = dict(zip(("x", "y", "width", "height"), region or (0, 0, width, height)))
    cfg, bound = ffi.new("DaxiWarpCfg*"), ffi.new("DaxiRect*")
    call("DAXI_WarpDefaultCfg", cfg)
    cfg.m, cfg.inverse = _matrix_field(matrix), int(inverse)
    call("DAXI_WarpBound", {"width": width, "height": height}, of, cfg, bound)
    return bound.x, bound.y, bound.width, bound.height


def _from_points(function: str, count: int, source_points: ArrayLike, target_points: ArrayLike) -> Array:
    start = numbers("source_points", source_points, (count, 2), np.float64)
    end = numbers("target_points", target_points, (count, 2), np.float64)
    matrix = np.empty((3, 3))
    call(function, pointer(start, "double"), pointer(end, "double"), pointer(matrix, "double"))
    return matrix


def affine_from_points(source_points: ArrayLike, target_points: ArrayLike) -> Array:
    """The affine matrix that takes three points (x, y) to three others.

    >>> dax.affine_from_points([[0, 0], [1, 0], [0, 1]], [[5, 5], [7, 5], [5, 6]])
    array([[2., 0., 5.],
           [0., 1., 5.],
           [0., 0., 1.]])
    """
    return _from_points("DAXI_AffineFrom3", 3, source_points, target_points)


def perspective_from_points(source_points: ArrayLike, target_points: ArrayLike) -> Array:
    """The homography that takes the corners of one quadrangle, in order round it, to those of another.

    >>> dax.perspective_from_points([[0, 0], [1, 0], [1, 1], [0, 1]], [[0, 0], [2, 0], [2, 2], [0, 2]])
    array([[2., 0., 0.],
           [0., 2., 0.],
           [0., 0., 1.]])
    """
    return _from_points("DAXI_PerspectiveFrom4", 4, source_points, target_points)


def rotation_matrix(centre: tuple[float, float], angle: float, scale: float = 1) -> Array:
    """The matrix that turns by an angle, clockwise on the screen, and scales, about a centre (x, y).

    >>> dax.rotation_matrix((10, 0), np.pi).round(9)[0]
    array([-1., -0., 20.])
    """
    matrix = np.empty((3, 3))
    call("DAXI_RotationMatrix", centre[0], centre[1], angle, scale, pointer(matrix, "double"))
    return matrix

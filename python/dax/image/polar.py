"""Sectors of rings as rectangles, and back."""
from typing import Any, Optional

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, source
from ..pool import Pool
from ._sampling import WARPED, Interpolation, WarpMode, configured, sampled

__all__ = ["polar", "polar_back"]


def _ring(centre: tuple[float, float], radii: tuple[float, float], start: float, span: float, log: bool) -> Any:
    (cx, cy), (r0, r1) = centre, radii
    return {"cx": cx, "cy": cy, "r0": r0, "r1": r1, "angle0": start, "span": span, "log": int(log)}


def polar(
    image: ArrayLike,
    centre: tuple[float, float],
    radii: tuple[float, float],
    shape: tuple[int, int],
    *,
    start: float = 0,
    span: float = 2 * np.pi,
    log: bool = False,
    interpolation: Interpolation = "linear",
    mode: WarpMode = "constant",
    value: float = 0,
    cubic_a: float = -0.5,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """A sector of a ring as a rectangle: columns are angles, rows radii.

    image: uint8, uint16, int16 or float32, (height, width) or (height, width, 3). centre: (x, y). radii: above the
    first row and below the last one; log: with a factor from row to row in place of a difference. shape: (rows,
    columns). start, span: angles in radians, clockwise on the screen; a negative span runs the other way. The rest as
    of warp_affine.

    >>> y, x = np.mgrid[:41, :41]
    >>> distance = np.hypot(x - 20, y - 20).astype(np.float32)
    >>> dax.polar(distance, (20, 20), (10, 14), (4, 90)).mean(1).round(1)
    array([10.5, 11.5, 12.5, 13.5], dtype=float32)
    """
    src = source("image", image, WARPED, "C1 C3")
    cfg = configured("Polar", interpolation, mode, value, cubic_a, **_ring(centre, radii, start, span, log))
    return sampled("Polar", src, shape, cfg, out, pool)


def polar_back(
    image: ArrayLike,
    centre: tuple[float, float],
    radii: tuple[float, float],
    shape: tuple[int, int],
    *,
    start: float = 0,
    span: float = 2 * np.pi,
    log: bool = False,
    interpolation: Interpolation = "linear",
    mode: WarpMode = "constant",
    value: float = 0,
    cubic_a: float = -0.5,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The picture of shape (rows, columns) of a polar image. Arguments as of polar, which it reverses.

    >>> dax.polar_back(np.full((5, 60), 7, np.uint8), (2, 2), (0, 1.5), (5, 5), interpolation="nearest")[2]
    array([0, 7, 7, 7, 0], dtype=uint8)
    """
    src = source("image", image, WARPED, "C1 C3")
    cfg = configured("Polar", interpolation, mode, value, cubic_a, **_ring(centre, radii, start, span, log))
    return sampled("PolarBack", src, shape, cfg, out, pool)

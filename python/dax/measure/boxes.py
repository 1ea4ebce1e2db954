"""Rectangles around points."""
from typing import Any, Literal, NamedTuple

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import choice, numbers, pointer
from .._interface import ffi
from .._library import buffer, call

__all__ = ["RotatedBox", "enclosing_box"]


class RotatedBox(NamedTuple):
    """A rectangle in pixels and radians: centre, width >= height, angle of the long side in (-pi/2, pi/2]."""

    x: float
    y: float
    width: float
    height: float
    angle: float


BOXES = {"area": 1, "perimeter": 2}


def rotated_box(box: Any) -> RotatedBox:
    return RotatedBox(box.x, box.y, box.width, box.height, box.angle)


def enclosing_box(
    points: ArrayLike, minimal: Literal["area", "perimeter"] = "area", convex: bool = False
) -> RotatedBox:
    """The best rectangle around points.

    points: (n, 2) whole numbers x, y within +-2^19, in any order. convex: they are corners of a convex polygon in
    strict turns, as `Labelling.hull` gives them; saves time.

    >>> dax.enclosing_box([[0, 0], [4, 0], [4, 2], [0, 2], [1, 1]])
    RotatedBox(x=2.0, y=1.0, width=4.0, height=2.0, angle=0.0)
    """
    mode = choice("minimal", minimal, BOXES)
    if np.asarray(points).dtype.kind not in "iu":
        raise TypeError(f"points: of type {np.asarray(points).dtype}, needed are whole numbers")
    if np.size(points) and np.abs(np.asarray(points, np.float64)).max() > 2**19:
        raise ValueError("points: beyond +-2^19")
    corners = numbers("points", points, (None, 2), np.int32)
    box, address, count = ffi.new("DaxiRotatedBox*"), pointer(corners, "DaxiPoint32s"), len(corners)
    if convex:
        call("DAXI_REG_EncloseBox", address, count, mode, box)
    else:
        call("_DAXI_PtEncloseBox_32s", address, count, mode, box, buffer("_DAXI_PtEncloseBoxBufferSize_32s", count))
    return rotated_box(box)

"""How far one image is moved, turned and scaled against another: phase correlation."""
from typing import Any, NamedTuple, Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import of_shape, source
from .._interface import ffi
from .._library import buffer, call
from ..pool import Pool, handle_of

__all__ = ["PhaseMotion", "PhaseShift", "phase_rotation_scale", "phase_shift"]

_TYPES = tuple(np.dtype(each) for each in (np.uint8, np.uint16, np.float32))


class PhaseShift(NamedTuple):
    """The second image shows what the first one does, dx pixels further right and dy further down. peak: 1 for the same
    image moved around its edges; second: the next value, which different images have as well."""

    dx: float
    dy: float
    peak: float
    second: float


class PhaseMotion(NamedTuple):
    """matrix: takes (x, y, 1) of the first image to the second one. angle, scale: about the centre, radians clockwise
    on the screen. dx, dy: how far the centre moves. peak, second: as of PhaseShift."""

    matrix: NDArray[np.float64]
    angle: float
    scale: float
    dx: float
    dy: float
    peak: float
    second: float


def phase_shift(first: ArrayLike, second: ArrayLike, *, pool: Optional[Pool] = None) -> PhaseShift:
    """The shift from one image to another, to about 1/100 of a pixel.

    first, second: (height, width) uint8, uint16 or float32, both alike, sides of 16 to 8192. Light and contrast may
    differ. Fails with dax.Error where an image is flat, or less than a quarter of both shows the same.

    >>> scene = np.random.default_rng(1).integers(0, 200, (80, 80)).astype(np.uint8)
    >>> found = dax.phase_shift(scene[8:72, 8:72], scene[10:74, 3:67])
    >>> round(found.dx, 3), round(found.dy, 3)
    (5.0, -2.0)
    """
    found = _compare("PhaseShift", first, second, pool)
    return PhaseShift(found.dx, found.dy, found.peak, found.second)


def phase_rotation_scale(first: ArrayLike, second: ArrayLike, *, pool: Optional[Pool] = None) -> PhaseMotion:
    """Rotation, scale and shift from one image to another, to about 0.05 degrees and 0.2 per cent.

    Scales of 1/2 to 2, any angle. Images, and what fails, as of phase_shift.

    >>> scene = dax.gauss(np.random.default_rng(1).integers(0, 256, (90, 90)).astype(np.uint8), 1)
    >>> found = dax.phase_rotation_scale(scene, dax.rotate90(scene))
    >>> round(np.degrees(found.angle), 1), round(found.scale, 2)
    (90.0, 1.0)
    """
    found = _compare("PhaseRotationScale", first, second, pool)
    matrix = np.array(list(found.m)).reshape(3, 3)
    return PhaseMotion(matrix, found.angle, found.scale, found.dx, found.dy, found.peak, found.second)


def _compare(operation: str, first: ArrayLike, second: ArrayLike, pool: Optional[Pool]) -> Any:
    a = source("first", first, _TYPES)
    b = of_shape("second", second, a.array.shape, (a.array.dtype,))
    found = ffi.new("DaxiPhaseShift*" if operation == "PhaseShift" else "DaxiPhaseMotion*")
    work = buffer(f"DAXI_{operation}BufferSize", a.size)
    name, on = f"DAXI_{operation}_{a.suffix}_C1R", []
    if pool is not None:
        threads, handle = handle_of(pool)
        name, on = name + "_MT", [handle, threads]
    call(name, *on, a.pointer, a.step, b.pointer, b.step, a.size, found, work)
    return found

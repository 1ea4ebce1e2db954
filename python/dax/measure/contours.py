"""Chains of points."""
import warnings

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import numbers, pointer, within
from .._interface import ffi
from .._library import buffer, call

__all__ = ["approximate_contour"]

_LIMIT = 1


def approximate_contour(points: ArrayLike, tolerance: float, *, closed: bool = False) -> NDArray[np.int32]:
    """Indices, ascending, of the points of a chain that are enough for a polygon within the tolerance of all others
    (Douglas and Peucker).

    points: (n, 2), n >= 1; int32, or taken as float32. tolerance: units of the points, >= 0. closed: whether the last
    point is joined to the first. Warns where a chain is such that the polygon has more points than it needs.

    >>> dax.approximate_contour([[0, 0], [1, 0.1], [2, 0], [3, 4]], 0.5)
    array([0, 2, 3], dtype=int32)
    """
    is_whole = np.asarray(points).dtype == np.int32
    array = numbers("points", points, (None, 2), np.int32 if is_whole else np.float32)
    within("tolerance", tolerance, 0, float(np.finfo(float).max))
    suffix, ctype = ("32s", "DaxiPoint32s") if is_whole else ("32f", "DaxiPoint32f")
    indices = np.empty(len(array), np.int32)
    kept, flags = ffi.new("int32_t*"), ffi.new("uint32_t*")
    work = buffer("DAX_ContourApproxBufferSize", len(array))
    own = pointer(array, ctype), len(array), int(closed), tolerance, pointer(indices, "int32_t"), kept, flags, work
    call(f"DAXI_ContourApprox_{suffix}", *own)
    if flags[0] & _LIMIT:
        text = "approximate_contour: the chain folds so often that more points were kept than are needed"
        warnings.warn(text, stacklevel=2)
    return indices[: kept[0]].copy()

"""Weighted sums of two images, and sums and running averages of many."""
from typing import Optional

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, of_shape, refuse_overlap, target
from .._interface import ffi
from .._library import call
from .._operation import apply_elements
from ..pool import Pool

__all__ = ["accumulate", "accumulate_weighted", "add_weighted"]


def add_weighted(
    first: ArrayLike,
    first_weight: float,
    second: ArrayLike,
    second_weight: float,
    offset: float = 0,
    *,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """first_weight * first + second_weight * second + offset, in double precision: uint8, uint16, int16, rounded half
    to even and saturated, or float32. `out` may be one of the images. pool: works in bands of rows.

    >>> dax.add_weighted(np.array([[10, 20]], np.uint8), 0.25, np.array([[50, 255]], np.uint8), 0.75)
    array([[ 40, 196]], dtype=uint8)
    """
    cfg = ffi.new("DaxiAddWeightedCfg*", (first_weight, second_weight, offset))
    second = np.asarray(second)
    if second.ndim < 2:
        raise ValueError(f"second: shape {second.shape}, needed is an image")
    return apply_elements("DAXI_AddWeighted", first, second, parameters=(cfg,), out=out, pool=pool)


def accumulate(image: ArrayLike, sums: Array) -> Array:
    """Adds an image, uint8 or uint16, to sums of float32, and returns them. Exact below 2**24.

    >>> dax.accumulate(np.array([[1, 2]], np.uint8), np.full((1, 2), 0.5, np.float32))
    array([[1.5, 2.5]], dtype=float32)
    """
    return _accumulate("DAXI_Accumulate", image, sums)


def accumulate_weighted(image: ArrayLike, means: Array, alpha: float) -> Array:
    """Moves running averages of float32 towards an image, uint8 or uint16, and returns them: means += alpha * (image -
    means), alpha in 0..1. An average stops half a unit of its last place, divided by alpha, before the value.

    >>> dax.accumulate_weighted(np.array([[1, 2]], np.uint8), np.zeros((1, 2), np.float32), 0.5)
    array([[0.5, 1. ]], dtype=float32)
    """
    return _accumulate("DAXI_AccumulateWeighted", image, means, alpha)


def _accumulate(function: str, image: ArrayLike, sums: Array, *parameters: float) -> Array:
    result = target("sums", sums, np.shape(image), np.float32)
    one = of_shape("image", image, result.array.shape, (np.dtype(np.uint8), np.dtype(np.uint16)), "C1 C3")
    refuse_overlap(("image", one), ("sums", result))
    size = {"width": one.size["width"] * int(np.prod(one.array.shape[2:])), "height": one.size["height"]}
    call(f"{function}_{one.suffix}32f_C1IR", one.pointer, one.step, result.pointer, result.step, size, *parameters)
    return result.array

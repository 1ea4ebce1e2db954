"""Masks, 255 where a comparison holds and 0 elsewhere, of two images or of an image and a number."""
from typing import Optional, Union

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, choice, pixel_value, refuse_overlap, source, target
from .._library import call
from .._operation import apply_elements

__all__ = ["compare", "in_range", "is_close"]

_TYPES = tuple(np.dtype(each) for each in (np.uint8, np.uint16, np.int16, np.float32))
_OPERATORS = {"<": 0, "<=": 1, "==": 2, "!=": 3, ">=": 4, ">": 5}


def compare(
    first: ArrayLike, operator: str, second: Union[ArrayLike, float], *, out: Optional[Array] = None
) -> Array:
    """Where the pixels of two images, or of an image and a number, compare: uint8, uint16, int16 or float32.

    operator: "<", "<=", "==", "!=", ">=" or ">". NaN is only != to anything.

    >>> dax.compare(np.array([[10, 20, 30]], np.uint16), ">=", 20)
    array([[  0, 255, 255]], dtype=uint8)
    """
    op = choice("operator", operator, _OPERATORS)
    return apply_elements("DAXI_Compare", first, second, parameters=(op,), to="8u", out=out)


def is_close(
    first: ArrayLike, second: Union[ArrayLike, float], tolerance: float, *, out: Optional[Array] = None
) -> Array:
    """Where |first - second| <= tolerance, in double precision: float32. Nowhere at NaN.

    >>> dax.is_close(np.array([[1, 1.5, np.nan]], np.float32), 1, 0.25)
    array([[255,   0,   0]], dtype=uint8)
    """
    parameters = (tolerance,)
    return apply_elements("DAXI_CompareEqualEps", first, second, parameters=parameters, types="32f", to="8u", out=out)


def in_range(image: ArrayLike, low: ArrayLike, high: ArrayLike, *, out: Optional[Array] = None) -> Array:
    """Where low <= image <= high, of all three channels of a colour image: uint8, uint16, int16 or float32.

    low, high: one number, or one for each channel.

    >>> dax.in_range(np.array([[10, 20, 30]], np.uint8), 15, 30)
    array([[  0, 255, 255]], dtype=uint8)
    """
    one = source("image", image, _TYPES, "C1 C3")
    result = target("out", out, one.array.shape[:2], np.uint8)
    refuse_overlap(("image", one), ("out", result))
    limits = *pixel_value("low", low, one), *pixel_value("high", high, one)
    layout = "C1R" if one.layout == "C1" else "C3C1R"
    call(f"DAXI_InRange_{one.suffix}_{layout}", one.pointer, one.step, result.pointer, result.step, one.size, *limits)
    return result.array

"""Arithmetic of an image and a constant, pixel by pixel."""
from typing import Optional

from numpy.typing import ArrayLike

from ._arrays import Array
from ._elementwise import with_constant

__all__ = ["absolute_difference_constant", "add_constant", "multiply_constant", "subtract_constant"]


def add_constant(
    image: ArrayLike, value: ArrayLike, *, scale_factor: int = 0, out: Optional[Array] = None
) -> Array:
    """image + value, pixel by pixel, of an image (height, width) or (height, width, 3).

    value: one number, or three for the channels. Integers: times 2**-scale_factor (-31..31), rounded half to even,
    saturated; floats have no scale factor.
    """
    return with_constant("AddC", image, value, scale_factor, out)


def subtract_constant(
    image: ArrayLike, value: ArrayLike, *, scale_factor: int = 0, out: Optional[Array] = None
) -> Array:
    """image - value, pixel by pixel, of an image (height, width) or (height, width, 3).

    value: one number, or three for the channels. Integers: times 2**-scale_factor (-31..31), rounded half to even,
    saturated; floats have no scale factor.
    """
    return with_constant("SubC", image, value, scale_factor, out)


def multiply_constant(
    image: ArrayLike, value: ArrayLike, *, scale_factor: int = 0, out: Optional[Array] = None
) -> Array:
    """image * value, pixel by pixel, of an image (height, width) or (height, width, 3).

    value: one number, or three for the channels. Integers: times 2**-scale_factor (-31..31), rounded half to even,
    saturated; floats have no scale factor.
    """
    return with_constant("MulC", image, value, scale_factor, out)


def absolute_difference_constant(
    image: ArrayLike, value: ArrayLike, *, scale_factor: int = 0, out: Optional[Array] = None
) -> Array:
    """|image - value|, pixel by pixel, of an image (height, width) or (height, width, 3).

    value: one number, or three for the channels. Integers: times 2**-scale_factor (-31..31), rounded half to even,
    saturated; floats have no scale factor.
    """
    return with_constant("AbsDiffC", image, value, scale_factor, out)

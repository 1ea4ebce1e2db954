"""Quotients of two images, or of an image and a constant, pixel by pixel."""
from typing import Optional

from numpy.typing import ArrayLike

from .._arrays import Array
from .._operation import Value, apply_scaled
from ..pool import Pool

__all__ = [
    "divide",
    "divide_constant",
]


def divide(
    first: ArrayLike,
    second: ArrayLike,
    *,
    scale_factor: int = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """first / second, pixel by pixel, of two images (height, width) or (height, width, 3) of one type.

    Integers: times 2**-scale_factor (-31..31), rounded half to even, saturated, and no divisor may be 0; floats
    have no scale factor. `out` may be one of the images. pool: works in bands of rows.

    >>> dax.divide(np.array([[10, 250]], np.uint8), np.array([[4, 60]], np.uint8))
    array([[2, 4]], dtype=uint8)
    """
    images = {"first": first, "second": second}
    return apply_scaled("DAXI_Div", images, scale_factor=scale_factor, out=out, pool=pool)


def divide_constant(
    image: ArrayLike,
    value: ArrayLike,
    *,
    scale_factor: int = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """image / value, pixel by pixel, of an image (height, width) or (height, width, 3).

    value: one number, or one for each channel. Integers: times 2**-scale_factor (-31..31), rounded half to
    even, saturated, and no divisor may be 0; floats have no scale factor. `out` may be the image.
    pool: works in bands of rows.

    >>> dax.divide_constant(np.array([[10, 14, 250]], np.uint8), 4)
    array([[ 2,  4, 62]], dtype=uint8)
    """
    images, constant = {"image": image}, Value("value", value)
    return apply_scaled("DAXI_DivC", images, constant, scale_factor=scale_factor, out=out, pool=pool)

"""Arithmetic of two images, or of an image and a constant, pixel by pixel."""
from typing import Optional

from numpy.typing import ArrayLike

from .._arrays import Array
from .._operation import Value, apply_scaled

__all__ = [
    "absolute_difference",
    "absolute_difference_constant",
    "add",
    "add_constant",
    "multiply",
    "multiply_constant",
    "subtract",
    "subtract_constant",
]


def add(
    first: ArrayLike, second: ArrayLike, *, scale_factor: int = 0, out: Optional[Array] = None
) -> Array:
    """first + second, pixel by pixel, of two images (height, width) or (height, width, 3) of one type.

    Integers: times 2**-scale_factor (-31..31), rounded half to even, saturated; floats have no scale factor.
    `out` may be one of the images.

    >>> dax.add(np.array([[10, 250]], np.uint8), np.array([[20, 60]], np.uint8))
    array([[ 30, 255]], dtype=uint8)
    """
    images = {"first": first, "second": second}
    return apply_scaled("DAXI_Add", images, scale_factor=scale_factor, out=out)


def subtract(
    first: ArrayLike, second: ArrayLike, *, scale_factor: int = 0, out: Optional[Array] = None
) -> Array:
    """first - second, pixel by pixel, of two images (height, width) or (height, width, 3) of one type.

    Integers: times 2**-scale_factor (-31..31), rounded half to even, saturated; floats have no scale factor.
    `out` may be one of the images.

    >>> dax.subtract(np.array([[10, 250]], np.uint8), np.array([[20, 60]], np.uint8))
    array([[  0, 190]], dtype=uint8)
    """
    images = {"first": first, "second": second}
    return apply_scaled("DAXI_Sub", images, scale_factor=scale_factor, out=out)


def multiply(
    first: ArrayLike, second: ArrayLike, *, scale_factor: int = 0, out: Optional[Array] = None
) -> Array:
    """first * second, pixel by pixel, of two images (height, width) or (height, width, 3) of one type.

    Integers: times 2**-scale_factor (-31..31), rounded half to even, saturated; floats have no scale factor.
    `out` may be one of the images.

    >>> dax.multiply(np.array([[10, 250]], np.uint8), np.array([[20, 60]], np.uint8))
    array([[200, 255]], dtype=uint8)
    """
    images = {"first": first, "second": second}
    return apply_scaled("DAXI_Mul", images, scale_factor=scale_factor, out=out)


def absolute_difference(
    first: ArrayLike, second: ArrayLike, *, scale_factor: int = 0, out: Optional[Array] = None
) -> Array:
    """|first - second|, pixel by pixel, of two images (height, width) or (height, width, 3) of one type.

    Integers: times 2**-scale_factor (-31..31), rounded half to even, saturated; floats have no scale factor.
    `out` may be one of the images.

    >>> dax.absolute_difference(np.array([[10, 250]], np.uint8), np.array([[20, 60]], np.uint8))
    array([[ 10, 190]], dtype=uint8)
    """
    images = {"first": first, "second": second}
    return apply_scaled("DAXI_AbsDiff", images, scale_factor=scale_factor, out=out)


def add_constant(
    image: ArrayLike, value: ArrayLike, *, scale_factor: int = 0, out: Optional[Array] = None
) -> Array:
    """image + value, pixel by pixel, of an image (height, width) or (height, width, 3).

    value: one number, or one for each channel. Integers: times 2**-scale_factor (-31..31), rounded half to
    even, saturated; floats have no scale factor. `out` may be the image.

    >>> dax.add_constant(np.array([[1, 250]], np.uint8), 10)
    array([[ 11, 255]], dtype=uint8)
    """
    images, constant = {"image": image}, Value("value", value)
    return apply_scaled("DAXI_AddC", images, constant, scale_factor=scale_factor, out=out)


def subtract_constant(
    image: ArrayLike, value: ArrayLike, *, scale_factor: int = 0, out: Optional[Array] = None
) -> Array:
    """image - value, pixel by pixel, of an image (height, width) or (height, width, 3).

    value: one number, or one for each channel. Integers: times 2**-scale_factor (-31..31), rounded half to
    even, saturated; floats have no scale factor. `out` may be the image.

    >>> dax.subtract_constant(np.array([[1, 250]], np.uint8), 10)
    array([[  0, 240]], dtype=uint8)
    """
    images, constant = {"image": image}, Value("value", value)
    return apply_scaled("DAXI_SubC", images, constant, scale_factor=scale_factor, out=out)


def multiply_constant(
    image: ArrayLike, value: ArrayLike, *, scale_factor: int = 0, out: Optional[Array] = None
) -> Array:
    """image * value, pixel by pixel, of an image (height, width) or (height, width, 3).

    value: one number, or one for each channel. Integers: times 2**-scale_factor (-31..31), rounded half to
    even, saturated; floats have no scale factor. `out` may be the image.

    >>> dax.multiply_constant(np.array([[1, 250]], np.uint8), 10)
    array([[ 10, 255]], dtype=uint8)
    """
    images, constant = {"image": image}, Value("value", value)
    return apply_scaled("DAXI_MulC", images, constant, scale_factor=scale_factor, out=out)


def absolute_difference_constant(
    image: ArrayLike, value: ArrayLike, *, scale_factor: int = 0, out: Optional[Array] = None
) -> Array:
    """|image - value|, pixel by pixel, of an image (height, width) or (height, width, 3).

    value: one number, or one for each channel. Integers: times 2**-scale_factor (-31..31), rounded half to
    even, saturated; floats have no scale factor. `out` may be the image.

    >>> dax.absolute_difference_constant(np.array([[1, 250]], np.uint8), 10)
    array([[  9, 240]], dtype=uint8)
    """
    images, constant = {"image": image}, Value("value", value)
    return apply_scaled("DAXI_AbsDiffC", images, constant, scale_factor=scale_factor, out=out)

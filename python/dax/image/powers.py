"""Absolute values, squares, roots, exponentials and logarithms, pixel by pixel."""
from typing import Optional

from numpy.typing import ArrayLike

from .._arrays import Array
from .._operation import apply_elements
from ..pool import Pool

__all__ = ["absolute", "exp", "log", "sqrt", "square"]


def absolute(image: ArrayLike, *, out: Optional[Array] = None, pool: Optional[Pool] = None) -> Array:
    """Absolute values: int16, where -32768 becomes 32767, or float32. `out` may be the image.
    pool: works in bands of rows.

    >>> dax.absolute(np.array([[-3, 4]], np.int16))
    array([[3, 4]], dtype=int16)
    """
    return apply_elements("DAXI_Abs", image, types="16s 32f", out=out, pool=pool)


def square(image: ArrayLike, *, scale_factor: int = 0, out: Optional[Array] = None) -> Array:
    """Squares: uint8, uint16, int16 or float32. `out` may be the image.

    Integers: times 2**-scale_factor (-31..31), rounded half to even, saturated; floats have no scale factor.

    >>> dax.square(np.array([[3, 200]], np.uint8), scale_factor=8)
    array([[  0, 156]], dtype=uint8)
    """
    return apply_elements("DAXI_Sqr", image, scale_factor=scale_factor, out=out)


def sqrt(image: ArrayLike, *, out: Optional[Array] = None, pool: Optional[Pool] = None) -> Array:
    """Square roots: uint8, uint16 or int16, to the nearest integer and 0 of negative ones, or float32, correctly
    rounded. `out` may be the image. pool: works in bands of rows.

    >>> dax.sqrt(np.array([[3, 200]], np.uint8))
    array([[ 2, 14]], dtype=uint8)
    """
    return apply_elements("DAXI_Sqrt", image, out=out, pool=pool)


def exp(image: ArrayLike, *, out: Optional[Array] = None, pool: Optional[Pool] = None) -> Array:
    """e to the power of each pixel: float32, within a unit of the last place, the same bits on every machine.

    `out` may be the image. pool: works in bands of rows.

    >>> dax.exp(np.array([[0, -np.inf]], np.float32))
    array([[1., 0.]], dtype=float32)
    """
    return apply_elements("DAXI_Exp", image, types="32f", out=out, pool=pool)


def log(image: ArrayLike, *, out: Optional[Array] = None, pool: Optional[Pool] = None) -> Array:
    """Natural logarithms: float32, within a unit of the last place, the same bits on every machine.

    -inf of 0, NaN of negative numbers. `out` may be the image. pool: works in bands of rows.

    >>> dax.log(np.array([[1, 0]], np.float32))
    array([[  0., -inf]], dtype=float32)
    """
    return apply_elements("DAXI_Ln", image, types="32f", out=out, pool=pool)

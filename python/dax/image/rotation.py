"""Images mirrored, transposed and turned by multiples of 90 degrees."""
from typing import Any, Literal, Optional

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, choice, refuse_overlap, source, target
from .._library import call
from ..pool import Pool, handle_of

__all__ = ["mirror", "rotate90", "transpose"]

_TYPES = tuple(np.dtype(each) for each in (np.uint8, np.uint16, np.int16, np.int32, np.float32, np.float64))
_AXES = {"columns": 0, "rows": 1, "both": 2}


def _turn(
    function: str, image: ArrayLike, *parameters: int, swaps: bool, out: Optional[Array], pool: Optional[Pool]
) -> Array:
    """Calls the form for the type and the layout; that in place where `out` is the image."""
    src = source("image", image, _TYPES, "C1 C3")
    height, width, *rest = src.array.shape
    shape: tuple[Any, ...] = (width, height, *rest) if swaps else src.array.shape
    dst = target("out", out, shape, src.array.dtype)
    name = f"{function}_{src.suffix}_{src.layout}"
    if (dst.pointer, dst.step) == (src.pointer, src.step):
        call(f"{name}IR", dst.pointer, dst.step, src.size, *parameters)
        return dst.array
    refuse_overlap(("image", src), ("out", dst))
    arguments = [src.pointer, src.step, dst.pointer, dst.step, src.size, *parameters]
    if pool is None:
        call(f"{name}R", *arguments)
    else:
        threads, handle = handle_of(pool)
        call(f"{name}R_MT", handle, threads, *arguments)
    return dst.array


def mirror(
    image: ArrayLike,
    reverse: Literal["columns", "rows", "both"] = "columns",
    *,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The image with its columns, its rows or both in reverse order.

    image: (height, width) or (height, width, 3), uint8, uint16, int16, int32, float32 or float64; `out` may be the
    image.

    >>> dax.mirror(np.array([[1, 2], [3, 4]], np.uint8))
    array([[2, 1],
           [4, 3]], dtype=uint8)
    """
    return _turn("DAXI_Mirror", image, choice("reverse", reverse, _AXES), swaps=False, out=out, pool=pool)


def transpose(image: ArrayLike, *, out: Optional[Array] = None, pool: Optional[Pool] = None) -> Array:
    """Rows become columns. Types as of mirror; `out` may be the image if that is square.

    >>> dax.transpose(np.array([[1, 2], [3, 4]], np.uint8))
    array([[1, 3],
           [2, 4]], dtype=uint8)
    """
    return _turn("DAXI_Transpose", image, swaps=True, out=out, pool=pool)


def rotate90(
    image: ArrayLike, quarters: int = 1, *, out: Optional[Array] = None, pool: Optional[Pool] = None
) -> Array:
    """The image turned clockwise, as it is looked at, by so many quarters of a circle; by negative ones the other way.
    (numpy.rot90 turns the other way.) Types as of mirror; `out` may be the image if that is square, or the turn a half.

    >>> dax.rotate90(np.array([[1, 2], [3, 4]], np.uint8))
    array([[3, 1],
           [4, 2]], dtype=uint8)
    """
    quarters %= 4
    return _turn("DAXI_Rotate90", image, quarters, swaps=quarters % 2 == 1, out=out, pool=pool)

"""Arithmetic of images."""
from typing import Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import Array
from .._operation import apply

__all__ = ["add"]

_FASTEST = 100  # the vector kernels where there are some


def add(first: ArrayLike, second: ArrayLike, out: Optional[Array] = None) -> NDArray[np.uint8]:
    """Sum of two uint8 images of one shape, 255 where it is above. `out` may be one of the images.

    >>> dax.add(np.array([[1, 200]], np.uint8), np.array([[2, 100]], np.uint8))
    array([[  3, 255]], dtype=uint8)
    """
    images = {"first": first, "second": second}
    return apply("DAXI_Add_{type}_{layout}RSfs_IS", images, _FASTEST, types="8u", out=out, in_place=True)

"""The smaller or the greater one of two images, or of an image and a number, pixel by pixel."""
from typing import Optional, Union

from numpy.typing import ArrayLike

from .._arrays import Array
from .._operation import apply_elements

__all__ = ["maximum", "minimum"]


def minimum(first: ArrayLike, second: Union[ArrayLike, float], *, out: Optional[Array] = None) -> Array:
    """The smaller one of the pixels of two images, or of an image and a number: uint8, uint16, int16 or float32.

    NaN loses to a number, and -0 is below +0. `out` may be one of the images.

    >>> dax.minimum(np.array([[1, 250]], np.uint8), 100)
    array([[  1, 100]], dtype=uint8)
    """
    return apply_elements("DAXI_Min", first, second, out=out)


def maximum(first: ArrayLike, second: Union[ArrayLike, float], *, out: Optional[Array] = None) -> Array:
    """The greater one of the pixels of two images, or of an image and a number: uint8, uint16, int16 or float32.

    NaN loses to a number, and -0 is below +0. `out` may be one of the images.

    >>> dax.maximum(np.array([[1, 250]], np.uint8), 100)
    array([[100, 250]], dtype=uint8)
    """
    return apply_elements("DAXI_Max", first, second, out=out)

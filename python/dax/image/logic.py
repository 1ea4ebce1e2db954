"""Operations on the bits of pixels, of two images or of an image and a number. Truth values are bytes of 0 and 255."""
from typing import Optional, Union

from numpy.typing import ArrayLike

from .._arrays import Array
from .._operation import apply_elements

__all__ = ["bitwise_and", "bitwise_not", "bitwise_or", "bitwise_xor", "left_shift", "right_shift"]

_TYPES = "8u 16u 16s"


def bitwise_and(first: ArrayLike, second: Union[ArrayLike, int], *, out: Optional[Array] = None) -> Array:
    """first & second: what two masks have in common, or the bits of a number. uint8, uint16 or int16.

    `out` may be one of the images.

    >>> dax.bitwise_and(np.array([[0x1234]], np.uint16), 0x0FF0) == 0x0230
    array([[ True]])
    """
    return apply_elements("DAXI_And", first, second, types=_TYPES, out=out)


def bitwise_or(first: ArrayLike, second: Union[ArrayLike, int], *, out: Optional[Array] = None) -> Array:
    """first | second: what lies in one of two masks. uint8, uint16 or int16. `out` may be one of the images.

    >>> dax.bitwise_or(np.array([[0, 255]], np.uint8), np.array([[0, 0]], np.uint8))
    array([[  0, 255]], dtype=uint8)
    """
    return apply_elements("DAXI_Or", first, second, types=_TYPES, out=out)


def bitwise_xor(first: ArrayLike, second: Union[ArrayLike, int], *, out: Optional[Array] = None) -> Array:
    """first ^ second: where two masks differ. uint8, uint16 or int16. `out` may be one of the images.

    >>> dax.bitwise_xor(np.array([[255, 255]], np.uint8), np.array([[255, 0]], np.uint8))
    array([[  0, 255]], dtype=uint8)
    """
    return apply_elements("DAXI_Xor", first, second, types=_TYPES, out=out)


def bitwise_not(image: ArrayLike, *, out: Optional[Array] = None) -> Array:
    """~image: the other pixels of a mask. uint8, uint16 or int16. `out` may be the image.

    >>> dax.bitwise_not(np.array([[0, 255]], np.uint8))
    array([[255,   0]], dtype=uint8)
    """
    return apply_elements("DAXI_Not", image, types=_TYPES, out=out)


def left_shift(image: ArrayLike, count: int, *, out: Optional[Array] = None) -> Array:
    """image << count, bits beyond the type dropped. uint8, uint16 or int16; count: 0 to the bits of the type less one.
    `out` may be the image.

    >>> dax.left_shift(np.array([[1, 255]], np.uint8), 4)
    array([[ 16, 240]], dtype=uint8)
    """
    return apply_elements("DAXI_LShiftC", image, parameters=(count,), types=_TYPES, out=out)


def right_shift(image: ArrayLike, count: int, *, out: Optional[Array] = None) -> Array:
    """image >> count; negative numbers are rounded down. uint8, uint16 or int16; count: 0 to the bits of the type less
    one. `out` may be the image.

    >>> dax.right_shift(np.array([[1023, 4]], np.uint16), 2)
    array([[255,   1]], dtype=uint16)
    """
    return apply_elements("DAXI_RShiftC", image, parameters=(count,), types=_TYPES, out=out)

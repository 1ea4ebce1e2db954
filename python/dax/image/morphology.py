"""Grey morphology: minima and maxima over rectangles, and what is made of the two."""
from typing import Optional

from numpy.typing import ArrayLike

from .._arrays import Array, Window
from .._filters import WindowMode
from ..pool import Pool
from ._gray_morphology import gray

__all__ = [
    "black_hat",
    "gray_close",
    "gray_dilate",
    "gray_erode",
    "gray_gradient",
    "gray_open",
    "top_hat",
]


def gray_erode(
    image: ArrayLike,
    window: Window = 3,
    *,
    anchor: Optional[tuple[int, int]] = None,
    iterations: int = 1,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The minimum over a window around each pixel.

    image: (height, width) uint8, uint16, int16 or float32. window: pixels each way, or (width, height), up to 32767.
    anchor: the (column, row) of the window that lies on the pixel, its centre if None. iterations: how many times.
    mode: what lies outside the image; clip: nothing. value: of mode constant. pool: threads.

    >>> dax.gray_erode(np.array([[5, 5, 9, 5, 5]], np.uint8), (2, 1))
    array([[5, 5, 5, 5, 5]], dtype=uint8)
    """
    return gray("GrayErodeRect", image, window, anchor, iterations, mode, value, out, pool)


def gray_dilate(
    image: ArrayLike,
    window: Window = 3,
    *,
    anchor: Optional[tuple[int, int]] = None,
    iterations: int = 1,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The maximum over a window around each pixel, turned by half a circle: what an erosion shifts by an even window,
    the dilation shifts back. Arguments as of gray_erode.

    >>> dax.gray_dilate(np.array([[5, 5, 9, 5, 5]], np.uint8), (3, 1))
    array([[5, 9, 9, 9, 5]], dtype=uint8)
    """
    return gray("GrayDilateRect", image, window, anchor, iterations, mode, value, out, pool)


def gray_open(
    image: ArrayLike,
    window: Window = 3,
    *,
    anchor: Optional[tuple[int, int]] = None,
    iterations: int = 1,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The dilation of the erosion: bright things in which the window does not fit vanish. Arguments as of gray_erode.

    >>> dax.gray_open(np.array([[5, 5, 9, 5, 8, 8, 8]], np.uint8), (3, 1))
    array([[5, 5, 5, 5, 8, 8, 8]], dtype=uint8)
    """
    return gray("GrayOpen", image, window, anchor, iterations, mode, value, out, pool)


def gray_close(
    image: ArrayLike,
    window: Window = 3,
    *,
    anchor: Optional[tuple[int, int]] = None,
    iterations: int = 1,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The erosion of the dilation: dark things in which the window does not fit vanish. Arguments as of gray_erode.

    >>> dax.gray_close(np.array([[5, 5, 1, 5, 2, 2, 2]], np.uint8), (3, 1))
    array([[5, 5, 5, 5, 2, 2, 2]], dtype=uint8)
    """
    return gray("GrayClose", image, window, anchor, iterations, mode, value, out, pool)


def gray_gradient(
    image: ArrayLike,
    window: Window = 3,
    *,
    anchor: Optional[tuple[int, int]] = None,
    iterations: int = 1,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The dilation less the erosion: edges of any direction. Arguments as of gray_erode.

    >>> dax.gray_gradient(np.array([[5, 5, 5, 9, 9, 9]], np.uint8), (3, 1))
    array([[0, 0, 4, 4, 0, 0]], dtype=uint8)
    """
    return gray("GrayGradient", image, window, anchor, iterations, mode, value, out, pool)


def top_hat(
    image: ArrayLike,
    window: Window = 3,
    *,
    anchor: Optional[tuple[int, int]] = None,
    iterations: int = 1,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """What an opening takes away: bright things smaller than the window, without the uneven ground. Arguments as of
    gray_erode.

    >>> dax.top_hat(np.array([[5, 5, 9, 5, 8, 8, 8]], np.uint8), (3, 1))
    array([[0, 0, 4, 0, 0, 0, 0]], dtype=uint8)
    """
    return gray("GrayTopHat", image, window, anchor, iterations, mode, value, out, pool)


def black_hat(
    image: ArrayLike,
    window: Window = 3,
    *,
    anchor: Optional[tuple[int, int]] = None,
    iterations: int = 1,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """What a closing fills in: dark things smaller than the window. Arguments as of gray_erode.

    >>> dax.black_hat(np.array([[5, 5, 1, 5, 2, 2, 2]], np.uint8), (3, 1))
    array([[0, 0, 4, 0, 0, 0, 0]], dtype=uint8)
    """
    return gray("GrayBlackHat", image, window, anchor, iterations, mode, value, out, pool)

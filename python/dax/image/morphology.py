"""Grey morphology: minima and maxima over rectangles, and what is made of the two."""
from typing import Any, Literal, Optional

from numpy.typing import ArrayLike

from .._arrays import Array, Window, as_size, choice
from .._interface import ffi
from .._library import call
from .._operation import apply
from ..pool import Pool

__all__ = ["black_hat", "gray_close", "gray_dilate", "gray_erode", "gray_gradient", "gray_open", "top_hat"]

Mode = Literal["clip", "constant", "replicate", "mirror", "symmetric", "wrap"]
_BORDERS = {"replicate": 0, "mirror": 1, "symmetric": 2, "wrap": 3, "constant": 4, "clip": 6}


def _gray(
    operation: str,
    image: ArrayLike,
    window: Window,
    anchor: Optional[tuple[int, int]],
    iterations: int,
    mode: Mode,
    value: float,
    out: Optional[Array],
    pool: Optional[Pool],
) -> Array:
    cfg, side = ffi.new("DaxiGrayMorphologyCfg*"), as_size(window)
    call("DAXI_GrayMorphologyDefaultCfg", cfg)
    column, row = (side["width"] // 2, side["height"] // 2) if anchor is None else anchor
    if anchor is not None and not (0 <= column < side["width"] and 0 <= row < side["height"]):
        raise ValueError(f"anchor: {anchor}, needed is a pixel (column, row) of the window {window}")
    cfg.window, cfg.anchorX, cfg.anchorY = side, column, row
    cfg.iterations, cfg.border, cfg.value = iterations, choice("mode", mode, _BORDERS), value
    form: dict[str, Any] = {"types": "8u 16u 16s 32f", "out": out}
    usual = (window in (3, (3, 3)), anchor, iterations, mode, pool) == (True, None, 1, "clip", None)
    if usual and operation.endswith("Rect"):
        return apply(f"DAXI_Gray{operation[:-4]}3x3_{{type}}_{{layout}}R", {"image": image}, **form)
    name, work = f"DAXI_Gray{operation}_{{type}}_{{layout}}R", f"DAXI_Gray{operation}BufferSize_{{type}}"
    form |= {"work": work, "measures": (cfg,), "pooled": name + "_MT", "pool": pool}
    return apply(name, {"image": image}, cfg, **form)


def gray_erode(
    image: ArrayLike,
    window: Window = 3,
    *,
    anchor: Optional[tuple[int, int]] = None,
    iterations: int = 1,
    mode: Mode = "clip",
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
    return _gray("ErodeRect", image, window, anchor, iterations, mode, value, out, pool)


def gray_dilate(
    image: ArrayLike,
    window: Window = 3,
    *,
    anchor: Optional[tuple[int, int]] = None,
    iterations: int = 1,
    mode: Mode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The maximum over a window around each pixel, turned by half a circle: what an erosion shifts by an even window,
    the dilation shifts back. Arguments as of gray_erode.

    >>> dax.gray_dilate(np.array([[5, 5, 9, 5, 5]], np.uint8), (3, 1))
    array([[5, 9, 9, 9, 5]], dtype=uint8)
    """
    return _gray("DilateRect", image, window, anchor, iterations, mode, value, out, pool)


def gray_open(
    image: ArrayLike,
    window: Window = 3,
    *,
    anchor: Optional[tuple[int, int]] = None,
    iterations: int = 1,
    mode: Mode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The dilation of the erosion: bright things in which the window does not fit vanish. Arguments as of gray_erode.

    >>> dax.gray_open(np.array([[5, 5, 9, 5, 8, 8, 8]], np.uint8), (3, 1))
    array([[5, 5, 5, 5, 8, 8, 8]], dtype=uint8)
    """
    return _gray("Open", image, window, anchor, iterations, mode, value, out, pool)


def gray_close(
    image: ArrayLike,
    window: Window = 3,
    *,
    anchor: Optional[tuple[int, int]] = None,
    iterations: int = 1,
    mode: Mode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The erosion of the dilation: dark things in which the window does not fit vanish. Arguments as of gray_erode.

    >>> dax.gray_close(np.array([[5, 5, 1, 5, 2, 2, 2]], np.uint8), (3, 1))
    array([[5, 5, 5, 5, 2, 2, 2]], dtype=uint8)
    """
    return _gray("Close", image, window, anchor, iterations, mode, value, out, pool)


def gray_gradient(
    image: ArrayLike,
    window: Window = 3,
    *,
    anchor: Optional[tuple[int, int]] = None,
    iterations: int = 1,
    mode: Mode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The dilation less the erosion: edges of any direction. Arguments as of gray_erode.

    >>> dax.gray_gradient(np.array([[5, 5, 5, 9, 9, 9]], np.uint8), (3, 1))
    array([[0, 0, 4, 4, 0, 0]], dtype=uint8)
    """
    return _gray("Gradient", image, window, anchor, iterations, mode, value, out, pool)


def top_hat(
    image: ArrayLike,
    window: Window = 3,
    *,
    anchor: Optional[tuple[int, int]] = None,
    iterations: int = 1,
    mode: Mode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """What an opening takes away: bright things smaller than the window, without the uneven ground. Arguments as of
    gray_erode.

    >>> dax.top_hat(np.array([[5, 5, 9, 5, 8, 8, 8]], np.uint8), (3, 1))
    array([[0, 0, 4, 0, 0, 0, 0]], dtype=uint8)
    """
    return _gray("TopHat", image, window, anchor, iterations, mode, value, out, pool)


def black_hat(
    image: ArrayLike,
    window: Window = 3,
    *,
    anchor: Optional[tuple[int, int]] = None,
    iterations: int = 1,
    mode: Mode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """What a closing fills in: dark things smaller than the window. Arguments as of gray_erode.

    >>> dax.black_hat(np.array([[5, 5, 1, 5, 2, 2, 2]], np.uint8), (3, 1))
    array([[0, 0, 4, 0, 0, 0, 0]], dtype=uint8)
    """
    return _gray("BlackHat", image, window, anchor, iterations, mode, value, out, pool)

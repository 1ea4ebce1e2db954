"""Statistics of the window around each pixel, as images."""
from typing import Any, Optional

from numpy.typing import ArrayLike

from .._arrays import Array, Window, as_size, choice
from .._filters import WINDOW_BORDERS, WindowMode
from .._interface import ffi
from .._library import call
from .._operation import apply
from ..pool import Pool

__all__ = ["local_entropy", "local_mean", "local_range", "local_std"]


def _local(
    statistic: str,
    types: str,
    image: ArrayLike,
    window: Window,
    mode: WindowMode,
    value: float,
    out: Optional[Array],
    pool: Optional[Pool],
) -> Array:
    cfg = ffi.new("DaxiLocalStatisticsCfg*")
    call("DAXI_LocalStatisticsDefaultCfg", cfg)
    cfg.window, cfg.border, cfg.value = as_size(window), choice("mode", mode, WINDOW_BORDERS), value
    name, work = f"DAXI_Local{statistic}_{{type}}_{{layout}}R", f"DAXI_Local{statistic}BufferSize_{{type}}"
    form: dict[str, Any] = {"work": work, "measures": (cfg,), "pooled": name + "_MT", "pool": pool, "out": out}
    return apply(name, {"image": image}, cfg, types=types, **form)


def local_mean(
    image: ArrayLike,
    window: Window = 9,
    *,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The mean of the window around each pixel, float32.

    image: (height, width) uint8, uint16 or float32. window: pixels each way, or (width, height), up to 32767; even ones
    reach one further to the left and up. mode: what lies outside the image; clip: nothing, windows shrink. value: of
    mode constant. pool: threads.

    >>> dax.local_mean(np.array([[1, 2, 6, 3]], np.uint8), (3, 1))
    array([[1.5      , 3.       , 3.6666667, 4.5      ]], dtype=float32)
    """
    return _local("Mean", "8u32f 16u32f 32f", image, window, mode, value, out, pool)


def local_std(
    image: ArrayLike,
    window: Window = 9,
    *,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The standard deviation of the window around each pixel, float32. Arguments as of local_mean.

    >>> dax.local_std(np.array([[1, 3, 3, 3]], np.uint8), (3, 1)).round(2)
    array([[1.  , 0.94, 0.  , 0.  ]], dtype=float32)
    """
    return _local("StdDev", "8u32f 16u32f 32f", image, window, mode, value, out, pool)


def local_entropy(
    image: ArrayLike,
    window: Window = 9,
    *,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The entropy of the grey levels in the window around each pixel in bits, float32.

    image: (height, width) uint8 or uint16. window: of at most 65536 pixels. Other arguments as of local_mean.

    >>> dax.local_entropy(np.array([[1, 1, 1, 7]], np.uint8), (2, 1))
    array([[0., 0., 0., 1.]], dtype=float32)
    """
    return _local("Entropy", "8u32f 16u32f", image, window, mode, value, out, pool)


def local_range(
    image: ArrayLike,
    window: Window = 9,
    *,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The greatest less the least pixel of the window around each pixel, of the image's type. Arguments as of
    local_mean.

    >>> dax.local_range(np.array([[1, 3, 8, 8]], np.uint8), (3, 1))
    array([[2, 7, 5, 0]], dtype=uint8)
    """
    return _local("Range", "8u 16u 32f", image, window, mode, value, out, pool)

"""Masks by a threshold of each pixel's own, and by two levels."""
from typing import Any, Literal, Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import Array, Window, as_size, choice, of_shape, refuse_overlap, source, target
from .._filters import WINDOW_BORDERS, WindowMode
from .._interface import ffi
from .._library import buffer, call
from ..pool import Pool, handle_of

__all__ = ["hysteresis", "threshold_local"]

Method = Literal["mean", "mean-variance", "niblack", "sauvola", "wolf", "bernsen", "gauss"]
Test = Literal["light", "dark", "equal", "not-equal"]
_METHODS = {"mean": 0, "mean-variance": 1, "niblack": 2, "sauvola": 3, "wolf": 4, "bernsen": 5, "gauss": 6}
_TESTS = {"light": 0, "dark": 1, "equal": 2, "not-equal": 3}
_GREYS = tuple(np.dtype(each) for each in (np.uint8, np.uint16, np.float32))
_OUTPUT = {"8u": "8u", "16u": "16u8u", "32f": "32f8u"}


def threshold_local(
    image: ArrayLike,
    method: Method = "mean",
    window: Window = 31,
    *,
    test: Test = "light",
    k: Optional[float] = None,
    r: Optional[float] = None,
    offset: Optional[float] = None,
    min_deviation: Optional[float] = None,
    min_contrast: Optional[float] = None,
    mask: Optional[ArrayLike] = None,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[NDArray[np.uint8]] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """255 where a pixel is light against the window around it, else 0.

    image: (height, width) uint8, uint16, or float32, whose greys the defaults take as 0..1. method: the threshold T
    from the window's mean m and deviation s: mean m, mean-variance m + k max(s, min_deviation), niblack m + k s,
    sauvola m (1 + k (s / r - 1)), wolf m - k (1 - s / greatest s) (m - least grey), bernsen the middle of least and
    greatest, where they are min_contrast apart, gauss the mean weighted by a Gaussian of k times the window's sides,
    a sixth where k is 0. test: light x >= T + offset, dark x <= T - offset, equal
    |x - T| <= offset, not-equal the rest. What is None has the default of the method and the type. mask: (height,
    width) uint8, pixels that may be set. window, mode, value, pool: as of local_mean.

    >>> dax.threshold_local(np.array([[90, 91, 60, 92, 93, 94]], np.uint8), window=(3, 1), test="dark")
    array([[  0,   0, 255,   0,   0,   0]], dtype=uint8)
    """
    src = source("image", image, _GREYS)
    dst = target("out", out, src.array.shape, np.uint8)
    chosen = None if mask is None else of_shape("mask", mask, src.array.shape)
    images = [("image", src), ("out", dst)] + ([] if chosen is None else [("mask", chosen)])
    refuse_overlap(*images)
    cfg = _cfg(src.suffix, method, window, test, mode, value)
    given = {"k": k, "r": r, "offset": offset, "minDeviation": min_deviation, "minContrast": min_contrast}
    for name, number in given.items():
        if number is not None:
            setattr(cfg, name, number)
    name, layout = _OUTPUT[src.suffix], "C1R" if chosen is None else "C1MR"
    planes = [src.pointer, src.step] + ([] if chosen is None else [chosen.pointer, chosen.step])
    arguments = [*planes, dst.pointer, dst.step, dst.size, cfg]
    if pool is None:
        work = buffer(f"DAXI_ThresholdLocalBufferSize_{name}", dst.size, cfg)
        call(f"DAXI_ThresholdLocal_{name}_{layout}", *arguments, work)
    else:
        threads, handle = handle_of(pool)
        work = buffer(f"DAXI_ThresholdLocalBufferSize_{name}_MT", dst.size, cfg, threads)
        call(f"DAXI_ThresholdLocal_{name}_{layout}_MT", handle, threads, *arguments, work)
    return dst.array


def _cfg(suffix: str, method: str, window: Window, test: str, mode: str, value: float) -> Any:
    cfg = ffi.new("DaxiThresholdLocalCfg*")
    call(f"DAXI_ThresholdLocalDefaultCfg_{suffix}", choice("method", method, _METHODS), cfg)
    cfg.mode, cfg.window = choice("test", test, _TESTS), as_size(window)
    cfg.border, cfg.value = choice("mode", mode, WINDOW_BORDERS), value
    return cfg


def hysteresis(
    image: ArrayLike,
    low: float,
    high: float,
    *,
    connectivity: Literal[4, 8] = 8,
    out: Optional[NDArray[np.uint8]] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """255 where a pixel above `low` hangs together with one above `high`, else 0.

    image: (height, width) uint8, uint16 or float32. connectivity: whether pixels hang together by their sides, 4, or by
    their corners too. pool: threads.

    >>> dax.hysteresis(np.array([[5, 9, 5, 1, 5, 5]], np.uint8), 3, 8)
    array([[255, 255, 255,   0,   0,   0]], dtype=uint8)
    """
    src = source("image", image, _GREYS)
    dst = target("out", out, src.array.shape, np.uint8)
    refuse_overlap(("image", src), ("out", dst))
    name = _OUTPUT[src.suffix]
    work = buffer(f"DAXI_ThresholdHysteresisBufferSize_{name}", dst.size)
    arguments = src.pointer, src.step, dst.pointer, dst.step, dst.size, low, high, connectivity, work
    if pool is None:
        call(f"DAXI_ThresholdHysteresis_{name}_C1R", *arguments)
    else:
        threads, handle = handle_of(pool)
        call(f"DAXI_ThresholdHysteresis_{name}_C1R_MT", handle, threads, *arguments)
    return dst.array

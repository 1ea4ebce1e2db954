"""Levels found in histograms, and masks by them."""
from typing import Any, Literal, NamedTuple, Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import Array, choice, numbers, refuse_overlap, source, target, warn, within
from .._interface import ffi
from .._library import buffer, call

__all__ = ["Levels", "find_levels", "threshold_global"]

Method = Literal["otsu", "kapur", "yen", "li", "kittler", "isodata", "intermodes", "triangle", "percentile"]
_METHODS = {
    "otsu": "Otsu",
    "kapur": "Kapur",
    "yen": "Yen",
    "li": "Li",
    "kittler": "Kittler",
    "isodata": "Isodata",
    "intermodes": "Intermodes",
    "triangle": "Triangle",
    "percentile": "Percentile",
}
_POLARITIES = {"bright": 0, "dark": 1, "auto": 2}
_UNSIGNED = tuple(np.dtype(each) for each in (np.uint8, np.uint16))


class Levels(NamedTuple):
    """A mask, the levels between its classes, whether its dark class is what is set, and the method's criterion."""

    image: Array
    levels: tuple[int, ...]
    dark: bool
    criterion: float


def find_levels(
    counts: ArrayLike, method: Method = "otsu", *, classes: int = 2, percentile: float = 50
) -> tuple[int, ...]:
    """The levels that split a histogram in classes: up to a level, and above it.

    counts: of the levels 0, 1, ..., whole numbers. classes: 2 to 4, of otsu; other methods have 2. percentile: of the
    method of that name, how many per cent of the pixels lie up to the level. Warns of a histogram with one occupied
    level, and of intermodes without two maxima, where the level is Otsu's.

    >>> dax.find_levels([0, 10, 12, 0, 0, 0, 9, 11])
    (2,)
    """
    hist = numbers("counts", counts, (None,), np.uint64)
    if not np.array_equal(hist, counts):
        raise ValueError("counts: needed are whole numbers from 0 on")
    level, cfg = ffi.new("DaxiHistLevel*"), _cfg(method, classes, percentile)
    name = _name(method, classes)
    work = (buffer("DAXI_HistLevelBufferSize_OtsuMulti", len(hist)),) if name == "OtsuMulti" else ()
    values = ffi.from_buffer("uint64_t[]", hist)
    call(f"DAXI_HistLevel_{name}", values, len(hist), ffi.addressof(cfg, "level"), level, *work)
    return _levels(level)


def threshold_global(
    image: ArrayLike,
    method: Method = "otsu",
    *,
    polarity: Literal["bright", "dark", "auto"] = "bright",
    classes: int = 2,
    percentile: float = 50,
    out: Optional[NDArray[np.uint8]] = None,
) -> Levels:
    """A mask by a level of the image's own histogram: 255 above it, 0 up to it; of several classes even greys.

    image: (height, width) uint8 or uint16. polarity: what is set, the bright or the dark class; auto: the one that
    fewer pixels of the image's frame belong to. classes, percentile: as of find_levels, with the same warnings.

    >>> dax.threshold_global(np.array([[100, 120, 9000, 9500]], np.uint16), "isodata").image
    array([[  0,   0, 255, 255]], dtype=uint8)
    """
    src = source("image", image, _UNSIGNED)
    dst = target("out", out, src.array.shape, np.uint8)
    refuse_overlap(("image", src), ("out", dst))
    level, cfg = ffi.new("DaxiHistLevel*"), _cfg(method, classes, percentile)
    cfg.polarity = choice("polarity", polarity, _POLARITIES)
    name = "OtsuMulti" if method == "otsu" and src.suffix == "8u" else _name(method, classes)
    work = buffer(f"DAXI_Threshold{'OtsuMulti' if name == 'OtsuMulti' else 'Global'}BufferSize_{src.suffix}")
    images = src.pointer, src.step, dst.pointer, dst.step, dst.size
    call(f"DAXI_Threshold{name}_{src.suffix}_C1R", *images, cfg, level, work)
    return Levels(dst.array, _levels(level), bool(level.flags & 8), level.criterion)


def _name(method: str, classes: int) -> str:
    return "OtsuMulti" if method == "otsu" and classes != 2 else choice("method", method, _METHODS)


def _cfg(method: str, classes: int, percentile: float) -> Any:
    if classes != 2 and method != "otsu":
        raise ValueError(f"classes: {method} has two")
    within("classes", classes, 2, 4)
    within("percentile", percentile, 0, 100)
    cfg = ffi.new("DaxiThresholdGlobalCfg*")
    call("DAXI_ThresholdGlobalDefaultCfg", cfg)
    cfg.level.classes, cfg.level.percentile = classes, percentile / 100
    return cfg


def _levels(level: Any) -> tuple[int, ...]:
    if level.flags & 1:
        warn(f"one level only, {level.level[0]}: there is nothing to split")
    elif level.flags & 4:
        warn(f"fewer levels than classes: {level.count + 1} classes")
    if level.flags & 2:
        warn("the histogram has no two maxima: the level is Otsu's")
    return tuple(level.level[0 : level.count])

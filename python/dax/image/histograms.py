"""Histograms and percentiles of images."""
from typing import Any, NamedTuple, Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import Array, Image, numbers, source
from .._interface import ffi
from .._library import buffer, call
from ..pool import Pool, handle_of
from .statistics import _TYPES, _WITHOUT_SIGN, _region

__all__ = ["Histogram", "histogram", "median", "percentiles"]


class Histogram(NamedTuple):
    """Pixels in each bin, the edges of the bins, and pixels that lie in none."""

    counts: NDArray[np.uint64]
    edges: Array
    below: int
    above: int
    nan: int


def histogram(
    image: ArrayLike,
    bins: int = 256,
    limits: Optional[tuple[float, float]] = None,
    *,
    edges: Optional[ArrayLike] = None,
    mask: Optional[ArrayLike] = None,
) -> Histogram:
    """How many pixels lie in each bin, of all, or of those where `mask` is not 0.

    image: uint8, uint16 or float32. limits: where the first bin begins and the last one ends; those of the type where
    not given, of floats 0 and 1. Or edges: bins + 1 ascending numbers. A bin has its lower edge, not its upper one, but
    for the last bin of floats.

    >>> dax.histogram(np.array([[0, 3, 4, 9]], np.uint8), 2, (0, 8))
    Histogram(counts=array([2, 1], dtype=uint64), edges=array([0., 4., 8.]), below=0, above=1, nan=0)
    """
    src = source("image", image, _WITHOUT_SIGN)
    layout, region, _kept = _region(src, mask, "C1")
    real = src.suffix == "32f"
    parameters: tuple[Any, ...]
    used: Array
    if edges is not None:
        used = numbers("edges", edges, (None,), np.float32 if real else np.int32)
        bins, kind = len(used) - 1, "Range"
        if bins < 1:
            raise ValueError("edges: two or more")
        parameters = ffi.cast("float*" if real else "int32_t*", used.ctypes.data), bins
    else:
        low, high = limits if limits is not None else (0, 1 if real else np.iinfo(src.array.dtype).max + 1)
        kind, parameters = "Even", (bins, low, high)
        if not 1 <= bins <= 65536:
            raise ValueError(f"bins: {bins}, possible are 1..65536")
        used = low + np.arange(bins + 1) * (high - low) / bins
    counts, outside = np.empty(bins, np.uint64), ffi.new("DaxiHistogramOutside*")
    name = f"DAXI_Histogram{kind}_{src.suffix}_{layout}"
    work = []
    if (kind, src.suffix) in (("Even", "16u"), ("Even", "32f"), ("Range", "16u")):
        work = [buffer(f"DAXI_Histogram{kind}BufferSize_{src.suffix}", bins)]
    call(name, *region, *parameters, ffi.cast("uint64_t*", counts.ctypes.data), outside, *work)
    return Histogram(counts, used, int(outside.below), int(outside.above), int(outside.nan))


def percentiles(
    image: ArrayLike, shares: ArrayLike, mask: Optional[ArrayLike] = None, *, pool: Optional[Pool] = None
) -> Array:
    """The pixels below which these shares (0..1) of the image lie; exact: of n pixels the one of rank ceil(share * n).

    image: uint8, uint16, int16 or float32, whose NaN do not count. mask: only pixels where it is not 0. pool: threads,
    but for uint8.

    >>> dax.percentiles(np.array([[7, 1, 5, 3]], np.uint8), [0, 0.5, 1])
    array([1, 3, 7], dtype=uint8)
    """
    src = source("image", image, _TYPES)
    layout, region, _kept = _region(src, mask, "C1")
    wanted = numbers("shares", shares, (None,), np.float64)
    values = np.empty(len(wanted), src.array.dtype)
    pointers = ffi.cast("double*", wanted.ctypes.data), len(wanted), ffi.cast(f"{src.ctype}*", values.ctypes.data)
    _select("Percentiles", src, layout, (*region, *pointers), pool)
    return values


def median(image: ArrayLike, mask: Optional[ArrayLike] = None, *, pool: Optional[Pool] = None) -> Any:
    """The pixel in the middle of the sorted image, of an even number the lower one.

    >>> dax.median(np.array([[7, 1, 5, 3]], np.uint8))
    3
    """
    src = source("image", image, _TYPES)
    layout, region, _kept = _region(src, mask, "C1")
    value = np.empty(1, src.array.dtype)
    _select("Median", src, layout, (*region, ffi.cast(f"{src.ctype}*", value.ctypes.data)), pool)
    return value[0].item()


def _select(name: str, src: Image, layout: str, arguments: tuple[Any, ...], pool: Optional[Pool]) -> None:
    function, query = f"DAXI_{name}_{src.suffix}_{layout}", f"DAXI_{name}BufferSize_{src.suffix}"
    threads, handle = handle_of(pool)
    if src.suffix == "8u":
        call(function, *arguments)
    elif pool is None:
        call(function, *arguments, buffer(query, src.size))
    else:
        call(function + "_MT", handle, threads, *arguments, buffer(query + "_MT", src.size, threads))

"""Pixels of a rank in windows: of any size, weighted, of crosses."""
from typing import Any, Optional

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, Window, as_size, choice, numbers, within
from .._filters import WINDOW_BORDERS, WindowMode
from .._interface import ffi
from .._library import call
from .._operation import Value, apply
from ..pool import Pool

__all__ = ["hybrid_median5x5", "median_filter", "rank_filter", "weighted_median3x3"]


def _filter(
    operation: str,
    image: ArrayLike,
    window: Window,
    rank: tuple[int, ...],
    mode: WindowMode,
    value: float,
    out: Optional[Array],
    pool: Optional[Pool],
) -> Array:
    size, name = as_size(window), f"DAXI_Filter{operation}_{{type}}_{{layout}}R"
    form: dict[str, Any] = {"types": "8u 16u 16s 32f", "pooled": name + "_MT", "pool": pool, "out": out}
    form |= {"work": f"DAXI_Filter{operation}BufferSize_{{type}}", "measures": (size,)}
    border = choice("mode", mode, WINDOW_BORDERS)
    return apply(name, {"image": image}, size, *rank, border, Value("value", value), **form)


def median_filter(
    image: ArrayLike,
    window: Window = 3,
    *,
    mode: WindowMode = "replicate",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The median of a window around each pixel, of an even number of pixels the upper of the two in the middle.

    image: (height, width) uint8, uint16, int16 or float32; NaN is ordered beyond infinity. window: pixels each way, or
    (width, height), up to 255. mode: what lies outside the image; clip: nothing. value: of mode constant. pool:
    threads.

    >>> dax.median_filter(np.array([[5, 90, 5, 5, 7, 5]], np.uint8), (3, 1))
    array([[5, 5, 5, 5, 5, 5]], dtype=uint8)
    """
    return _filter("Median", image, window, (), mode, value, out, pool)


def rank_filter(
    image: ArrayLike,
    window: Window = 3,
    *,
    percentile: Optional[float] = None,
    rank: Optional[int] = None,
    mode: WindowMode = "replicate",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The pixel of a rank among those of a window: 0 the minimum, or of a percentile in 0..1: 0 the minimum, 1 the
    maximum. One of the two is given. Other arguments as of median_filter.

    >>> dax.rank_filter(np.array([[5, 90, 5, 5, 7, 5]], np.uint8), (3, 1), rank=2)
    array([[90, 90, 90,  7,  7,  7]], dtype=uint8)
    """
    if (percentile is None) == (rank is None):
        raise ValueError("percentile, rank: needed is one of the two")
    if percentile is not None:
        within("percentile", percentile, 0, 1)
        found = ffi.new("int32_t*")
        call("DAXI_RankFromPercentile", percentile, as_size(window), found)
        rank = int(found[0])
    assert rank is not None
    return _filter("Rank", image, window, (rank,), mode, value, out, pool)


def weighted_median3x3(
    image: ArrayLike,
    weights: ArrayLike,
    *,
    mode: WindowMode = "replicate",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The median of 3 x 3 pixels, each of which counts as often as its weight says; of two in the middle the lower.

    weights: (3, 3) integers 0..255, not all 0. Other arguments as of median_filter.

    >>> dax.weighted_median3x3(np.eye(3, dtype=np.uint8), [[1, 1, 1], [1, 9, 1], [1, 1, 1]])
    array([[1, 0, 0],
           [0, 1, 0],
           [0, 0, 1]], dtype=uint8)
    """
    given = numbers("weights", weights, (3, 3), np.float64)
    if not ((given >= 0) & (given <= 255) & (given == np.floor(given))).all():
        raise ValueError("weights: needed are integers of 0..255")
    cells = ffi.from_buffer("uint8_t[]", given.astype(np.uint8).tobytes())
    name = "DAXI_FilterMedianWeighted3x3_{type}_{layout}R"
    form: dict[str, Any] = {"types": "8u 16u 16s 32f", "out": out, "pooled": name + "_MT", "pool": pool}
    return apply(name, {"image": image}, cells, choice("mode", mode, WINDOW_BORDERS), Value("value", value), **form)


def hybrid_median5x5(
    image: ArrayLike,
    *,
    mode: WindowMode = "replicate",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The median of three: of the pixels of an upright cross of 5 x 5, of those of a diagonal one, and the pixel
    itself. It keeps the thin lines and corners that a median takes away. Arguments as of median_filter.

    >>> dax.hybrid_median5x5(np.eye(5, dtype=np.uint8)).trace()
    5
    """
    name = "DAXI_FilterMedianHybrid5x5_{type}_{layout}R"
    form: dict[str, Any] = {"types": "8u 16u 16s 32f", "out": out, "pooled": name + "_MT", "pool": pool}
    return apply(name, {"image": image}, choice("mode", mode, WINDOW_BORDERS), Value("value", value), **form)

"""Numbers about images: sums, means, extremes, norms, projections, integral images, moments."""
from typing import Any, Literal, NamedTuple, Optional, Union

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import PIXELS, Array, Image, choice, of_shape, source
from .._interface import ffi
from .._library import buffer, call
from ..pool import Pool, handle_of

__all__ = [
    "MeanStd",
    "MinMax",
    "Moments",
    "count_in_range",
    "integral",
    "mean_std",
    "mean_value",
    "min_max",
    "moments",
    "norm",
    "norm_of_difference",
    "pixel_sum",
    "project_columns",
    "project_rows",
]

_DTYPES = {suffix: dtype for dtype, (suffix, _) in PIXELS.items()}
_TYPES = tuple(_DTYPES[each] for each in ("8u", "16u", "16s", "32f"))
_NORMS = {"l1": "L1", "l2": "L2", "inf": "Inf"}
_WITHOUT_SIGN = tuple(_DTYPES[each] for each in ("8u", "16u", "32f"))

Values = Union[float, NDArray[np.float64]]


class MeanStd(NamedTuple):
    """Mean and standard deviation of the population; of colour images for each channel."""

    mean: Values
    std: Values


class MinMax(NamedTuple):
    """Extremes and their first places (x, y) in raster order; of colour images for each channel."""

    min: Any
    max: Any
    min_at: Array
    max_at: Array


class Moments(NamedTuple):
    """Moments of grey values. Raw ones (m..) and those about the centroid (x, y), as they are (mu..) and normalised
    (nu..); mpq is the sum of x**p y**q value. hu: Hu's seven invariants under shifts, turns and scale."""

    m00: float
    m10: float
    m01: float
    m20: float
    m11: float
    m02: float
    m30: float
    m21: float
    m12: float
    m03: float
    x: float
    y: float
    mu20: float
    mu11: float
    mu02: float
    mu30: float
    mu21: float
    mu12: float
    mu03: float
    nu20: float
    nu11: float
    nu02: float
    nu30: float
    nu21: float
    nu12: float
    nu03: float
    hu: NDArray[np.float64]


def _region(src: Image, mask: Optional[ArrayLike], layout: str) -> tuple[str, tuple[Any, ...], Optional[Image]]:
    """The layout of a C name with or without a mask, the arguments up to the size, and the mask, to be kept alive."""
    if mask is None:
        return f"{layout}R", (src.pointer, src.step, src.size), None
    chosen = of_shape("mask", mask, src.array.shape[:2])
    return f"{layout}MR", (src.pointer, src.step, chosen.pointer, chosen.step, src.size), chosen


def _values(function: str, image: ArrayLike, mask: Optional[ArrayLike], results: int) -> list[Values]:
    """Calls a function whose results have a number for each channel."""
    src = source("image", image, _TYPES, "C1 C3")
    layout, region, kept = _region(src, mask, src.layout)
    made = [np.empty(int(src.layout[1])) for _ in range(results)]
    call(f"DAXI_{function}_{src.suffix}_{layout}", *region, *(ffi.cast("double*", each.ctypes.data) for each in made))
    del kept
    return [float(each[0]) if src.layout == "C1" else each for each in made]


def pixel_sum(image: ArrayLike, mask: Optional[ArrayLike] = None) -> Values:
    """The sum of all pixels, or of those where `mask` is not 0; of a colour image (height, width, 3) one for each
    channel.

    Integers are added exactly, floats in double precision, in an order that does not depend on the machine.

    >>> dax.pixel_sum(np.array([[1, 2], [3, 250]], np.uint8))
    256.0
    """
    return _values("Sum", image, mask, 1)[0]


def mean_value(image: ArrayLike, mask: Optional[ArrayLike] = None) -> Values:
    """The mean of all pixels, or of those where `mask` is not 0; of a colour image one for each channel.

    >>> dax.mean_value(np.array([[1, 2], [3, 250]], np.uint8))
    64.0
    """
    return _values("Mean", image, mask, 1)[0]


def mean_std(image: ArrayLike, mask: Optional[ArrayLike] = None) -> MeanStd:
    """Mean and standard deviation (of the population) of all pixels, or of those where `mask` is not 0.

    >>> dax.mean_std(np.array([[1, 3], [5, 7]], np.uint8))
    MeanStd(mean=4.0, std=2.23606797749979)
    """
    return MeanStd(*_values("MeanStdDev", image, mask, 2))


def min_max(image: ArrayLike, mask: Optional[ArrayLike] = None) -> MinMax:
    """The least and the greatest pixel, and where they come first; NaN is passed over.

    >>> dax.min_max(np.array([[4, 1], [9, 1]], np.uint8))
    MinMax(min=1, max=9, min_at=array([1, 0], dtype=int32), max_at=array([0, 1], dtype=int32))
    """
    src = source("image", image, _TYPES, "C1 C3")
    layout, region, kept = _region(src, mask, src.layout)
    channels = int(src.layout[1])
    values, places = np.empty((2, channels), src.array.dtype), np.empty((2, channels, 2), np.int32)
    pointers = [ffi.cast(f"{src.ctype}*", row.ctypes.data) for row in values]
    pointers += [ffi.cast("DaxiPoint32s*", row.ctypes.data) for row in places]
    call(f"DAXI_MinMax_{src.suffix}_{layout}", *region, *pointers)
    del kept
    if src.layout == "C1":
        return MinMax(values[0, 0].item(), values[1, 0].item(), places[0, 0], places[1, 0])
    return MinMax(*values, *places)


def count_in_range(image: ArrayLike, low: float, high: float, mask: Optional[ArrayLike] = None) -> int:
    """The number of pixels with low <= pixel <= high, which are numbers of the image's type.

    >>> dax.count_in_range(np.array([[4, 1], [9, 1]], np.uint8), 1, 4)
    3
    """
    src = source("image", image, _TYPES)
    layout, region, _kept = _region(src, mask, "C1")
    count = ffi.new("uint64_t*")
    call(f"DAXI_CountInRange_{src.suffix}_{layout}", *region, low, high, count)
    return int(count[0])


def norm(image: ArrayLike, kind: Literal["l1", "l2", "inf"] = "l2", mask: Optional[ArrayLike] = None) -> float:
    """The sum of magnitudes (l1), the root of the sum of squares (l2), or the largest magnitude (inf).

    >>> dax.norm(np.array([[3, -4]], np.int16))
    5.0
    """
    src = source("image", image, _TYPES)
    layout, region, _kept = _region(src, mask, "C1")
    value = ffi.new("double*")
    call(f"DAXI_Norm{choice('kind', kind, _NORMS)}_{src.suffix}_{layout}", *region, value)
    return float(value[0])


def norm_of_difference(
    first: ArrayLike, second: ArrayLike, kind: Literal["l1", "l2", "inf"] = "l2", mask: Optional[ArrayLike] = None
) -> float:
    """The norm of the difference of two images of one shape and type.

    >>> dax.norm_of_difference(np.array([[3, 10]], np.uint8), np.array([[5, 9]], np.uint8), "inf")
    2.0
    """
    one = source("first", first, _TYPES)
    other = of_shape("second", second, one.array.shape, (one.array.dtype,))
    layout, region, _kept = _region(one, mask, "C1")
    value = ffi.new("double*")
    name = f"DAXI_NormDiff{choice('kind', kind, _NORMS)}_{one.suffix}_{layout}"
    call(name, one.pointer, one.step, other.pointer, other.step, *region[2:], value)
    return float(value[0])


def _project(function: str, image: ArrayLike, axis: int) -> NDArray[np.float64]:
    src = source("image", image, _TYPES)
    sums = np.empty(src.array.shape[axis])
    call(f"{function}_{src.suffix}_C1R", src.pointer, src.step, src.size, ffi.cast("double*", sums.ctypes.data))
    return sums


def project_rows(image: ArrayLike) -> NDArray[np.float64]:
    """The sum of each row.

    >>> dax.project_rows(np.array([[4, 1], [9, 1]], np.uint8))
    array([ 5., 10.])
    """
    return _project("DAXI_ProjectRows", image, 0)


def project_columns(image: ArrayLike) -> NDArray[np.float64]:
    """The sum of each column.

    >>> dax.project_columns(np.array([[4, 1], [9, 1]], np.uint8))
    array([13.,  2.])
    """
    return _project("DAXI_ProjectColumns", image, 1)


def integral(
    image: ArrayLike,
    *,
    squared: bool = False,
    wide: bool = False,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The integral image: one row and one column larger, each pixel the sum of what lies above and left of it.

    Exact for integers: uint32 for uint8 (`wide` or `squared`: uint64), uint64 for uint16, int64 for int16 (`squared`:
    uint64); float64 for float32. squared: sums of squares. pool: threads.

    >>> dax.integral(np.array([[1, 2], [3, 4]], np.uint8))
    array([[ 0,  0,  0],
           [ 0,  1,  3],
           [ 0,  4, 10]], dtype=uint32)
    """
    src = source("image", image, _TYPES)
    result = {
        "8u": "64u" if wide or squared else "32u",
        "16u": "64u",
        "16s": "64u" if squared else "64s",
        "32f": "64f",
    }[src.suffix]
    dtype = {"32u": np.uint32, "64u": np.uint64, "64s": np.int64, "64f": np.float64}[result]
    height, width = src.array.shape
    array = np.empty((height + 1, width + 1), dtype) if out is None else out
    if (
        array.shape != (height + 1, width + 1)
        or array.dtype != dtype
        or not array.flags.c_contiguous
        or not array.flags.writeable
    ):
        raise ValueError(f"out: needs {(height + 1, width + 1)} adjacent writable pixels of {np.dtype(dtype)}")
    if np.may_share_memory(array, src.array):
        raise ValueError("out and image overlap")
    ctype = {"32u": "uint32_t*", "64u": "uint64_t*", "64s": "int64_t*", "64f": "double*"}[result]
    name = f"DAXI_Integral{'Sqr' if squared else ''}_{src.suffix}{result}_C1R"
    images = src.pointer, src.step, ffi.cast(ctype, array.ctypes.data), width + 1, src.size
    if pool is None:
        call(name, *images)
    else:
        threads, handle = handle_of(pool)
        call(name + "_MT", handle, threads, *images)
    return array


def moments(image: ArrayLike, *, pool: Optional[Pool] = None) -> Moments:
    """Moments of the grey values of an image of uint8, uint16 or float32; a mask of 0 and 1 gives those of its shape.
    pool: sums up bands of rows.

    >>> found = dax.moments(np.array([[0, 1, 1, 0]], np.uint8))
    >>> found.x, found.y, found.mu20
    (1.5, 0.0, 0.5)
    """
    src = source("image", image, _WITHOUT_SIGN)
    found = ffi.new("DaxiMoments*")
    name, arguments = f"DAXI_Moments_{src.suffix}_C1R", (src.pointer, src.step, src.size, found)
    if pool is None:
        call(name, *arguments)
    else:
        threads, handle = handle_of(pool)
        work = buffer(f"DAXI_MomentsBufferSize_{src.suffix}_MT", src.size)
        call(name + "_MT", handle, threads, *arguments, work)
    values: dict[str, Any] = {name: float(getattr(found, name)) for name in Moments._fields[:-1]}
    values["hu"] = np.array(list(found.hu))
    return Moments(**values)

"""Image filters: borders, thresholds, sums, median, erosion.

An image is a two-dimensional array, row after row. Inputs are read through any strides (rows whose pixels are not
adjacent are copied first). `out` receives the result and is returned; it is written where it lies, so its rows need
adjacent pixels and one stride downwards, as slices of a larger image have. Results are the same to the last bit on
every machine.
"""
from typing import Literal, NamedTuple, Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._arrays import refuse_overlap, source, target
from ._interface import ffi
from ._library import buffer, call
from .pool import Pool, handle_of

_BORDERS = {"constant": "Const", "replicate": "Replicate", "mirror": "Mirror", "symmetric": "Symmetric", "wrap": "Circular"}
_METHODS = {"copy": 1, "single": 2, "band": 3, "otsu": 4, "soft": 5, "relative-soft": 6}


def copy_border(
    image: ArrayLike,
    top: int,
    bottom: int,
    left: int,
    right: int,
    mode: Literal["constant", "replicate", "mirror", "symmetric", "wrap"] = "replicate",
    value: complex = 0,
    out: Optional[NDArray] = None,
) -> NDArray:
    """The image with a border around it.

    image: (height, width), any of the nine pixel types. top, bottom, left, right: pixels, at least 0.
    mode: constant (`value`), replicate (a a|a b c), mirror (c b|a b c), symmetric (b a|a b c), wrap (b c|a b c).
    Returns (top + height + bottom, left + width + right) of the image's type.

    >>> dax.copy_border(np.array([[1, 2, 3]], np.uint8), 0, 0, 2, 2, "symmetric")
    array([[2, 1, 1, 2, 3, 3, 2]], dtype=uint8)
    """
    if mode not in _BORDERS:
        raise ValueError(f"mode: {mode!r}, possible are " + ", ".join(_BORDERS))
    src = source("image", image)
    height, width = src.array.shape
    if min(top, bottom, left, right) < 0:
        raise ValueError("top, bottom, left, right: at least 0")
    dst = target("out", out, (top + height + bottom, left + width + right), src.array.dtype)
    refuse_overlap(("image", src), ("out", dst))
    call(
        f"DAXI_Copy{_BORDERS[mode]}Border_{src.suffix}_C1R",
        *(src.pointer, src.step, src.size, dst.pointer, dst.step, dst.size, top, left),
        *(_pixel_value(value, src.array.dtype) if mode == "constant" else ()),
    )
    return dst.array


def _pixel_value(value, dtype):
    if dtype.kind == "c":
        return float(np.real(value)), float(np.imag(value))
    if dtype.kind == "f":
        return (float(value),)
    limits = np.iinfo(dtype)
    if not limits.min <= value <= limits.max:
        raise ValueError(f"value: {value} is no {dtype}")
    return (int(value),)


def _images(src, dst):
    """The arguments of a filter from one image to another."""
    return src.pointer, src.step, dst.pointer, dst.step, dst.size


class Thresholded(NamedTuple):
    """A binarised image and the levels that were applied."""

    image: NDArray
    low: int
    high: int


def threshold(
    image: ArrayLike,
    method: Literal["copy", "single", "band", "otsu", "soft", "relative-soft"] = "otsu",
    *,
    inverted: bool = False,
    low: int = 0,
    high: int = 255,
    soft: int = 0,
    tails: tuple[float, float] = (0.05, 0.05),
    positions: tuple[float, float] = (0.4, 0.6),
    out: Optional[NDArray] = None,
) -> Thresholded:
    """Binarises an 8-bit image: 255 where it is bright, 0 where it is dark; `inverted` the other way round.

    single: bright is at least `low`. band: bright is `low` to `high`. otsu: bright is at least Otsu's level, which is
    returned. soft: `soft` grey levels between `low` and `high`. relative-soft: the same between levels found in the
    histogram: `tails` are the shares of darkest and brightest pixels left out, `positions` the ends of the ramp between
    the levels found (0..1). `out` may be the image itself.

    >>> dax.threshold(np.array([[10, 12, 200, 210]], np.uint8))
    Thresholded(image=array([[  0, 255, 255, 255]], dtype=uint8), low=12, high=12)
    """
    if method not in _METHODS:
        raise ValueError(f"method: {method!r}, possible are " + ", ".join(_METHODS))
    src = source("image", image, (np.dtype(np.uint8),))
    dst = target("out", out, src.array.shape, np.uint8)
    if method == "band" and inverted:
        call("DAXI_ThresholdBin_out_range_is_255_NEON", *_images(src, dst), low, high)
        return Thresholded(dst.array, low, high)
    cfg = ffi.new(
        "DaxiThresholdBinCfg*",
        {
            "method": _METHODS[method],
            # A ramp that rises has polarity 1.
            "polarity": int(inverted != (method in ("soft", "relative-soft"))),
            "darkTail": tails[0],
            "brightTail": tails[1],
            "lowPos": positions[0],
            "highPos": positions[1],
            "soft": soft,
            "softLow": low,
            "softHigh": high,
            "t1": low,
            "t2": high,
        },
    )
    levels = ffi.new("uint8_t[2]")
    call("DAXI_ThresholdBinV2_8u_C1R", *_images(src, dst), cfg, levels, levels + 1)
    return Thresholded(dst.array, levels[0], levels[1])


def otsu(image: ArrayLike, out: Optional[NDArray] = None) -> NDArray[np.uint8]:
    """Two classes by Otsu's level: 255 strictly above it. `out` may be the image itself.

    >>> dax.otsu(np.array([[10, 12, 200, 210]], np.uint8))
    array([[  0,   0, 255, 255]], dtype=uint8)
    """
    src = source("image", image, (np.dtype(np.uint8),))
    dst = target("out", out, src.array.shape, np.uint8)
    np.copyto(dst.array, src.array)
    call("DAXI_AdpThresholdOtsu_8u_C1IR", dst.pointer, dst.step, dst.size)
    return dst.array


_SUMS = {"uint8": ("8u32s", np.int32), "int16": ("16s32f", np.float32), "int32": ("32s", np.int32), "float32": ("32f", np.float32)}


def box_sum(image: ArrayLike, radius: int, out: Optional[NDArray] = None) -> NDArray:
    """Sums over squares of 2 radius + 1 pixels, clipped to the image.

    image: uint8, int16, int32 or float32 of more than 2 radius pixels each way. Returns int32 for uint8 and int32 (sums
    wrap), float32 for int16 and float32.

    >>> dax.box_sum(np.ones((5, 5), np.float32), 1)[:2, :2]
    array([[4., 6.],
           [6., 9.]], dtype=float32)
    """
    src = source("image", image, tuple(np.dtype(name) for name in _SUMS))
    suffix, dtype = _SUMS[src.array.dtype.name]
    dst = target("out", out, src.array.shape, dtype)
    refuse_overlap(("image", src), ("out", dst))
    work = buffer(f"DAXI_FilterBoxBufferSize_{suffix}", src.size)
    call(f"DAXI_FilterBox_{suffix}_C1R", *_images(src, dst), radius, work)
    return dst.array


_MEDIANS = tuple(np.dtype(name) for name in ("uint8", "uint16", "int16", "float32", "float64"))


def median3x3(image: ArrayLike, out: Optional[NDArray] = None, pool: Optional[Pool] = None) -> NDArray:
    """Exact median of 3 x 3 pixels, the edge replicated. NaN is ordered beyond infinity.

    image: uint8, uint16, int16, float32 or float64, at least 3 x 3. pool: for uint8, works in bands.

    >>> dax.median3x3(np.eye(3, dtype=np.uint8))
    array([[1, 0, 0],
           [0, 0, 0],
           [0, 0, 1]], dtype=uint8)
    """
    src = source("image", image, _MEDIANS)
    dst = target("out", out, src.array.shape, src.array.dtype)
    refuse_overlap(("image", src), ("out", dst))
    if pool is not None and src.suffix == "8u":
        threads, handle = handle_of(pool)
        call("DAXI_FilterMedian3x3_8u_C1R_NEON_MT", handle, threads, *_images(src, dst))
    else:
        call(f"DAXI_FilterMedian3x3_{src.suffix}_C1R", *_images(src, dst))
    return dst.array


def erode3x3(mask: ArrayLike, iterations: int = 1, out: Optional[NDArray] = None) -> NDArray[np.uint8]:
    """One-sided erosion of a mask by 3-pixel passes along rows and columns: a run loses its last pixel.

    mask: uint8, not 0 is set. iterations: at least 1. `out` may be the mask itself.

    >>> dax.erode3x3(np.array([[0, 0, 0], [0, 255, 255], [0, 255, 255], [0, 0, 0]], np.uint8)[:, [0, 1, 2, 0]])[1]
    array([  0, 255,   0,   0], dtype=uint8)
    """
    src = source("mask", mask, (np.dtype(np.uint8),))
    dst = target("out", out, src.array.shape, np.uint8)
    work = buffer("DAXI_Erode3x3BufferSize_8u", src.size)
    call("DAXI_Erode3x3_8u_C1R", *_images(src, dst), iterations, work)
    return dst.array

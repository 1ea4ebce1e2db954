"""Image filters: borders, thresholds, sums, means, median, erosion.

An image is a two-dimensional array, row after row. Inputs are read through any strides (rows whose pixels are not
adjacent are copied first). `out` receives the result and is returned; it is written where it lies, so its rows need
adjacent pixels and one stride downwards, as slices of a larger image have. Results are the same to the last bit on
every machine.
"""
from typing import Any, Literal, NamedTuple, Optional, Union

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._arrays import BYTES, Array, Image, choice, of_shape, pair, refuse_overlap, source, target
from ._interface import ffi
from ._library import buffer, call, memory
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
    out: Optional[Array] = None,
) -> Array:
    """The image with a border around it.

    image: (height, width), any of the nine pixel types. top, bottom, left, right: pixels, at least 0.
    mode: constant (`value`), replicate (a a|a b c), mirror (c b|a b c), symmetric (b a|a b c), wrap (b c|a b c).
    Returns (top + height + bottom, left + width + right) of the image's type.

    >>> dax.copy_border(np.array([[1, 2, 3]], np.uint8), 0, 0, 2, 2, "symmetric")
    array([[2, 1, 1, 2, 3, 3, 2]], dtype=uint8)
    """
    name = choice("mode", mode, _BORDERS)
    src = source("image", image)
    height, width = src.array.shape
    if min(top, bottom, left, right) < 0:
        raise ValueError("top, bottom, left, right: at least 0")
    dst = target("out", out, (top + height + bottom, left + width + right), src.array.dtype)
    refuse_overlap(("image", src), ("out", dst))
    call(
        f"DAXI_Copy{name}Border_{src.suffix}_C1R",
        *(src.pointer, src.step, src.size, dst.pointer, dst.step, dst.size, top, left),
        *(_pixel_value(value, src.array.dtype) if mode == "constant" else ()),
    )
    return dst.array


def _pixel_value(value: complex, dtype: "np.dtype[Any]") -> tuple[float, ...]:
    if dtype.kind == "c":
        return float(value.real), float(value.imag)
    if dtype.kind == "f":
        return (float(value.real),)
    limits = np.iinfo(dtype)
    if not limits.min <= value.real <= limits.max or value.imag:
        raise ValueError(f"value: {value} is no {dtype}")
    return (int(value.real),)


def _images(src: Image, dst: Image) -> tuple[Any, ...]:
    """The arguments of a filter from one image to another."""
    return src.pointer, src.step, dst.pointer, dst.step, dst.size


class Thresholded(NamedTuple):
    """A binarised image and the levels that were applied."""

    image: Array
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
    out: Optional[Array] = None,
) -> Thresholded:
    """Binarises an 8-bit image: 255 where it is bright, 0 where it is dark; `inverted` the other way round.

    single: bright is at least `low`. band: bright is `low` to `high`. otsu: bright is at least Otsu's level, which is
    returned. soft: `soft` grey levels between `low` and `high`. relative-soft: the same between levels found in the
    histogram: `tails` are the shares of darkest and brightest pixels left out, `positions` the ends of the ramp between
    the levels found (0..1). `out` may be the image itself.

    >>> dax.threshold(np.array([[10, 12, 200, 210]], np.uint8))
    Thresholded(image=array([[  0, 255, 255, 255]], dtype=uint8), low=12, high=12)
    """
    code = choice("method", method, _METHODS)
    src = source("image", image, BYTES)
    dst = target("out", out, src.array.shape, np.uint8)
    refuse_overlap(("image", src), ("out", dst), in_place=True)
    if method == "band" and inverted:
        call("DAXI_ThresholdBin_out_range_is_255_NEON", *_images(src, dst), low, high)
        return Thresholded(dst.array, low, high)
    cfg = ffi.new(
        "DaxiThresholdBinCfg*",
        {
            "method": code,
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


def otsu(image: ArrayLike, out: Optional[Array] = None) -> NDArray[np.uint8]:
    """Two classes by Otsu's level: 255 strictly above it. `out` may be the image itself.

    >>> dax.otsu(np.array([[10, 12, 200, 210]], np.uint8))
    array([[  0,   0, 255, 255]], dtype=uint8)
    """
    src = source("image", image, BYTES)
    dst = target("out", out, src.array.shape, np.uint8)
    np.copyto(dst.array, src.array)
    call("DAXI_AdpThresholdOtsu_8u_C1IR", dst.pointer, dst.step, dst.size)
    return dst.array


def soft_weights(image: ArrayLike, low: int, high: int, soft: int = 254, out: Optional[Array] = None) -> NDArray[np.float32]:
    """How bright pixels are between two levels, as weights: 0 up to `low`, 1 from `high` on, and `soft` (0..254) steps in
    between.

    image: (height, width) uint8. 0 <= low < high <= 255.

    >>> dax.soft_weights(np.array([[10, 20, 25, 30]], np.uint8), 20, 30, soft=1)
    array([[0. , 0. , 0.5, 1. ]], dtype=float32)
    """
    src = source("image", image, BYTES)
    dst = target("out", out, src.array.shape, np.float32)
    refuse_overlap(("image", src), ("out", dst))
    call("DAXI_ThresholdSoftBin_8u32f_C1R", *_images(src, dst), low, high, soft)
    return dst.array


def relative_soft_weights(
    image: ArrayLike,
    tails: tuple[float, float] = (0.05, 0.05),
    positions: tuple[float, float] = (0.4, 0.6),
    soft: int = 254,
    out: Optional[Array] = None,
) -> NDArray[np.float32]:
    """As `soft_weights`, between levels found in the histogram: `tails` are the shares of darkest and brightest pixels
    left out, `positions` the ends of the ramp between the levels found (0..1).

    >>> dax.relative_soft_weights(np.array([[10, 20, 25, 30]], np.uint8), (0, 0), (0, 1), soft=3)
    array([[0.  , 0.5 , 0.75, 1.  ]], dtype=float32)
    """
    src = source("image", image, BYTES)
    dst = target("out", out, src.array.shape, np.float32)
    refuse_overlap(("image", src), ("out", dst))
    call("DAXI_ThresholdRelativeSoft_8u32f_C1R", *_images(src, dst), *tails, *positions, soft)
    return dst.array


def invert(image: ArrayLike, out: Optional[Array] = None) -> NDArray[np.uint8]:
    """255 minus each pixel. `out` may be the image itself.

    >>> dax.invert(np.array([[0, 1, 255]], np.uint8))
    array([[255, 254,   0]], dtype=uint8)
    """
    src = source("image", image, BYTES)
    dst = target("out", out, src.array.shape, np.uint8)
    refuse_overlap(("image", src), ("out", dst), in_place=True)
    call("DAXI_ThresholdBin_0to255_8u_C1R_NEON", *_images(src, dst))
    return dst.array


def add(first: ArrayLike, second: ArrayLike, out: Optional[Array] = None) -> NDArray[np.uint8]:
    """Sum of two uint8 images of one shape, 255 where it is above. `out` may be one of the images.

    >>> dax.add(np.array([[1, 200]], np.uint8), np.array([[2, 100]], np.uint8))
    array([[  3, 255]], dtype=uint8)
    """
    one = source("first", first, BYTES)
    two = of_shape("second", second, one.array.shape)
    dst = target("out", out, one.array.shape, np.uint8)
    refuse_overlap(("first", one), ("out", dst), in_place=True)
    refuse_overlap(("second", two), ("out", dst), in_place=True)
    call("DAXI_Add_8u_C1RSfs_IS", one.pointer, one.step, two.pointer, two.step, dst.pointer, dst.step, dst.size, _FASTEST)
    return dst.array


_FASTEST = 100  # the vector kernels where there are some

_SUMS = {
    "uint8": ("8u32s", np.int32),
    "int16": ("16s32f", np.float32),
    "int32": ("32s", np.int32),
    "float32": ("32f", np.float32),
}


def box_sum(image: ArrayLike, radius: int, out: Optional[Array] = None) -> Array:
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


_REALS = tuple(np.dtype(name) for name in ("uint8", "uint16", "int16", "float32", "float64"))
Window = Union[int, tuple[int, int]]


def mean(image: ArrayLike, window: Window = 3, out: Optional[Array] = None, pool: Optional[Pool] = None) -> Array:
    """Mean over windows, the image going on symmetrically beyond its edges (b a|a b c).

    image: (height, width) uint8, uint16, int16, float32 or float64. window: pixels each way, or (width, height), at most
    as large as the image, for uint8 at most 255. Even windows reach one pixel further left and up. Integers are rounded.
    pool: for uint8, works in bands.

    >>> dax.mean(np.array([[0, 0, 30], [0, 0, 30], [0, 0, 30]], np.uint8), (3, 1))
    array([[ 0, 10, 20],
           [ 0, 10, 20],
           [ 0, 10, 20]], dtype=uint8)
    """
    src = source("image", image, _REALS)
    dst = target("out", out, src.array.shape, src.array.dtype)
    refuse_overlap(("image", src), ("out", dst))
    threads, handle = handle_of(pool)
    mask = as_size(window)
    if src.suffix == "8u":
        # This query checks the window before the size; the call has the order of all images.
        sides = dst.size["width"], dst.size["height"]
        fits = 0 < mask["width"] <= min(255, sides[0]) and 0 < mask["height"] <= min(255, sides[1])
        work = buffer("DAXI_FilterMeanBufferSize_8u_MT", dst.size, mask, threads) if fits else memory(1)
        call("DAXI_FilterMean_8u_C1R_MT", *_images(src, dst), mask, work, threads, handle)
    else:
        work = buffer(f"DAXI_FilterMeanBufferSize_{src.suffix}", dst.size)
        call(f"DAXI_FilterMean_{src.suffix}_C1R", *_images(src, dst), mask, work)
    return dst.array


def clipped_mean(image: ArrayLike, window: Window = 3, out: Optional[Array] = None) -> Array:
    """Mean over the part of each window that lies in the image. Arguments as for `mean`; windows have no limit but the
    image.

    >>> dax.clipped_mean(np.array([[0, 0, 30], [0, 0, 30], [0, 0, 30]], np.uint8), (3, 1))[0]
    array([ 0, 10, 15], dtype=uint8)
    """
    src = source("image", image, _REALS)
    dst = target("out", out, src.array.shape, src.array.dtype)
    refuse_overlap(("image", src), ("out", dst))
    work = buffer(f"DAXI_FilterMeanIntBufferSize_{src.suffix}", dst.size)
    call(f"DAXI_FilterMeanInt_{src.suffix}_C1R", *_images(src, dst), as_size(window), work)
    return dst.array


def as_size(window: Window) -> dict[str, int]:
    """An edge length, or (width, height), as the record of the C interface."""
    if isinstance(window, (int, np.integer)):
        window = window, window
    width, height = pair("window", window, "a whole number, or (width, height)")
    return {"width": width, "height": height}


def median3x3(image: ArrayLike, out: Optional[Array] = None, pool: Optional[Pool] = None) -> Array:
    """Exact median of 3 x 3 pixels, the edge replicated. NaN is ordered beyond infinity.

    image: uint8, uint16, int16, float32 or float64, at least 3 x 3. pool: for uint8, works in bands.

    >>> dax.median3x3(np.eye(3, dtype=np.uint8))
    array([[1, 0, 0],
           [0, 0, 0],
           [0, 0, 1]], dtype=uint8)
    """
    src = source("image", image, _REALS)
    dst = target("out", out, src.array.shape, src.array.dtype)
    refuse_overlap(("image", src), ("out", dst))
    if pool is not None and src.suffix == "8u":
        threads, handle = handle_of(pool)
        call("DAXI_FilterMedian3x3_8u_C1R_NEON_MT", handle, threads, *_images(src, dst))
    else:
        call(f"DAXI_FilterMedian3x3_{src.suffix}_C1R", *_images(src, dst))
    return dst.array


def erode3x3(
    mask: ArrayLike,
    iterations: int = 1,
    out: Optional[Array] = None,
    along: Literal["both", "rows", "columns"] = "both",
) -> NDArray[np.uint8]:
    """One-sided erosion of a mask by 3-pixel passes along rows and columns: a run loses its last pixel.

    mask: uint8, not 0 is set. iterations: at least 1. along: only rows, or only columns, in one pass. `out` may be the
    mask itself, but for columns.

    >>> dax.erode3x3(np.array([[0, 0, 0], [0, 255, 255], [0, 255, 255], [0, 0, 0]], np.uint8)[:, [0, 1, 2, 0]])[1]
    array([  0, 255,   0,   0], dtype=uint8)
    """
    suffix = choice("along", along, {"both": "3x3", "rows": "Row3", "columns": "Col3"})
    src = source("mask", mask, BYTES)
    dst = target("out", out, src.array.shape, np.uint8)
    refuse_overlap(("mask", src), ("out", dst), in_place=along != "columns")
    if along != "both":
        if iterations != 1:
            raise ValueError("iterations: one pass along rows or columns")
        call(f"DAXI_Erode{suffix}_8u_C1R", *_images(src, dst))
    else:
        work = buffer("DAXI_Erode3x3BufferSize_8u", src.size)
        call("DAXI_Erode3x3_8u_C1R", *_images(src, dst), iterations, work)
    return dst.array

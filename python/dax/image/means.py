"""Sums and means over windows."""
from typing import Literal, Optional

import numpy as np
from numpy.typing import ArrayLike, DTypeLike

from .._arrays import Array, Window, as_size, choice, refuse_overlap, source, target
from .._library import buffer, call, memory
from .._operation import apply
from ..pool import Pool, handle_of

__all__ = ["box_sum", "clipped_mean", "mean"]

_REALS = "8u 16u 16s 32f 64f"
Sums = Literal["exact", "running"]
_SUMS = {"exact": True, "running": False}
_BITS = 30  # range of the exponents of values that are summed together


def box_sum(image: ArrayLike, radius: int, out: Optional[Array] = None, sums: Sums = "exact") -> Array:
    """Sums over squares of 2 radius + 1 pixels, clipped to the image.

    image: uint8, int16, int32 or float32 of more than 2 radius pixels each way. Returns int32 for uint8 and int32 (sums
    wrap), float32 for int16 and float32. sums: "running" sums of floats, in single precision, carry rounding errors,
    infinities and NaN along rows and columns; "exact" ones do not and take some times as long.

    >>> dax.box_sum(np.ones((5, 5), np.float32), 1)[:2, :2]
    array([[4., 6.],
           [6., 9.]], dtype=float32)
    """
    name, work = "DAXI_FilterBox_{type}_{layout}R", "DAXI_FilterBoxBufferSize_{type}"
    array = np.asarray(image)
    if (
        not choice("sums", sums, _SUMS)
        or array.dtype not in (np.float32, np.int16)
        or not 1 <= radius < min(array.shape) / 2
    ):
        return apply(name, {"image": image}, radius, types="8u32s 16s32f 32s 32f", out=out, work=work)
    side = 2 * radius + 1
    width, height = (
        np.minimum(np.arange(n) + radius + 1, n) - np.maximum(np.arange(n) - radius, 0) for n in array.shape[::-1]
    )
    means = _exact(array, {"width": side, "height": side}, "Int")
    return _stored(means * height[:, None] * width, array, out, np.float32)


def mean(
    image: ArrayLike,
    window: Window = 3,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
    sums: Sums = "exact",
) -> Array:
    """Mean over windows, the image going on symmetrically beyond its edges (b a|a b c).

    image: (height, width) uint8, uint16, int16, float32 or float64. window: pixels each way, or (width, height), at
    most as large as the image, for uint8 at most 255. Even windows reach one pixel further left and up. Integers are
    rounded. pool: for uint8, works in bands. sums: of floats, as for `box_sum`.

    >>> dax.mean(np.array([[0, 0, 30], [0, 0, 30], [0, 0, 30]], np.uint8), (3, 1))
    array([[ 0, 10, 20],
           [ 0, 10, 20],
           [ 0, 10, 20]], dtype=uint8)
    """
    mask = as_size(window)
    image = np.asarray(image)
    if image.dtype == np.uint8:
        return _mean_of_bytes(image, mask, out, pool)
    if choice("sums", sums, _SUMS) and _summable(image, mask):
        return _stored(_exact(image, mask, ""), image, out, image.dtype)
    name, work = "DAXI_FilterMean_{type}_{layout}R", "DAXI_FilterMeanBufferSize_{type}"
    return apply(name, {"image": image}, mask, types=_REALS, out=out, work=work, pool=pool)


def _mean_of_bytes(image: Array, mask: dict[str, int], out: Optional[Array], pool: Optional[Pool]) -> Array:
    src = source("image", image)
    dst = target("out", out, src.array.shape, src.array.dtype)
    refuse_overlap(("image", src), ("out", dst))
    threads, handle = handle_of(pool)
    # This query checks the window before the size; the call has the order of all images.
    width, height = dst.size["width"], dst.size["height"]
    fits = 0 < mask["width"] <= min(255, width) and 0 < mask["height"] <= min(255, height)
    work = buffer("DAXI_FilterMeanBufferSize_8u_MT", dst.size, mask, threads) if fits else memory(1)
    images = src.pointer, src.step, dst.pointer, dst.step, dst.size
    call("DAXI_FilterMean_8u_C1R_MT", *images, mask, work, threads, handle)
    return dst.array


def clipped_mean(
    image: ArrayLike, window: Window = 3, out: Optional[Array] = None, sums: Sums = "exact"
) -> Array:
    """Mean over the part of each window that lies in the image. Arguments as for `mean`; windows have no limit but the
    image. "running" sums are in double precision here.

    >>> dax.clipped_mean(np.array([[0, 0, 30], [0, 0, 30], [0, 0, 30]], np.uint8), (3, 1))[0]
    array([ 0, 10, 15], dtype=uint8)
    """
    name, work = "DAXI_FilterMeanInt_{type}_{layout}R", "DAXI_FilterMeanIntBufferSize_{type}"
    image, mask = np.asarray(image), as_size(window)
    if choice("sums", sums, _SUMS) and _summable(image, mask):
        return _stored(_exact(image, mask, "Int"), image, out, image.dtype)
    return apply(name, {"image": image}, mask, types=_REALS, out=out, work=work)


def _summable(image: Array, mask: dict[str, int]) -> bool:
    """Floats that the library will not refuse."""
    fits = image.ndim == 2 and 0 < mask["width"] <= image.shape[1] and 0 < mask["height"] <= image.shape[0]
    return fits and image.dtype in (np.float32, np.float64)


def _stored(result: Array, image: Array, out: Optional[Array], dtype: DTypeLike) -> Array:
    src, dst = source("image", image), target("out", out, image.shape, dtype)
    refuse_overlap(("image", src), ("out", dst))
    with np.errstate(over="ignore", invalid="ignore"):
        dst.array[...] = result
    return dst.array


def _exact(image: Array, mask: dict[str, int], form: str) -> Array:
    """Means in double precision. Values that differ by more than 2^30 are summed apart, so that large ones leave
    nothing behind in windows without them; NaN and infinities are counted."""
    name, work = f"DAXI_FilterMean{form}_{{type}}_{{layout}}R", f"DAXI_FilterMean{form}BufferSize_{{type}}"

    def means(values: Array) -> Array:
        return apply(name, {"image": values}, mask, types="64f", work=work)

    sizes = np.abs(image)
    largest = sizes.max()
    if np.isfinite(largest) and largest <= np.min(sizes, where=sizes > 0, initial=largest) * 2.0**_BITS:
        return means(image.astype(np.float64))
    values = image.astype(np.float64)
    finite = np.isfinite(values)
    odd = values[~finite]
    values[~finite] = 0
    total, exponents = np.zeros(image.shape), np.frexp(values)[1]
    left, threshold = values != 0, 0.5 / (mask["width"] * mask["height"])  # share of half a pixel
    while left.any():
        band = left & (exponents > int(exponents[left].max()) - _BITS)
        part = means(np.where(band, values, 0))
        total += np.where(means(band.astype(np.float64)) > threshold, part, 0)
        left &= ~band
    for kind in (np.inf, -np.inf, np.nan):
        here = np.isnan(image) if np.isnan(kind) else image == kind
        if odd.size and here.any():
            with np.errstate(invalid="ignore"):
                total[means(here.astype(np.float64)) > threshold] += kind
    return total

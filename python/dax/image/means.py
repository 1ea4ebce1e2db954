"""Sums and means over windows."""
from typing import Optional

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, Window, as_size, refuse_overlap, source, target
from .._library import buffer, call, memory
from .._operation import apply
from ..pool import Pool, handle_of

__all__ = ["box_sum", "clipped_mean", "mean"]

_REALS = "8u 16u 16s 32f 64f"


def box_sum(image: ArrayLike, radius: int, out: Optional[Array] = None) -> Array:
    """Sums over squares of 2 radius + 1 pixels, clipped to the image.

    image: uint8, int16, int32 or float32 of more than 2 radius pixels each way. Returns int32 for uint8 and int32 (sums
    wrap), float32 for int16 and float32.

    >>> dax.box_sum(np.ones((5, 5), np.float32), 1)[:2, :2]
    array([[4., 6.],
           [6., 9.]], dtype=float32)
    """
    name, work = "DAXI_FilterBox_{type}_{layout}R", "DAXI_FilterBoxBufferSize_{type}"
    return apply(name, {"image": image}, radius, types="8u32s 16s32f 32s 32f", out=out, work=work)


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
    mask = as_size(window)
    image = np.asarray(image)
    if image.dtype == np.uint8:
        return _mean_of_bytes(image, mask, out, pool)
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


def clipped_mean(image: ArrayLike, window: Window = 3, out: Optional[Array] = None) -> Array:
    """Mean over the part of each window that lies in the image. Arguments as for `mean`; windows have no limit but the
    image.

    >>> dax.clipped_mean(np.array([[0, 0, 30], [0, 0, 30], [0, 0, 30]], np.uint8), (3, 1))[0]
    array([ 0, 10, 15], dtype=uint8)
    """
    name, work = "DAXI_FilterMeanInt_{type}_{layout}R", "DAXI_FilterMeanIntBufferSize_{type}"
    return apply(name, {"image": image}, as_size(window), types=_REALS, out=out, work=work)

"""Filters that smooth and keep edges."""
from typing import Optional

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, choice, of_shape, refuse_overlap, source, target
from .._filters import WINDOW_BORDERS, WindowMode
from .._interface import ffi
from .._library import buffer, call
from .._operation import apply
from ..pool import Pool, handle_of

__all__ = ["bilateral", "guided"]

_GREYS = tuple(np.dtype(each) for each in (np.uint8, np.uint16, np.float32))


def guided(
    image: ArrayLike,
    guide: Optional[ArrayLike] = None,
    *,
    radius: int = 8,
    eps: float = 100,
    subsample: int = 1,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """Smooths where the guide is even, and keeps its edges.

    image: (height, width) uint8, uint16 or float32. guide: an image of the same shape and type; the image itself if
    None. radius: of windows of 2 radius + 1 pixels each way. eps: edges with a contrast well above its root stay.
    subsample: 1 to 8, every how many pixels to compute. pool: threads.

    >>> dax.guided(np.array([[10, 12, 11, 90, 92, 91]], np.uint8), radius=1, eps=20)
    array([[11, 11, 11, 90, 91, 91]], dtype=uint8)
    """
    cfg = ffi.new("DaxiFilterGuidedCfg*")
    call("DAXI_FilterGuidedDefaultCfg", cfg)
    cfg.radius, cfg.eps, cfg.subsample = radius, eps, subsample
    src = source("image", image, _GREYS)
    other = src if guide is None else of_shape("guide", guide, src.array.shape, (src.array.dtype,))
    dst = target("out", out, src.array.shape, src.array.dtype)
    refuse_overlap(("image", src), ("out", dst))
    refuse_overlap(("guide", other), ("out", dst))
    planes = [src.pointer, src.step, other.pointer, other.step, dst.pointer, dst.step, dst.size, cfg]
    if pool is None:
        work = buffer(f"DAXI_FilterGuidedBufferSize_{src.suffix}", dst.size, cfg)
        call(f"DAXI_FilterGuided_{src.suffix}_C1R", *planes, work)
    else:
        threads, handle = handle_of(pool)
        work = buffer(f"DAXI_FilterGuidedBufferSize_{src.suffix}_MT", dst.size, cfg, threads)
        call(f"DAXI_FilterGuided_{src.suffix}_C1R_MT", handle, threads, *planes, work)
    return dst.array


def bilateral(
    image: ArrayLike,
    radius: int = 5,
    *,
    sigma_space: float = 3,
    sigma_grey: float = 25,
    mode: WindowMode = "replicate",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The mean of a disc around each pixel, weighted by nearness in place and in grey.

    image: (height, width) uint8 or float32. radius: of the disc, 1 to 15 pixels. sigma_space, sigma_grey: of the
    weights. mode, value: what lies outside the image, as of local_mean. pool: threads.

    >>> dax.bilateral(np.array([[10, 12, 11, 90, 92, 91]], np.uint8), 2, sigma_grey=10)
    array([[11, 11, 11, 91, 91, 91]], dtype=uint8)
    """
    cfg = ffi.new("DaxiFilterBilateralCfg*")
    call("DAXI_FilterBilateralDefaultCfg", cfg)
    cfg.radius, cfg.sigmaSpace, cfg.sigmaGrey = radius, sigma_space, sigma_grey
    cfg.border, cfg.value = choice("mode", mode, WINDOW_BORDERS), value
    name, work = "DAXI_FilterBilateral_{type}_{layout}R", "DAXI_FilterBilateralBufferSize_{type}"
    return apply(name, {"image": image}, cfg, types="8u 32f", out=out, work=work, measures=(cfg,),
                 pooled=name + "_MT", pool=pool)

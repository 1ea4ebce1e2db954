"""Grey values by tables and curves: look-up tables, gamma, stretching, equalised histograms."""
from typing import Any, Optional

import numpy as np
from numpy.typing import ArrayLike, DTypeLike

from .._arrays import PIXELS, Array, numbers, pixel_type, refuse_overlap, source, target
from .._interface import ffi
from .._library import buffer, call
from .._operation import apply
from ..pool import Pool

__all__ = ["adjust_gamma", "apply_curve", "apply_lut", "equalize_adapthist", "equalize_hist", "rescale_intensity"]

_UNSIGNED = tuple(np.dtype(each) for each in (np.uint8, np.uint16))


def apply_lut(image: ArrayLike, table: ArrayLike, out: Optional[Array] = None) -> Array:
    """table[image], pixel by pixel.

    image: uint8 with a table of 256 uint8, uint16 or float32, or uint16 with one of 65536 uint16; (height, width) or
    (height, width, 3). `out` may be the image where the types are the same.

    >>> dax.apply_lut(np.array([[0, 1, 255]], np.uint8), np.arange(255, -1, -1, dtype=np.uint8))
    array([[255, 254,   0]], dtype=uint8)
    """
    entries = np.asarray(table)
    kind, ctype = pixel_type("table", entries)
    src = source("image", image, _UNSIGNED, "C1 C3")
    if (src.suffix, kind) not in (("8u", "8u"), ("8u", "16u"), ("8u", "32f"), ("16u", "16u")):
        raise TypeError(f"table: of type {entries.dtype}, for an image of {src.array.dtype}")
    entries = numbers("table", entries, (256 if src.suffix == "8u" else 65536,), entries.dtype)
    dst = target("out", out, src.array.shape, entries.dtype)
    refuse_overlap(("image", src), ("out", dst), in_place=src.suffix == kind)
    name = f"DAXI_Lut_{src.suffix}{'' if kind == src.suffix else kind}_{src.layout}R"
    call(name, src.pointer, src.step, dst.pointer, dst.step, dst.size, ffi.from_buffer(f"{ctype}[]", entries))
    return dst.array


def apply_curve(image: ArrayLike, levels: ArrayLike, values: ArrayLike, out: Optional[Array] = None) -> Array:
    """np.interp(image, levels, values) in the image's type: a line through 2 to 256 knots, flat outside them.

    image: uint8, uint16, int16 or float32, (height, width) or (height, width, 3). levels: strictly ascending. `out` may
    be the image.

    >>> dax.apply_curve(np.array([[0, 50, 100, 200]], np.uint8), [50, 150], [0, 255])
    array([[  0,   0, 128, 255]], dtype=uint8)
    """
    at = numbers("levels", levels, (None,), np.float64)
    become = numbers("values", values, at.shape, np.float64)
    knots = ffi.from_buffer("double[]", at), ffi.from_buffer("double[]", become), len(at)
    name = "DAXI_LutLinear_{type}_{layout}R"
    return apply(name, {"image": image}, *knots, types="8u 16u 16s 32f", layouts="C1 C3", out=out, in_place=True)


def adjust_gamma(image: ArrayLike, gamma: float, out: Optional[Array] = None) -> Array:
    """255 (image / 255)**gamma, or the same with 65535: below 1 what is dark becomes brighter.

    image: uint8 or uint16, (height, width) or (height, width, 3). gamma: 0.01 to 100. `out` may be the image.

    >>> dax.adjust_gamma(np.array([[0, 64, 255]], np.uint8), 0.5)
    array([[  0, 128, 255]], dtype=uint8)
    """
    src = source("image", image, _UNSIGNED, "C1 C3")
    dst = target("out", out, src.array.shape, src.array.dtype)
    refuse_overlap(("image", src), ("out", dst), in_place=True)
    work = (buffer("DAXI_GammaBufferSize_16u"),) if src.suffix == "16u" else ()
    name = f"DAXI_Gamma_{src.suffix}_{src.layout}R"
    call(name, src.pointer, src.step, dst.pointer, dst.step, dst.size, gamma, *work)
    return dst.array


def rescale_intensity(
    image: ArrayLike,
    out_range: tuple[float, float] = (0, 255),
    *,
    percentiles: tuple[float, float] = (0, 100),
    dtype: Optional[DTypeLike] = None,
    out: Optional[Array] = None,
) -> Array:
    """Stretches the grey values between two percentiles to a range; what lies beyond is held to its ends.

    image: (height, width) uint8, uint16, int16 or float32. percentiles: per cent, 0 and 100 are the minimum and the
    maximum of the finite pixels. dtype: that of the image, uint8 or float32. `out` may be the image.

    >>> dax.rescale_intensity(np.array([[100, 150, 200]], np.uint16), dtype=np.uint8)
    array([[  0, 128, 255]], dtype=uint8)
    """
    own = np.asarray(image).dtype
    wanted = own if dtype is None else np.dtype(dtype)
    cfg = ffi.new("DaxiNormaliseCfg*")
    call("DAXI_NormaliseDefaultCfg", cfg)
    cfg.pLow, cfg.pHigh = (each / 100 for each in percentiles)
    cfg.outLow, cfg.outHigh = out_range
    spelled = (
        _SAME if wanted == own else f"{PIXELS[own][0]}{PIXELS[wanted][0]}" if own in PIXELS and wanted in PIXELS else ""
    )
    if wanted != own and spelled not in _OTHERS:
        raise TypeError(f"dtype: {wanted} of an image of {own}; possible are its own, uint8 and float32")
    name = "DAXI_Normalise_{type}_{layout}R"
    return apply(name, {"image": image}, cfg, types=spelled, out=out, in_place=wanted == own)


_SAME, _OTHERS = "8u 16u 16s 32f", ("8u32f", "16u8u", "16u32f", "16s8u", "16s32f", "32f8u")


def equalize_hist(image: ArrayLike, out: Optional[Array] = None) -> Array:
    """The image with a histogram as flat as can be: each level becomes the share of pixels up to it.

    image: (height, width) uint8 or uint16. `out` may be the image.

    >>> dax.equalize_hist(np.array([[10, 11, 12, 13]], np.uint8))
    array([[  0,  85, 170, 255]], dtype=uint8)
    """
    src = source("image", image, _UNSIGNED)
    dst = target("out", out, src.array.shape, src.array.dtype)
    refuse_overlap(("image", src), ("out", dst), in_place=True)
    work = (buffer("DAXI_EqualizeHistBufferSize_16u"),) if src.suffix == "16u" else ()
    call(f"DAXI_EqualizeHist_{src.suffix}_C1R", src.pointer, src.step, dst.pointer, dst.step, dst.size, *work)
    return dst.array


def equalize_adapthist(
    image: ArrayLike,
    tiles: tuple[int, int] = (8, 8),
    *,
    clip_limit: float = 2.0,
    bins: int = 256,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """Histograms equalised by tiles, with limited contrast (CLAHE): detail in dark and in bright parts alike.

    image: (height, width) uint8 or uint16. tiles: rows and columns of them, 1 to 64. clip_limit: the greatest count of
    a bin, as a multiple of the mean, from 1 on; more is more contrast, and more noise. bins: a power of two, up to 256,
    or 65536 for uint16. `out` may be the image. pool: threads.

    >>> dax.equalize_adapthist(np.array([[10, 11], [12, 13]], np.uint8), (1, 1), clip_limit=1)
    array([[ 64, 128],
           [191, 255]], dtype=uint8)
    """
    cfg = ffi.new("DaxiClipEqualizeCfg*")
    call("DAXI_ClipEqualizeDefaultCfg", cfg)
    cfg.tilesY, cfg.tilesX = tiles
    cfg.clip, cfg.bins = clip_limit, bins
    form: dict[str, Any] = {"types": "8u 16u", "out": out, "in_place": True, "pool": pool, "measures": (cfg,)}
    name = "DAXI_ClipEqualize_{type}_{layout}R"
    return apply(name, {"image": image}, cfg, work="DAXI_ClipEqualizeBufferSize_{type}", pooled=name + "_MT", **form)

"""Images of another pixel type, and copies and constants where a mask says so."""
from typing import Any, Optional

import numpy as np
from numpy.typing import ArrayLike, DTypeLike

from .._arrays import PIXELS, Array, Image, of_shape, pixel_value, refuse_overlap, target
from .._interface import ffi
from .._library import call
from .._operation import apply
from ..pool import Pool

__all__ = ["convert", "convert_full_range", "copyto", "putmask"]

_TYPES = tuple(np.dtype(each) for each in (np.uint8, np.uint16, np.int16, np.float32))


def _pairs_to(dtype: DTypeLike) -> str:
    """The types of images that become this one."""
    to = np.dtype(dtype)
    if to not in _TYPES:
        raise TypeError(f"dtype: {to}, possible are " + ", ".join(str(each) for each in _TYPES))
    return " ".join(f"{PIXELS[each][0]}{PIXELS[to][0]}" for each in _TYPES if each != to)


def convert(
    image: ArrayLike,
    dtype: DTypeLike,
    *,
    scale: float = 1.0,
    offset: float = 0.0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """image * scale + offset in another type: uint8, uint16, int16 or float32, rounded half to even and saturated.

    image: one of the other types, (height, width) or (height, width, 3). NaN becomes 0 in integers. pool: threads.

    >>> dax.convert(np.array([[10, 300]], np.uint16), np.uint8)
    array([[ 10, 255]], dtype=uint8)
    >>> dax.convert(np.array([[0, 2000, 4095]], np.uint16), np.uint8, scale=255 / 4095)
    array([[  0, 125, 255]], dtype=uint8)
    """
    cfg = ffi.new("DaxiConvertCfg*")
    call("DAXI_ConvertDefaultCfg", cfg)
    cfg.scale, cfg.offset = scale, offset
    name = "DAXI_Convert_{type}_{layout}R"
    form: dict[str, Any] = {"layouts": "C1 C3", "out": out, "pooled": name + "_MT", "pool": pool}
    return apply(name, {"image": image}, cfg, types=_pairs_to(dtype), **form)


def convert_full_range(
    image: ArrayLike, dtype: DTypeLike, *, out: Optional[Array] = None, pool: Optional[Pool] = None
) -> Array:
    """The image in another type, so that the greatest value becomes the greatest value: 255, 65535, 32767, or 1 of
    float32.

    image: as for `convert`. Negative values become 0 in unsigned types. pool: threads.

    >>> dax.convert_full_range(np.array([[0, 128, 255]], np.uint8), np.uint16)
    array([[    0, 32896, 65535]], dtype=uint16)
    """
    name = "DAXI_ConvertFullRange_{type}_{layout}R"
    form: dict[str, Any] = {"layouts": "C1 C3", "out": out, "pooled": name + "_MT", "pool": pool}
    return apply(name, {"image": image}, types=_pairs_to(dtype), **form)


def _written(name: str, array: Array) -> Image:
    """An image whose pixels are replaced where it lies."""
    dtype = np.asarray(array).dtype
    if dtype not in _TYPES:
        raise TypeError(f"{name}: pixels of type {dtype}; taken are " + ", ".join(str(each) for each in _TYPES))
    return target(name, array, np.shape(array), dtype)


def copyto(dst: Array, src: ArrayLike, where: ArrayLike) -> Array:
    """Copies the pixels of src to dst where the mask is not 0; returns dst.

    dst: uint8, uint16, int16 or float32, (height, width) or (height, width, 3). where: (height, width), uint8 or bool.

    >>> image = np.array([[1, 2, 3]], np.uint8)
    >>> dax.copyto(image, np.array([[7, 8, 9]], np.uint8), np.array([[0, 255, 0]], np.uint8))
    array([[1, 8, 3]], dtype=uint8)
    """
    written = _written("dst", dst)
    read = of_shape("src", src, written.array.shape, (written.array.dtype,), "C1 C3")
    mask = of_shape("where", where, written.array.shape[:2])
    refuse_overlap(("dst", written), ("src", read), ("where", mask))
    images = read.pointer, read.step, mask.pointer, mask.step, written.pointer, written.step, written.size
    call(f"DAXI_Copy_{written.suffix}_{written.layout}MR", *images)
    return written.array


def putmask(image: Array, mask: ArrayLike, value: ArrayLike) -> Array:
    """Sets the pixels where the mask is not 0 to a value, or to one for each channel; returns the image.

    image: as dst of `copyto`. mask: (height, width), uint8 or bool.

    >>> dax.putmask(np.array([[1, 2, 3]], np.uint8), np.array([[True, False, True]]), 9)
    array([[9, 2, 9]], dtype=uint8)
    """
    written = _written("image", image)
    set_where = of_shape("mask", mask, written.array.shape[:2])
    refuse_overlap(("image", written), ("mask", set_where))
    images = set_where.pointer, set_where.step, written.pointer, written.step, written.size
    call(f"DAXI_Set_{written.suffix}_{written.layout}MR", *images, *pixel_value("value", value, written))
    return written.array

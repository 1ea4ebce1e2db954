"""Channels of an image: taken apart, put together, in another order."""
from typing import Any, Optional, Sequence

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, Image, of_shape, pixel_value, refuse_overlap, source, target
from .._interface import ffi
from .._library import call

__all__ = ["merge_channels", "pick_channel", "split_channels", "swap_channels"]

_TYPES = tuple(np.dtype(each) for each in (np.uint8, np.uint16, np.int16, np.float32))


def _planes(images: Sequence[Image]) -> tuple[Any, int]:
    """The addresses of planes, and their one step."""
    return ffi.new(f"{images[0].ctype}*[]", [each.pointer for each in images]), images[0].step


def split_channels(image: ArrayLike) -> tuple[Array, ...]:
    """The three or four channels of an image (height, width, 3 or 4), each (height, width).

    image: uint8, uint16, int16 or float32.

    >>> dax.split_channels(np.array([[[1, 2, 3], [4, 5, 6]]], np.uint8))
    (array([[1, 4]], dtype=uint8), array([[2, 5]], dtype=uint8), array([[3, 6]], dtype=uint8))
    """
    src = source("image", image, _TYPES, "C3 C4")
    height, width, count = src.array.shape
    planes = [target("out", None, (height, width), src.array.dtype) for _ in range(count)]
    addresses, step = _planes(planes)
    call(f"DAXI_Split_{src.suffix}_C{count}P{count}R", src.pointer, src.step, addresses, step, src.size)
    return tuple(each.array for each in planes)


def merge_channels(planes: Sequence[ArrayLike], out: Optional[Array] = None) -> Array:
    """An image (height, width, 3 or 4) of three or four images (height, width) of one type.

    >>> dax.merge_channels([np.array([[1, 4]], np.uint8), np.array([[2, 5]], np.uint8), np.array([[3, 6]], np.uint8)])
    array([[[1, 2, 3],
            [4, 5, 6]]], dtype=uint8)
    """
    if len(planes) not in (3, 4):
        raise ValueError(f"planes: {len(planes)}, needed are three or four")
    first = source("planes[0]", planes[0], _TYPES)
    images = [first] + [
        of_shape(f"planes[{i}]", each, first.array.shape, (first.array.dtype,)) for i, each in enumerate(planes[1:], 1)
    ]
    if len({each.step for each in images}) > 1:  # one step for all
        images = [source("planes", np.ascontiguousarray(each.array)) for each in images]
    dst = target("out", out, (*first.array.shape, len(planes)), first.array.dtype)
    for each in images:
        refuse_overlap(("planes", each), ("out", dst))
    addresses, step = _planes(images)
    call(f"DAXI_Merge_{first.suffix}_P{len(planes)}C{len(planes)}R", addresses, step, dst.pointer, dst.step, dst.size)
    return dst.array


def swap_channels(image: ArrayLike, order: Sequence[int], *, value: float = 0, out: Optional[Array] = None) -> Array:
    """An image whose channel c is channel order[c] of this one, or the value where order[c] is -1.

    image: as for `split_channels`. order: three or four of 0, 1, 2 (and 3), repeats allowed: (2, 1, 0) turns RGB to
    BGR, (0, 1, 2, -1) adds a channel. `out` may be the image.

    >>> dax.swap_channels(np.array([[[1, 2, 3]]], np.uint8), (2, 1, 0, -1), value=255)
    array([[[  3,   2,   1, 255]]], dtype=uint8)
    """
    if len(order) not in (3, 4):
        raise ValueError(f"order: {len(order)} channels, needed are three or four")
    src = source("image", image, _TYPES, "C3 C4")
    dst = target("out", out, (*src.array.shape[:2], len(order)), src.array.dtype)
    refuse_overlap(("image", src), ("out", dst), in_place=src.layout == dst.layout)
    constant = pixel_value("value", value, source("image", src.array[..., 0], _TYPES))
    layout = src.layout if src.layout == dst.layout else src.layout + dst.layout
    name = f"DAXI_SwapChannels_{src.suffix}_{layout}R"
    call(name, src.pointer, src.step, dst.pointer, dst.step, dst.size, ffi.new("int32_t[]", list(order)), *constant)
    return dst.array


def pick_channel(image: ArrayLike, channel: int, out: Optional[Array] = None) -> Array:
    """One channel of an image (height, width, 3 or 4), counted from 0.

    >>> dax.pick_channel(np.array([[[1, 2, 3], [4, 5, 6]]], np.uint8), 2)
    array([[3, 6]], dtype=uint8)
    """
    src = source("image", image, _TYPES, "C3 C4")
    dst = target("out", out, src.array.shape[:2], src.array.dtype)
    refuse_overlap(("image", src), ("out", dst))
    name = f"DAXI_PickChannel_{src.suffix}_{src.layout}C1R"
    call(name, src.pointer, src.step, dst.pointer, dst.step, dst.size, channel)
    return dst.array

"""Morphology by lines and by masks, grey and binary; thinning."""
from typing import Any, Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import BYTES, Array, Image, choice, pair, source, within
from .._filters import WINDOW_BORDERS, WindowMode
from .._interface import ffi
from .._operation import apply
from ..pool import Pool

__all__ = [
    "dilate_mask",
    "erode_mask",
    "gray_dilate_line",
    "gray_dilate_mask",
    "gray_erode_line",
    "gray_erode_mask",
    "hit_or_miss",
    "prune_branches",
    "thin",
]

_GREY = "8u 16u 16s 32f"


def _form(operation: str, out: Optional[Array], pool: Optional[Pool], *measures: Any) -> dict[str, Any]:
    work = f"DAXI_{operation}BufferSize_{{type}}"
    return {"out": out, "work": work, "measures": measures, "pooled": _name(operation) + "_MT", "pool": pool}


def _name(operation: str) -> str:
    return f"DAXI_{operation}_{{type}}_{{layout}}R"


def _line(
    operation: str,
    image: ArrayLike,
    line: tuple[int, int],
    anchor: Optional[int],
    mode: WindowMode,
    value: float,
    out: Optional[Array],
    pool: Optional[Pool],
) -> Array:
    cfg = ffi.new("DaxiFlatLineCfg*")
    cfg.dx, cfg.dy = pair("line", line, "(columns, rows)")
    cfg.anchor, cfg.border, cfg.value = -1 if anchor is None else anchor, choice("mode", mode, WINDOW_BORDERS), value
    return apply(_name(operation), {"image": image}, cfg, types=_GREY, **_form(operation, out, pool, cfg))


def _mask_cfg(element: Image, anchor: Optional[tuple[int, int]], mode: WindowMode, value: float) -> Any:
    cfg = ffi.new("DaxiFlatMaskCfg*")
    size = element.size
    column, row = (-1, -1) if anchor is None else anchor
    if anchor is not None and not (0 <= column < size["width"] and 0 <= row < size["height"]):
        raise ValueError(f"anchor: {anchor}, needed is a pixel (column, row) of the element")
    cfg.anchorX, cfg.anchorY = column, row
    cfg.border, cfg.value = choice("mode", mode, WINDOW_BORDERS), value
    return cfg


def _mask(
    operation: str,
    types: str,
    images: dict[str, ArrayLike],
    element: ArrayLike,
    anchor: Optional[tuple[int, int]],
    mode: WindowMode,
    value: float,
    out: Optional[Array],
    pool: Optional[Pool],
) -> Array:
    one = source("element", element, BYTES)
    arguments = one.pointer, one.step, one.size, _mask_cfg(one, anchor, mode, value)
    return apply(_name(operation), images, *arguments, types=types, **_form(operation, out, pool, *arguments))


def gray_erode_line(
    image: ArrayLike,
    line: tuple[int, int],
    *,
    anchor: Optional[int] = None,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The minimum along a line through each pixel.

    image: (height, width) uint8, uint16, int16 or float32. line: (columns, rows) from its first to its last pixel, up
    to 1023 each way. anchor: the pixel of the line, counted from 0, that lies on the pixel of the image; the middle if
    None. mode: what lies outside the image; clip: nothing. value: of mode constant. pool: threads.

    >>> dax.gray_erode_line(np.array([[5, 5, 9], [5, 9, 5], [9, 5, 5]], np.uint8), (-2, 2))
    array([[5, 5, 9],
           [5, 9, 5],
           [9, 5, 5]], dtype=uint8)
    """
    return _line("GrayErodeLine", image, line, anchor, mode, value, out, pool)


def gray_dilate_line(
    image: ArrayLike,
    line: tuple[int, int],
    *,
    anchor: Optional[int] = None,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The maximum along the line, turned by half a circle. Arguments as of gray_erode_line.

    >>> dax.gray_dilate_line(np.array([[0, 0, 9, 0, 0]], np.uint8), (2, 0))
    array([[0, 9, 9, 9, 0]], dtype=uint8)
    """
    return _line("GrayDilateLine", image, line, anchor, mode, value, out, pool)


def gray_erode_mask(
    image: ArrayLike,
    element: ArrayLike,
    *,
    anchor: Optional[tuple[int, int]] = None,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The minimum over the set pixels of an element that lies on each pixel.

    image: (height, width) uint8, uint16, int16 or float32. element: uint8 or bool, not 0 is set, sides up to 255.
    anchor: the (column, row) of the element that lies on the pixel, its centre if None. mode: what lies outside the
    image; clip: nothing. value: of mode constant. pool: threads.

    >>> dax.gray_erode_mask(np.array([[5, 5, 9, 7, 8]], np.uint8), np.array([[1, 0, 1]], np.uint8))
    array([[5, 5, 5, 8, 7]], dtype=uint8)
    """
    return _mask("GrayErodeMask", _GREY, {"image": image}, element, anchor, mode, value, out, pool)


def gray_dilate_mask(
    image: ArrayLike,
    element: ArrayLike,
    *,
    anchor: Optional[tuple[int, int]] = None,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The maximum over the element, turned by half a circle. Arguments as of gray_erode_mask.

    >>> dax.gray_dilate_mask(np.array([[0, 0, 9, 0, 0]], np.uint8), np.array([[1, 0, 1]], np.uint8))
    array([[0, 9, 0, 9, 0]], dtype=uint8)
    """
    return _mask("GrayDilateMask", _GREY, {"image": image}, element, anchor, mode, value, out, pool)


def erode_mask(
    mask: ArrayLike,
    element: ArrayLike,
    *,
    anchor: Optional[tuple[int, int]] = None,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> NDArray[np.uint8]:
    """255 where all pixels of a mask under an element are set, else 0.

    mask: uint8, not 0 is set. The other arguments as of gray_erode_mask.

    >>> dax.erode_mask(np.array([[0, 1, 1, 1, 0]], np.uint8), np.ones((1, 3), np.uint8))
    array([[  0,   0, 255,   0,   0]], dtype=uint8)
    """
    return _mask("ErodeMask", "8u", {"mask": mask}, element, anchor, mode, value, out, pool)


def dilate_mask(
    mask: ArrayLike,
    element: ArrayLike,
    *,
    anchor: Optional[tuple[int, int]] = None,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> NDArray[np.uint8]:
    """255 where a pixel of a mask under an element, turned by half a circle, is set, else 0. Arguments as of
    erode_mask.

    >>> dax.dilate_mask(np.array([[0, 0, 1, 0, 0]], np.uint8), np.ones((1, 3), np.uint8))
    array([[  0, 255, 255, 255,   0]], dtype=uint8)
    """
    return _mask("DilateMask", "8u", {"mask": mask}, element, anchor, mode, value, out, pool)


def hit_or_miss(
    mask: ArrayLike,
    hit: ArrayLike,
    miss: Optional[ArrayLike] = None,
    *,
    anchor: Optional[tuple[int, int]] = None,
    mode: WindowMode = "clip",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> NDArray[np.uint8]:
    """255 where all pixels under `hit` are set and all under `miss` are clear, else 0.

    mask: uint8, not 0 is set. hit, miss: of one shape, without a common pixel; None: all that `hit` has not. The other
    arguments as of gray_erode_mask.

    >>> dax.hit_or_miss(np.array([[0, 1, 0, 1, 1]], np.uint8), np.array([[0, 1, 0]], np.uint8))
    array([[  0, 255,   0,   0,   0]], dtype=uint8)
    """
    one = source("hit", hit, BYTES)
    other = source("miss", one.array == 0 if miss is None else miss, BYTES)
    if other.array.shape != one.array.shape:
        raise ValueError(f"miss: shape {other.array.shape}, needed is {one.array.shape}")
    if np.any((one.array != 0) & (other.array != 0)):
        raise ValueError("hit and miss have a pixel in common")
    arguments = one.pointer, one.step, other.pointer, other.step, one.size, _mask_cfg(one, anchor, mode, value)
    form = _form("HitOrMiss", out, pool, *arguments)
    return apply(_name("HitOrMiss"), {"mask": mask}, *arguments, types="8u", **form)


def thin(mask: ArrayLike, max_iterations: int = 0, *, out: Optional[Array] = None) -> NDArray[np.uint8]:
    """Thins a mask to lines of one pixel that hang together as it did (Guo and Hall, 1989).

    mask: uint8, not 0 is set. max_iterations: 0 for as many as it takes. `out` may be the mask.

    >>> dax.thin(np.ones((3, 7), np.uint8))[1]
    array([  0, 255, 255, 255, 255, 255,   0], dtype=uint8)
    """
    within("max_iterations", max_iterations, 0)
    work = "DAXI_ThinBufferSize_{type}"
    return apply(_name("Thin"), {"mask": mask}, max_iterations, types="8u", out=out, in_place=True, work=work)


def prune_branches(mask: ArrayLike, max_length: int, *, out: Optional[Array] = None) -> NDArray[np.uint8]:
    """Clears the branches of thin lines that have at most max_length pixels; lines between two ends stay.

    mask: uint8, not 0 is set. `out` may be the mask.

    >>> dax.prune_branches(np.array([[0, 1, 0, 0], [0, 0, 1, 0], [1, 1, 1, 1]], np.uint8), 1)[0]
    array([0, 0, 0, 0], dtype=uint8)
    """
    within("max_length", max_length, 0)
    work = "DAXI_PruneBranchesBufferSize_{type}"
    return apply(_name("PruneBranches"), {"mask": mask}, max_length, types="8u", out=out, in_place=True, work=work)

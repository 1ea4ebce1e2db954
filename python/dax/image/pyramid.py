"""Pyramids of images: smoothed halves of halves, and what each has that the next has not."""
from typing import Any, Optional

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, Image, refuse_overlap, source, target
from .._interface import ffi
from .._library import buffer, call, memory, needed
from ..pool import Pool, handle_of

__all__ = ["laplacian_build", "laplacian_collapse", "pyramid", "pyramid_down", "pyramid_up"]

_TYPES = tuple(np.dtype(each) for each in (np.uint8, np.uint16, np.float32))
_DIFFERENCES = tuple(np.dtype(each) for each in (np.int16, np.int32, np.float32))


def _call(name: str, pool: Optional[Pool], *arguments: Any) -> None:
    if pool is None:
        call(name, *arguments)
    else:
        threads, handle = handle_of(pool)
        call(f"{name}_MT", handle, threads, *arguments)


def _coarse_of(fine: Image, image: ArrayLike, dtype: "np.dtype[Any]") -> Image:
    coarse = source("coarse", image, (dtype,), "C1 C3")
    height, width, *rest = fine.array.shape
    shape = ((height + 1) // 2, (width + 1) // 2, *rest)
    if coarse.array.shape != shape:
        raise ValueError(f"coarse: shape {coarse.array.shape}, needed is {shape}")
    return coarse


def pyramid_down(image: ArrayLike, *, out: Optional[Array] = None, pool: Optional[Pool] = None) -> Array:
    """Half of an image, smoothed by [1 4 6 4 1] / 16 each way: pixel x lies on pixel 2 x of the image.

    image: uint8, uint16 or float32, (height, width) or (height, width, 3); the result has (height + 1) // 2 rows.

    >>> dax.pyramid_down(np.array([[0, 0, 16, 0, 0]], np.uint8))
    array([[2, 6, 2]], dtype=uint8)
    """
    src = source("image", image, _TYPES, "C1 C3")
    height, width, *rest = src.array.shape
    dst = target("out", out, ((height + 1) // 2, (width + 1) // 2, *rest), src.array.dtype)
    refuse_overlap(("image", src), ("out", dst))
    work = buffer(f"DAXI_PyrDownBufferSize_{src.suffix}", src.size)
    name = f"DAXI_PyrDown_{src.suffix}_{src.layout}R"
    _call(name, pool, src.pointer, src.step, dst.pointer, dst.step, src.size, work)
    return dst.array


def pyramid_up(
    image: ArrayLike,
    shape: Optional[tuple[int, int]] = None,
    *,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """An image in twice its size, smoothly: pixel x lies on pixel 2 x of the result.

    shape: (rows, columns) of the result, each twice that of the image or one less. Types as of pyramid_down.

    >>> dax.pyramid_up(np.array([[0, 16, 32]], np.uint8), (1, 5))
    array([[ 4,  8, 16, 24, 28]], dtype=uint8)
    """
    src = source("image", image, _TYPES, "C1 C3")
    height, width, *rest = src.array.shape
    rows, columns = (2 * height, 2 * width) if shape is None else shape
    if rows not in (2 * height - 1, 2 * height) or columns not in (2 * width - 1, 2 * width):
        raise ValueError(f"shape: {shape}, needed is twice {(height, width)}, or one less")
    dst = target("out", out, (rows, columns, *rest), src.array.dtype)
    refuse_overlap(("image", src), ("out", dst))
    work = buffer(f"DAXI_PyrUpBufferSize_{src.suffix}", src.size, dst.size)
    name = f"DAXI_PyrUp_{src.suffix}_{src.layout}R"
    _call(name, pool, src.pointer, src.step, dst.pointer, dst.step, src.size, dst.size, work)
    return dst.array


def laplacian_build(
    image: ArrayLike, coarse: ArrayLike, *, out: Optional[Array] = None, pool: Optional[Pool] = None
) -> Array:
    """What an image has that its half, taken up again, has not: int16 of uint8, int32 of uint16, or float32.

    coarse: what pyramid_down makes of the image.

    >>> image = np.array([[0, 0, 16, 0, 0]], np.uint8)
    >>> dax.laplacian_build(image, dax.pyramid_down(image))
    array([[-3, -4, 11, -4, -3]], dtype=int16)
    """
    src = source("image", image, _TYPES, "C1 C3")
    half = _coarse_of(src, coarse, src.array.dtype)
    dst = target("out", out, src.array.shape, _DIFFERENCES[_TYPES.index(src.array.dtype)])
    refuse_overlap(("image", src), ("coarse", half), ("out", dst))
    suffix = src.suffix if src.suffix == "32f" else src.suffix + dst.suffix
    work = buffer(f"DAXI_LaplacianBuildBufferSize_{suffix}", src.size)
    name = f"DAXI_LaplacianBuild_{suffix}_{src.layout}R"
    _call(name, pool, src.pointer, src.step, dst.pointer, dst.step, src.size, half.pointer, half.step, work)
    return dst.array


def laplacian_collapse(
    difference: ArrayLike, coarse: ArrayLike, *, out: Optional[Array] = None, pool: Optional[Pool] = None
) -> Array:
    """The image of which laplacian_build made the difference: exactly, but for the rounding of floats.

    >>> image = np.array([[0, 0, 16, 0, 0]], np.uint8)
    >>> coarse = dax.pyramid_down(image)
    >>> dax.laplacian_collapse(dax.laplacian_build(image, coarse), coarse)
    array([[ 0,  0, 16,  0,  0]], dtype=uint8)
    """
    src = source("difference", difference, _DIFFERENCES, "C1 C3")
    dtype = _TYPES[_DIFFERENCES.index(src.array.dtype)]
    half = _coarse_of(src, coarse, dtype)
    dst = target("out", out, src.array.shape, dtype)
    refuse_overlap(("difference", src), ("coarse", half), ("out", dst))
    suffix = src.suffix if src.suffix == "32f" else src.suffix + dst.suffix
    work = buffer(f"DAXI_LaplacianCollapseBufferSize_{suffix}", src.size)
    name = f"DAXI_LaplacianCollapse_{suffix}_{src.layout}R"
    _call(name, pool, src.pointer, src.step, dst.pointer, dst.step, src.size, half.pointer, half.step, work)
    return dst.array


def pyramid(image: ArrayLike, count: int, *, pool: Optional[Pool] = None) -> list[Array]:
    """The image and `count` levels above it, each half of the one before, in one piece of memory. Types as of
    pyramid_down.

    >>> [level.shape for level in dax.pyramid(np.zeros((50, 93), np.uint8), 3)]
    [(50, 93), (25, 47), (13, 24), (7, 12)]
    """
    if not 1 <= count <= 31:
        raise ValueError(f"count: {count}, possible are 1..31")
    src = source("image", image, _TYPES, "C1 C3")
    name = f"{src.suffix}_{src.layout}R"
    levels = ffi.new("DaxiPyramidLevel[]", count)
    call(f"DAXI_PyramidLevels_{name}", src.size, count, levels)
    model = memory(needed(f"DAXI_PyramidBuildModelSize_{name}", src.size, count))
    work = buffer(f"DAXI_PyramidBuildBufferSize_{src.suffix}", src.size, count)
    _call(f"DAXI_PyramidBuild_{name}", pool, src.pointer, src.step, src.size, count, model, work)
    rest = src.array.shape[2:]
    return [src.array] + [
        np.ndarray((each.size.height, each.size.width, *rest), src.array.dtype, ffi.buffer(model), each.offset)
        for each in levels
    ]

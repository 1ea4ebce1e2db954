"""Correlation with any kernel."""
from typing import Any, Optional

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, choice
from .._filters import FILTER_BORDERS, FilterMode
from .._interface import ffi
from .._library import call
from .._operation import apply
from ..pool import Pool

__all__ = ["correlate", "correlate_separable"]


def _run(
    operation: str,
    image: ArrayLike,
    weights: list[Array],
    shape: tuple[int, int],
    anchor: Optional[tuple[int, int]],
    shift: int,
    signed: bool,
    mode: FilterMode,
    value: float,
    out: Optional[Array],
    pool: Optional[Pool],
) -> Array:
    height, width = shape
    if not (1 <= height <= 31 and 1 <= width <= 31):
        raise ValueError(f"weights: {width} x {height}, possible are sides of 1..31")
    column, row = (width // 2, height // 2) if anchor is None else anchor
    cfg = ffi.new("DaxiConvolveCfg*")
    call("DAXI_ConvolveDefaultCfg", cfg)
    cfg.kernel, cfg.anchorX, cfg.anchorY = {"width": width, "height": height}, column, row
    cfg.shift, cfg.border, cfg.value = shift, choice("mode", mode, FILTER_BORDERS), value
    whole = all(each.dtype.kind in "iu" for each in weights)
    if whole and any(each.min() < -32767 or each.max() > 32767 for each in weights):
        raise ValueError("weights: whole numbers of at most 32767 are possible")
    kind, ctype = (np.int16, "int16_t") if whole else (np.float32, "float")
    held = [np.ascontiguousarray(each, kind) for each in weights]
    pointers = [ffi.cast(f"const {ctype}*", ffi.from_buffer(each)) for each in held]
    types = ("8u16s" if signed else "8u 16u") if whole else "8u32f 16u32f 32f"
    name = f"DAXI_{operation}_{{type}}_{{layout}}R"
    form: dict[str, Any] = {"types": types, "out": out, "pooled": name + "_MT", "pool": pool}
    return apply(name, {"image": image}, *pointers, cfg, **form)


def correlate(
    image: ArrayLike,
    weights: ArrayLike,
    *,
    anchor: Optional[tuple[int, int]] = None,
    shift: int = 0,
    signed: bool = False,
    mode: FilterMode = "replicate",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The sum of weights times the pixels around each pixel.

    image: (height, width) uint8 or uint16, or float32 with weights that are not whole. weights: (rows, columns), up to
    31 x 31. Whole weights: exact sums, times 2**-shift, rounded half to even, of the image's type, or int16 of uint8 if
    signed. Others: float32. anchor: the (column, row) of the kernel that lies on the pixel, its centre if None. mode:
    what lies outside the image; value: of mode constant. pool: threads.

    >>> dax.correlate(np.array([[1, 2, 4, 8]], np.uint8), [[1, 2, 1]], shift=2)
    array([[1, 2, 4, 7]], dtype=uint8)
    """
    kernel = np.asarray(weights)
    if kernel.ndim != 2:
        raise ValueError("weights: needed are rows of numbers")
    shape = (kernel.shape[0], kernel.shape[1])
    return _run("Filter", image, [kernel], shape, anchor, shift, signed, mode, value, out, pool)


def correlate_separable(
    image: ArrayLike,
    along: ArrayLike,
    down: ArrayLike,
    *,
    anchor: Optional[tuple[int, int]] = None,
    shift: int = 0,
    signed: bool = False,
    mode: FilterMode = "replicate",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """correlate with the weights down[row] * along[column], in two passes.

    >>> dax.correlate_separable(np.array([[1, 2, 4, 8]], np.uint8), [-1, 0, 1], [1], signed=True)
    array([[1, 3, 6, 4]], dtype=int16)
    """
    x, y = np.asarray(along), np.asarray(down)
    if x.ndim != 1 or y.ndim != 1:
        raise ValueError("along, down: needed are lists of numbers")
    return _run("FilterSeparable", image, [x, y], (y.size, x.size), anchor, shift, signed, mode, value, out, pool)

"""Images of another size."""
from typing import Literal, Optional, Union

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, choice, refuse_overlap, source, target
from .._interface import ffi
from .._library import buffer, call
from ..pool import Pool, handle_of

__all__ = ["resize"]

_TYPES = (np.dtype(np.uint8), np.dtype(np.uint16), np.dtype(np.int16), np.dtype(np.float32))
_INTERPOLATIONS = {"nearest": 0, "linear": 1, "cubic": 2, "lanczos": 3, "area": 4}
_BORDERS = {"replicate": 0, "mirror": 1, "symmetric": 2, "wrap": 3, "constant": 4}


def resize(
    image: ArrayLike,
    shape: Optional[tuple[int, int]] = None,
    *,
    factor: Union[float, tuple[float, float], None] = None,
    interpolation: Literal["nearest", "linear", "cubic", "lanczos", "area"] = "linear",
    anti_aliasing: bool = True,
    cubic_a: float = -0.5,
    mode: Literal["replicate", "mirror", "symmetric", "wrap", "constant"] = "replicate",
    value: float = 0,
    region: Optional[tuple[int, int, int, int]] = None,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The image in another size, with pixels at exact positions.

    image: uint8, uint16, int16 or float32, (height, width) or (height, width, 3). Either shape: (rows, columns) of the
    result, or factor: 1/256 to 256, one number or (for rows, for columns), of which the nearest whole sides follow.
    interpolation: lanczos has three lobes, area is the mean over what a pixel covers. anti_aliasing: where the image
    shrinks, every pixel of it counts. cubic_a: the parameter of Keys' kernel. mode: what lies outside, as in
    copy_border; value: of mode constant. region: only this part of the result, (column, row, columns, rows). pool:
    threads.

    >>> dax.resize(np.array([[0, 100]], np.uint8), (1, 4))
    array([[  0,  25,  75, 100]], dtype=uint8)
    """
    border, kernel = choice("mode", mode, _BORDERS), choice("interpolation", interpolation, _INTERPOLATIONS)
    if (shape is None) == (factor is None):
        raise ValueError("shape or factor: one of them")
    src = source("image", image, _TYPES, "C1 C3")
    cfg = ffi.new("DaxiResizeCfg*")
    call("DAXI_ResizeDefaultCfg", cfg)
    cfg.interpolation, cfg.antialias, cfg.cubicA = kernel, int(anti_aliasing), cubic_a
    cfg.border, cfg.value = border, value
    if factor is not None:
        cfg.factorY, cfg.factorX = factor if isinstance(factor, tuple) else (factor, factor)
        height, width = src.array.shape[:2]
        shape = (max(1, round(height * cfg.factorY)), max(1, round(width * cfg.factorX)))
    assert shape is not None
    x, y, columns, rows = (0, 0, shape[1], shape[0]) if region is None else region
    if columns < 1 or rows < 1:
        raise ValueError(f"region: {columns} x {rows} pixels")
    dst = target("out", out, (rows, columns, *src.array.shape[2:]), src.array.dtype)
    refuse_overlap(("image", src), ("out", dst))
    size = {"width": shape[1], "height": shape[0]}
    rect = {"x": x, "y": y, "width": columns, "height": rows}
    name = f"{src.suffix}_{src.layout}R"
    work = buffer(f"DAXI_ResizeBufferSize_{name}", src.size, size, rect, cfg)
    arguments = [src.pointer, src.step, src.size, dst.pointer, dst.step, size, rect, cfg, work]
    if pool is None:
        call(f"DAXI_Resize_{name}", *arguments)
    else:
        threads, handle = handle_of(pool)
        call(f"DAXI_Resize_{name}_MT", handle, threads, *arguments)
    return dst.array

"""Images of another size."""
from typing import Literal, Optional, Union

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, choice, refuse_overlap, source, target
from .._interface import ffi
from .._library import buffer, call

__all__ = ["resize"]

_TYPES = (np.dtype(np.uint8), np.dtype(np.uint16), np.dtype(np.float32))
_BORDERS = {"replicate": 0, "mirror": 1, "symmetric": 2, "wrap": 3}


def resize(
    image: ArrayLike,
    shape: Optional[tuple[int, int]] = None,
    *,
    factor: Union[float, tuple[float, float], None] = None,
    anti_aliasing: bool = True,
    mode: Literal["replicate", "mirror", "symmetric", "wrap"] = "replicate",
    out: Optional[Array] = None,
) -> Array:
    """The image in another size, by linear interpolation at exact positions.

    image: uint8, uint16 or float32, (height, width) or (height, width, 3). Either shape: (rows, columns) of the result,
    or factor: 1/256 to 256, one number or (for rows, for columns), of which the nearest whole sides follow.
    anti_aliasing: where the image shrinks, every pixel of it counts. mode: what lies outside, as in copy_border.

    >>> dax.resize(np.array([[0, 100]], np.uint8), (1, 4))
    array([[  0,  25,  75, 100]], dtype=uint8)
    """
    border = choice("mode", mode, _BORDERS)
    if (shape is None) == (factor is None):
        raise ValueError("shape or factor: one of them")
    src = source("image", image, _TYPES, "C1 C3")
    cfg = ffi.new("DaxiResizeCfg*")
    call("DAXI_ResizeDefaultCfg", cfg)
    cfg.antialias, cfg.border = int(anti_aliasing), border
    if factor is not None:
        cfg.factorY, cfg.factorX = factor if isinstance(factor, tuple) else (factor, factor)
        height, width = src.array.shape[:2]
        shape = (max(1, round(height * cfg.factorY)), max(1, round(width * cfg.factorX)))
    assert shape is not None
    rows, columns = shape
    dst = target("out", out, (rows, columns, *src.array.shape[2:]), src.array.dtype)
    refuse_overlap(("image", src), ("out", dst))
    rect = {"x": 0, "y": 0, "width": columns, "height": rows}
    name = f"{src.suffix}_{src.layout}R"
    work = buffer(f"DAXI_ResizeBufferSize_{name}", src.size, dst.size, rect, cfg)
    call(f"DAXI_Resize_{name}", src.pointer, src.step, src.size, dst.pointer, dst.step, dst.size, rect, cfg, work)
    return dst.array

"""What geometric operations share: the fields of their configurations, and their results."""
from typing import Any, Literal, Optional

import numpy as np

from .._arrays import Array, Image, choice, refuse_overlap, target
from .._interface import ffi
from .._library import call
from ..pool import Pool, handle_of

Interpolation = Literal["nearest", "linear", "cubic", "lanczos"]
WarpMode = Literal["replicate", "mirror", "symmetric", "wrap", "constant", "leave"]

WARPED = (np.dtype(np.uint8), np.dtype(np.uint16), np.dtype(np.int16), np.dtype(np.float32))
_INTERPOLATIONS = {"nearest": 0, "linear": 1, "cubic": 2, "lanczos": 3}
_BORDERS = {"replicate": 0, "mirror": 1, "symmetric": 2, "wrap": 3, "constant": 4, "leave": 7}


def configured(record: str, interpolation: str, mode: str, value: float, cubic_a: float, **fields: Any) -> Any:
    """A configuration with its defaults, but for these fields."""
    cfg = ffi.new(f"Daxi{record}Cfg*")
    call(f"DAXI_{record}DefaultCfg", cfg)
    cfg.interpolation = choice("interpolation", interpolation, _INTERPOLATIONS)
    cfg.border, cfg.value, cfg.cubicA = choice("mode", mode, _BORDERS), value, cubic_a
    for name, each in fields.items():
        setattr(cfg, name, each)
    return cfg


def sampled(
    operation: str,
    src: Image,
    shape: tuple[int, int],
    cfg: Any,
    out: Optional[Array],
    pool: Optional[Pool],
    *between: Any,
    whole: bool = True,
) -> Array:
    """Calls an operation that fills an image of so many rows and columns. between: arguments that stand before the
    destination. whole: it takes a rectangle, which is all of it."""
    if cfg.border == _BORDERS["leave"] and out is None:
        raise ValueError("out: mode leave needs an image to leave as it is")
    rows, columns = shape
    dst = target("out", out, (rows, columns, *src.array.shape[2:]), src.array.dtype)
    refuse_overlap(("image", src), ("out", dst))
    rect = [{"x": 0, "y": 0, "width": columns, "height": rows}] if whole else []
    name, on = f"DAXI_{operation}_{src.suffix}_{src.layout}R", []
    if pool is not None:
        threads, handle = handle_of(pool)
        name, on = name + "_MT", [handle, threads]
    call(name, *on, src.pointer, src.step, src.size, *between, dst.pointer, dst.step, dst.size, *rect, cfg)
    return dst.array

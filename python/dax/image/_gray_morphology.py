"""Calls of grey morphology by rectangles."""
from typing import Any, Optional

from numpy.typing import ArrayLike

from .._arrays import Array, Window, as_size, choice
from .._filters import WINDOW_BORDERS, WindowMode
from .._interface import ffi
from .._library import call
from .._operation import apply
from ..pool import Pool


def gray(
    operation: str,
    image: ArrayLike,
    window: Window,
    anchor: Optional[tuple[int, int]],
    iterations: int,
    mode: WindowMode,
    value: float,
    out: Optional[Array],
    pool: Optional[Pool],
) -> Array:
    """Calls DAXI_<operation>, or the form for 3 x 3 pixels where that does."""
    cfg, side = ffi.new("DaxiGrayMorphologyCfg*"), as_size(window)
    call("DAXI_GrayMorphologyDefaultCfg", cfg)
    column, row = (side["width"] // 2, side["height"] // 2) if anchor is None else anchor
    if anchor is not None and not (0 <= column < side["width"] and 0 <= row < side["height"]):
        raise ValueError(f"anchor: {anchor}, needed is a pixel (column, row) of the window {window}")
    cfg.window, cfg.anchorX, cfg.anchorY = side, column, row
    cfg.iterations, cfg.border, cfg.value = iterations, choice("mode", mode, WINDOW_BORDERS), value
    form: dict[str, Any] = {"types": "8u 16u 16s 32f", "out": out}
    usual = (window in (3, (3, 3)), anchor, iterations, mode, pool) == (True, None, 1, "clip", None)
    if usual and operation.endswith("Rect"):
        return apply(f"DAXI_{operation[:-4]}3x3_{{type}}_{{layout}}R", {"image": image}, **form)
    name, work = f"DAXI_{operation}_{{type}}_{{layout}}R", f"DAXI_{operation}BufferSize_{{type}}"
    form |= {"work": work, "measures": (cfg,), "pooled": name + "_MT", "pool": pool}
    return apply(name, {"image": image}, cfg, **form)

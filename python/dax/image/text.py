"""Text drawn into images."""
from typing import Any, Literal, NamedTuple, Optional, Sequence, Union

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, choice, pointer, source, target
from .._interface import ffi
from .._library import call

__all__ = ["TextBox", "draw_text", "text_box"]

_TYPES = (np.dtype(np.uint8), np.dtype(np.uint16))
_COLUMNS = {"left": 0, "centre": 1, "right": 2}
_ROWS = {"baseline": 0, "top": 1, "middle": 2, "bottom": 3}

Text = Union[str, bytes]
Align = Literal["left", "centre", "right"]
Anchor = Literal["baseline", "top", "middle", "bottom"]


class TextBox(NamedTuple):
    """What text takes, from its place: a box that holds all ink and every line's baseline, the length of the longest
    line, the number of lines, and of characters that the font lacks or that are ill-formed."""

    left: float
    top: float
    right: float
    bottom: float
    advance: float
    lines: int
    replaced: int


def _cfg(height: float, angle: float, slant: float, line_step: float, align: str, anchor: str) -> Any:
    cfg = ffi.new("DaxiTextCfg*")
    call("DAXI_TextDefaultCfg", cfg)
    cfg.height, cfg.angle, cfg.slant, cfg.lineStep = height, angle, slant, line_step
    cfg.alignX, cfg.alignY = choice("align", align, _COLUMNS), choice("anchor", anchor, _ROWS)
    return cfg


def _stroke(width: float, color: Sequence[int], alpha: float, antialias: bool) -> Any:
    stroke = ffi.new("DaxiStroke*")
    call("DAXI_StrokeDefault", stroke)
    stroke.width, stroke.alpha, stroke.antialias = width, alpha, int(antialias)
    stroke.color = list(color)
    return stroke


def _bytes(text: Text) -> bytes:
    return text if isinstance(text, bytes) else text.encode("utf-8", "surrogatepass")


def draw_text(
    image: ArrayLike,
    text: Text,
    position: tuple[float, float],
    color: Union[int, Sequence[int]],
    *,
    height: float = 16,
    width: float = 0,
    angle: float = 0,
    slant: float = 0,
    align: Align = "left",
    anchor: Anchor = "baseline",
    line_step: float = 1.5,
    alpha: float = 1,
    antialias: bool = True,
    out: Optional[Array] = None,
) -> Array:
    """The image with text on it.

    image: uint8 or uint16, (rows, columns) or (rows, columns, 3); `out` may be the image, which is then drawn into.
    text: lines of characters; bytes are UTF-8. position: (x, y) of what align and anchor say: of each line the start,
    the middle or the end, and of all lines the first baseline, the top of its capitals, the last baseline, or halfway
    between these two. color: a number, or one for each channel. height: of capitals, in pixels. width: of strokes; 0
    is a tenth of the height. angle: in radians, clockwise on the screen. slant: to the right, of what is one high.

    >>> picture = dax.draw_text(np.zeros((12, 20), np.uint8), "Hi", (1, 10), 255, height=8, width=1)
    >>> picture[5:8, 1:9]
    array([[  0, 204,  51,   0,   0,   0, 255,   0],
           [  0, 204, 255, 255, 255, 255, 255,   0],
           [  0, 204,  51,   0,   0,   0, 255,   0]], dtype=uint8)
    """
    src = source("image", image, _TYPES, "C1 C3")
    dst = target("out", out, src.array.shape, src.array.dtype)
    if dst.array is not src.array:
        dst.array[...] = src.array
    colors = [int(each) for each in np.atleast_1d(np.asarray(color))]
    channels = src.array.shape[2] if src.array.ndim == 3 else 1
    if len(colors) not in (1, channels):
        raise ValueError(f"color: {len(colors)} numbers for {channels} channels")
    stroke = _stroke(width, (colors * 3)[:3], alpha, antialias)
    cfg, encoded = _cfg(height, angle, slant, line_step, align, anchor), _bytes(text)
    need = ffi.new("uint64_t*")
    call("DAXI_DrawTextBufferSize", dst.size, encoded, len(encoded), cfg, stroke, need)
    work = np.empty(max(need[0], 1), np.uint8)
    name = f"DAXI_DrawText_{dst.suffix}_{dst.layout}R"
    x, y = position
    where = [dst.pointer, dst.step, dst.size, encoded, len(encoded), x, y]
    call(name, *where, cfg, stroke, pointer(work, "uint8_t"))
    return dst.array


def text_box(
    text: Text,
    *,
    height: float = 16,
    width: float = 0,
    angle: float = 0,
    slant: float = 0,
    align: Align = "left",
    anchor: Anchor = "baseline",
    line_step: float = 1.5,
) -> TextBox:
    """What text takes as draw_text draws it, relative to its position.

    >>> dax.text_box("100 mm\\u00b2", height=10, width=1)
    TextBox(left=0.0, top=-10.5, right=58.75, bottom=0.5, advance=58.75, lines=1, replaced=0)
    """
    encoded, box = _bytes(text), ffi.new("DaxiTextBox*")
    cfg = _cfg(height, angle, slant, line_step, align, anchor)
    call("DAXI_TextSize", encoded, len(encoded), cfg, _stroke(width, (0, 0, 0), 1, True), box)
    return TextBox(*(getattr(box, field) for field in TextBox._fields))

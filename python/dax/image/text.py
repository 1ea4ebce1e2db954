"""Text drawn into images."""
from typing import Any, Literal, NamedTuple, Union

from .._arrays import Array, choice
from .._interface import ffi
from .._library import buffer, call
from .drawing import Point, Stroke, _canvas, _pen

__all__ = ["TextBox", "draw_text", "text_box"]

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


def _bytes(text: Text) -> bytes:
    return text if isinstance(text, bytes) else text.encode("utf-8", "surrogatepass")


def draw_text(
    image: Array,
    text: Text,
    position: Point,
    stroke: Stroke = Stroke(width=0),
    *,
    height: float = 16,
    angle: float = 0,
    slant: float = 0,
    align: Align = "left",
    anchor: Anchor = "baseline",
    line_step: float = 1.5,
) -> Array:
    """Draws text into an image and returns the image.

    image: uint8 or uint16, (rows, columns) or (rows, columns, 3), which is changed. text: lines of characters; bytes
    are UTF-8. position: (x, y) of what align and anchor say: of each line the start, the middle or the end, and of all
    lines the first baseline, the top of its capitals, the last baseline, or halfway between these two. stroke: its
    width is the thickness; 0 is a tenth of the height. height: of capitals, in pixels. angle: in radians, clockwise on
    the screen. slant: to the right, of what is one high.

    >>> picture = dax.draw_text(np.zeros((12, 20), np.uint8), "Hi", (1, 10), dax.Stroke(255), height=8)
    >>> picture[5:8, 1:9]
    array([[  0, 204,  51,   0,   0,   0, 255,   0],
           [  0, 204, 255, 255, 255, 255, 255,   0],
           [  0, 204,  51,   0,   0,   0, 255,   0]], dtype=uint8)
    """
    dst = _canvas(image)
    pen, cfg = _pen(stroke, 3 if dst.layout == "C3" else 1), _cfg(height, angle, slant, line_step, align, anchor)
    encoded = _bytes(text)
    work = buffer("DAXI_DrawTextBufferSize", dst.size, encoded, len(encoded), cfg, pen)
    what = [encoded, len(encoded), *position, cfg, pen, work]
    call(f"DAXI_DrawText_{dst.suffix}_{dst.layout}R", dst.pointer, dst.step, dst.size, *what)
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
    call("DAXI_TextSize", encoded, len(encoded), cfg, _pen(Stroke(width=width), 1), box)
    return TextBox(*(getattr(box, field) for field in TextBox._fields))

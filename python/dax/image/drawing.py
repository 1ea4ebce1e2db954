"""Shapes drawn into images: lines, polylines, arrows, rectangles, ellipses, arcs, polygons with holes, markers."""
from dataclasses import dataclass
from typing import Any, Literal, Sequence, Union

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, Image, choice, numbers, target
from .._interface import ffi
from .._library import buffer, call

__all__ = [
    "draw_arc",
    "draw_arrow",
    "draw_ellipse",
    "draw_line",
    "draw_markers",
    "draw_polygon",
    "draw_polyline",
    "draw_rectangle",
    "Stroke",
]

Join = Literal["round", "miter", "bevel"]
Cap = Literal["butt", "round", "square"]
Rule = Literal["even-odd", "non-zero"]
Marker = Literal["plus", "cross", "star", "square", "diamond", "triangle", "circle"]
Point = Union[tuple[float, float], Sequence[float], Array]

_JOINS = {"round": 0, "miter": 1, "bevel": 2}
_CAPS = {"butt": 0, "round": 1, "square": 2}
_RULES = {"even-odd": 0, "non-zero": 1}
_MARKERS = {"plus": 0, "cross": 1, "star": 2, "square": 3, "diamond": 4, "triangle": 5, "circle": 6}
_PIXELS = (np.dtype(np.uint8), np.dtype(np.uint16))


@dataclass(frozen=True)
class Stroke:
    """A pen. color: one level, or one for each channel. width: in pixels; 0 fills closed shapes. miter_limit: miters
    longer than so many widths become bevels. antialias: pixels at the edge get as much of the colour as the shape
    covers of them, exactly. alpha: opacity, 0 to 1."""

    color: Union[int, Sequence[int]] = 0
    width: float = 1
    join: Join = "round"
    cap: Cap = "butt"
    miter_limit: float = 4
    antialias: bool = True
    alpha: float = 1


def _pen(stroke: Stroke, channels: int) -> Any:
    pen = ffi.new("DaxiStroke*")
    call("DAXI_StrokeDefault", pen)
    pen.width, pen.miterLimit, pen.alpha = stroke.width, stroke.miter_limit, stroke.alpha
    pen.join, pen.cap = choice("join", stroke.join, _JOINS), choice("cap", stroke.cap, _CAPS)
    pen.antialias = int(stroke.antialias)
    levels = np.broadcast_to(numbers("color", np.atleast_1d(stroke.color), (None,), np.int32), channels)
    pen.color[0:channels] = [int(level) for level in levels]
    return pen


def _canvas(image: Array) -> Image:
    if isinstance(image, np.ndarray) and image.dtype not in _PIXELS:
        raise TypeError(f"image: pixels of type {image.dtype}; taken are uint8, uint16")
    return target("image", image, getattr(image, "shape", ()), getattr(image, "dtype", np.uint8))


def _points(name: str, values: ArrayLike) -> tuple[Array, Any]:
    """The points, which the caller keeps alive, and their address."""
    held = numbers(name, values, (None, 2), np.float64)
    return held, ffi.cast("DaxiPoint64f*", held.ctypes.data)


def _drawn(shape: str, image: Array, stroke: Stroke, geometry: Sequence[Any], query: Sequence[Any]) -> Array:
    """Calls DAXI_Draw<shape> with a buffer that its query tells the size of, from these of its arguments."""
    dst = _canvas(image)
    pen = _pen(stroke, 3 if dst.layout == "C3" else 1)
    asked = [] if shape == "Polygon" else [pen]
    work = buffer(f"DAXI_Draw{shape}BufferSize", dst.size, *query, *asked)
    call(f"DAXI_Draw{shape}_{dst.suffix}_{dst.layout}R", dst.pointer, dst.step, dst.size, *geometry, pen, work)
    return dst.array


def draw_line(image: Array, start: Point, end: Point, stroke: Stroke = Stroke()) -> Array:
    """Draws a line into an image, from one point (x, y) to another, and returns the image.

    image: uint8 or uint16, (height, width) or (height, width, 3), which is changed. A pixel is the unit square about
    its centre, which is at whole numbers; what lies outside the image is cut off.

    >>> dax.draw_line(np.zeros((3, 6), np.uint8), (0.5, 1), (3, 1), dax.Stroke(255))[1]
    array([  0, 255, 255, 128,   0,   0], dtype=uint8)
    """
    return _drawn("Line", image, stroke, [*start, *end], [])


def draw_polyline(image: Array, points: ArrayLike, stroke: Stroke = Stroke(), *, closed: bool = False) -> Array:
    """Draws lines through points, (n, 2), as one shape: where they meet or cross, a pixel is still drawn once.

    >>> dax.draw_polyline(np.zeros((3, 4), np.uint8), [(1, 0), (1, 2), (3, 2)], dax.Stroke(9, antialias=False))
    array([[0, 9, 0, 0],
           [0, 9, 0, 0],
           [0, 9, 9, 9]], dtype=uint8)
    """
    held, address = _points("points", points)
    return _drawn("Polyline", image, stroke, [address, len(held), int(closed)], [len(held)])


def draw_arrow(
    image: Array,
    start: Point,
    tip: Point,
    stroke: Stroke = Stroke(),
    *,
    head: float = 10,
    spread: float = 0.4,
) -> Array:
    """Draws a line with two barbs at its tip. head: their length; spread: their angle to the line, in radians.

    >>> pen = dax.Stroke(9, antialias=False)
    >>> dax.draw_arrow(np.zeros((5, 6), np.uint8), (0, 2), (5, 2), pen, head=3, spread=np.pi / 4)[1]
    array([0, 0, 0, 0, 9, 0], dtype=uint8)
    """
    return _drawn("Arrow", image, stroke, [*start, *tip, head, spread], [])


def draw_rectangle(
    image: Array, centre: Point, size: tuple[float, float], stroke: Stroke = Stroke(), *, angle: float = 0
) -> Array:
    """Draws a rectangle of (width, height) about its centre, turned clockwise by the angle in radians; a stroke of
    width 0 fills it.

    >>> dax.draw_rectangle(np.zeros((3, 5), np.uint8), (2, 1), (3, 1), dax.Stroke(9, width=0))[1]
    array([0, 9, 9, 9, 0], dtype=uint8)
    """
    return _drawn("Rect", image, stroke, [*centre, *size, angle], [])


def draw_ellipse(
    image: Array,
    centre: Point,
    radii: Union[float, tuple[float, float]],
    stroke: Stroke = Stroke(),
    *,
    angle: float = 0,
) -> Array:
    """Draws a circle of one radius, or an ellipse of two half axes, the first at the angle; a stroke of width 0 fills
    it.

    >>> dax.draw_ellipse(np.zeros((3, 5), np.uint8), (2, 1), (2, 1), dax.Stroke(9, width=0, antialias=False))[1]
    array([9, 9, 9, 9, 9], dtype=uint8)
    """
    a, b = radii if isinstance(radii, tuple) else (radii, radii)
    return _drawn("Ellipse", image, stroke, [*centre, a, b, angle], [a, b])


def draw_arc(
    image: Array,
    centre: Point,
    radii: Union[float, tuple[float, float]],
    start: float,
    span: float,
    stroke: Stroke = Stroke(),
    *,
    angle: float = 0,
) -> Array:
    """Draws the part of a circle or an ellipse that begins at the angle `start` and spans so many radians, clockwise
    where positive; of an ellipse they are those of its parameter. A stroke of width 0 fills the sector.

    >>> quarter = dax.draw_arc(np.zeros((6, 6), np.uint8), (0, 0), 5, 0, np.pi / 2, dax.Stroke(255, width=0))
    >>> int(quarter[2, 2]), int(quarter[5, 5])
    (255, 0)
    """
    a, b = radii if isinstance(radii, tuple) else (radii, radii)
    return _drawn("Arc", image, stroke, [*centre, a, b, angle, start, span], [a, b, span])


def draw_polygon(
    image: Array,
    outlines: Union[ArrayLike, Sequence[ArrayLike]],
    stroke: Stroke = Stroke(),
    *,
    rule: Rule = "even-odd",
) -> Array:
    """Fills what an outline, (n, 2), or several of them enclose; holes are outlines too.

    rule: what is inside where they overlap: what is crossed an odd number of times on the way out, or what they turn
    around at all.

    >>> square = np.array([(0, 0), (4, 0), (4, 4), (0, 4)]) - 0.5
    >>> dax.draw_polygon(np.zeros((4, 4), np.uint8), [square, square / 2 + 0.75], dax.Stroke(7))
    array([[7, 7, 7, 7],
           [7, 0, 0, 7],
           [7, 0, 0, 7],
           [7, 7, 7, 7]], dtype=uint8)
    """
    given: Any = outlines
    parts = [given] if np.ndim(given[0]) == 1 else list(given)
    held = [numbers("outlines", each, (None, 2), np.float64) for each in parts]
    lengths = np.array([len(each) for each in held], np.int32)
    together, address = _points("outlines", np.concatenate(held))
    contours = [ffi.cast("int32_t*", lengths.ctypes.data), len(lengths), choice("rule", rule, _RULES)]
    return _drawn("Polygon", image, stroke, [address, len(together), *contours], [len(together)])


def draw_markers(
    image: Array,
    points: ArrayLike,
    shape: Marker = "plus",
    stroke: Stroke = Stroke(),
    *,
    size: float = 9,
    angle: float = 0,
) -> Array:
    """Draws a marker at each of the points, (n, 2), in a square of that size, turned by the angle; a stroke of width 0
    fills those that are closed.

    >>> dax.draw_markers(np.zeros((3, 7), np.uint8), [(1, 1), (5, 1)], "plus", dax.Stroke(9, antialias=False), size=2)
    array([[0, 9, 0, 0, 0, 9, 0],
           [9, 9, 9, 0, 9, 9, 9],
           [0, 9, 0, 0, 0, 9, 0]], dtype=uint8)
    """
    held, address = _points("points", points)
    which = choice("shape", shape, _MARKERS)
    return _drawn("Marker", image, stroke, [address, len(held), size, angle, which], [len(held), size, which])

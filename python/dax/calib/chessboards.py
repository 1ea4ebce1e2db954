"""Chessboard corners for camera calibration: three detectors, and refinement to parts of a pixel.

Corners come as arrays of (rows, columns, 2), x and y in pixels, row by row; turning from the direction of the rows to
that of the columns is turning from x to y. Boards of any size have at least as many columns as rows. Where the colours
of a board tell its ends apart (columns + rows odd) the square between the first four corners is dark, however the board
is turned; otherwise the board is `ambiguous`, and its first row is the one nearer the top of the image.
"""
import dataclasses
from typing import Any, Literal, NamedTuple, Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import BYTES, Array, Image, Window, as_size, choice, numbers, of_shape, pointer, source, warn, within
from .._interface import ffi
from .._library import buffer, call
from .._records import dtype_of, view
from ..errors import Error
from ..image.means import mean
from ..pool import Pool, handle_of
from . import _order

__all__ = [
    "Board",
    "Chessboard",
    "Corners",
    "arrange_corners",
    "check_corners",
    "find_checkerboards",
    "find_checkerboards_by_symmetry",
    "find_chessboard",
    "locate_corners",
    "refine_corners",
]

_MAX_CORNERS = 2048  # corners that detectors of boards of any size look at
_NO_BOARD = 0x10000103
_DARK = {"otsu": 0, "local-mean": 1}
_DETECTORS: tuple[Literal["symmetry", "hessian"], ...] = ("symmetry", "hessian")
_FILTERS = {"median": 1, "plain": 2}


@dataclasses.dataclass(frozen=True)
class Board:
    """A board. corners: (rows, columns, 2). The others, (rows, columns, ...): into_dark, into_light, unit vectors along
    the edges through a corner (turning on from x towards y leads into a dark or a light square); response; radius at
    which it was found, pixels."""

    corners: NDArray[np.float32]
    into_dark: NDArray[np.float32]
    into_light: NDArray[np.float32]
    response: NDArray[np.float32]
    radius: NDArray[np.float32]

    @property
    def ambiguous(self) -> bool:
        """Whether the board looks the same when it is turned by half a turn."""
        return _order.is_ambiguous(*self.corners.shape[1::-1])


class Chessboard(NamedTuple):
    """A board of known size; np.asarray makes it its corners.

    corners: (rows, columns, 2). good: (rows, columns), whether a corner passed the checks: four edges around it, and a
    place on the board that a homography and a smooth lens explain. ambiguous: the board looks the same when it is
    turned by half a turn. detector: "symmetry", "hessian" or "squares".
    """

    corners: NDArray[np.float32]
    good: NDArray[np.bool_]
    ambiguous: bool
    detector: Literal["symmetry", "hessian", "squares"]

    def __array__(self, dtype: Any = None, copy: Any = None) -> Array:
        return np.array(self.corners, dtype)


class Corners(NamedTuple):
    """Corners in no order, a structured array as in the C interface: point, intoDark, intoLight, response, radius."""

    records: Array

    @property
    def points(self) -> NDArray[np.float32]:
        """(n, 2) x, y."""
        return _vectors(self.records["point"])


def find_chessboard(
    image: ArrayLike,
    columns: int,
    rows: int,
    *,
    dark: Literal["otsu", "local-mean"] = "otsu",
    levels: int = 8,
    pool: Optional[Pool] = None,
) -> Optional[Chessboard]:
    """Finds the inner corners of a board of known size, refined, or None: by symmetry, else by the Hessian, else by its
    squares, of which all corners must pass the checks then. Where the first two see a larger board only, the squares
    are not asked: they would take a part of it.

    image: (height, width) uint8, sides 64..65536. columns, rows: inner corners, 2..25. For squares: dark, below the
    image's Otsu level, or below the mean around; levels, erosions to try, 1..18. Of 26 photographs squares alone
    find 20 with "otsu", 18 with "local-mean".

    >>> squares = np.indices((6, 8)).sum(0) % 2 * 200 + 20
    >>> image = np.pad(np.kron(squares, np.ones((20, 20))), 40, constant_values=220).astype(np.uint8)
    >>> board = dax.find_chessboard(image, 7, 5)
    >>> np.abs(board.corners[0, :2] - [[59.5, 59.5], [79.5, 59.5]]).max() < 0.1
    True
    >>> board.good.all(), board.ambiguous, board.detector
    (True, True, 'symmetry')
    """
    src = source("image", image, BYTES)
    choice("dark", dark, _DARK)
    extent = (max(min(columns, rows), 2), 300)
    sees_larger = False
    for name in _DETECTORS:
        if name == "symmetry":
            found = find_checkerboards_by_symmetry(src.array, 16, extent=extent, pool=pool)
        else:
            found = find_checkerboards(src.array, 16, extent=extent)
        fitting = [each for each in found if sorted(each.corners.shape[:2]) == sorted((rows, columns))]
        for board in fitting:
            corners = board.corners
            turns = _order.turns_to(
                corners, _order.dark_by_edges(corners, board.into_dark, board.into_light), rows, columns
            )
            corners = np.rot90(corners, turns).copy()
            if name == "hessian":
                corners = _refined(src.array, corners, _half_window(corners), 30, 1e-4, False)
            good = _order.good(src.array, corners)
            if good.mean() >= 0.5:
                return Chessboard(corners, good, _order.is_ambiguous(columns, rows), name)
        sees_larger = sees_larger or any(len(each.corners.reshape(-1, 2)) > columns * rows for each in found)
    by_squares = None if sees_larger else _squares(src, columns, rows, dark, levels)
    if by_squares is None:
        return None
    corners = _refined(src.array, by_squares, _half_window(by_squares), 30, 1e-4, False)
    corners = np.rot90(
        corners, _order.turns_to(corners, _order.dark_by_image(src.array, corners), rows, columns)
    ).copy()
    good = _order.good(src.array, corners)
    return Chessboard(corners, good, _order.is_ambiguous(columns, rows), "squares") if good.all() else None


def _squares(src: Image, columns: int, rows: int, dark: str, levels: int) -> Optional[NDArray[np.float32]]:
    """The detector of boards of known size, on a picture that it can tell the levels of."""
    picture = src.array
    if dark == "local-mean":
        picture = _opened_mask(picture)
    if len(np.unique(picture)) <= 2:  # Otsu's level would set all
        picture = mean(picture, 3)
    seen, pattern = source("image", picture), {"columns": columns, "rows": rows}
    work = buffer("DAXI_ChessboardCornerBufferSize_8u", seen.size, pattern)
    # Boards beyond the limit are refused; larger ones than 25 x 25 need no room.
    corners = np.zeros((min(rows, 25), min(columns, 25), 2), np.float32)
    count, found = ffi.new("int32_t*"), ffi.new("int32_t*")
    outputs = pointer(corners, "DaxiPoint32f"), count, found
    arguments = seen.pointer, seen.step, seen.size, pattern, *outputs, _DARK["otsu"], levels, work
    call("DAXI_ChessboardCorner_8u_C1R", *arguments)
    return corners if found[0] else None


def _opened_mask(image: Array) -> Array:
    """0 where a picture is darker than around, 255 elsewhere, without dark specks that would join squares."""
    side = min(255, max(9, min(image.shape) // 8))
    dark = np.pad(image.astype(np.int16) < mean(image, side).astype(np.int16) - 3, 1)
    for erodes in (True, False):
        parts = np.stack([np.roll(dark, (i, j), (0, 1)) for i in (-1, 0, 1) for j in (-1, 0, 1)])
        dark = parts.all(0) if erodes else parts.any(0)
    return np.where(dark[1:-1, 1:-1], 0, 255).astype(np.uint8)


def _half_window(corners: Array) -> int:
    """Of a search that sees no second corner."""
    return int(np.clip(np.floor(0.4 * _order.spacing(corners).min()), 2, 11))


def check_corners(image: ArrayLike, corners: ArrayLike, radius: float = 4.0) -> NDArray[np.bool_]:
    """Whether each point (..., 2) is a corner of a chessboard: a ring of that radius around it crosses four edges,
    opposite ones at opposite places. image: (height, width) uint8. radius: pixels, at least 1, less than half a square.

    >>> image = np.kron([[0, 255], [255, 0]], np.ones((40, 40))).astype(np.uint8)
    >>> dax.check_corners(image, [[39.5, 39.5], [39.5, 20.0], [43.0, 38.0]])
    array([ True, False, False])
    """
    src, points = source("image", image, BYTES), np.asarray(corners)
    flat = numbers("corners", points.reshape(-1, 2), (None, 2))
    within("radius", radius, 1, 1e6)
    radii = np.full(len(flat), float(radius))
    return _order.look_like_corners(src.array, flat, radii).reshape(points.shape[:-1])


def refine_corners(
    image: ArrayLike,
    corners: Optional[ArrayLike],
    half_window: Window = 5,
    iterations: int = 30,
    epsilon: float = 1e-4,
    verify: bool = False,
) -> NDArray[np.float32]:
    """Corners to parts of a pixel, where every gradient around is perpendicular to the way to it.

    image: (height, width) uint8, sides from 64. corners: (..., 2) x, y to start from. half_window: 2..50, or
    (horizontal, vertical); should hold no second corner. iterations: maximum number of rounds. epsilon: the search ends
    below this squared shift. verify: corners that do not look like one keep their place. A warning says how many of the
    results are no corners; `check_corners` tells which.

    >>> image = np.kron([[0, 255], [255, 0]], np.ones((40, 40))).astype(np.uint8)
    >>> np.abs(dax.refine_corners(image, [[41.0, 38.0]]) - 39.5).max() < 0.01
    True
    """
    if corners is None:
        raise ValueError("corners: none were found")
    src = source("image", image, BYTES)
    refined = _refined(src.array, np.asarray(corners), half_window, iterations, epsilon, verify)
    width, height = as_size(half_window).values()
    radius = float(np.clip(0.8 * min(width, height), 2, 20))
    bad = int(np.count_nonzero(~check_corners(src.array, refined, radius)))
    if bad:
        warn(f"{bad} of {refined.size // 2} refined points do not look like corners: check_corners tells which")
    return refined


def _refined(
    image: Array, start: Array, half_window: Window, iterations: int, epsilon: float, verify: bool
) -> NDArray[np.float32]:
    src = source("image", image, BYTES)
    if start.ndim < 1 or start.shape[-1] != 2:
        raise ValueError(f"corners: shape {start.shape}, needed is (..., 2)")
    flat = numbers("corners", start.reshape(-1, 2), (None, 2))
    refined = np.empty_like(flat)
    call(
        "DAXI_ChessboardCornerGetSubpix_8u_C1R" + ("_v2" if verify else ""),
        *(src.pointer, src.step, src.size, pointer(flat, "DaxiPoint32f"), len(flat)),
        *(as_size(half_window), iterations, pointer(refined, "DaxiPoint32f"), epsilon),
    )
    return refined.reshape(start.shape)


def find_checkerboards(
    image: ArrayLike,
    max_count: int = 1,
    *,
    extent: tuple[int, int] = (3, 300),
    filter: Literal["median", "plain"] = "median",
    sub_sampling: int = 1,
    angle: tuple[float, float] = (40.0, 90.0),
) -> list[Board]:
    """Finds boards of any size by the Hessian of the smoothed image, the one with the most corners first.

    image: (height, width) uint8, sides 64..65536; squares from 10 pixels on after sub-sampling (1..5). max_count:
    boards returned. extent: minimum and maximum number of corners along a side, 2..300. filter: a 3 x 3 median against
    noise. angle: minimum and maximum angle between a corner's edges, degrees.

    >>> squares = np.indices((6, 8)).sum(0) % 2 * 200 + 20
    >>> image = np.pad(np.kron(squares, np.ones((20, 20))), 40, constant_values=220).astype(np.uint8)
    >>> [board.corners.shape for board in dax.find_checkerboards(image)]
    [(5, 7, 2)]
    """
    src = source("image", image, BYTES)
    param = _hessian(extent, filter, sub_sampling, angle)
    max_count, several = min(max_count, _MAX_CORNERS), max_count != 1
    name = ("Mul" if several else "") + "CheckerboardCornerHessian"
    work = buffer(f"DAXI_{name}BufferSize_8u", src.size)
    points, corners, boards, count = _board_room(max_count)
    arguments = src.pointer, src.step, src.size, points, corners, work, param, boards
    call(f"DAXI_{name}_8u_C1R", *arguments, *((max_count, count) if several else ()))
    return _boards(corners, boards, count[0] if several else 1)


def find_checkerboards_by_symmetry(
    image: ArrayLike,
    max_count: int = 1,
    *,
    extent: tuple[int, int] = (3, 300),
    filter: Literal["median", "plain"] = "median",
    contrast: int = 20,
    distance: int = 5,
    radius: int = 5,
    ladder: bool = True,
    mask: Optional[ArrayLike] = None,
    pool: Optional[Pool] = None,
) -> list[Board]:
    """Finds boards of any size by symmetry around corners, refined; the one with the most corners first.

    image, max_count, extent, filter: as for `find_checkerboards`. contrast: minimum difference of dark and light,
    1..255. distance: no two corners are nearer, 3..100 pixels. radius: 3..100 pixels, with `ladder` the end of the
    scales that are tried, otherwise the only one. mask: as the image; corners where it is not 0.

    >>> squares = np.indices((6, 8)).sum(0) % 2 * 200 + 20
    >>> image = np.pad(np.kron(squares, np.ones((20, 20))), 40, constant_values=220).astype(np.uint8)
    >>> [board.corners.shape for board in dax.find_checkerboards_by_symmetry(image)]
    [(5, 7, 2)]
    """
    src = source("image", image, BYTES)
    cfg = ffi.new("CheckerboardSymCfg*", {"minExtent": extent[0], "maxExtent": extent[1], "contrast": contrast})
    cfg.distance, cfg.lastRadius, cfg.filter = distance, radius, choice("filter", filter, _FILTERS)
    cfg.scales = 2 if ladder else 1
    max_count, several = min(max_count, _MAX_CORNERS), max_count != 1
    name = "CheckerboardCornerSym" + ("Mul" if several else "")
    work = buffer(f"DAXI_{name}BufferSize_8u", src.size)
    points, corners, boards, count = _board_room(max_count)
    images = [src.pointer, src.step]
    if mask is not None:
        cover = of_shape("mask", mask, src.array.shape)
        images += [cover.pointer, cover.step]
    outputs = points, corners, boards, *((max_count, count) if several else ())
    try:
        call(
            f"DAXI_{name}_8u_C1R{'M' if mask is not None else ''}",
            *images,
            src.size,
            *outputs,
            cfg,
            work,
            handle_of(pool)[1],
        )
    except Error as error:
        if error.status == _NO_BOARD:
            return []
        raise
    return _boards(corners, boards, count[0] if several else 1)


def locate_corners(
    image: ArrayLike, max_count: int = _MAX_CORNERS, filter: Literal["median", "plain"] = "median"
) -> Corners:
    """The first step of `find_checkerboards`: verified corners in no particular order, at most `max_count`.

    >>> image = np.kron([[0, 255], [255, 0]], np.ones((40, 40))).astype(np.uint8)
    >>> np.abs(dax.locate_corners(image).points - 39.5).max() < 0.5
    True
    """
    src = source("image", image, BYTES)
    work = buffer("DAXI_CheckerboardCornerHessian_LocBufferSize_8u", src.size)
    max_count = min(max_count, _MAX_CORNERS)
    corners, count = ffi.new("CheckerboardCorner[]", max(max_count, 1)), ffi.new("int32_t*")
    param = _hessian((2, 300), filter, 1, (40.0, 90.0))
    arguments = src.pointer, src.step, src.size, corners, max_count, count, work, param
    call("DAXI_CheckerboardCornerHessian_Loc_8u_C1R", *arguments)
    return Corners(view("CheckerboardCorner", corners, count[0]))


def arrange_corners(corners: Corners, max_count: int = 1, extent: tuple[int, int] = (3, 300)) -> list[Board]:
    """The second step of `find_checkerboards`: boards among at most 2048 corners.

    >>> squares = np.indices((6, 8)).sum(0) % 2 * 200 + 20
    >>> image = np.pad(np.kron(squares, np.ones((20, 20))), 40, constant_values=220).astype(np.uint8)
    >>> [board.corners.shape for board in dax.arrange_corners(dax.locate_corners(image))]
    [(5, 7, 2)]
    """
    if not isinstance(corners, Corners):
        raise TypeError("corners: as locate_corners gives them")
    records = np.ascontiguousarray(corners.records)
    if records.dtype != dtype_of("CheckerboardCorner") or records.ndim != 1:
        raise TypeError("corners: as locate_corners gives them")
    if not len(records):
        return []
    max_count, several = min(max_count, _MAX_CORNERS), max_count != 1
    name = f"DAXI_{'Mul' if several else ''}CheckerboardCornerHessian_Sort"
    work = buffer(f"{name}BufferSize", len(records))
    arranged = ffi.new("CheckerboardCorner[]", len(records))
    boards, count = ffi.new("CheckerboardGrid[]", max(max_count, 1)), ffi.new("int32_t*")
    param = _hessian(extent, "plain", 1, (0.0, 180.0))
    arguments = pointer(records, "CheckerboardCorner"), len(records), arranged, work, param, boards
    call(name, *arguments, *((max_count, count) if several else ()))
    return _boards(arranged, boards, count[0] if several else 1)


def _hessian(extent: tuple[int, int], filter: str, sub_sampling: int, angle: tuple[float, float]) -> Any:
    values = choice("filter", filter, _FILTERS), sub_sampling, *extent, *angle
    return ffi.new("CheckerboardHessianParam*", values)


def _board_room(max_count: int) -> tuple[Any, Any, Any, Any]:
    """Points, corners, boards and their number, as outputs."""
    boards = ffi.new("CheckerboardGrid[]", max(max_count, 1))
    points, corners = ffi.new("DaxiPoint32f[]", _MAX_CORNERS), ffi.new("CheckerboardCorner[]", _MAX_CORNERS)
    return points, corners, boards, ffi.new("int32_t*")


def _vectors(points: Array) -> NDArray[np.float32]:
    return np.stack([points["x"], points["y"]], axis=-1)


def _boards(corners: Any, boards: Any, count: int) -> list[Board]:
    records = view("CheckerboardCorner", corners, len(corners))
    return [_board(records, boards[i]) for i in range(count) if boards[i].columns]


def _board(records: Array, board: Any) -> Board:
    grid = records[board.first : board.first + board.columns * board.rows].reshape(board.rows, board.columns)
    point, dark, light = (_vectors(grid[name]) for name in ("point", "intoDark", "intoLight"))
    columns, rows = max(grid.shape), min(grid.shape)
    turns = _order.turns_to(point, _order.dark_by_edges(point, dark, light), rows, columns)
    ordered = (np.rot90(each, turns).copy() for each in (point, dark, light, grid["response"], grid["radius"]))
    return Board(*ordered)

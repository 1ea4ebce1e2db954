"""The order of a board's corners, and whether corners are what they should be."""
from typing import Any

import numpy as np
from numpy.typing import NDArray

from .._arrays import Array

Grid = NDArray[np.float32]
_RING = 64  # samples of a ring
_FOUR = 4  # squares that meet at a corner


def is_ambiguous(columns: int, rows: int) -> bool:
    """Whether a board of so many corners looks the same when it is turned by half a turn."""
    return (columns + rows) % 2 == 0


def dark_by_edges(corners: Grid, into_dark: Grid, into_light: Grid) -> float:
    """Above 0 where the square between the first four corners is dark: turning on from the direction of the rows leads
    into the square of a corner, and so does turning on from one of its edges into a dark or a light one."""
    along = np.gradient(corners.astype(float), axis=1)
    votes = np.abs((along * into_dark).sum(-1)) - np.abs((along * into_light).sum(-1))
    return float((votes * _signs(*corners.shape[:2])).sum())


def dark_by_image(image: Array, corners: Grid) -> float:
    """The same from grey values at the middle of the squares."""
    middles = (corners[:-1, :-1] + corners[1:, 1:] + corners[:-1, 1:] + corners[1:, :-1]) / 4
    gray = _at(image, middles)
    signs = _signs(*gray.shape)
    return float(gray[signs < 0].mean() - gray[signs > 0].mean())


def _signs(rows: int, columns: int) -> NDArray[np.float64]:
    return np.asarray(1.0 - 2.0 * (np.indices((rows, columns)).sum(0) % 2))


def turns_to(corners: Grid, dark: float, rows: int, columns: int) -> int:
    """Quarter turns of the grid (np.rot90) that bring it to its order: `rows` rows; the first square dark where that
    can be told; else the first row nearer the top."""
    possible = [k for k in range(4) if np.rot90(corners, k).shape[:2] == (rows, columns)]
    # A turn of the grid moves the first square: by a column, both, a row less one.
    have_rows, have_columns = corners.shape[:2]
    # Steps between the first squares, plus an even number.
    moves = (0, have_columns, have_rows + have_columns, have_rows)
    darkness = [dark * (-1) ** moves[k] for k in possible]
    if max(darkness) > 0 > min(darkness):
        possible = [k for k, value in zip(possible, darkness) if value > 0]
    heights = [float(np.rot90(corners, k)[0, :, 1].mean()) for k in possible]
    return possible[int(np.argmin(heights))]


def look_like_corners(image: Array, points: Grid, radii: NDArray[np.float64]) -> NDArray[np.bool_]:
    """Whether a ring around each point (n, 2) crosses four edges, opposite ones at opposite places."""
    angles = 2 * np.pi * np.arange(_RING) / _RING
    circle = np.stack([np.cos(angles), np.sin(angles)], -1)
    rings = _at(image, points[:, None].astype(float) + radii[:, None, None] * circle)
    low, high = rings.min(1, keepdims=True), rings.max(1, keepdims=True)
    bright = rings > (low + high) / 2
    changes = bright != np.roll(bright, 1, 1)
    good = (changes.sum(1) == _FOUR) & (high - low > 8)[:, 0]
    for i in np.flatnonzero(good):
        at = np.flatnonzero(changes[i])
        apart = (at[2:] - at[:2]) - _RING // 2  # samples from half a turn
        good[i] = np.abs(apart).max() <= 0.06 * _RING
    size = image.shape[::-1]
    inside = ((points - radii[:, None] >= 0) & (points + radii[:, None] <= np.array(size) - 1)).all(1)
    return np.asarray(good & inside & np.isfinite(points).all(1))


def spacing(corners: Grid) -> NDArray[np.float64]:
    """(rows, columns): distance of each corner to its nearest neighbour in the grid."""
    grid = corners.astype(float)
    shortest = np.full(grid.shape[:2], np.inf)
    for axis in (0, 1):
        steps = np.linalg.norm(np.diff(grid, axis=axis), axis=-1)
        first: list[Any] = [slice(None)] * 2
        last: list[Any] = [slice(None)] * 2
        first[axis], last[axis] = slice(None, -1), slice(1, None)
        for part in (tuple(first), tuple(last)):
            shortest[part] = np.minimum(shortest[part], steps)
    return shortest


def off_the_board(corners: Grid) -> NDArray[np.float64]:
    """(rows, columns): distance of each corner from a homography with a smooth lens: a cubic in the board's
    coordinates."""
    rows, columns = corners.shape[:2]
    v, u = np.meshgrid(np.linspace(-1, 1, rows), np.linspace(-1, 1, columns), indexing="ij")
    flat, plane = corners.reshape(-1, 2).astype(float), np.stack([u, v, np.ones_like(u)], -1).reshape(-1, 3)
    scale = np.abs(flat - flat.mean(0)).max()
    target = (flat - flat.mean(0)) / scale
    zero = np.zeros_like(plane)
    of_x = np.hstack([plane, zero, -target[:, :1] * plane])
    of_y = np.hstack([zero, plane, -target[:, 1:] * plane])
    system = np.concatenate([of_x, of_y])
    h = np.linalg.svd(system)[2][-1].reshape(3, 3)
    mapped = plane @ h.T
    rest = target - mapped[:, :2] / mapped[:, 2:]
    if len(rest) >= 24:
        x, y = plane[:, 0], plane[:, 1]
        cubic = np.stack([x**i * y**j for i in range(4) for j in range(4 - i)], -1)
        # Fitted twice: the second time without what lies far off.
        weights = np.ones(len(rest))
        for _ in range(2):
            fit = cubic @ np.linalg.lstsq(weights[:, None] * cubic, weights[:, None] * rest, rcond=None)[0]
            size = np.linalg.norm(rest - fit, axis=1)
            weights = (size <= 3 * np.median(size) + 1e-9).astype(float)
        rest = rest - fit
    return np.asarray(np.linalg.norm(rest, axis=1).reshape(rows, columns) * scale)


def good(image: Array, corners: Grid) -> NDArray[np.bool_]:
    """Which corners pass the checks: by a ring, and by their place on the board."""
    apart = spacing(corners)
    radii = np.clip(0.4 * apart, 2, 20).ravel()
    ring = look_like_corners(image, corners.reshape(-1, 2), radii).reshape(apart.shape)
    return np.asarray(ring & (off_the_board(corners) <= np.maximum(0.5, 0.08 * apart)))


def _at(image: Array, places: NDArray[Any]) -> NDArray[np.float64]:
    """Grey values between pixels; NaN as 0."""
    height, width = image.shape
    x = np.clip(np.nan_to_num(places[..., 0].astype(float)), 0, width - 1.001)
    y = np.clip(np.nan_to_num(places[..., 1].astype(float)), 0, height - 1.001)
    i, j = y.astype(int), x.astype(int)
    b, a = y - i, x - j
    pixels = image.astype(float)
    upper = pixels[i, j] * (1 - a) + pixels[i, j + 1] * a
    lower = pixels[i + 1, j] * (1 - a) + pixels[i + 1, j + 1] * a
    return np.asarray(upper * (1 - b) + lower * b)

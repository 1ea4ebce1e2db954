"""Robust line fitting."""
from typing import Literal, NamedTuple, Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import choice, numbers, pair, pointer, within
from .._interface import ffi
from .._library import buffer, call

__all__ = ["Line", "fit_line"]

_STARTS = {"least-squares": 1, "all-pairs": 2, "some-pairs": 3}
_WEIGHTS = {"least-squares": 1, "huber": 2, "tukey": 3}
# dtype: (suffix of the call, suffix of the query, C type); all others are taken as single precision.
_POINTS = {
    "int16": ("16s32f", "16s", "DaxiPoint16s"),
    "int32": ("32s32f", "32s", "DaxiPoint32s"),
    "float32": ("32f", "32f", "DaxiPoint32f"),
}


class Line(NamedTuple):
    """A line a x + b y + c = 0 with a^2 + b^2 = 1.

    inliers: (n,) whether each point was within the threshold. weights: (n,) 0..1, of the last round. rms: root mean
    square of the distances of the inliers; rms_all: of all points, pixels, without weights.
    """

    a: float
    b: float
    c: float
    inliers: NDArray[np.bool_]
    weights: NDArray[np.float32]
    rms: float
    rms_all: float

    def distances(self, points: ArrayLike) -> NDArray[np.float64]:
        """Signed distance of each of (n, 2) points, in pixels."""
        x, y = numbers("points", points, (None, 2), np.float64).T
        distances: NDArray[np.float64] = self.a * x + self.b * y + self.c
        return distances


def fit_line(
    points: ArrayLike,
    *,
    weights: Literal["least-squares", "huber", "tukey"] = "huber",
    start: Literal["least-squares", "all-pairs", "some-pairs"] = "least-squares",
    threshold: float = 1e6,
    rejected: int = 0,
    iterations: int = 50,
    angle: Optional[tuple[float, float]] = None,
) -> Line:
    """Fits a line to points with outliers, by weighted total least squares in rounds.

    points: (n, 2) x, y in pixels, n >= 2; int16, int32, or taken as float32. weights: weight function. start: first
    line, by all points (outliers pull it away: the threshold must leave room for that) or by search over pairs, which
    takes many outliers (time grows with n^2 and more; "some-pairs" limits it). threshold: points further from the line
    take no part, pixels. rejected: number of worst points that take no part, fewer than n - 1. iterations: maximum
    number of rounds. angle: (expected, tolerance) of the direction, radians.

    >>> line = dax.fit_line([[0, 1], [1, 2], [2, 3], [3, 40], [4, 5]], start="all-pairs", threshold=0.5)
    >>> line.inliers, round(-line.a / line.b, 5), round(-line.c / line.b, 5)
    (array([ True,  True,  True, False,  True]), 1.0, 1.0)
    """
    name = np.asarray(points).dtype.name
    call_suffix, query_suffix, ctype = _POINTS[name if name in _POINTS else "float32"]
    array = numbers("points", points, (None, 2), name if name in _POINTS else np.float32)
    within("iterations", iterations, 1)
    within("rejected", rejected, 0, max(len(array) - 2, 0))
    within("threshold", threshold, 1.2e-7)
    cfg = ffi.new(
        "LineFitCfg*",
        {
            "initMethod": choice("start", start, _STARTS),
            "weightFunction": choice("weights", weights, _WEIGHTS),
            "maxIterations": iterations,
            "maxRejected": rejected,
            "distanceThreshold": threshold,
            "angleConstraint": int(angle is not None),
        },
    )
    if angle is not None:
        cfg.expectedAngle, cfg.angleTolerance = pair("angle", angle, "(expected, tolerance) in radians")
        within("angle: expected", angle[0], -np.pi, np.pi)
        within("angle: tolerance", angle[1], 0, np.pi)
    line, rms = ffi.new("DaxiLine*"), ffi.new("float*")
    inliers, shares = np.zeros(len(array), np.uint8), np.zeros(len(array), np.float32)
    work = buffer(f"DAXI_LineFitRegreBufferSize_{query_suffix}", len(array))
    outputs = line, pointer(inliers, "uint8_t"), pointer(shares, "float"), rms, work
    call(f"DAXI_LineFitRegre_{call_suffix}", pointer(array, ctype), len(array), cfg, *outputs)
    # The library's rms mixes the weights in.
    kept = inliers.astype(bool)
    found = Line(line.a, line.b, line.c, kept, shares, 0.0, 0.0)
    squares = found.distances(array) ** 2
    of_kept = float(np.sqrt(squares[kept].mean())) if kept.any() else 0.0
    return found._replace(rms=of_kept, rms_all=float(np.sqrt(squares.mean())))

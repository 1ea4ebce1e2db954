"""Robust circle fitting."""
from typing import Literal, NamedTuple

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import choice, numbers, pointer, within
from .._interface import ffi
from .._library import buffer, call

__all__ = ["Circle", "fit_circle"]

_METHODS = {"algebraic": "Regre", "geometric": "LeastSquare", "ransac": "Ransac"}
_WEIGHTS = {"least-squares": 1, "huber": 2, "tukey": 3}
# dtype: (suffix, C type); all others are taken as single precision.
_POINTS = {
    "int16": ("16s32f", "DaxiPoint16s"),
    "int32": ("32s32f", "DaxiPoint32s"),
    "float32": ("32f", "DaxiPoint32f"),
}
_LIMIT = 1


class Circle(NamedTuple):
    """A circle about (x, y) with radius r, pixels.

    inliers: (n,) whether each point was used. weights: (n,) 0..1, of the last round. rms, max_distance: of the points
    that were used. sigma: the deviation of a point that they show. errors: (3,) standard errors of x, y and r, and
    covariance: (3, 3), infinite for three points. arc: angle that the points span, radians. converged: False where
    iterations ended the fit.
    """

    x: float
    y: float
    r: float
    inliers: NDArray[np.bool_]
    weights: NDArray[np.float32]
    rms: float
    max_distance: float
    sigma: float
    errors: NDArray[np.float64]
    covariance: NDArray[np.float64]
    arc: float
    iterations: int
    converged: bool

    def distances(self, points: ArrayLike) -> NDArray[np.float64]:
        """Signed distance of each of (n, 2) points from the circle, above 0 outside, in pixels."""
        x, y = numbers("points", points, (None, 2), np.float64).T
        distances: NDArray[np.float64] = np.hypot(x - self.x, y - self.y) - self.r
        return distances


def fit_circle(
    points: ArrayLike,
    *,
    method: Literal["algebraic", "geometric", "ransac"] = "geometric",
    weights: Literal["least-squares", "huber", "tukey"] = "huber",
    threshold: float = 0,
    rejected: int = 0,
    iterations: int = 50,
    min_scale: float = 0.005,
    radius: tuple[float, float] = (0, 1e9),
    trials: int = 10000,
    confidence: float = 0.99,
    seed: int = 1,
) -> Circle:
    """Fits a circle to points with outliers.

    points: (n, 2) x, y in pixels, n >= 3; int16, int32, or taken as float32. method: "geometric" has the least squared
    distances; "algebraic" is faster and nearly as good on more than a third of a circle; "ransac" takes many outliers
    and needs a threshold. weights: weight function of the rounds. threshold: points further from the circle take no
    part, pixels; 0 for none. rejected: number of worst points that take no part. min_scale: deviation of points that
    counts as none, pixels. radius: (min, max) that is taken, pixels. trials, confidence, seed: of "ransac".

    >>> circle = dax.fit_circle([[5, 0], [3, 4], [0, 5], [-5, 0], [4, -3]])
    >>> abs(circle.r - 5) < 1e-9, bool(circle.inliers.all())
    (True, True)
    """
    name = np.asarray(points).dtype.name
    suffix, ctype = _POINTS[name if name in _POINTS else "float32"]
    array = numbers("points", points, (None, 2), name if name in _POINTS else np.float32)
    kind = choice("method", method, _METHODS)
    within("iterations", iterations, 1)
    within("rejected", rejected, 0)
    within("threshold", threshold, 0)
    if kind == "Ransac" and not threshold > 0:
        raise ValueError("threshold: ransac needs the largest distance of a point that belongs, in pixels")
    cfg = ffi.new("CircleFitCfg*")
    call("DAXI_CircleFitDefaultCfg", cfg)
    cfg.weightFunction, cfg.maxIterations = choice("weights", weights, _WEIGHTS), iterations
    cfg.maxRejected, cfg.trials, cfg.minScale = rejected, trials, min_scale
    if kind == "Ransac":
        cfg.inlierDistance = threshold
    else:
        cfg.distanceThreshold = threshold
    cfg.minRadius, cfg.maxRadius = radius
    cfg.confidence, cfg.seed = confidence, seed
    found = ffi.new("DaxiCircleFit*")
    inliers, shares = np.zeros(len(array), np.uint8), np.zeros(len(array), np.float32)
    work = buffer("DAXI_CircleFitBufferSize", len(array))
    outputs = found, pointer(inliers, "uint8_t"), pointer(shares, "float"), work
    call(f"DAXI_CircleFit{kind}_{suffix}", pointer(array, ctype), len(array), cfg, *outputs)
    covariance = np.diag(np.array(list(found.se)) ** 2)
    for (i, j), value in zip(((0, 1), (0, 2), (1, 2)), found.cov):
        covariance[i, j] = covariance[j, i] = value
    return Circle(
        found.x,
        found.y,
        found.r,
        inliers.astype(bool),
        shares,
        found.rms,
        found.maxAbs,
        found.sigma,
        np.array(list(found.se)),
        covariance,
        found.arc,
        int(found.iterations),
        not found.flags & _LIMIT,
    )

"""Sample consensus: the model that explains most of the data although many of them may be gross errors.

Models are computed from samples of as few data as determine one, drawn at random, and rated by their residuals to all
data; the best one is fitted to its inliers. method: "ransac" counts outliers; "msac" sums squared residuals up to that
of the threshold; "lmeds" takes the median residual and needs no threshold that fits the noise, if less than half of the
data are outliers; "prosac" tries the first data first, which should be the best ones. The same seed gives the same
result on every machine and with any pool.
"""
from typing import Any, Callable, Literal, NamedTuple, Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._arrays import choice, numbers, pointer, within
from ._interface import ffi
from ._library import buffer, call, function, text
from .errors import Error
from .pool import Pool, handle_of

NAMESPACE = True
__all__ = ["Consensus", "circle", "line", "plane", "run", "sphere"]

Vector = NDArray[np.float64]
Method = Literal["ransac", "msac", "lmeds", "prosac"]
_METHODS = {"ransac": 0, "msac": 1, "lmeds": 2, "prosac": 3}
_LIMIT = 1
_RAISED = 1  # status of a callback that raised an exception


class Consensus(NamedTuple):
    """A model and its inliers.

    model: (d,) as the function says. inliers: (n,) whether the residual was at most `threshold`. cost: of the model, by
    the method. confidence: that a sample without outliers was drawn, as far as the inliers tell; is_confident: whether
    it is what was asked for, which max_iterations may have prevented. degenerate: samples that had no model.
    """

    model: Vector
    inliers: NDArray[np.bool_]
    cost: float
    threshold: float
    confidence: float
    is_confident: bool
    iterations: int
    degenerate: int


def run(
    n: int,
    solve: Callable[[NDArray[np.int32]], Optional[ArrayLike]],
    residuals: Callable[[Vector, slice], ArrayLike],
    refit: Optional[Callable[[NDArray[np.int32], Vector], Optional[ArrayLike]]] = None,
    *,
    sample_size: int,
    model_size: int,
    max_models: int = 1,
    threshold: float = 1,
    method: Method = "msac",
    confidence: float = 0.99,
    max_iterations: int = 10000,
    local_iterations: int = 10,
    seed: int = 1,
) -> Consensus:
    """The best model of any kind for n data, which only the callbacks see.

    solve(indices): the model through sample_size data, (model_size,), or several, (k, model_size), or None.
    residuals(model, part): of the data of a slice. refit(indices, model): a better model for those data, starting from
    one, or None. An exception in a callback ends the call and comes out of it.

    >>> x = np.arange(10.0)
    >>> y = np.where(x % 3 == 2, 50, 4 + 2 * x)
    >>> through = lambda i: np.polyfit(x[i], y[i], 1)
    >>> away = lambda model, part: y[part] - np.polyval(model, x[part])
    >>> found = dax.consensus.run(10, through, away, sample_size=2, model_size=2, threshold=0.1)
    >>> found.model.round(6), found.inliers.sum()
    (array([2., 4.]), 7)
    """
    cfg = _configuration(threshold, method, confidence, max_iterations, local_iterations, seed)
    callbacks = _Callbacks(model_size, max_models, sample_size)
    model = ffi.new("PrmtSacModel*", {"sampleSize": sample_size, "maxModels": max_models, "modelDoubles": model_size})
    model.solve, model.residual2 = callbacks.solve(solve), callbacks.residual2(residuals)
    if refit is not None:
        model.refit = callbacks.refit(refit)
    work = buffer("PRMT_SAC_RunBufferSize_f64", model, n, cfg, 1)
    result, inliers = ffi.new("PrmtSacResult*"), np.zeros(max(n, 0), np.uint8)
    mask = pointer(inliers, "uint8_t")
    status = function("PRMT_SAC_Run_f64")(model, n, cfg, ffi.NULL, result, mask, work)
    if callbacks.error is not None:
        raise callbacks.error
    if status:
        raise Error("PRMT_SAC_Run_f64", status, text(status))
    return _found(result, inliers, model_size)


def line(points: ArrayLike, threshold: float = 1, **settings: Any) -> Consensus:
    """The line a x + b y + c = 0 through most of (n, 2) points, model (a, b, c); (a, b) has length 1 and its larger
    component is positive. Points of float32 are rated in single precision. settings: method, confidence,
    max_iterations, local_iterations and seed as for run, and pool.

    >>> dax.consensus.line([[0, 1], [1, 2], [2, 3], [3, 40], [4, 5]], 0.1).inliers
    array([ True,  True,  True, False,  True])
    """
    return _shape("Line2", 2, 3, points, threshold, **settings)


def circle(points: ArrayLike, threshold: float = 1, **settings: Any) -> Consensus:
    """The circle through most of (n, 2) points, model (x, y, radius); settings as for line."""
    return _shape("Circle", 2, 3, points, threshold, **settings)


def plane(points: ArrayLike, threshold: float = 1, **settings: Any) -> Consensus:
    """The plane a x + b y + c z + d = 0 through most of (n, 3) points, model (a, b, c, d); (a, b, c) has length 1 and
    its largest component is positive; settings as for line."""
    return _shape("Plane", 3, 4, points, threshold, **settings)


def sphere(points: ArrayLike, threshold: float = 1, **settings: Any) -> Consensus:
    """The sphere through most of (n, 3) points, model (x, y, z, radius); settings as for line."""
    return _shape("Sphere", 3, 4, points, threshold, **settings)


def _shape(
    name: str,
    dimension: int,
    model_size: int,
    points: ArrayLike,
    threshold: float,
    *,
    method: Method = "msac",
    confidence: float = 0.99,
    max_iterations: int = 10000,
    local_iterations: int = 10,
    seed: int = 1,
    pool: Optional[Pool] = None,
) -> Consensus:
    is_single = np.asarray(points).dtype == np.float32
    array = numbers("points", points, (None, dimension), np.float32 if is_single else np.float64)
    cfg = _configuration(threshold, method, confidence, max_iterations, local_iterations, seed)
    threads, handle = handle_of(pool)
    work = buffer("PRMT_SAC_ShapeBufferSize", len(array), cfg, threads)
    result, inliers = ffi.new("PrmtSacResult*"), np.zeros(len(array), np.uint8)
    suffix, ctype = ("f32", "float") if is_single else ("f64", "double")
    own = (pointer(array, ctype), dimension, len(array), cfg, result, pointer(inliers, "uint8_t"), work)
    if pool is None:
        call(f"PRMT_SAC_{name}_{suffix}", *own)
    else:
        call(f"PRMT_SAC_{name}_{suffix}_MT", handle, threads, *own)
    return _found(result, inliers, model_size)


def _configuration(
    threshold: float, method: Method, confidence: float, max_iterations: int, local_iterations: int, seed: int
) -> Any:
    cfg = ffi.new("PrmtSacCfg*")
    call("PRMT_SAC_DefaultCfg", cfg)
    cfg.method = choice("method", method, _METHODS)
    within("threshold", threshold, 1e-150, 1e150)
    within("confidence", confidence, 0, 0.999999999999)
    within("max_iterations", max_iterations, 1)
    within("local_iterations", local_iterations, 0, 1000)
    cfg.threshold, cfg.confidence, cfg.seed = threshold, confidence, seed
    cfg.maxIterations, cfg.localIterations = max_iterations, local_iterations
    return cfg


def _found(result: Any, inliers: NDArray[np.uint8], model_size: int) -> Consensus:
    model = np.array(list(result.model)[:model_size])
    is_confident = not result.flags & _LIMIT
    counts = int(result.iterations), int(result.degenerate)
    return Consensus(
        model, inliers.astype(bool), result.cost, result.threshold, result.confidence, is_confident, *counts
    )


class _Callbacks:
    """The callbacks of one run, and the first exception that one of them raised."""

    def __init__(self, model_size: int, max_models: int, sample_size: int) -> None:
        self.model_size, self.max_models, self.sample_size = model_size, max_models, sample_size
        self.error: Optional[BaseException] = None
        self.kept: list[Any] = []

    def _callback(self, ctype: str, made: Callable[..., None]) -> Any:
        def guarded(*arguments: Any) -> int:
            made(*arguments)
            return 0

        self.kept.append(ffi.callback(ctype, guarded, error=_RAISED, onerror=self._keep))
        return self.kept[-1]

    def _keep(self, kind: Any, error: BaseException, trace: Any) -> None:
        self.error = self.error or error.with_traceback(trace)

    def _model(self, address: Any) -> Vector:
        return np.frombuffer(ffi.buffer(address, 8 * self.model_size), np.float64)

    def solve(self, given: Callable[[NDArray[np.int32]], Optional[ArrayLike]]) -> Any:
        def apply(sample: Any, user: Any, models: Any, count: Any) -> None:
            indices = np.frombuffer(ffi.buffer(sample, 4 * self.sample_size), np.int32).copy()
            solved = given(indices)
            if solved is None:
                return
            found = numbers("solve", np.atleast_2d(np.asarray(solved)), (None, self.model_size), np.float64)
            if len(found) > self.max_models:
                raise ValueError(f"solve: {len(found)} models, max_models is {self.max_models}")
            room = ffi.buffer(models, 8 * self.model_size * self.max_models)
            np.frombuffer(room, np.float64)[: found.size] = found.ravel()
            count[0] = len(found)

        return self._callback("PrmtSacSolve", apply)

    def residual2(self, given: Callable[[Vector, slice], ArrayLike]) -> Any:
        def apply(model: Any, first: int, count: int, user: Any, squares: Any) -> None:
            values = given(self._model(model).copy(), slice(first, first + count))
            found = numbers("residuals", values, (count,), np.float64)
            np.frombuffer(ffi.buffer(squares, 8 * count), np.float64)[:] = found**2

        return self._callback("PrmtSacResidual2", apply)

    def refit(self, given: Callable[[NDArray[np.int32], Vector], Optional[ArrayLike]]) -> Any:
        def apply(indices: Any, count: int, user: Any, model: Any, found: Any) -> None:
            data = np.frombuffer(ffi.buffer(indices, 4 * count), np.int32).copy()
            better = given(data, self._model(model).copy())
            found[0] = better is not None
            if better is not None:
                self._model(model)[:] = numbers("refit", better, (self.model_size,), np.float64)

        return self._callback("PrmtSacRefit", apply)

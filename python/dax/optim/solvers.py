"""Least squares by Levenberg-Marquardt, dense and sparse.

Callbacks get arrays of their own and return arrays. An exception in a callback ends the call and comes out of it as it
is. The interpreter lock is released between callbacks. Parameters may live on a manifold: `update` says what x (+) step
is, x + step by default, and derivatives are then those by the step at 0. Given the same values from the callbacks,
solvers give the same bits on every machine.
"""
from typing import Any, Callable, Literal, NamedTuple, Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import Array, choice, numbers, pointer
from .._interface import ffi
from .._library import memory, needed
from ._callbacks import Callbacks, Memo, Residuals, Update, array_at
from .results import DENSE_ELEMENTS, DENSE_PARAMETERS, Linear, Minimum, Settings, Solution, Vector, search
from .sparse import Filler, Matrix, SparseMatrix

__all__ = [
    "Blocks",
    "BlockShape",
    "least_squares",
    "least_squares_blocks",
    "minimize_blocks",
    "minimize_normal",
    "numeric_jacobian",
]


def least_squares(
    residuals: Residuals,
    x0: ArrayLike,
    jacobian: Optional[Callable[[Vector], Matrix]] = None,
    *,
    update: Optional[Update] = None,
    method: Literal["cholesky", "cg"] = "cholesky",
    huber: Optional[float] = None,
    elements: int = 0,
    settings: Settings = Settings(),
    cg_tolerance: float = 1e-8,
    cg_iterations: int = 500,
    cg_block: int = 1,
    cg_model: float = 0.1,
) -> Solution:
    """Minimises half the sum of squared residuals.

    residuals(x): (m,) at x of (n,). jacobian(x): derivatives (m, n) as a dense array, a SparseMatrix, a SciPy sparse
    matrix, or a tuple of triplets (rows, columns, values); without it by forward differences of 1e-6. method: sparse
    Cholesky factors, or conjugate gradients for large problems, with blocks of cg_block parameters (1..16) as
    preconditioner, which end when iteration k lowers the quadratic model by a share of at most cg_model / k. huber:
    residuals above it count linearly. elements: maximum number of elements of the Jacobian, where that changes;
    otherwise as many as at x0.

    >>> t = np.arange(5.0)
    >>> found = dax.least_squares(lambda x: x[0] * np.exp(-x[1] * t) - 3 * np.exp(-0.5 * t), [1, 1])
    >>> np.abs(found.x - [3, 0.5]).max() < 1e-4
    True
    """
    rate, weigh = _rating(huber)
    callbacks, start = Callbacks(update, rate), numbers("x0", x0, (None,), np.float64).copy()
    measured = Memo(residuals)
    n, m = len(start), numbers("residuals", measured(start.copy()), (None,), np.float64).size
    functions = ffi.new("PrmtLmFunctions*", {"update": callbacks.update})
    functions.residuals = callbacks.residuals(measured, m)
    filler = Filler("jacobian", (m, n))
    if jacobian is None:
        functions.jacobian = callbacks.differences(functions, n, m)
        functions.elements = elements
    else:
        derived = Memo(jacobian, lambda value: tuple(map(np.copy, filler.triplets(value))))
        functions.elements = max(elements, filler.count(derived(start.copy()))) or 1
        functions.jacobian = callbacks.matrix("PrmtJacobianFunction", lambda x, *_: derived(x), filler)
    variant, own = _variant(choice("method", method, {"cholesky": "", "cg": "CG_"}), huber)
    if variant == "CG_":
        own = (ffi.new("PrmtCgParam*", (cg_tolerance, cg_iterations, cg_block, 0, cg_model)),)
    query = needed(f"PRMT_LM_{variant}BufferSize_f64", n, m, functions.elements) if n and m else 1
    name = f"PRMT_LM_{variant}Process_f64"

    def run(settings: Settings) -> float:
        return callbacks.solve(name, query, start, n, m, functions, callbacks.user, settings._record(), *own)

    def linear(x: Vector) -> Linear:
        slopes = numeric_jacobian(residuals, x, update) if jacobian is None else derived(x)
        rows, columns, values = filler.elements(slopes)
        r = numbers("residuals", measured(x), (m,), np.float64)
        weighted = values * weigh(r)[rows]
        gradient, diagonal = (np.bincount(columns, weighted * each, n).astype(float) for each in (r[rows], values))
        dense = None
        if n <= DENSE_PARAMETERS and n * m <= DENSE_ELEMENTS:
            one, other = np.zeros((m, n)), np.zeros((m, n))
            one[rows, columns], other[rows, columns] = values, weighted
            dense = one.T @ other
        return Linear(gradient, diagonal, dense)

    outcome = search(run, callbacks.trace, settings, start, linear)
    calls, last = measured.calls, numbers("residuals", measured(start.copy()), (m,), np.float64).copy()
    return Solution(start, rate(last), calls, outcome, linear, last)


def _rating(huber: Optional[float]) -> tuple[Callable[[Vector], float], Callable[[Vector], Vector]]:
    """The energy of residuals, and their weights."""
    if huber is None:
        return lambda r: float((r * r).sum() / 2), lambda r: np.ones(len(r))
    limit = float(huber)

    def rate(r: Vector) -> float:
        size = np.abs(r)
        return float(np.where(size <= limit, size**2 / 2, limit * (size - limit / 2)).sum())

    def weigh(r: Vector) -> Vector:
        return np.asarray(np.minimum(1, limit / np.maximum(np.abs(r), np.finfo(float).tiny)))

    return rate, weigh


def _variant(variant: str, huber: Optional[float]) -> tuple[str, tuple[Any, ...]]:
    if huber is None:
        return variant, ()
    if variant:
        raise ValueError("huber: goes with the method cholesky")
    return "HUBER_", (float(huber),)


def numeric_jacobian(residuals: Residuals, x: ArrayLike, update: Optional[Update] = None) -> NDArray[np.float64]:
    """(m, n) derivatives of the residuals at x, by forward differences of 1e-6.

    >>> dax.numeric_jacobian(lambda x: [x[0] * x[1], 3 * x[1]], [2, 5]).round(3)
    array([[5., 2.],
           [0., 3.]])
    """
    callbacks, at = Callbacks(update), numbers("x", x, (None,), np.float64).copy()
    m = numbers("residuals", residuals(at.copy()), (None,), np.float64).size
    n = len(at)
    result = SparseMatrix((m, n), m * n)
    scratch = memory(8 * (2 * m + 2 * n))
    measured = callbacks.residuals(residuals, m)
    address = ffi.cast("double*", scratch)
    callbacks.call(
        "PRMT_JacNum_Process_f64",
        pointer(at, "double"),
        n,
        m,
        callbacks.user,
        measured,
        callbacks.update,
        result._matrix,
        address,
    )
    return result.toarray()


def minimize_normal(
    energy: Callable[[Vector], float],
    normal: Callable[[Vector, float], tuple[Matrix, ArrayLike]],
    x0: ArrayLike,
    *,
    update: Optional[Update] = None,
    elements: int = 0,
    settings: Settings = Settings(),
) -> Minimum:
    """Minimises an energy of which the caller forms the normal equations.

    normal(x, damping): (H, b), the matrix (n, n) in any form that `least_squares` takes, with the damping added to its
    diagonal, and the right-hand side (n,), -J^T r. Only elements on and below the diagonal count. elements: maximum
    number of those of H.

    >>> a = np.array([[2.0, 1], [1, 3]])
    >>> energy, equations = lambda x: x @ a @ x / 2, lambda x, damping: (a + damping * np.eye(2), -a @ x)
    >>> found = dax.minimize_normal(energy, equations, [5, 6])
    >>> np.abs(found.x).max() < 1e-4
    True
    """
    callbacks, start = Callbacks(update), numbers("x0", x0, (None,), np.float64).copy()
    n = len(start)
    measured, filler = Memo(energy), Filler("normal: H", (n, n))
    formed = normal(start.copy(), settings.initial_damping)
    functions = ffi.new(
        "PrmtLmHmspFunctions*", {"update": callbacks.update, "elements": max(elements, filler.count(formed[0])) or 1}
    )
    functions.energy = callbacks.energy(measured)

    def form(x: Vector, damping: float, right: Any) -> Any:
        matrix, side = normal(x, damping)
        array_at(right, n)[:] = numbers("normal: b", side, (n,), np.float64)
        return matrix

    functions.normal = callbacks.normal(form, filler)
    query = needed("PRMT_LM_HMSP_BufferSize_f64", n, 1, functions.elements) if n else 1
    name = "PRMT_LM_HMSP_Process_f64"

    def run(settings: Settings) -> float:
        return callbacks.solve(name, query, start, n, 1, functions, callbacks.user, settings._record())

    def linear(x: Vector) -> Linear:
        matrix, side = normal(x, 0.0)
        rows, columns, values = filler.elements(matrix)
        diagonal, dense = np.zeros(n), None
        diagonal[rows[rows == columns]] = values[rows == columns]
        if n <= DENSE_PARAMETERS:
            lower = np.zeros((n, n))
            lower[rows, columns] = values
            dense = np.tril(lower) + np.tril(lower, -1).T
        return Linear(-numbers("normal: b", side, (n,), np.float64), diagonal, dense)

    outcome = search(run, callbacks.trace, settings, start, linear)
    return Minimum(start, float(measured(start.copy())), measured.calls, outcome, linear)


class Blocks(NamedTuple):
    """Parts of a block normal matrix (A W; W^T B) and its right-hand side, undamped.

    a: (count_a size_a, count_a size_a), below the diagonal. b: (count_b, size_b, size_b). w: (links, size_a, size_b).
    rhs_a: (count_a, size_a). rhs_b: (count_b, size_b).
    """

    a: ArrayLike
    b: ArrayLike
    w: ArrayLike
    rhs_a: ArrayLike
    rhs_b: ArrayLike


class BlockShape(NamedTuple):
    """Parameters of count_a blocks of size_a (1..64) values, then count_b of size_b (1..16): cameras and points, say.
    links: pairs (block of A, block of B) that are tied to each other, each once, in the order of Blocks.w."""

    size_a: int
    count_a: int
    size_b: int
    count_b: int
    links: ArrayLike


def minimize_blocks(
    energy: Callable[[Vector], float],
    normal: Callable[[Vector], Blocks],
    x0: ArrayLike,
    shape: BlockShape,
    *,
    update: Optional[Update] = None,
    settings: Settings = Settings(),
) -> Minimum:
    """Minimises an energy whose normal matrix has two kinds of blocks, of which the second never touch each other. They
    are eliminated (Schur complement).

    energy(x); normal(x): the undamped blocks at x, the right-hand side -J^T r.

    >>> shape = dax.BlockShape(1, 1, 1, 2, [(0, 0), (0, 1)])
    >>> def normal(x):  # a + b[j] = j, a = 0
    ...     r = [x[0] + x[1], x[0] + x[2] - 1, x[0]]
    ...     return dax.Blocks([[3]], [[[1]], [[1]]], [[[1]], [[1]]], [[-sum(r)]], [[-r[0]], [-r[1]]])
    >>> def energy(x):
    ...     return ((x[0] + x[1]) ** 2 + (x[0] + x[2] - 1) ** 2 + x[0] ** 2) / 2
    >>> np.abs(dax.minimize_blocks(energy, normal, [5, 5, 5], shape).x - [0, 0, 1]).max() < 1e-4
    True
    """
    callbacks, start = Callbacks(update), numbers("x0", x0, (None,), np.float64).copy()
    n, layout = len(start), _Layout(shape)
    measured = Memo(energy)
    functions = ffi.new("PrmtLmHblkFunctions*", {"update": callbacks.update, "shape": layout.record[0]})
    functions.energy = callbacks.energy(measured)
    functions.normal = callbacks.callback(
        "PrmtBlockFunction", lambda x, n, m, user, h: layout.fill(h, normal(array_at(x, n).copy()))
    )
    query = needed("PRMT_LM_HBLK_BufferSize_f64", n, 1, layout.record)
    name = "PRMT_LM_HBLK_Process_f64"

    def run(settings: Settings) -> float:
        return callbacks.solve(name, query, start, n, 1, functions, callbacks.user, settings._record())

    def linear(x: Vector) -> Linear:
        blocks = normal(x)
        side = np.concatenate([np.ravel(blocks.rhs_a), np.ravel(blocks.rhs_b)]).astype(float)
        diagonals = np.diagonal(blocks.a), np.diagonal(np.asarray(blocks.b), axis1=1, axis2=2).ravel()
        dense = _dense_normal(layout.shape, blocks) if n <= DENSE_PARAMETERS else None
        return Linear(-side, np.concatenate(diagonals), dense)

    outcome = search(run, callbacks.trace, settings, start, linear)
    return Minimum(start, float(measured(start.copy())), measured.calls, outcome, linear)


def least_squares_blocks(
    residuals: Residuals,
    jacobians: Callable[[Vector], tuple[ArrayLike, ArrayLike]],
    x0: ArrayLike,
    shape: BlockShape,
    *,
    update: Optional[Update] = None,
    settings: Settings = Settings(),
) -> Solution:
    """Least squares where every link of `shape` has residuals of its own, which depend on its two blocks alone: bundle
    adjustment.

    residuals(x): (links, s). jacobians(x): derivatives by the block of A, (links, s, size_a), and by the block of B,
    (links, s, size_b).

    >>> links = np.array([(0, 0), (0, 1), (1, 0), (1, 1)])
    >>> seen = np.array([[3.0], [5], [4], [6]])  # shift of a camera + place of a point
    >>> residuals = lambda x: (x[links[:, 0]] + x[2 + links[:, 1]])[:, None] - seen
    >>> ones = np.ones((4, 1, 1))
    >>> shape = dax.BlockShape(1, 2, 1, 2, links)
    >>> found = dax.least_squares_blocks(residuals, lambda x: (ones, ones), [0, 0, 0, 0], shape)
    >>> found.energy < 1e-8
    True
    """
    links = numbers("shape: links", shape.links, (None, 2), np.int64)
    measured = Memo(residuals)

    def at(x: Vector) -> Array:
        return numbers("residuals", measured(x), (len(links), None), np.float64)

    def normal(x: Vector) -> Blocks:
        r = at(x)
        by_a, by_b = jacobians(x)
        ja = numbers("jacobians: by A", by_a, (*r.shape, shape.size_a), np.float64)
        jb = numbers("jacobians: by B", by_b, (*r.shape, shape.size_b), np.float64)
        return _normal_blocks(shape, links, r, ja, jb)

    energy = lambda x: float((at(x) ** 2).sum() / 2)
    found = minimize_blocks(energy, normal, x0, shape, update=update, settings=settings)
    calls, last = measured.calls, at(found.x.copy()).ravel()
    return Solution(found.x, found.energy, calls, found.outcome, found.linear, last)


def _normal_blocks(shape: BlockShape, links: Array, r: Array, ja: Array, jb: Array) -> Blocks:
    def gathered(owner: Array, count: int, each: Array) -> Array:
        total = np.zeros((count, *each.shape[1:]))
        np.add.at(total, owner, each)
        return total

    cameras, points = links.T
    diagonal = gathered(cameras, shape.count_a, np.einsum("lsi,lsj->lij", ja, ja))
    a = np.zeros((shape.count_a, shape.size_a, shape.count_a, shape.size_a))
    a[np.arange(shape.count_a), :, np.arange(shape.count_a), :] = diagonal
    return Blocks(
        a.reshape(shape.count_a * shape.size_a, -1),
        gathered(points, shape.count_b, np.einsum("lsi,lsj->lij", jb, jb)),
        np.einsum("lsi,lsj->lij", ja, jb),
        gathered(cameras, shape.count_a, -np.einsum("lsi,ls->li", ja, r)),
        gathered(points, shape.count_b, -np.einsum("lsi,ls->li", jb, r)),
    )


def _dense_normal(shape: BlockShape, blocks: Blocks) -> Vector:
    """The normal matrix as a whole."""
    links = np.reshape(shape.links, (-1, 2)).astype(int)
    first = shape.size_a * shape.count_a
    whole = np.zeros((first + shape.size_b * shape.count_b,) * 2)
    below = np.asarray(blocks.a, float)
    whole[:first, :first] = np.tril(below) + np.tril(below, -1).T
    b, w = np.asarray(blocks.b), np.asarray(blocks.w)
    for j in range(shape.count_b):
        at = first + j * shape.size_b
        whole[at : at + shape.size_b, at : at + shape.size_b] = b[j]
    for (i, j), block in zip(links, w):
        row, column = i * shape.size_a, first + j * shape.size_b
        whole[row : row + shape.size_a, column : column + shape.size_b] = block
        whole[column : column + shape.size_b, row : row + shape.size_a] = block.T
    return whole


class _Layout:
    """A block shape as the C interface has it: links sorted by their block of B."""

    def __init__(self, shape: BlockShape) -> None:
        size_a, count_a, size_b, count_b, links = shape
        pairs = numbers("shape: links", links if np.size(links) else np.zeros((0, 2)), (None, 2), np.int64)
        cameras, points = pairs.T
        if len(pairs) and (pairs.min() < 0 or cameras.max() >= count_a or points.max() >= count_b):
            raise ValueError("shape: a link outside the blocks")
        self.order = np.lexsort((cameras, points))
        keys = (points * max(count_a, 1) + cameras)[self.order]
        if (np.diff(keys) == 0).any():
            raise ValueError("shape: a link comes twice")
        self.shape, self.count = shape, len(pairs)
        self.link_a = cameras[self.order].astype(np.int32)
        self.start = np.searchsorted(points[self.order], np.arange(max(count_b, 0) + 1)).astype(np.int32)
        # An empty array has an address too, which is not null.
        addresses = pointer(self.start, "int32_t"), pointer(self.link_a, "int32_t")
        self.record = ffi.new("PrmtHblkShape*", (size_a, count_a, size_b, count_b, *addresses))

    def fill(self, h: Any, blocks: Blocks) -> None:
        size_a, count_a, size_b, count_b, _ = self.shape
        whole = size_a * count_a
        shapes = (
            (whole, whole),
            (count_b, size_b, size_b),
            (self.count, size_a, size_b),
            (count_a, size_a),
            (count_b, size_b),
        )
        values = [
            numbers(f"normal: {name}", value, each, np.float64)
            for name, value, each in zip(Blocks._fields, blocks, shapes)
        ]
        values[2] = values[2][self.order]
        for field, value in zip(("a", "b", "w", "rhsA", "rhsB"), values):
            if value.size:
                array_at(getattr(h, field), value.size)[:] = value.ravel()

"""Dense matrices: products, factorisations, equations, least squares, singular values and eigenvalues.

Matrices are two-dimensional arrays of numbers with at most 4096 rows and columns. Where all are of single precision,
results are; the library computes in double precision all the same. Results are the same bits on every machine. What
fails, such as the inverse of a singular matrix, raises dax.Error, and so do NaN and infinity, which products alone let
through.
"""
from typing import Any, NamedTuple, Optional, Union

import numpy as np
from numpy.typing import ArrayLike

from ._arrays import Array, choice, pointer
from ._library import buffer, call
from .pool import Pool, handle_of

NAMESPACE = True
__all__ = [
    "LDLT",
    "LU",
    "QR",
    "SVD",
    "Determinant",
    "Eigen",
    "Homogeneous",
    "NullSpace",
    "PivotedQR",
    "Ranked",
    "TotalLeastSquares",
    "cholesky",
    "constrained_least_squares",
    "determinant",
    "eigh",
    "eigvals",
    "exp",
    "gram",
    "homogeneous",
    "inverse",
    "ldlt",
    "least_squares",
    "log",
    "lu",
    "min_norm",
    "multiply",
    "null_space",
    "pinv",
    "qr",
    "qr_pivoted",
    "rcond",
    "solve",
    "svd",
    "total_least_squares",
    "weighted_least_squares",
]


class LU(NamedTuple):
    """a[pivots] = l @ u."""

    l: Array
    u: Array
    pivots: Array


class LDLT(NamedTuple):
    """a[pivots][:, pivots] = l @ d @ l.T, d with blocks of one or two rows."""

    l: Array
    d: Array
    pivots: Array


class QR(NamedTuple):
    """a = q @ r."""

    q: Array
    r: Array


class PivotedQR(NamedTuple):
    """a[:, pivots] = q @ r; rank: how many diagonal elements of r are more than rounding."""

    q: Array
    r: Array
    pivots: Array
    rank: int


class SVD(NamedTuple):
    """a = u @ diag(s) @ v.T."""

    u: Array
    s: Array
    v: Array


class Eigen(NamedTuple):
    """Eigenvalues, and eigenvectors in columns."""

    values: Array
    vectors: Array


class Ranked(NamedTuple):
    """A result, and the rank that it was computed with."""

    x: Array
    rank: int


class Homogeneous(NamedTuple):
    """x of length 1, residual |a x|; gap: the smallest singular value over the next, 0 where x is well determined, 1
    where it is not."""

    x: Array
    residual: float
    gap: float


class NullSpace(NamedTuple):
    """Orthonormal vectors in columns; gap: the largest singular value taken for 0 over the smallest other one."""

    basis: Array
    gap: float


class TotalLeastSquares(NamedTuple):
    """x, and the size of all changes that make the equations hold."""

    x: Array
    residual: float


class Determinant(NamedTuple):
    """mantissa * 2**exponent, which need not overflow where the determinant would."""

    mantissa: float
    exponent: int


def multiply(a: ArrayLike, b: ArrayLike, form: str = "ab", pool: Optional[Pool] = None) -> Array:
    """The product a b, or with form "atb" a^T b, or "abt" a b^T; on a pool where one is given.

    >>> dax.linalg.multiply([[1, 2], [3, 4]], [[1, 1], [0, 1]])
    array([[1., 3.],
           [3., 7.]])
    """
    name = choice("form", form, {"ab": "Mul", "atb": "MulAtB", "abt": "MulABt"})
    a, b = _matrices(a=a, b=b)
    k, m = a.shape if form == "atb" else a.shape[::-1]
    n = b.shape[0] if form == "abt" else b.shape[1]
    if k != b.shape[1 if form == "abt" else 0]:
        raise ValueError(f"b: shape {b.shape}, which does not go with {a.shape}")
    c = np.empty((m, n), a.dtype)
    _call_pooled(name, [a, b, c], [m, n, k], pool)
    return c


def gram(a: ArrayLike, pool: Optional[Pool] = None) -> Array:
    """a^T a, in about half of the time of the product.

    >>> dax.linalg.gram([[1, 2], [3, 4]])
    array([[10., 14.],
           [14., 20.]])
    """
    (a,) = _matrices(a=a)
    c = np.empty((a.shape[1],) * 2, a.dtype)
    _call_pooled("Gram", [a, c], list(a.shape), pool)
    return c


def lu(a: ArrayLike) -> LU:
    """Triangular factors of a square matrix with its rows exchanged.

    >>> dax.linalg.lu([[0, 1], [2, 3]]).pivots
    array([1, 0], dtype=int32)
    """
    a, n = _square(a)
    both, pivots = np.empty_like(a), np.empty(n, np.int32)
    _call("LU", [a, both, pivots], [n])
    return LU(np.tril(both, -1) + np.eye(n, dtype=a.dtype), np.triu(both), pivots)


def cholesky(a: ArrayLike) -> Array:
    """l of a = l l^T, of a positive definite matrix; what lies above the diagonal is not read.

    >>> dax.linalg.cholesky([[4, 0], [2, 2]])
    array([[2., 0.],
           [1., 1.]])
    """
    a, n = _square(a)
    l = np.empty_like(a)
    _call("Cholesky", [a, l], [n])
    return l


def ldlt(a: ArrayLike) -> LDLT:
    """Factors of a symmetric matrix, definite or not; what lies above the diagonal is not read.

    >>> dax.linalg.ldlt([[0, 1], [1, 0]]).d
    array([[0., 1.],
           [1., 0.]])
    """
    a, n = _square(a)
    l, d, e, pivots = np.empty_like(a), np.empty(n, a.dtype), np.empty(n, a.dtype), np.empty(n, np.int32)
    _call("LDLT", [a, l, d, e, pivots], [n])
    return LDLT(l, np.diag(d) + np.diag(e[: n - 1], 1) + np.diag(e[: n - 1], -1), pivots)


def qr(a: ArrayLike) -> QR:
    """Orthonormal columns and a triangle, whose diagonal is not negative.

    >>> dax.linalg.qr([[3, 1], [4, 2]]).r.round(12)
    array([[5. , 2.2],
           [0. , 0.4]])
    """
    (a,) = _matrices(a=a)
    (m, n), k = a.shape, min(a.shape)
    q, r = np.empty((m, k), a.dtype), np.empty((k, n), a.dtype)
    _call("QR", [a, q, r], [m, n])
    return QR(q, r)


def qr_pivoted(a: ArrayLike) -> PivotedQR:
    """The same with columns exchanged, the longest first, and the rank that follows.

    >>> dax.linalg.qr_pivoted([[1, 2], [2, 4]]).rank
    1
    """
    (a,) = _matrices(a=a)
    (m, n), k = a.shape, min(a.shape)
    q, r = np.empty((m, k), a.dtype), np.empty((k, n), a.dtype)
    pivots, rank = np.empty(n, np.int32), np.empty(1, np.int32)
    _call("QRPivot", [a, q, r, pivots, rank], [m, n])
    return PivotedQR(q, r, pivots, int(rank[0]))


def svd(a: ArrayLike, fast: bool = False) -> SVD:
    """Singular values, descending, and vectors in columns. Small values are right to many digits where rows and columns
    differ in scale only; fast: errors of the order of the largest value's rounding will do.

    >>> dax.linalg.svd([[0, 2], [1, 0]]).s
    array([2., 1.])
    """
    (a,) = _matrices(a=a)
    (m, n), k = a.shape, min(a.shape)
    u, s, v = np.empty((m, k), a.dtype), np.empty(k, a.dtype), np.empty((n, k), a.dtype)
    _call("SVD", [a, u, s, v], [m, n], [int(fast)])
    return SVD(u, s, v)


def eigh(a: ArrayLike, b: Optional[ArrayLike] = None) -> Eigen:
    """Eigenvalues of a symmetric matrix, ascending, and vectors; of a v = lambda b v where b, positive definite, is
    given. What lies above the diagonals is not read.

    >>> dax.linalg.eigh([[2, 1], [1, 2]]).values.round(12)
    array([1., 3.])
    """
    a, n = _square(a)
    values, vectors = np.empty(n, a.dtype), np.empty_like(a)
    if b is None:
        _call("EigSym", [a, values, vectors], [n])
        return Eigen(values, vectors)
    a, b = _matrices(a=a, b=b)
    if b.shape != a.shape:
        raise ValueError(f"b: shape {b.shape}, needed is {a.shape}")
    values, vectors = values.astype(a.dtype), vectors.astype(a.dtype)
    _call("EigSymGen", [a, b, values, vectors], [n])
    return Eigen(values, vectors)


def eigvals(a: ArrayLike) -> Array:
    """Eigenvalues of any square matrix, by descending real part, of pairs the one above the axis first.

    >>> dax.linalg.eigvals([[0, -1], [1, 0]])
    array([0.+1.j, 0.-1.j])
    """
    a, n = _square(a)
    real, imaginary = np.empty(n, a.dtype), np.empty(n, a.dtype)
    _call("EigGeneral", [a, real, imaginary], [n])
    return real + (np.complex64 if a.dtype == np.float32 else np.complex128)(1j) * imaginary


def solve(a: ArrayLike, b: ArrayLike) -> Array:
    """x of a x = b; b is a vector, or has a right-hand side in each column.

    >>> dax.linalg.solve([[2, 1], [1, 1]], [3, 2])
    array([1., 1.])
    """
    a, right = _with_right(a, b)
    if a.shape[0] != a.shape[1]:
        raise ValueError(f"a: shape {a.shape}, needed is a square matrix")
    x = np.empty((a.shape[1], right.shape[1]), a.dtype)
    _call("Solve", [a, right, x], [*x.shape])
    return x[:, 0] if np.ndim(b) == 1 else x


def least_squares(a: ArrayLike, b: ArrayLike) -> Array:
    """x that minimises |a x - b|, of a matrix of full rank with at least as many rows as columns.

    >>> dax.linalg.least_squares([[1, 0], [1, 1], [1, 2]], [1, 2, 3]).round(12)
    array([1., 1.])
    """
    a, right = _with_right(a, b)
    x = np.empty((a.shape[1], right.shape[1]), a.dtype)
    _call("LeastSquares", [a, right, x], [*a.shape, right.shape[1]])
    return x[:, 0] if np.ndim(b) == 1 else x


def weighted_least_squares(a: ArrayLike, b: ArrayLike, weights: ArrayLike) -> Array:
    """x that minimises the sum of weights * (a x - b)^2; weights may differ by many powers of ten.

    >>> dax.linalg.weighted_least_squares([[1], [1]], [0, 4], [3, 1]).round(12)
    array([1.])
    """
    a, right, weights = _with_right(a, b, weights=weights)
    x = np.empty((a.shape[1], right.shape[1]), a.dtype)
    _call("WeightedLS", [a, weights, right, x], [*a.shape, right.shape[1]])
    return x[:, 0] if np.ndim(b) == 1 else x


def constrained_least_squares(a: ArrayLike, b: ArrayLike, c: ArrayLike, d: ArrayLike) -> Array:
    """x that minimises |a x - b| among those with c x = d; b and d are vectors.

    >>> dax.linalg.constrained_least_squares([[1, 0], [0, 1]], [0, 0], [[1, 1]], [2]).round(12)
    array([1., 1.])
    """
    a, right = _with_right(a, b)
    c, bound = _with_right(c, d)
    a, right, c, bound = _matrices(a=a, b=right, c=c, d=bound)
    if c.shape[1] != a.shape[1] or right.shape[1] != 1 or bound.shape[1] != 1:
        raise ValueError(f"shapes {a.shape} and {c.shape} of a and c, and b and d, do not go together")
    x = np.empty(a.shape[1], a.dtype)
    _call("ConstrainedLS", [a, right[:, 0], c, bound[:, 0], x], [*a.shape, len(c)])
    return x


def min_norm(a: ArrayLike, b: ArrayLike) -> Ranked:
    """The shortest x that minimises |a x - b|, whatever the shape and the rank of a.

    >>> dax.linalg.min_norm([[1, 1]], [2]).x.round(12)
    array([1., 1.])
    """
    a, right = _with_right(a, b)
    x, rank = np.empty((a.shape[1], right.shape[1]), a.dtype), np.empty(1, np.int32)
    _call("MinNorm", [a, right, x, rank], [*a.shape, right.shape[1]])
    return Ranked(x[:, 0] if np.ndim(b) == 1 else x, int(rank[0]))


def pinv(a: ArrayLike) -> Ranked:
    """The pseudo-inverse of any matrix.

    >>> dax.linalg.pinv([[2, 0], [0, 0]])
    Ranked(x=array([[0.5, 0. ],
           [0. , 0. ]]), rank=1)
    """
    (a,) = _matrices(a=a)
    x, rank = np.empty(a.shape[::-1], a.dtype), np.empty(1, np.int32)
    _call("PInv", [a, x, rank], [*a.shape])
    return Ranked(x, int(rank[0]))


def homogeneous(a: ArrayLike) -> Homogeneous:
    """x of length 1 that minimises |a x|.

    >>> dax.linalg.homogeneous([[1, 0], [0, 2]]).x
    array([1., 0.])
    """
    (a,) = _matrices(a=a)
    x, residual, gap = np.empty(a.shape[1], a.dtype), np.empty(1, a.dtype), np.empty(1, a.dtype)
    _call("Homogeneous", [a, x, residual, gap], [*a.shape])
    return Homogeneous(x, float(residual[0]), float(gap[0]))


def null_space(a: ArrayLike) -> NullSpace:
    """The vectors that a maps to 0.

    >>> dax.linalg.null_space([[1, 0, 0], [0, 1, 0]]).basis.ravel()
    array([0., 0., 1.])
    """
    (a,) = _matrices(a=a)
    basis, dimension, gap = np.empty((a.shape[1],) * 2, a.dtype), np.empty(1, np.int32), np.empty(1, a.dtype)
    _call("NullSpace", [a, basis, dimension, gap], [*a.shape])
    return NullSpace(basis[:, : int(dimension[0])], float(gap[0]))


def total_least_squares(a: ArrayLike, b: ArrayLike) -> TotalLeastSquares:
    """x of a x = b where a is as uncertain as b, a vector.

    >>> dax.linalg.total_least_squares([[1], [2], [3]], [2, 4, 6]).x.round(12)
    array([2.])
    """
    a, right = _with_right(a, b)
    if right.shape[1] != 1:
        raise ValueError(f"b: shape {np.shape(b)}, needed is a vector")
    x, residual = np.empty(a.shape[1], a.dtype), np.empty(1, a.dtype)
    _call("TotalLS", [a, right[:, 0], x, residual], [*a.shape])
    return TotalLeastSquares(x, float(residual[0]))


def exp(a: ArrayLike) -> Array:
    """e^a of a square matrix.

    >>> dax.linalg.exp([[0, 1], [0, 0]])
    array([[1., 1.],
           [0., 1.]])
    """
    a, n = _square(a)
    result = np.empty_like(a)
    _call("Exp", [a, result], [n])
    return result


def log(a: ArrayLike) -> Array:
    """The principal logarithm of a square matrix without eigenvalues on the negative axis.

    >>> dax.linalg.log([[1, 1], [0, 1]]).round(12)
    array([[0., 1.],
           [0., 0.]])
    """
    a, n = _square(a)
    result = np.empty_like(a)
    _call("Log", [a, result], [n])
    return result


def inverse(a: ArrayLike) -> Array:
    """The inverse of a square matrix.

    >>> dax.linalg.inverse([[2, 0], [0, 4]])
    array([[0.5 , 0.  ],
           [0.  , 0.25]])
    """
    a, n = _square(a)
    result = np.empty_like(a)
    _call("Inverse", [a, result], [n])
    return result


def determinant(a: ArrayLike) -> Determinant:
    """The determinant of a square matrix as mantissa and exponent.

    >>> dax.linalg.determinant([[2, 0], [0, 4]])
    Determinant(mantissa=0.5, exponent=4)
    """
    a, n = _square(a)
    mantissa, exponent = np.empty(1, a.dtype), np.empty(1, np.int32)
    _call("Det", [a, mantissa, exponent], [n])
    return Determinant(float(mantissa[0]), int(exponent[0]))


def rcond(a: ArrayLike) -> float:
    """How far a square matrix is from a singular one, 1 to 0: the estimated reciprocal of its condition number.

    >>> dax.linalg.rcond([[1, 0], [0, 0.5]])
    0.5
    """
    a, n = _square(a)
    result = np.empty(1, a.dtype)
    _call("Rcond", [a, result], [n])
    return float(result[0])


def _matrices(**given: ArrayLike) -> tuple[Array, ...]:
    """As packed matrices of one precision, single where all are."""
    arrays = {name: np.asarray(value) for name, value in given.items()}
    for name, array in arrays.items():
        if array.dtype.kind not in "fiub":
            raise TypeError(f"{name}: of type {array.dtype}, needed are numbers")
        if array.ndim != 2 or max(array.shape) > 4096:
            raise ValueError(f"{name}: shape {array.shape}, needed is a matrix of at most 4096 rows and columns")
    single = all(array.dtype == np.float32 for array in arrays.values())
    return tuple(np.require(array, np.float32 if single else np.float64, ("C", "A")) for array in arrays.values())


def _square(a: ArrayLike) -> tuple[Array, int]:
    (matrix,) = _matrices(a=a)
    if matrix.shape[0] != matrix.shape[1]:
        raise ValueError(f"a: shape {matrix.shape}, needed is a square matrix")
    return matrix, len(matrix)


def _with_right(a: ArrayLike, b: ArrayLike, **vectors: ArrayLike) -> tuple[Array, ...]:
    """A matrix, right-hand sides with as many rows, and vectors as long."""
    right = np.asarray(b)
    columns = {name: np.asarray(value)[:, None] if np.ndim(value) == 1 else value for name, value in vectors.items()}
    a, right, *others = _matrices(a=a, b=right[:, None] if right.ndim == 1 else right, **columns)
    for name, each in zip(("b", *vectors), (right, *others)):
        if len(a) != len(each):
            raise ValueError(f"{name}: {len(each)} rows, needed are {len(a)}")
    return (a, right, *(np.ascontiguousarray(each[:, 0]) for each in others))


def _passed(arrays: list[Array]) -> list[Any]:
    """Pointers, and steps of matrices."""
    arguments: list[Any] = []
    for array in arrays:
        ctype = {"i": "int32_t", "f": "double" if array.itemsize == 8 else "float"}[array.dtype.kind]
        arguments += [pointer(array, ctype), *([array.shape[1]] if array.ndim == 2 else [])]
    return arguments


def _suffix(array: Array) -> str:
    return "f32" if array.dtype == np.float32 else "f64"


def _call(operation: str, arrays: list[Array], sides: list[int], parameters: Union[list[int], tuple[()]] = ()) -> None:
    suffix = _suffix(arrays[0])
    work = buffer(f"PRMT_MAT_{operation}_BufferSize_{suffix}", *sides)
    call(f"PRMT_MAT_{operation}_{suffix}", *_passed(arrays), *sides, *parameters, work)


def _call_pooled(operation: str, arrays: list[Array], sides: list[int], pool: Optional[Pool]) -> None:
    name = f"PRMT_MAT_{operation}_{_suffix(arrays[0])}"
    threads, handle = handle_of(pool)
    call(*((name,) if pool is None else (name + "_MT", handle, threads)), *_passed(arrays), *sides)

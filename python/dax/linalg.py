"""Dense matrices: products, factorisations, equations, least squares, singular values and eigenvalues.

Matrices are two-dimensional arrays of numbers with at most 4096 rows and columns. Where all are of single precision,
results are; the library computes in double precision all the same. Results are the same bits on every machine. What
fails, such as the inverse of a singular matrix, raises dax.Error, and so do NaN and infinity, which products alone let
through.
"""
from typing import Optional

import numpy as np
from numpy.typing import ArrayLike

from ._arrays import Array, choice
from ._matrices import (
    Determinant,
    Eigen,
    Homogeneous,
    LDLT,
    LU,
    NullSpace,
    PivotedQR,
    QR,
    Ranked,
    SVD,
    TotalLeastSquares,
    as_matrices,
    as_square,
    run,
    run_pooled,
    with_right,
)
from .pool import Pool

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


def multiply(a: ArrayLike, b: ArrayLike, form: str = "ab", pool: Optional[Pool] = None) -> Array:
    """The product a b, or with form "atb" a^T b, or "abt" a b^T; on a pool where one is given.

    >>> dax.linalg.multiply([[1, 2], [3, 4]], [[1, 1], [0, 1]])
    array([[1., 3.],
           [3., 7.]])
    """
    name = choice("form", form, {"ab": "Mul", "atb": "MulAtB", "abt": "MulABt"})
    a, b = as_matrices(a=a, b=b)
    k, m = a.shape if form == "atb" else a.shape[::-1]
    n = b.shape[0] if form == "abt" else b.shape[1]
    if k != b.shape[1 if form == "abt" else 0]:
        raise ValueError(f"b: shape {b.shape}, which does not go with {a.shape}")
    c = np.empty((m, n), a.dtype)
    run_pooled(name, [a, b, c], [m, n, k], pool)
    return c


def gram(a: ArrayLike, pool: Optional[Pool] = None) -> Array:
    """a^T a, in about half of the time of the product.

    >>> dax.linalg.gram([[1, 2], [3, 4]])
    array([[10., 14.],
           [14., 20.]])
    """
    (a,) = as_matrices(a=a)
    c = np.empty((a.shape[1],) * 2, a.dtype)
    run_pooled("Gram", [a, c], list(a.shape), pool)
    return c


def lu(a: ArrayLike) -> LU:
    """Triangular factors of a square matrix with its rows exchanged.

    >>> dax.linalg.lu([[0, 1], [2, 3]]).pivots
    array([1, 0], dtype=int32)
    """
    a, n = as_square(a)
    both, pivots = np.empty_like(a), np.empty(n, np.int32)
    run("LU", [a, both, pivots], [n])
    return LU(np.tril(both, -1) + np.eye(n, dtype=a.dtype), np.triu(both), pivots)


def cholesky(a: ArrayLike) -> Array:
    """l of a = l l^T, of a positive definite matrix; what lies above the diagonal is not read.

    >>> dax.linalg.cholesky([[4, 0], [2, 2]])
    array([[2., 0.],
           [1., 1.]])
    """
    a, n = as_square(a)
    l = np.empty_like(a)
    run("Cholesky", [a, l], [n])
    return l


def ldlt(a: ArrayLike) -> LDLT:
    """Factors of a symmetric matrix, definite or not; what lies above the diagonal is not read.

    >>> dax.linalg.ldlt([[0, 1], [1, 0]]).d
    array([[0., 1.],
           [1., 0.]])
    """
    a, n = as_square(a)
    l, d, e, pivots = np.empty_like(a), np.empty(n, a.dtype), np.empty(n, a.dtype), np.empty(n, np.int32)
    run("LDLT", [a, l, d, e, pivots], [n])
    return LDLT(l, np.diag(d) + np.diag(e[: n - 1], 1) + np.diag(e[: n - 1], -1), pivots)


def qr(a: ArrayLike) -> QR:
    """Orthonormal columns and a triangle, whose diagonal is not negative.

    >>> dax.linalg.qr([[3, 1], [4, 2]]).r.round(12)
    array([[5. , 2.2],
           [0. , 0.4]])
    """
    (a,) = as_matrices(a=a)
    (m, n), k = a.shape, min(a.shape)
    q, r = np.empty((m, k), a.dtype), np.empty((k, n), a.dtype)
    run("QR", [a, q, r], [m, n])
    return QR(q, r)


def qr_pivoted(a: ArrayLike) -> PivotedQR:
    """The same with columns exchanged, the longest first, and the rank that follows.

    >>> dax.linalg.qr_pivoted([[1, 2], [2, 4]]).rank
    1
    """
    (a,) = as_matrices(a=a)
    (m, n), k = a.shape, min(a.shape)
    q, r = np.empty((m, k), a.dtype), np.empty((k, n), a.dtype)
    pivots, rank = np.empty(n, np.int32), np.empty(1, np.int32)
    run("QRPivot", [a, q, r, pivots, rank], [m, n])
    return PivotedQR(q, r, pivots, int(rank[0]))


def svd(a: ArrayLike, fast: bool = False) -> SVD:
    """Singular values, descending, and vectors in columns. Small values are right to many digits where rows and columns
    differ in scale only; fast: errors of the order of the largest value's rounding will do.

    >>> dax.linalg.svd([[0, 2], [1, 0]]).s
    array([2., 1.])
    """
    (a,) = as_matrices(a=a)
    (m, n), k = a.shape, min(a.shape)
    u, s, v = np.empty((m, k), a.dtype), np.empty(k, a.dtype), np.empty((n, k), a.dtype)
    run("SVD", [a, u, s, v], [m, n], [int(fast)])
    return SVD(u, s, v)


def eigh(a: ArrayLike, b: Optional[ArrayLike] = None) -> Eigen:
    """Eigenvalues of a symmetric matrix, ascending, and vectors; of a v = lambda b v where b, positive definite, is
    given. What lies above the diagonals is not read.

    >>> dax.linalg.eigh([[2, 1], [1, 2]]).values.round(12)
    array([1., 3.])
    """
    a, n = as_square(a)
    values, vectors = np.empty(n, a.dtype), np.empty_like(a)
    if b is None:
        run("EigSym", [a, values, vectors], [n])
        return Eigen(values, vectors)
    a, b = as_matrices(a=a, b=b)
    if b.shape != a.shape:
        raise ValueError(f"b: shape {b.shape}, needed is {a.shape}")
    values, vectors = values.astype(a.dtype), vectors.astype(a.dtype)
    run("EigSymGen", [a, b, values, vectors], [n])
    return Eigen(values, vectors)


def eigvals(a: ArrayLike) -> Array:
    """Eigenvalues of any square matrix, by descending real part, of pairs the one above the axis first.

    >>> dax.linalg.eigvals([[0, -1], [1, 0]])
    array([0.+1.j, 0.-1.j])
    """
    a, n = as_square(a)
    real, imaginary = np.empty(n, a.dtype), np.empty(n, a.dtype)
    run("EigGeneral", [a, real, imaginary], [n])
    values: Array = real + (np.complex64 if a.dtype == np.float32 else np.complex128)(1j) * imaginary
    return values


def solve(a: ArrayLike, b: ArrayLike) -> Array:
    """x of a x = b; b is a vector, or has a right-hand side in each column.

    >>> dax.linalg.solve([[2, 1], [1, 1]], [3, 2])
    array([1., 1.])
    """
    a, right = with_right(a, b)
    if a.shape[0] != a.shape[1]:
        raise ValueError(f"a: shape {a.shape}, needed is a square matrix")
    x = np.empty((a.shape[1], right.shape[1]), a.dtype)
    run("Solve", [a, right, x], [*x.shape])
    return x[:, 0] if np.ndim(b) == 1 else x


def least_squares(a: ArrayLike, b: ArrayLike) -> Array:
    """x that minimises |a x - b|, of a matrix of full rank with at least as many rows as columns.

    >>> dax.linalg.least_squares([[1, 0], [1, 1], [1, 2]], [1, 2, 3]).round(12)
    array([1., 1.])
    """
    a, right = with_right(a, b)
    x = np.empty((a.shape[1], right.shape[1]), a.dtype)
    run("LeastSquares", [a, right, x], [*a.shape, right.shape[1]])
    return x[:, 0] if np.ndim(b) == 1 else x


def weighted_least_squares(a: ArrayLike, b: ArrayLike, weights: ArrayLike) -> Array:
    """x that minimises the sum of weights * (a x - b)^2; weights may differ by many powers of ten.

    >>> dax.linalg.weighted_least_squares([[1], [1]], [0, 4], [3, 1]).round(12)
    array([1.])
    """
    a, right, weights = with_right(a, b, weights=weights)
    x = np.empty((a.shape[1], right.shape[1]), a.dtype)
    run("WeightedLS", [a, weights, right, x], [*a.shape, right.shape[1]])
    return x[:, 0] if np.ndim(b) == 1 else x


def constrained_least_squares(a: ArrayLike, b: ArrayLike, c: ArrayLike, d: ArrayLike) -> Array:
    """x that minimises |a x - b| among those with c x = d; b and d are vectors.

    >>> dax.linalg.constrained_least_squares([[1, 0], [0, 1]], [0, 0], [[1, 1]], [2]).round(12)
    array([1., 1.])
    """
    a, right = with_right(a, b)
    c, bound = with_right(c, d)
    a, right, c, bound = as_matrices(a=a, b=right, c=c, d=bound)
    if c.shape[1] != a.shape[1] or right.shape[1] != 1 or bound.shape[1] != 1:
        raise ValueError(f"shapes {a.shape} and {c.shape} of a and c, and b and d, do not go together")
    x = np.empty(a.shape[1], a.dtype)
    run("ConstrainedLS", [a, right[:, 0], c, bound[:, 0], x], [*a.shape, len(c)])
    return x


def min_norm(a: ArrayLike, b: ArrayLike) -> Ranked:
    """The shortest x that minimises |a x - b|, whatever the shape and the rank of a.

    >>> dax.linalg.min_norm([[1, 1]], [2]).x.round(12)
    array([1., 1.])
    """
    a, right = with_right(a, b)
    x, rank = np.empty((a.shape[1], right.shape[1]), a.dtype), np.empty(1, np.int32)
    run("MinNorm", [a, right, x, rank], [*a.shape, right.shape[1]])
    return Ranked(x[:, 0] if np.ndim(b) == 1 else x, int(rank[0]))


def pinv(a: ArrayLike) -> Ranked:
    """The pseudo-inverse of any matrix.

    >>> dax.linalg.pinv([[2, 0], [0, 0]])
    Ranked(x=array([[0.5, 0. ],
           [0. , 0. ]]), rank=1)
    """
    (a,) = as_matrices(a=a)
    x, rank = np.empty(a.shape[::-1], a.dtype), np.empty(1, np.int32)
    run("PInv", [a, x, rank], [*a.shape])
    return Ranked(x, int(rank[0]))


def homogeneous(a: ArrayLike) -> Homogeneous:
    """x of length 1 that minimises |a x|.

    >>> dax.linalg.homogeneous([[1, 0], [0, 2]]).x
    array([1., 0.])
    """
    (a,) = as_matrices(a=a)
    x, residual, gap = np.empty(a.shape[1], a.dtype), np.empty(1, a.dtype), np.empty(1, a.dtype)
    run("Homogeneous", [a, x, residual, gap], [*a.shape])
    return Homogeneous(x, float(residual[0]), float(gap[0]))


def null_space(a: ArrayLike) -> NullSpace:
    """The vectors that a maps to 0.

    >>> dax.linalg.null_space([[1, 0, 0], [0, 1, 0]]).basis.ravel()
    array([0., 0., 1.])
    """
    (a,) = as_matrices(a=a)
    basis, dimension, gap = np.empty((a.shape[1],) * 2, a.dtype), np.empty(1, np.int32), np.empty(1, a.dtype)
    run("NullSpace", [a, basis, dimension, gap], [*a.shape])
    return NullSpace(basis[:, : int(dimension[0])], float(gap[0]))


def total_least_squares(a: ArrayLike, b: ArrayLike) -> TotalLeastSquares:
    """x of a x = b where a is as uncertain as b, a vector.

    >>> dax.linalg.total_least_squares([[1], [2], [3]], [2, 4, 6]).x.round(12)
    array([2.])
    """
    a, right = with_right(a, b)
    if right.shape[1] != 1:
        raise ValueError(f"b: shape {np.shape(b)}, needed is a vector")
    x, residual = np.empty(a.shape[1], a.dtype), np.empty(1, a.dtype)
    run("TotalLS", [a, right[:, 0], x, residual], [*a.shape])
    return TotalLeastSquares(x, float(residual[0]))


def exp(a: ArrayLike) -> Array:
    """e^a of a square matrix.

    >>> dax.linalg.exp([[0, 1], [0, 0]])
    array([[1., 1.],
           [0., 1.]])
    """
    a, n = as_square(a)
    result = np.empty_like(a)
    run("Exp", [a, result], [n])
    return result


def log(a: ArrayLike) -> Array:
    """The principal logarithm of a square matrix without eigenvalues on the negative axis.

    >>> dax.linalg.log([[1, 1], [0, 1]]).round(12)
    array([[0., 1.],
           [0., 0.]])
    """
    a, n = as_square(a)
    result = np.empty_like(a)
    run("Log", [a, result], [n])
    return result


def inverse(a: ArrayLike) -> Array:
    """The inverse of a square matrix.

    >>> dax.linalg.inverse([[2, 0], [0, 4]])
    array([[0.5 , 0.  ],
           [0.  , 0.25]])
    """
    a, n = as_square(a)
    result = np.empty_like(a)
    run("Inverse", [a, result], [n])
    return result


def determinant(a: ArrayLike) -> Determinant:
    """The determinant of a square matrix as mantissa and exponent.

    >>> dax.linalg.determinant([[2, 0], [0, 4]])
    Determinant(mantissa=0.5, exponent=4)
    """
    a, n = as_square(a)
    mantissa, exponent = np.empty(1, a.dtype), np.empty(1, np.int32)
    run("Det", [a, mantissa, exponent], [n])
    return Determinant(float(mantissa[0]), int(exponent[0]))


def rcond(a: ArrayLike) -> float:
    """How far a square matrix is from a singular one, 1 to 0: the estimated reciprocal of its condition number.

    >>> dax.linalg.rcond([[1, 0], [0, 0.5]])
    0.5
    """
    a, n = as_square(a)
    result = np.empty(1, a.dtype)
    run("Rcond", [a, result], [n])
    return float(result[0])

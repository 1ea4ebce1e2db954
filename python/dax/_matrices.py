"""What dax.linalg returns, and how it calls the library."""
from typing import Any, NamedTuple, Optional, Union

import numpy as np
from numpy.typing import ArrayLike

from ._arrays import Array, pointer
from ._library import buffer, call
from .pool import Pool, handle_of


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


def as_matrices(**given: ArrayLike) -> tuple[Array, ...]:
    """As packed matrices of one precision, single where all are."""
    arrays = {name: np.asarray(value) for name, value in given.items()}
    for name, array in arrays.items():
        if array.dtype.kind not in "fiub":
            raise TypeError(f"{name}: of type {array.dtype}, needed are numbers")
        if array.ndim != 2 or max(array.shape) > 4096:
            raise ValueError(f"{name}: shape {array.shape}, needed is a matrix of at most 4096 rows and columns")
    single = all(array.dtype == np.float32 for array in arrays.values())
    return tuple(np.require(array, np.float32 if single else np.float64, ("C", "A")) for array in arrays.values())


def as_square(a: ArrayLike) -> tuple[Array, int]:
    (matrix,) = as_matrices(a=a)
    if matrix.shape[0] != matrix.shape[1]:
        raise ValueError(f"a: shape {matrix.shape}, needed is a square matrix")
    return matrix, len(matrix)


def with_right(a: ArrayLike, b: ArrayLike, **vectors: ArrayLike) -> tuple[Array, ...]:
    """A matrix, right-hand sides with as many rows, and vectors as long."""
    right = np.asarray(b)
    columns = {name: np.asarray(value)[:, None] if np.ndim(value) == 1 else value for name, value in vectors.items()}
    a, right, *others = as_matrices(a=a, b=right[:, None] if right.ndim == 1 else right, **columns)
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


def run(operation: str, arrays: list[Array], sides: list[int], parameters: Union[list[int], tuple[()]] = ()) -> None:
    suffix = _suffix(arrays[0])
    work = buffer(f"PRMT_MAT_{operation}_BufferSize_{suffix}", *sides)
    call(f"PRMT_MAT_{operation}_{suffix}", *_passed(arrays), *sides, *parameters, work)


def run_pooled(operation: str, arrays: list[Array], sides: list[int], pool: Optional[Pool]) -> None:
    name = f"PRMT_MAT_{operation}_{_suffix(arrays[0])}"
    threads, handle = handle_of(pool)
    call(*((name,) if pool is None else (name + "_MT", handle, threads)), *_passed(arrays), *sides)

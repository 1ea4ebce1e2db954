"""Sparse matrices of doubles in compressed columns, as the solvers take and give them."""
from typing import Any, Optional, Protocol, Union, overload

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import Array, numbers, pointer
from .._interface import ffi
from .._library import Fixed, buffer, call

__all__ = ["SparseMatrix"]

Shape = tuple[int, int]
Triplets = tuple[ArrayLike, ArrayLike, ArrayLike]


class _Convertible(Protocol):
    """The sparse matrices of SciPy."""

    def tocoo(self) -> Any:
        ...


class SparseMatrix(Fixed):
    """A sparse matrix with room for `capacity` elements. Its pattern, the set of its elements, stays while values
    change.

    shape: (rows, columns), at least 1 each. Elements that are added enlarge the pattern; a full matrix raises
    dax.Error.

    >>> matrix = dax.SparseMatrix.from_triplets([0, 1, 1], [0, 0, 2], [1, 2, 3], (2, 3))
    >>> matrix.toarray()
    array([[1., 0., 0.],
           [2., 0., 3.]])
    >>> matrix @ [1, 1, 1]
    array([1., 5.])
    """

    def __init__(self, shape: Shape, capacity: int) -> None:
        self.shape = (int(shape[0]), int(shape[1]))
        self._memory = buffer("PRMT_MSP_BufSize_f64", *self.shape, capacity)
        self._matrix = ffi.new("PrmtMsp*")
        call("PRMT_MSP_Init_f64", self._matrix, *self.shape, capacity, self._memory)

    @classmethod
    def from_triplets(
        cls, rows: ArrayLike, columns: ArrayLike, values: ArrayLike, shape: Shape, capacity: Optional[int] = None
    ) -> "SparseMatrix":
        """The matrix of all elements (rows[k], columns[k]), the sum of values[k] where an element comes several times.

        >>> dax.SparseMatrix.from_triplets([0, 0], [1, 1], [2, 3], (1, 2)).toarray()
        array([[0., 5.]])
        """
        pattern = Pattern(rows, columns, shape)
        matrix = cls(shape, max(capacity or 0, len(pattern.row)))
        pattern.write(matrix._matrix, values)
        return matrix

    @property
    def capacity(self) -> int:
        """Elements that there is room for."""
        return int(self._matrix.capacity)

    def __len__(self) -> int:
        """Number of elements, zeros included."""
        return int(self._matrix.start[self.shape[1]])

    def triplets(self) -> tuple[NDArray[np.int32], NDArray[np.int32], NDArray[np.float64]]:
        """(rows, columns, values) of the elements, column by column.

        >>> dax.SparseMatrix.from_triplets([1, 0], [0, 1], [5, 6], (2, 2)).triplets()[2]
        array([5., 6.])
        """
        start, row, value = _columns(self._matrix)
        columns = np.repeat(np.arange(self.shape[1], dtype=np.int32), np.diff(start))
        return row.copy(), columns, value.copy()

    def toarray(self) -> NDArray[np.float64]:
        """The matrix as a dense array.

        >>> dax.SparseMatrix((1, 2), 0).toarray()
        array([[0., 0.]])
        """
        dense = np.empty(self.shape)
        call("PRMT_MSP_MspToMat_f64", self._matrix, pointer(dense, "double"), self.shape[1])
        return dense

    def clear(self) -> None:
        """All values 0; the pattern stays.

        >>> matrix = dax.SparseMatrix.from_triplets([0], [0], [5], (1, 1)); matrix.clear(); matrix.triplets()[2]
        array([0.])
        """
        call("PRMT_MSP_SetZero_tpl_f64", self._matrix)

    def set_diagonal(self, value: float) -> None:
        """Sets every element (i, i).

        >>> matrix = dax.SparseMatrix((2, 2), 2); matrix.set_diagonal(3); matrix.triplets()[2]
        array([3., 3.])
        """
        call("PRMT_MSP_SetDiag_tpl_f64", self._matrix, value)

    def add(self, row: int, column: int, values: ArrayLike) -> None:
        """Adds a number, or a block (k, l) whose first element goes to (row, column).

        >>> matrix = dax.SparseMatrix((2, 2), 4); matrix.add(0, 0, [[1, 2]]); matrix.add(0, 1, 5); matrix.toarray()
        array([[1., 7.],
               [0., 0.]])
        """
        if np.ndim(values) == 0:
            call("PRMT_MSP_AddEle_tpl_f64", self._matrix, row, column, float(np.asarray(values)))
            return
        block = numbers("values", values, (None, None), np.float64)
        call(
            "PRMT_MSP_AddBlk_tpl_f64", self._matrix, row, column, pointer(block, "double"), *block.shape, block.shape[1]
        )

    @property
    def T(self) -> "SparseMatrix":
        """The transposed matrix."""
        result = SparseMatrix(self.shape[::-1], len(self))
        call("PRMT_MSP_Trans_f64", self._matrix, result._matrix)
        return result

    @overload
    def __matmul__(self, other: "SparseMatrix") -> "SparseMatrix":
        ...

    @overload
    def __matmul__(self, other: ArrayLike) -> NDArray[np.float64]:
        ...

    def __matmul__(self, other: Any) -> Any:
        """Product with a sparse matrix, or with a vector."""
        if isinstance(other, SparseMatrix):
            return self._times(other)
        vector = numbers("vector", other, (self.shape[1],), np.float64)
        result = np.empty(self.shape[0])
        call("PRMT_MSP_MulVec_f64", self._matrix, pointer(vector, "double"), pointer(result, "double"))
        return result

    def __rmatmul__(self, other: ArrayLike) -> NDArray[np.float64]:
        """Product of a vector and the matrix."""
        vector = numbers("vector", other, (self.shape[0],), np.float64)
        result = np.empty(self.shape[1])
        call("PRMT_MSP_TransMulVec_f64", self._matrix, pointer(vector, "double"), pointer(result, "double"))
        return result

    __array_ufunc__ = None  # so that array @ matrix comes here

    def _times(self, other: "SparseMatrix") -> "SparseMatrix":
        start, row, _ = _columns(other._matrix)
        # A column of the product has at most the elements of the columns that it combines, and one a row.
        inner = row[row < self.shape[1]]  # other shapes are refused below
        terms = np.zeros(len(row), np.int64)
        terms[: len(inner)] = np.diff(_columns(self._matrix)[0])[inner]
        sums = np.concatenate([[0], np.cumsum(terms)])
        room = int(np.minimum(sums[start[1:]] - sums[start[:-1]], self.shape[0]).sum())
        result = SparseMatrix((self.shape[0], other.shape[1]), room)
        work = buffer("PRMT_MSP_Mul_bufsize_f64", self._matrix, other._matrix)
        call("PRMT_MSP_Mul_f64", self._matrix, other._matrix, result._matrix, work)
        return result

    def combine(self, alpha: float, other: "SparseMatrix", beta: float) -> "SparseMatrix":
        """alpha * self + beta * other.

        >>> matrix = dax.SparseMatrix.from_triplets([0], [1], [3], (1, 2))
        >>> matrix.combine(2, matrix, -1).toarray()
        array([[0., 3.]])
        """
        result = SparseMatrix(self.shape, len(self) + len(other))
        work = buffer("PRMT_MSP_Add_bufsize_f64", self._matrix, other._matrix)
        call("PRMT_MSP_Add_f64", alpha, self._matrix, beta, other._matrix, result._matrix, work)
        return result


Matrix = Union[ArrayLike, Triplets, SparseMatrix, _Convertible]


class Pattern:
    """Where triplets go in compressed columns."""

    def __init__(self, rows: ArrayLike, columns: ArrayLike, shape: Shape) -> None:
        self.rows = numbers("rows", rows, (None,), np.int64)
        self.columns = numbers("columns", columns, (len(self.rows),), np.int64)
        for name, indices, limit in (("rows", self.rows, shape[0]), ("columns", self.columns, shape[1])):
            if len(indices) and not 0 <= indices.min() <= indices.max() < limit:
                raise ValueError(f"{name}: an index outside 0..{limit - 1}")
        elements, self.place = np.unique(self.columns * shape[0] + self.rows, return_inverse=True)
        self.row = (elements % shape[0]).astype(np.int32)
        column = elements // shape[0]
        self.column = column.astype(np.int32)
        self.start = np.searchsorted(column, np.arange(shape[1] + 1))

    def same(self, rows: Array, columns: Array) -> bool:
        """Whether triplets have this pattern, element by element."""
        return np.array_equal(self.rows, rows) and np.array_equal(self.columns, columns)

    def write(self, matrix: Any, values: ArrayLike) -> None:
        """Gives a matrix of the C interface this pattern, unless it has it, and its values."""
        weights = numbers("values", values, (len(self.rows),), np.float64)
        start, row, _ = _columns(matrix)
        if not (np.array_equal(start, self.start) and np.array_equal(row, self.row)):
            indices = pointer(self.row, "int32_t"), pointer(self.column, "int32_t")
            call("PRMT_MSP_SetPattern_f64", matrix, len(self.row), *indices)
        _columns(matrix)[2][:] = np.bincount(self.place, weights, len(self.row))


class Filler:
    """Turns what a callback returns into a matrix of the C interface. The pattern is found once, as long as it
    stays."""

    def __init__(self, name: str, shape: Shape) -> None:
        self.name, self.shape = name, shape
        self.pattern: Optional[Pattern] = None

    def fill(self, matrix: Any, value: Any) -> None:
        rows, columns, values = self.triplets(value)
        if self.pattern is None or not self.pattern.same(rows, columns):
            self.pattern = Pattern(rows, columns, self.shape)
        self.pattern.write(matrix, values)

    def count(self, value: Any) -> int:
        """Elements of a value."""
        rows, columns, _ = self.triplets(value)
        self.pattern = Pattern(rows, columns, self.shape)
        return len(self.pattern.row)

    def elements(self, value: Any) -> tuple[Array, Array, Array]:
        """The same with each element once."""
        rows, columns, values = self.triplets(value)
        pattern = Pattern(rows, columns, self.shape)
        return pattern.row, pattern.column, np.bincount(pattern.place, values, len(pattern.row))

    def triplets(self, value: Any) -> tuple[Array, Array, Array]:
        """Rows, columns and values of what a callback returns."""
        if isinstance(value, SparseMatrix) or hasattr(value, "tocoo"):
            if tuple(value.shape) != self.shape:
                raise ValueError(f"{self.name}: shape {value.shape}, needed is {self.shape}")
            if isinstance(value, SparseMatrix):
                return value.triplets()
            value = value.tocoo()
            value = value.row, value.col, value.data
        if isinstance(value, tuple):
            if len(value) != 3:
                raise ValueError(f"{self.name}: a tuple of {len(value)}, needed are rows, columns and values")
            length, parts = np.size(value[0]), ("rows", "columns", "values")
            kinds = np.int64, np.int64, np.float64
            rows, columns, values = (
                numbers(f"{self.name}: {part}", each, (length,), kind) for part, each, kind in zip(parts, value, kinds)
            )
            return rows, columns, values
        dense = numbers(self.name, value, self.shape, np.float64)
        columns, rows = np.divmod(np.arange(dense.size), self.shape[0])
        return rows, columns, dense.T.ravel()


def _columns(matrix: Any) -> tuple[Array, Array, Array]:
    """(start, row, value) of a matrix as arrays in its memory; value may be written."""
    start = np.frombuffer(ffi.buffer(matrix.start, 8 * (matrix.cols + 1)), np.int64)
    count = int(start[-1])
    if count == 0:
        return start, np.empty(0, np.int32), np.empty(0)
    row = np.frombuffer(ffi.buffer(matrix.row, 4 * count), np.int32)
    return start, row, np.frombuffer(ffi.buffer(matrix.value, 8 * count), np.float64)

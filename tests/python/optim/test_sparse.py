"""Sparse matrices against dense ones."""
import numpy as np
import pytest
import scipy.sparse

import dax


def test_sparse_matrices(rng):
    def random(shape):
        dense = np.where(rng.random(shape) < 0.3, rng.normal(size=shape), 0)
        rows, columns = np.nonzero(dense)
        return dense, dax.SparseMatrix.from_triplets(rows, columns, dense[rows, columns], shape, capacity=40)

    (a, sparse_a), (b, sparse_b), (c, sparse_c) = random((7, 9)), random((9, 4)), random((7, 9))
    assert np.array_equal(sparse_a.toarray(), a) and np.array_equal(sparse_a.T.toarray(), a.T)
    assert np.allclose((sparse_a @ sparse_b).toarray(), a @ b)
    assert np.allclose(sparse_a.combine(2, sparse_c, -3).toarray(), 2 * a - 3 * c)
    x, y = rng.normal(size=9), rng.normal(size=7)
    assert np.allclose(sparse_a @ x, a @ x) and np.allclose(y @ sparse_a, y @ a)
    rows, columns, values = sparse_a.triplets()
    again = scipy.sparse.csc_matrix((values, (rows, columns)), a.shape)
    assert np.array_equal(again.toarray(), a) and len(sparse_a) == again.nnz
    sparse_a.add(2, 3, np.ones((3, 4))[:, ::-1])
    a[2:5, 3:7] += 1
    sparse_a.set_diagonal(5)
    np.fill_diagonal(a, 5)
    assert np.array_equal(sparse_a.toarray(), a)
    empty = dax.SparseMatrix((2, 3), 0)
    assert not empty.toarray().any() and len(empty.T) == 0 and (empty @ [1, 2, 3]).tolist() == [0, 0]
    for call in (lambda: sparse_a @ sparse_c, lambda: sparse_a.add(6, 0, np.ones((2, 2))),
                 lambda: empty.add(0, 0, 1.0)):
        with pytest.raises(dax.Error):
            call()
    with pytest.raises(ValueError, match="shape"):
        sparse_a @ np.ones(7)
    with pytest.raises(AttributeError, match="cannot be changed"):
        empty.shape = (200, 200)

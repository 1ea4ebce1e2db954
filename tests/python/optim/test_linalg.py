"""Dense matrices against NumPy and SciPy, singular values of graded ones against 80 digits."""
import numpy as np
import pytest
import scipy.linalg

import dax

la = dax.linalg


@pytest.mark.parametrize("dtype, tolerance", [(np.float64, 1e-12), (np.float32, 2e-5)])
@pytest.mark.parametrize("n", [1, 3, 12, 70])
def test_as_numpy(rng, dtype, tolerance, n, pool):
    a, b = rng.normal(size=(2, n, n)).astype(dtype)
    exact = a.astype(float)
    near = dict(rtol=tolerance, atol=tolerance * n)
    assert np.allclose(la.multiply(a, b), exact @ b, **near) and la.multiply(a, b).dtype == dtype
    assert np.allclose(la.multiply(a, b, "atb", pool), exact.T @ b, **near)
    assert (la.multiply(a, b, "abt", pool) == la.multiply(a, b.T)).all()
    assert (la.multiply(a, b, pool=pool) == la.multiply(a, b)).all()
    assert (la.multiply(a, b, "atb") == la.multiply(a.T, b)).all()
    assert (la.multiply(a, b, "abt") == la.multiply(a, b.T)).all()
    assert (la.gram(a) == la.multiply(a, a, "atb")).all() and (la.gram(a, pool) == la.gram(a)).all()
    l, u, pivots = la.lu(a)
    assert np.allclose(l @ u, a[pivots], **near)
    definite = (exact @ exact.T + n * np.eye(n)).astype(dtype)
    assert np.allclose(la.cholesky(definite), np.linalg.cholesky(definite.astype(float)), **near)
    symmetric = a + a.T
    l, d, pivots = la.ldlt(symmetric)
    assert np.allclose(l @ d @ l.T, symmetric[pivots][:, pivots], **near)
    values, vectors = la.eigh(symmetric)
    expected, directions = np.linalg.eigh(symmetric.astype(float))
    assert np.allclose(values, expected, **near)
    assert np.allclose(symmetric @ vectors, vectors * values, **near)
    assert np.allclose(vectors.T @ vectors, np.eye(n), **near)
    q, r = la.qr(a)
    expected = np.linalg.qr(exact)[1]
    assert np.allclose(r, expected * np.sign(np.diag(expected))[:, None], **near) and np.allclose(q @ r, a, **near)
    q, r, pivots, rank = la.qr_pivoted(a)
    assert np.allclose(q @ r, a[:, pivots], **near) and rank == n
    assert (pivots == scipy.linalg.qr(exact, pivoting=True)[2]).all()
    assert np.allclose(la.svd(a).s, np.linalg.svd(exact)[1], **near)
    assert np.allclose(la.svd(a, fast=True).s, la.svd(a).s)
    condition = np.linalg.cond(exact, 1)
    loose = dict(rtol=tolerance * condition, atol=tolerance * condition)
    assert np.allclose(la.solve(a, b), np.linalg.solve(exact, b), **loose)
    assert np.allclose(la.inverse(a), np.linalg.inv(exact), **loose)
    mantissa, exponent = la.determinant(a)
    sign, log = np.linalg.slogdet(exact)
    assert np.sign(mantissa) == sign and abs(np.log(abs(mantissa)) + exponent * np.log(2) - log) < 1e-5
    assert 0.99 / condition < la.rcond(a) < 3 / condition


def test_least_squares_and_shapes(rng):
    a, b = rng.normal(size=(30, 5)), rng.normal(size=30)
    assert np.allclose(la.least_squares(a, b), np.linalg.lstsq(a, b, rcond=None)[0])
    single = la.least_squares(a.astype(np.float32), b.astype(np.float32))
    assert single.dtype == np.float32 and np.allclose(single, la.least_squares(a, b), rtol=1e-4, atol=1e-5)
    u, s, v = la.svd(a.T)
    assert u.shape == (5, 5) and v.shape == (30, 5) and np.allclose(u * s @ v.T, a.T)
    for wrong in (lambda: la.lu(a), lambda: la.solve(a, b), lambda: la.solve(np.eye(3), b), lambda: la.inverse([1, 2]),
                  lambda: la.multiply(a, a), lambda: la.multiply(a, a, "abc"), lambda: la.lu(np.eye(4097))):
        with pytest.raises(ValueError):
            wrong()
    with pytest.raises(TypeError):
        la.inverse([["1"]])


@pytest.mark.parametrize("dtype, tolerance", [(np.float64, 1e-11), (np.float32, 1e-4)])
def test_problems_as_scipy(rng, dtype, tolerance):
    near = dict(rtol=tolerance, atol=tolerance)
    a, b = rng.normal(size=(9, 5)).astype(dtype), rng.normal(size=9).astype(dtype)
    exact, right = a.astype(float), b.astype(float)
    square, definite = exact[:5], exact.T @ exact
    assert la.pinv(a).x.dtype == dtype and np.allclose(la.pinv(a).x, np.linalg.pinv(exact), **near)
    assert np.allclose(la.min_norm(a.T, b[:5]).x, np.linalg.lstsq(exact.T, right[:5], rcond=None)[0], **near)
    assert la.min_norm(a.T, b[:5]).rank == 5
    weights = rng.uniform(0.1, 2, 9)
    roots = np.sqrt(weights)
    expected = np.linalg.lstsq(exact * roots[:, None], right * roots, rcond=None)[0]
    assert np.allclose(la.weighted_least_squares(a, b, weights.astype(dtype)), expected, **near)
    c, d = rng.normal(size=(2, 5)).astype(dtype), rng.normal(size=2).astype(dtype)
    system = np.block([[definite, c.T], [c, np.zeros((2, 2))]])
    expected = np.linalg.solve(system, [*(exact.T @ right), *d])[:5]
    assert np.allclose(la.constrained_least_squares(a, b, c, d), expected, **near)
    u, s, v = np.linalg.svd(np.c_[exact, right])
    x, residual = la.total_least_squares(a, b)
    assert np.allclose(x, -v[-1, :-1] / v[-1, -1], **near) and np.isclose(residual, s[-1], **near)
    x, residual, gap = la.homogeneous(a)
    s, v = np.linalg.svd(exact)[1:]
    assert np.allclose(x * np.sign(x @ v[-1]), v[-1], **near) and np.isclose(residual, s[-1], **near)
    assert np.isclose(gap, s[-1] / s[-2], **near)
    basis = la.null_space(a.T).basis
    assert basis.shape == (9, 4) and np.allclose(exact.T @ basis, 0, **near)
    values, vectors = la.eigh((square + square.T).astype(dtype), definite.astype(dtype))
    expected = scipy.linalg.eigh(square + square.T, definite)[0]
    assert np.allclose(values, expected, rtol=1e-3 if dtype == np.float32 else 1e-10, atol=tolerance)
    values = la.eigvals(a[:5])
    assert np.allclose(np.sort_complex(values), np.sort_complex(np.linalg.eigvals(square)), **near)
    assert (np.diff(values.real) <= 0).all()
    assert np.allclose(la.exp(a[:5]), scipy.linalg.expm(square), **near)
    rotation = scipy.linalg.expm((square - square.T) / 4)
    assert np.allclose(la.log(rotation.astype(dtype)), (square - square.T) / 4, **near)
    for wrong in (lambda: la.weighted_least_squares(a, b, weights[:3]), lambda: la.eigh(square, np.eye(3)),
                  lambda: la.constrained_least_squares(a, b, c[:, :2], d), lambda: la.total_least_squares(a, a)):
        with pytest.raises(ValueError):
            wrong()


def test_failures_say_what_failed():
    with pytest.raises(dax.Error, match="LU decomposition"):
        la.solve([[1, 2], [2, 4]], [1, 1])
    with pytest.raises(dax.Error, match="inversion"):
        la.inverse(np.zeros((3, 3)))
    with pytest.raises(dax.Error, match="least-squares"):
        la.least_squares(np.ones((3, 2)), [1, 2, 3])
    with pytest.raises(dax.Error, match="Not definite"):
        la.cholesky([[1, 2], [2, 1]])
    with pytest.raises(dax.Error, match="NaN"):
        la.svd([[np.nan, 1]])
    with pytest.raises(dax.Error, match="negative axis"):
        la.log([[-1]])
    with pytest.raises(dax.Error, match="weight below 0"):
        la.weighted_least_squares([[1]], [1], [-1])


def test_graded_singular_values_to_twelve_digits(rng):
    """Rows and columns of very different scale, in any order, and Kahan's matrix."""
    mpmath = pytest.importorskip("mpmath")
    n = 8
    graded = [10.0 ** rng.integers(-10, 11, n)[:, None] * rng.normal(size=(n, n)) * 10.0 ** rng.integers(-10, 11, n)
              for _ in range(3)]
    sine, cosine = np.sin(1.2), np.cos(1.2)
    kahan = sine ** np.arange(n)[:, None] * (np.eye(n) - cosine * np.triu(np.ones((n, n)), 1))
    with mpmath.workdps(80):
        for a in (*graded, kahan):
            exact = np.array([float(s) for s in mpmath.svd_r(mpmath.matrix(a.tolist()), compute_uv=False)])
            core = np.linalg.cond(a / np.abs(a).max(1)[:, None] / (np.abs(a) / np.abs(a).max(1)[:, None]).max(0))
            assert np.abs(la.svd(a).s / np.sort(exact)[::-1] - 1).max() < max(1e-12, 1e-15 * core)

"""Roots against exact counts and NumPy, curves against SciPy."""
import importlib.machinery
import importlib.util
import pathlib

import numpy as np
import pytest
import scipy.interpolate
import scipy.optimize

import dax

eq = dax.equations
SCRIPT = pathlib.Path(__file__).resolve().parents[3] / "scripts/quartics"


@pytest.fixture(scope="module")
def quartics():
    if not SCRIPT.exists():
        pytest.skip("without the sources")
    loader = importlib.machinery.SourceFileLoader("quartics", str(SCRIPT))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("quartics", loader))
    loader.exec_module(module)
    return module


def test_random_quartics(rng, quartics):
    assert quartics.count_real_roots([6, -17, 17, -7, 1]) == 3
    assert quartics.count_real_roots([4, 0, 5, 0, 1]) == 0
    for name, draw in quartics.kinds(rng).items():
        wrong, error, *_ = quartics.compare(draw, 300)
        assert wrong == 0 and error <= 16, name


def test_roots(rng):
    assert eq.real_roots([2, 3, 1]).x.tolist() == [-2, -1]
    assert eq.real_roots([-8, 0, 0, 1]).x.tolist() == [2] and eq.real_roots([3]).x.size == 0
    for degree in (1, 2, 7, 30):
        p = rng.normal(size=degree + 1)
        found, expected = eq.roots(p), np.roots(p[::-1])
        assert found.at_infinity == 0 and len(found.z) == degree
        for each in expected:
            assert np.abs(found.z - each).min() < 1e-9 * abs(each)
    for wrong in ([], np.ones(6)):
        with pytest.raises(ValueError):
            eq.real_roots(wrong)
    with pytest.raises(dax.Error):
        eq.roots([0, 0])
    with pytest.raises(ValueError):
        eq.roots(np.ones(514))


def test_searches():
    def f(x):
        return np.cos(x) - x

    root = eq.find_root(f, 0, 2)
    assert abs(root.x - scipy.optimize.brentq(f, 0, 2)) < 1e-12 and root.value == f(root.x)
    low = eq.find_minimum(np.cos, 1, 5)
    assert abs(low.x - np.pi) < 1e-7 and abs(low.value + 1) < 1e-14
    with pytest.raises(dax.Error, match="same sign"):
        eq.find_root(f, 2, 3)
    with pytest.raises(ZeroDivisionError):
        eq.find_root(lambda x: 1 / 0, 0, 1)


@pytest.mark.parametrize("n", [2, 3, 4, 30])
def test_curves_as_scipy(rng, n):
    x, y = np.cumsum(rng.uniform(0.1, 2, n)), rng.normal(size=n)
    at = np.linspace(x[0] - 1, x[-1] + 1, 101)
    for ends, slopes, theirs in (
        ("not-a-knot", (0, 0), "not-a-knot"),
        ("natural", (0, 0), "natural"),
        ("clamped", (2, -1), ((1, 2), (1, -1))),
        ("periodic", (0, 0), "periodic"),
    ):
        values = np.append(y[:-1], y[0]) if ends == "periodic" else y
        curve = eq.spline(x, values, ends, slopes)
        peer = scipy.interpolate.CubicSpline(x, values, bc_type=theirs)
        inside = (at >= x[0]) & (at <= x[-1]) if ends == "periodic" else slice(None)
        for order in range(4):
            expected = peer(at[inside], order)
            assert np.allclose(curve(at[inside], order), expected, rtol=1e-8, atol=1e-8 * np.abs(expected).max() + 1e-9)
    if n == 2:
        return  # a line, which the peer does not make of it
    akima = eq.akima(x, y)
    peer = scipy.interpolate.Akima1DInterpolator(x, y)
    inside = (at >= x[0]) & (at <= x[-1])
    assert np.allclose(akima(at[inside]), peer(at[inside]), rtol=1e-9, atol=1e-9)


def test_surfaces_as_scipy(rng):
    x, y = np.cumsum(rng.uniform(0.5, 2, 9)), np.cumsum(rng.uniform(0.5, 2, 7))
    z = rng.normal(size=(7, 9))
    at_x, at_y = rng.uniform(x[0], x[-1], 200), rng.uniform(y[0], y[-1], 200)
    # A spline along columns of splines along rows.
    surface = eq.spline_surface(x, y, z, "natural", "not-a-knot")
    rows = scipy.interpolate.CubicSpline(x, z, axis=1, bc_type="natural")(at_x)
    expected = [float(scipy.interpolate.CubicSpline(y, row)(v)) for row, v in zip(rows.T, at_y)]
    assert np.allclose(surface(at_x, at_y), expected, rtol=1e-9, atol=1e-9)
    assert surface(x, y[:, None]).shape == (7, 9) and (surface(x, y[:, None]) == z).all()
    akima = eq.akima_surface(x, y, z)
    assert (akima(x, y[:, None]) == z).all()
    along = eq.akima(x, z[3])
    assert np.allclose(akima(at_x, y[3]), along(at_x))
    turned = eq.akima_surface(y, x, z.T)
    assert np.allclose(turned(at_y, at_x, 1, 2), akima(at_x, at_y, 2, 1))


def test_fits_as_scipy(rng):
    x = np.sort(rng.uniform(100, 104, 60))
    y, weights = np.sin(x) + rng.normal(0, 0.1, 60), rng.uniform(0.5, 2, 60)
    fit = eq.fit_polynomial(x, y, 5, weights)
    peer = np.polynomial.Polynomial.fit(x, y, 5, w=np.sqrt(weights))
    assert np.allclose(fit(x), peer(x), atol=1e-10) and np.allclose(fit(x, 2), peer.deriv(2)(x), atol=1e-8)
    assert np.isclose(fit.rms, np.sqrt(np.average((peer(x) - y) ** 2, weights=weights)))
    breaks = np.array([100, 101, 102.5, 104])
    for degree in (1, 3, 5):
        fit = eq.fit_bspline(x, y, breaks, degree, weights)
        knots = np.r_[[100] * degree, breaks, [104] * degree]
        peer = scipy.interpolate.make_lsq_spline(x, y, knots, degree, w=np.sqrt(weights))
        assert np.allclose(fit.coefficients, peer.c, atol=1e-8)
        assert np.allclose(fit(x, 1), peer(x, 1), atol=1e-7)
    with pytest.raises(ValueError):
        eq.fit_polynomial(x, y[:-1], 2)
    with pytest.raises(dax.Error):
        eq.fit_bspline(x, y, [101, 104])

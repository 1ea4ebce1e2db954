"""Solvers against SciPy's, and callbacks that misbehave."""
import warnings

import numpy as np
import pytest
import scipy.optimize
import scipy.sparse

import dax

WITHOUT = {r"PRMT_LM_print_iter_info": "printing is Python's"}

TIGHT = dax.Settings(step_tolerance=1e-12, energy_tolerance=1e-14)
T = np.linspace(0, 4, 40)


def curve(x):
    return x[0] * np.exp(-x[1] * T) + x[2]


def slopes(x):
    return np.stack([np.exp(-x[1] * T), -x[0] * T * np.exp(-x[1] * T), np.ones_like(T)], 1)


@pytest.fixture
def data(rng):
    values = curve([3, 0.7, 0.5]) + rng.normal(0, 0.05, T.size)
    values[::9] += 2
    return values


def test_dense_variants_as_scipy(data):
    def residuals(x):
        return curve(x) - data

    plain = scipy.optimize.least_squares(residuals, [1, 1, 0], slopes, xtol=1e-14, ftol=1e-14, gtol=1e-14)
    forms = {
        "dense": slopes,
        "nothing": None,
        "triplets": lambda x: (np.repeat(np.arange(40), 3), np.tile(np.arange(3), 40), slopes(x).ravel()),
        "scipy": lambda x: scipy.sparse.csr_matrix(slopes(x)),
        "own": lambda x: dax.SparseMatrix.from_triplets(*np.indices((40, 3)).reshape(2, -1), slopes(x).ravel(),
                                                        (40, 3)),
    }
    for name, jacobian in forms.items():
        for method in ("cholesky", "cg"):
            found = dax.least_squares(residuals, [1, 1, 0], jacobian, method=method, settings=TIGHT)
            assert np.allclose(found.x, plain.x, atol=1e-6), (name, method)
            assert found.energy == pytest.approx(plain.cost, rel=1e-9)
            assert np.array_equal(found.residuals, residuals(found.x))
    robust = scipy.optimize.least_squares(
        residuals, [1, 1, 0], slopes, loss="huber", f_scale=0.1, xtol=1e-14, ftol=1e-14, gtol=1e-14
    )
    found = dax.least_squares(residuals, [1, 1, 0], slopes, huber=0.1, settings=TIGHT)
    assert np.allclose(found.x, robust.x, atol=1e-5) and found.energy == pytest.approx(robust.cost, rel=1e-7)
    assert np.allclose(dax.numeric_jacobian(curve, [1, 1, 0]), slopes(np.array([1, 1, 0])), atol=1e-5)
    normal = dax.minimize_normal(
        lambda x: (residuals(x) ** 2).sum() / 2,
        lambda x, damping: (np.tril(slopes(x).T @ slopes(x)) + damping * np.eye(3), -slopes(x).T @ residuals(x)),
        [1, 1, 0],
        settings=TIGHT,
    )
    assert np.allclose(normal.x, plain.x, atol=1e-6) and normal.energy == pytest.approx(plain.cost)


def test_what_a_solution_says(data):
    def residuals(x):
        return curve(x) - data

    plain = scipy.optimize.least_squares(residuals, [1, 1, 0], slopes, xtol=1e-14, ftol=1e-14, gtol=1e-14)
    normal = slopes(plain.x).T @ slopes(plain.x)
    covariance = np.linalg.inv(normal) * 2 * plain.cost / (T.size - 3)
    for jacobian in (slopes, None):
        found = dax.least_squares(residuals, [1, 1, 0], jacobian, settings=TIGHT)
        assert found.converged and found.reason in ("energy", "step") and found.gradient_norm < 1e-4
        assert np.allclose(found.covariance, covariance, rtol=1e-3) and found.step_norm > 0
        assert 0 < found.accepted <= found.iterations
        assert found.evaluations >= found.iterations + 1
    assert found.evaluations > 3 * found.accepted  # differences
    flat = dax.least_squares(lambda x: np.array([x[0] + x[1], 2.0, 1.0]), [1, 1])
    assert flat.covariance is None
    huber = dax.least_squares(residuals, [1, 1, 0], slopes, huber=0.1, settings=TIGHT)
    assert huber.gradient_norm < 1e-4 < np.abs(slopes(huber.x).T @ huber.residuals).max()
    normal_form = dax.minimize_normal(
        lambda x: (residuals(x) ** 2).sum() / 2,
        lambda x, damping: (slopes(x).T @ slopes(x) + damping * np.eye(3), -slopes(x).T @ residuals(x)),
        [1, 1, 0],
        settings=TIGHT,
    )
    assert normal_form.converged and normal_form.gradient_norm < 1e-4


def test_searches_that_did_not_converge(data, recwarn):
    def residuals(x, scale=1.0):
        return scale * (curve(x) - data)

    with pytest.warns(UserWarning, match="limit of 2 iterations"):
        short = dax.least_squares(residuals, [1, 1, 0], settings=dax.Settings(max_iterations=2))
    assert short.reason == "limit" and not short.converged and short.iterations == 2
    with pytest.warns(UserWarning, match="relative=True"):
        small = dax.least_squares(lambda x: residuals(x, 1e-4), [1, 1, 0], slopes_of := lambda x: 1e-4 * slopes(x))
    assert not small.converged
    best = dax.least_squares(residuals, [1, 1, 0], settings=TIGHT)
    exact = dax.least_squares(lambda x: residuals(x, 1e-4), [1, 1, 0], slopes_of, settings=dax.Settings(relative=True))
    assert exact.converged and np.allclose(exact.x, best.x, atol=1e-2) and exact.energy < 1.001e-8 * best.energy
    tiny = dax.least_squares(lambda x: residuals(x, 1e-6), [1, 1, 0], settings=dax.Settings(relative=True))
    assert tiny.converged and np.allclose(tiny.x, best.x, atol=1e-2)
    with pytest.warns(UserWarning, match="no step was accepted"):
        stuck = dax.least_squares(lambda x: [1 - 1e-3 * (x[0] == 5)], [5.0], lambda x: [[1.0]])
    assert stuck.x.tolist() == [5] and stuck.energy == pytest.approx(0.999**2 / 2) and stuck.step_norm == 0
    recwarn.clear()
    for x0 in ([0.0], [1e-3], [100.0]):  # an exact fit is none of these
        assert dax.least_squares(lambda x: [x[0] - 2], x0, lambda x: [[1.0]]).converged
    assert not recwarn.list


@pytest.mark.parametrize("wrong", [
    {"max_iterations": -1}, {"max_iterations": 0}, {"step_tolerance": -1e-9}, {"energy_tolerance": np.nan},
    {"damping_factor": 1.0}, {"smallest_damping": -1},
])
def test_settings_that_are_none(wrong):
    with pytest.raises(ValueError, match=next(iter(wrong))):
        dax.Settings(**wrong)


def test_updates_on_a_manifold(rng):
    truth = dax.se3_exp([1, -2, 3, 0.5, 1, -2])
    found = dax.least_squares(
        lambda x: dax.se3_log(dax.se3_compose(dax.se3_inverse(dax.se3_exp(x)), truth)), np.zeros(6),
        update=dax.se3_update
    )
    assert np.allclose(dax.se3_exp(found.x), truth, atol=1e-5)


def test_bundles(rng):
    cameras, points = rng.normal(size=(3, 2)), rng.normal(size=(12, 2))
    links = np.array([(i, j) for i in range(3) for j in range(12) if (i + j) % 5])[::-1]
    shape = dax.BlockShape(2, 3, 2, 12, links)
    seen = cameras[links[:, 0]] + points[links[:, 1]] ** 3 + points[links[:, 1]]

    def parts(x):
        return x[:6].reshape(3, 2), x[6:].reshape(12, 2)

    def residuals(x):
        a, b = parts(x)
        return np.concatenate(
            [a[links[:, 0]] + b[links[:, 1]] ** 3 + b[links[:, 1]] - seen, 0.1 * (a - cameras)[links[:, 0]]], 1
        )

    def jacobians(x):
        b = parts(x)[1][links[:, 1]]
        by_a = np.broadcast_to(np.concatenate([np.eye(2), 0.1 * np.eye(2)]), (len(links), 4, 2))
        by_b = np.zeros((len(links), 4, 2))
        by_b[:, 0, 0], by_b[:, 1, 1] = (3 * b**2 + 1).T
        return by_a, by_b

    found = dax.least_squares_blocks(residuals, jacobians, np.zeros(30), shape, settings=TIGHT)
    assert np.allclose(found.x, np.concatenate([cameras.ravel(), points.ravel()]), atol=1e-5)
    for wrong, match in (([(0, 0), (0, 0)], "twice"), ([(3, 0)], "outside"), ([(0, -1)], "outside")):
        with pytest.raises(ValueError, match=match):
            dax.minimize_blocks(lambda x: 0, lambda x: None, np.zeros(30), dax.BlockShape(2, 3, 2, 12, wrong))
    with pytest.raises(dax.Error, match="n or m below 1"):
        dax.minimize_blocks(lambda x: 0, lambda x: None, np.zeros(29), shape)


class Odd(BaseException):
    pass


@pytest.mark.parametrize("error", [ValueError, Odd])
def test_exceptions_come_out(data, error):
    """From every callback, at its first and at a later call, with the parameters left alone."""
    calls = [0]

    def failing(function, after):
        def wrapped(*arguments):
            calls[0] += 1
            if calls[0] > after:
                raise error("the callback's own")
            return function(*arguments)

        return wrapped

    def residuals(x):
        return curve(x) - data

    def energy(x):
        return (residuals(x) ** 2).sum() / 2

    def normal(x, damping):
        return slopes(x).T @ slopes(x) + damping * np.eye(3), -slopes(x).T @ residuals(x)

    def blocks(x):
        h, b = normal(x, 0)
        return dax.Blocks(h, np.zeros((0, 1, 1)), np.zeros((0, 3, 1)), b[None], np.zeros((0, 1)))

    def add(x, step):
        return x + step

    shape = dax.BlockShape(3, 1, 1, 0, [])
    x0 = np.array([1.0, 1, 0])
    for after in (0, 3):
        for solve in (
            lambda bad: dax.least_squares(bad(residuals), x0),
            lambda bad: dax.least_squares(residuals, x0, bad(slopes)),
            lambda bad: dax.least_squares(residuals, x0, slopes, update=bad(add)),
            lambda bad: dax.minimize_normal(bad(energy), normal, x0),
            lambda bad: dax.minimize_normal(energy, bad(normal), x0),
            lambda bad: dax.minimize_blocks(bad(energy), blocks, x0, shape),
            lambda bad: dax.minimize_blocks(energy, bad(blocks), x0, shape),
            lambda bad: dax.numeric_jacobian(bad(residuals), x0),
        ):
            calls[0] = 0
            with pytest.raises(error, match="own") as failure:
                solve(lambda function: failing(function, after))
            assert failure.traceback[-1].name == "wrapped" and calls[0] == after + 1
    assert x0.tolist() == [1, 1, 0]


def test_wrong_values_from_callbacks(data):
    def residuals(x):
        return curve(x) - data

    first = [True]

    def shrinking(x):
        size = 40 if first[0] else 39
        first[0] = False
        return np.zeros(size)

    cases = [
        (ValueError, "residuals: shape", lambda: dax.least_squares(shrinking, [1, 1, 0])),
        (TypeError, "residuals", lambda: dax.least_squares(lambda x: "abc", [1])),
        (ValueError, "jacobian: shape", lambda: dax.least_squares(residuals, [1, 1, 0], lambda x: slopes(x).T)),
        (ValueError, "an index outside", lambda: dax.least_squares(residuals, [1, 1, 0], lambda x: ([40], [0], [1.0]))),
        (ValueError, "columns: shape", lambda: dax.least_squares(residuals, [1, 1, 0], lambda x: ([1], [0, 1], [1.0]))),
        (ValueError, "tuple of 2", lambda: dax.least_squares(residuals, [1, 1, 0], lambda x: ([1], [0]))),
        (ValueError, "update", lambda: dax.least_squares(residuals, [1, 1, 0], update=lambda x, step: x[:2])),
        (ValueError, "normal: b", lambda: dax.minimize_normal(lambda x: 1.0, lambda x, d: (np.eye(2), [1]), [1, 1])),
        (TypeError, "", lambda: dax.minimize_normal(lambda x: None, lambda x, d: (np.eye(2), [1, 1]), [1, 1])),
        (dax.Error, "n or m below 1", lambda: dax.least_squares(lambda x: [1], [])),
        (dax.Error, "blockSize|out of its range",
         lambda: dax.least_squares(residuals, [1, 1, 0], method="cg", cg_block=17)),
        (ValueError, "huber", lambda: dax.least_squares(residuals, [1, 1, 0], method="cg", huber=1)),
        (ValueError, "method", lambda: dax.least_squares(residuals, [1, 1, 0], method="qr")),
        (ValueError, "x0: shape", lambda: dax.least_squares(residuals, [[1, 1, 0]])),
    ]
    for kind, match, solve in cases:
        with pytest.raises(kind, match=match):
            solve()
    growing = [0]

    def jacobian(x):
        growing[0] += 1
        return ([0], [0], [1.0]) if growing[0] == 1 else slopes(x)

    with pytest.raises(dax.Error, match="no room"):
        dax.least_squares(residuals, [1, 1, 0], jacobian)
    growing[0] = 0
    assert dax.least_squares(residuals, [1, 1, 0], jacobian, elements=120).energy < 25


def test_callbacks_that_write_one_array(data):
    """What a callback returned may be written again, by the callback or by the Jacobian that calls it."""
    buffer, slope = np.empty(T.size), np.empty((T.size, 3))

    def residuals(x):
        np.subtract(curve(x), data, out=buffer)
        return buffer

    def jacobian(x):
        for i, step in enumerate(1e-6 * np.eye(3)):
            slope[:, i] = residuals(x + step)
        slope[:] = (slope - residuals(x)[:, None]) / 1e-6
        residuals(x + 1)
        return slope

    def fresh(x):
        return curve(x) - data

    warnings.simplefilter("ignore")  # limits are reached
    for rounds in (1, 2, 500):
        settings = dax.Settings(max_iterations=rounds)
        found = dax.least_squares(residuals, [1, 1, 0], jacobian, settings=settings)
        expected = dax.least_squares(fresh, [1, 1, 0], lambda x: jacobian(x).copy(), settings=settings)
        assert np.array_equal(found.x, expected.x) and np.array_equal(found.residuals, fresh(found.x)), rounds
        assert found.energy == expected.energy


def test_solvers_nest(data):
    def residuals(x):
        inner = dax.least_squares(lambda y: [y[0] - 2], [0.0]).x[0]
        return (curve(x) - data) * inner / 2

    alone = dax.least_squares(lambda x: curve(x) - data, [1, 1, 0])
    assert np.allclose(dax.least_squares(residuals, [1, 1, 0]).x, alone.x, atol=1e-4)

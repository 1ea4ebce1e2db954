"""Graphs: wiring, and the minimum beside SciPy's."""
import numpy as np
import pytest
import scipy.optimize

import dax


def ring(n=30, noise=0.1, seed=0, kernel="none"):
    rng = np.random.default_rng(seed)
    g = dax.graph.Graph()
    step = 2 * np.pi / n
    chord = 2 * np.sin(step / 2)
    between = [chord * np.cos(step / 2), chord * np.sin(step / 2), step]
    for k in range(n):
        truth = [np.sin(step * k), 1 - np.cos(step * k), step * k]
        g.add_vertex(1000 - k, "SE2", truth + rng.normal(0, noise, 3))
    for k in range(n):
        measured = between + rng.normal(0, 0.01, 3)
        g.add_edge("relative", (1000 - k, 1000 - (k + 1) % n), measured, [100, 200, 300], kernel)
    return g


def residuals(x, g):
    poses = dict(zip(g.vertices["id"], x.reshape(-1, 3)))
    rows = []
    for edge in g.edges:
        (xi, yi, ti), (xj, yj, tj) = (poses[each] for each in edge["vertices"])
        zx, zy, zt = edge["measurement"][:3]
        turn = lambda t, v: np.array([[np.cos(t), np.sin(t)], [-np.sin(t), np.cos(t)]]) @ v
        u, v = turn(zt, turn(ti, [xj - xi, yj - yi]) - [zx, zy])
        rows += [10 * u, 200**0.5 * v, 300**0.5 * ((tj - ti - zt + np.pi) % (2 * np.pi) - np.pi)]
    return np.array(rows)


@pytest.mark.parametrize("solver", ["normal", "jacobian", "cg", "blocks"])
def test_minimum_as_scipy(solver):
    g = ring()
    start = g.vertices["estimate"][:, :3].ravel()
    assert np.isclose(g.energy, (residuals(start, g) ** 2).sum() / 2, rtol=1e-10)
    expected = scipy.optimize.least_squares(residuals, start, args=(g,), ftol=1e-15, xtol=1e-15, gtol=1e-15).cost
    steps = []
    found = g.optimise(solver, progress=lambda *each: steps.append(each))
    assert np.isclose(found.final, expected, rtol=1e-7) and found.converged and found.held == 1
    assert found.first_held == 971 and len(steps) == found.iterations and np.isclose(g.energy, found.final)
    assert g.vertices["isHeld"].sum() == 1 and found.parameters == 87 and found.residuals == 90


def test_vertices_and_edges():
    g = ring(40, kernel="huber")
    g.fix(990)
    g.set_estimate(990, [0, 0, 0.5])
    assert g.optimise().held == 0 and np.array_equal(g.estimate(990), [0, 0, 0.5])
    g.add_vertex(1, "SE3", [0, 0, 0, 0, 0, 4])
    assert np.isclose(g.estimate(1)[5], 4 - 2 * np.pi)
    g.add_vertex(2, "point3", [1, 2, 3])
    g.add_vertex(3, "vector", [5])
    g.add_edge("landmark", (1, 2), [1, 1, 1], np.eye(3))
    g.add_edge("prior", 3, [7])
    assert g.optimise().components == 3 and np.allclose(g.estimate(3), 7)
    for bad in (
        lambda: g.add_vertex(4, "SE2", [1, 2]),
        lambda: g.add_edge("prior", 3, [1, 2]),
        lambda: g.add_edge("relative", (990, 991), [0, 0, 0], [[1, 2, 0], [0, 1, 0], [0, 0, 1]]),
        lambda: g.set_estimate(990, [1]),
        lambda: g.optimise("best"),
    ):
        with pytest.raises(ValueError):
            bad()
    for bad in (
        lambda: g.add_vertex(990, "SE2", [1, 2, 3]),
        lambda: g.add_edge("relative", (990, 990), [0, 0, 0]),
        lambda: g.add_edge("relative", (990, 989), [0, 0, 0], [1, -1, 1]),
        lambda: g.estimate(77),
        lambda: g.to_text(),
    ):
        with pytest.raises(dax.Error):
            bad()

    def stop(*_):
        raise KeyError("enough")

    with pytest.raises(KeyError):
        ring().optimise(progress=stop)
    with pytest.warns(UserWarning, match="limit"):
        assert not ring().optimise(max_iterations=1).converged


def test_marginals_as_dense_inverse():
    g = ring(12, 0.02)
    g.optimise()
    x = g.vertices["estimate"][:, :3].ravel()
    r = lambda step: residuals(x + step, g)
    j = np.stack([(r(1e-6 * row) - r(-1e-6 * row)) / 2e-6 for row in np.eye(36)], 1)
    free = np.arange(36) < 33  # the lowest id, the last one, is held
    inverse = np.linalg.inv(j[:, free].T @ j[:, free])
    for k, found in enumerate(g.marginals(g.vertices["id"])):
        if k == 11:
            assert not found.any()
            continue
        c, s = np.cos(x[3 * k + 2]), np.sin(x[3 * k + 2])
        turn = np.array([[c, s, 0], [-s, c, 0], [0, 0, 1]])
        assert np.allclose(found, turn @ inverse[3 * k : 3 * k + 3, 3 * k : 3 * k + 3] @ turn.T, rtol=1e-5, atol=1e-9)
    with pytest.raises(dax.Error):
        g.marginals([5])


def test_text():
    g = ring()
    again = dax.graph.read(g.to_text())
    assert np.array_equal(again.vertices["estimate"], g.vertices["estimate"]) and again.to_text() == g.to_text()
    with pytest.raises(dax.graph.TextError, match="line 2") as caught:
        dax.graph.read("VERTEX_XY 1 0 0\nVERTEX_XY 1 0 0\n")
    assert caught.value.line == 2
    with pytest.warns(UserWarning, match="1 lines of unknown"):
        assert len(dax.graph.read("HELLO 1 2\n").vertices) == 0

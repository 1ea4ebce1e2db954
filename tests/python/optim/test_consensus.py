"""Sample consensus: shapes among outliers, and models of the caller's."""
import numpy as np
import pytest

import dax

WITHOUT = {r"PRMT_SAC_Run_f64_MT": "callbacks of Python's run one at a time"}
consensus = dax.consensus


def scene(rng, kind, n=600):
    """n points in a cube of side 100, every second one within 0.2 of the shape."""
    dimension = 2 if kind in ("line", "circle") else 3
    points = rng.uniform(0, 100, (n, dimension))
    near = points[::2]
    noise = rng.uniform(-0.2, 0.2, (len(near), 1))
    if kind in ("line", "plane"):
        normal = np.array([0.6, 0.8] if dimension == 2 else [0.36, 0.48, 0.8])
        model = np.append(normal, -60)
        near -= (near @ normal - 60)[:, None] * normal - noise * normal
    else:
        centre = np.full(dimension, 50.0)
        model = np.append(centre, 30)
        near[:] = centre + (near - centre) / np.linalg.norm(near - centre, axis=1)[:, None] * (30 + noise)
    return points, model


@pytest.mark.parametrize("kind", ["line", "circle", "plane", "sphere"])
@pytest.mark.parametrize("dtype", [np.float64, np.float32])
def test_shapes(rng, kind, dtype, pool):
    points, truth = scene(rng, kind)
    find = getattr(consensus, kind)
    for method in ("ransac", "msac", "prosac"):
        found = find(points.astype(dtype), 0.25, method=method, seed=3)
        assert found.inliers[::2].all() and found.inliers[1::2].mean() < 0.05 and found.is_confident
        assert np.allclose(found.model, truth, atol=0.1)
    shared = find(points.astype(dtype), 0.25, method="prosac", seed=3, pool=pool)
    assert (shared.model == found.model).all() and (shared.inliers == found.inliers).all()
    points[1::4] = points[::4]  # more than half of them lie there
    median = find(points.astype(dtype), 1e-3, method="lmeds")
    assert 0.05 < median.threshold < 1 and np.allclose(median.model, truth, atol=0.1)


def test_models_of_the_caller(rng):
    x = rng.uniform(-5, 5, 300)
    y = np.where(np.arange(300) % 2 == 0, 1 - 2 * x + 0.5 * x**2 + rng.normal(0, 0.01, 300), rng.uniform(-20, 20, 300))
    fitted = []

    def through(indices):
        return None if indices[0] % 7 == 0 else [np.polyfit(x[indices], y[indices], 2), np.zeros(3)]

    def away(model, part):
        return np.polyval(model, x[part]) - y[part]

    def again(indices, model):
        fitted.append(model)
        return np.polyfit(x[indices], y[indices], 2)

    sizes = dict(sample_size=3, model_size=3, max_models=2, threshold=0.05)
    found = consensus.run(300, through, away, again, **sizes)
    assert np.allclose(found.model, [0.5, -2, 1], atol=0.01) and found.inliers.sum() >= 149 and fitted
    assert found.degenerate > 0 and found.iterations % 64 == 0
    plain = consensus.run(300, through, away, **sizes, max_iterations=10, confidence=0.9999)
    assert not plain.is_confident and plain.iterations == 10 and plain.confidence < 0.9999

    def broken(model, part):
        raise KeyError("mine")

    with pytest.raises(KeyError, match="mine"):
        consensus.run(300, through, broken, **sizes)
    with pytest.raises(ValueError, match="max_models"):
        consensus.run(300, through, away, sample_size=3, model_size=3)
    with pytest.raises(dax.Error):
        consensus.run(300, lambda indices: None, away, **sizes)
    with pytest.raises(ValueError, match="threshold"):
        consensus.line([[0, 0], [1, 1]], 0)

"""Circle fits against SciPy's least squares, with and without outliers."""
import numpy as np
import pytest
import scipy.optimize

import dax


def ring(rng, n, noise, arc=2 * np.pi):
    angle = rng.uniform(0, arc, n)
    radius = 80 + rng.normal(0, noise, n)
    return np.stack([120 + radius * np.cos(angle), 90 + radius * np.sin(angle)], 1)


@pytest.mark.parametrize("arc", [2 * np.pi, 1.0])
def test_as_scipy(rng, arc):
    points = ring(rng, 200, 0.3, arc).astype(np.float32)

    def distances(c):
        return np.hypot(*(points - c[:2]).T.astype(float)) - c[2]

    def slopes(c):
        away = (points - c[:2]).astype(float)
        return np.column_stack([-away / np.hypot(*away.T)[:, None], -np.ones(len(points))])

    tight = dict(xtol=1e-15, ftol=1e-15, gtol=1e-15)
    best = scipy.optimize.least_squares(distances, (120, 90, 80), slopes, method="lm", **tight)
    found = dax.fit_circle(points, weights="least-squares")
    assert np.allclose([found.x, found.y, found.r], best.x, atol=1e-7)
    sigma2 = (best.fun**2).sum() / 197
    assert np.allclose(found.covariance, sigma2 * np.linalg.inv(best.jac.T @ best.jac), rtol=1e-5, atol=1e-12)
    assert found.rms == pytest.approx(np.sqrt((best.fun**2).mean())) and found.converged
    assert np.allclose(found.distances(points), best.fun, atol=1e-6)
    assert found.arc == pytest.approx(arc, abs=0.2)


@pytest.mark.parametrize("dtype", [np.int16, np.int32, np.float32, np.float64])
def test_outliers(rng, dtype):
    points = np.concatenate([ring(rng, 120, 0.2), rng.uniform(60, 180, (40, 2))]).astype(dtype)
    for method in ("algebraic", "geometric", "ransac"):
        found = dax.fit_circle(points, method=method, weights="tukey", threshold=2.5 if method == "ransac" else 0)
        assert abs(found.r - 80) < 0.6 and found.inliers[:120].mean() > 0.9
    with pytest.raises(ValueError, match="threshold"):
        dax.fit_circle(points, method="ransac")
    with pytest.raises(dax.Error):
        dax.fit_circle(points[:2])

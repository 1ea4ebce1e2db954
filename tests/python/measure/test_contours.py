"""Polygons through chains, as scikit-image has them."""
import numpy as np
import pytest

import dax


def test_polygons(rng):
    measure = pytest.importorskip("skimage.measure")
    points = np.cumsum(rng.integers(-3, 6, (300, 2)), 0)
    for array in (points.astype(np.int32), points.astype(float)):
        for tolerance in (2.0, 9.5):
            indices = dax.approximate_contour(array, tolerance)
            expected = measure.approximate_polygon(points.astype(float), tolerance)
            assert len(indices) >= len(expected) * 0.9 and (np.diff(indices) > 0).all()


def test_rings_and_refusals():
    angle = np.linspace(0, 2 * np.pi, 400, endpoint=False)
    ring = np.stack([50 * np.cos(angle), 50 * np.sin(angle)], 1)
    indices = dax.approximate_contour(ring, 1, closed=True)
    sagitta = 50 * (1 - np.cos(np.diff(np.append(indices, 400)) * np.pi / 400))
    assert indices[0] == 0 and len(indices) < 30 and sagitta.max() < 1.0001
    zigzag = np.stack([np.arange(20000) * 1e-3, np.arange(20000, 0, -1) * (-1.0) ** np.arange(20000)], 1)
    with pytest.warns(UserWarning, match="more points"):
        dax.approximate_contour(zigzag, 0.25)
    with pytest.raises(ValueError, match="tolerance"):
        dax.approximate_contour(ring, -1)
    with pytest.raises(dax.Error):
        dax.approximate_contour([[0, np.nan]], 1)

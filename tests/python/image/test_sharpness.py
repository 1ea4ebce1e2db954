"""How sharp an image is."""
import numpy as np
import pytest

import dax


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32])
def test_sharpness(rng, dtype, pool):
    image = rng.integers(0, 200, (23, 37)).astype(dtype)
    v = image.astype(float)
    along = v[1:-1, 2:] - v[1:-1, :-2]
    bend = v[1:-1, 2:] + v[1:-1, :-2] + v[2:, 1:-1] + v[:-2, 1:-1] - 4 * v[1:-1, 1:-1]
    dx, dy = v[:, 2:] - v[:, :-2], v[2:] - v[:-2]
    gx, gy = dx[:-2] + 2 * dx[1:-1] + dx[2:], dy[:, :-2] + 2 * dy[:, 1:-1] + dy[:, 2:]
    assert np.isclose(dax.sharpness(image), (gx**2 + gy**2).mean(), rtol=1e-12)
    assert np.isclose(dax.sharpness(image, "laplacian"), bend.var(), rtol=1e-12)
    assert np.isclose(dax.sharpness(image, "brenner"), (along**2).mean(), rtol=1e-12)
    for measure in ("tenengrad", "laplacian", "brenner"):
        assert dax.sharpness(image, measure, pool=pool) == dax.sharpness(image, measure)

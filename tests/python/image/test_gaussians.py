"""Gaussian smoothing: sigma, sizes and borders mean what SciPy means by them."""
import numpy as np
import pytest
from scipy import ndimage

import dax

MODES = {"replicate": "nearest", "mirror": "mirror", "symmetric": "reflect", "wrap": "wrap"}


@pytest.mark.parametrize("mode", MODES)
@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32])
def test_equals_scipy(rng, pool, dtype, mode):
    image = rng.integers(0, 256, (43, 61)).astype(dtype)
    expected = ndimage.gaussian_filter(image.astype(float), 2.5, mode=MODES[mode], truncate=4)
    smooth = dax.gauss(image, 2.5, mode=mode)
    assert np.abs(smooth - expected).max() <= (0.51 if smooth.dtype.kind != "f" else 1e-4)
    np.testing.assert_array_equal(dax.gauss(image, 2.5, mode=mode, pool=pool), smooth)


def test_size_and_constant_border(rng):
    image = rng.integers(0, 256, (20, 30)).astype(np.float32)
    weights = np.exp(-np.arange(-2, 3) ** 2 / (2 * 1.5**2))
    kernel = np.outer(np.ones(1), weights / weights.sum())
    expected = ndimage.correlate(image.astype(float), kernel, mode="constant", cval=100)
    np.testing.assert_allclose(dax.gauss(image, 1.5, (5, 1), mode="constant", value=100), expected, rtol=1e-5)


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.float32])
def test_what_is_made_of_gaussians(rng, pool, dtype):
    image = rng.integers(0, 256, (43, 61)).astype(dtype)
    recursive = dax.gauss_recursive(image, 4, mode="wrap")
    assert np.abs(recursive - ndimage.gaussian_filter(image.astype(float), 4, mode="wrap", truncate=8)).max() < 0.76
    np.testing.assert_array_equal(dax.gauss_recursive(image, 4, mode="wrap", pool=pool), recursive)
    blobs = dax.laplacian_of_gaussian(image, 2, mode="mirror")
    expected = ndimage.gaussian_laplace(image.astype(float), 2, mode="mirror", truncate=4)
    np.testing.assert_allclose(blobs, expected, atol=0.03)
    np.testing.assert_array_equal(dax.laplacian_of_gaussian(image, 2, mode="mirror", pool=pool), blobs)
    sharp = dax.unsharp(image, 1.5, 2, 10)
    detail = image - dax.gauss(image, 1.5).astype(float)
    limit = np.inf if dtype == np.float32 else np.iinfo(dtype).max
    low = -np.inf if dtype == np.float32 else 0
    expected = np.where(np.abs(detail) > 10, image + 2 * detail, image).clip(low, limit)
    np.testing.assert_allclose(sharp, expected, atol=1e-4)
    np.testing.assert_array_equal(dax.unsharp(image, 1.5, 2, 10, pool=pool), sharp)

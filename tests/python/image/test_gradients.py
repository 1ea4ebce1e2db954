"""Derivatives, edges and correlations: kernels, axes and borders mean what SciPy means by them."""
import numpy as np
import pytest
from scipy import ndimage

import dax

SMOOTH = {"sobel": [1, 2, 1], "prewitt": [1, 1, 1], "scharr": [3, 10, 3]}


@pytest.mark.parametrize("kernel", SMOOTH)
@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.float32])
def test_gradients_equal_scipy(rng, pool, kernel, dtype):
    image = rng.integers(0, 256, (23, 31)).astype(dtype)
    both = []
    for axis, number in (("x", 1), ("y", 0)):
        smooth = ndimage.correlate1d(image.astype(float), SMOOTH[kernel], 1 - number, mode="mirror")
        both.append(ndimage.correlate1d(smooth, [-1, 0, 1], number, mode="mirror"))
        result = dax.gradient(image, axis, kernel, mode="mirror")
        np.testing.assert_array_equal(result, both[-1])
        np.testing.assert_array_equal(dax.gradient(image, axis, kernel, mode="mirror", pool=pool), result)
    images = dax.gradient_mag_dir(image, kernel, mode="mirror")
    np.testing.assert_allclose(images.magnitude, np.hypot(*both), rtol=1e-6)
    np.testing.assert_allclose(images.direction, np.arctan2(both[1], both[0]), atol=1e-6)
    for one, other in zip(images, dax.gradient_mag_dir(image, kernel, mode="mirror", pool=pool)):
        np.testing.assert_array_equal(one, other)


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.float32])
def test_laplace_equals_scipy(rng, dtype, pool):
    image = rng.integers(0, 256, (23, 31)).astype(dtype)
    expected = ndimage.laplace(image.astype(float), mode="nearest")
    np.testing.assert_array_equal(dax.laplace(image, pool=pool), expected)
    eight = ndimage.correlate(image.astype(float), [[1, 1, 1], [1, -8, 1], [1, 1, 1]], mode="nearest")
    np.testing.assert_array_equal(dax.laplace(image, 8), eight)


def test_canny_finds_the_outline(pool):
    image = np.zeros((60, 80), np.uint8)
    image[20:40, 30:60] = 200
    edges = dax.canny(image)
    assert set(np.unique(edges)) == {0, 255}
    ring = ndimage.binary_dilation(image > 0, iterations=2) & ~ndimage.binary_erosion(image > 0, iterations=2)
    assert (ring[edges > 0]).all() and len(dax.label(edges)) == 1
    np.testing.assert_array_equal(dax.canny(image, pool=pool), edges)
    assert not dax.canny(image, 1e6, 1e6, norm="l2", aperture=5).any()


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.float32])
def test_correlations_equal_scipy(rng, pool, dtype):
    image = rng.integers(0, 256, (23, 31)).astype(dtype)
    along, down = np.array([0.25, 0.5, -1, 2]), np.array([1, -0.5, 2])
    expected = ndimage.correlate(image.astype(float), np.outer(down, along), mode="wrap")
    result = dax.correlate(image, np.outer(down, along), mode="wrap")
    np.testing.assert_allclose(result, expected, rtol=1e-6, atol=1e-3)
    np.testing.assert_array_equal(dax.correlate(image, np.outer(down, along), mode="wrap", pool=pool), result)
    separable = dax.correlate_separable(image, along, down, mode="wrap", anchor=(2, 1))
    np.testing.assert_allclose(separable, expected, rtol=1e-6, atol=1e-3)
    again = dax.correlate_separable(image, along, down, mode="wrap", anchor=(2, 1), pool=pool)
    np.testing.assert_array_equal(again, separable)


@pytest.mark.parametrize("dtype, signed", [(np.uint8, False), (np.uint8, True), (np.uint16, False)])
def test_whole_weights_on_a_pool(rng, pool, dtype, signed):
    image = rng.integers(0, 256, (23, 31)).astype(dtype)
    expected = ndimage.correlate(image.astype(int), np.outer([1, 2, 1], [1, 0, 3]), mode="nearest") // 32
    for run in (None, pool):
        full = dax.correlate(image, np.outer([1, 2, 1], [1, 0, 3]), signed=signed, pool=run, shift=5)
        assert np.abs(full - expected).max() <= 1
        separable = dax.correlate_separable(image, [1, 0, 3], [1, 2, 1], signed=signed, pool=run, shift=5)
        np.testing.assert_array_equal(separable, full)


def test_whole_weights(rng):
    image = rng.integers(0, 256, (23, 31)).astype(np.uint8)
    expected = ndimage.correlate(image.astype(int), [[1, 0, -2]], mode="nearest")
    np.testing.assert_array_equal(dax.correlate(image, [[1, 0, -2]], signed=True), expected)
    np.testing.assert_array_equal(dax.correlate_separable(image, [1, 0, -2], [1], signed=True), expected)
    np.testing.assert_array_equal(dax.correlate(image, [[1, 0, -2]]), expected.clip(0, 255))
    words = image.astype(np.uint16)
    np.testing.assert_array_equal(dax.correlate_separable(words, [300], [5], shift=3), np.rint(words * 187.5))
    for wrong in ([1, 2], np.ones((1, 32), int), [[40000]], np.array([[2**64 - 1]], np.uint64)):
        with pytest.raises(ValueError, match="weights"):
            dax.correlate(image, wrong)
    with pytest.raises(ValueError, match="along"):
        dax.correlate_separable(image, [[1]], [1])

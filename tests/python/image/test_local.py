"""Local thresholds, statistics and smoothing: windows, borders and parameters mean what they say."""
import numpy as np
import pytest
from scipy import ndimage

import dax

DTYPES = (np.uint8, np.uint16, np.float32)


def page(rng, dtype=np.uint8):
    """Print on uneven light."""
    image = np.linspace(60, 220, 90)[None] + rng.normal(0, 2, (50, 90))
    image[10:40:6, 5:85] -= 50
    return np.clip(image, 0, 255).astype(np.uint8).astype(dtype) * (257 if dtype == np.uint16 else 1)


@pytest.mark.parametrize("dtype", DTYPES)
def test_statistics_equal_scipy(rng, pool, dtype):
    image = page(rng, dtype)
    mean = ndimage.uniform_filter(image.astype(float), (5, 8), mode="mirror")
    squares = ndimage.uniform_filter(image.astype(float) ** 2, (5, 8), mode="mirror")
    spread = ndimage.maximum_filter(image, (5, 8), mode="mirror") - ndimage.minimum_filter(image, (5, 8), mode="mirror")
    for threads in (None, pool):
        at = {"window": (8, 5), "mode": "mirror", "pool": threads}
        np.testing.assert_allclose(dax.local_mean(image, **at), mean, rtol=1e-6)
        np.testing.assert_allclose(dax.local_std(image, **at), np.sqrt(np.maximum(squares - mean**2, 0)), atol=0.2)
        np.testing.assert_array_equal(dax.local_range(image, **at), spread)


@pytest.mark.parametrize("dtype", (np.uint8, np.uint16))
def test_entropy(rng, pool, dtype):
    image = (rng.integers(0, 7, (20, 30)) * np.iinfo(dtype).max // 6).astype(dtype)

    def bits(window):
        shares = np.bincount(window.astype(int)) / window.size
        return -(shares[shares > 0] * np.log2(shares[shares > 0])).sum()

    expected = ndimage.generic_filter(image.astype(float), bits, 5, mode="nearest")
    np.testing.assert_allclose(dax.local_entropy(image, 5, mode="replicate"), expected, atol=1e-5)
    np.testing.assert_array_equal(dax.local_entropy(image, pool=pool), dax.local_entropy(image))


@pytest.mark.parametrize("dtype", DTYPES)
def test_thresholds(rng, pool, dtype):
    image = page(rng, dtype)
    unit = 257 if dtype == np.uint16 else 1
    x, m, s = image.astype(float), *(f(image, 15).astype(float) for f in (dax.local_mean, dax.local_std))
    low, high = (f(image, 15, mode="nearest").astype(float) for f in (ndimage.minimum_filter, ndimage.maximum_filter))
    levels = {
        "mean": m,
        "mean-variance": m + 0.2 * np.maximum(s, 4 * unit),
        "niblack": m - 0.2 * s,
        "sauvola": m * (1 + 0.3 * (s / (100 * unit) - 1)),
        "wolf": m - 0.5 * (1 - s / s.max()) * (m - x.min()),
        "bernsen": (low + high) / 2,
    }
    # The window cuts the Gaussian off, and what is outside the image has no weight.
    kernel = np.exp(-((np.arange(15) - 7) ** 2) / (2 * (0.2 * 15) ** 2))

    def smooth(values):
        return ndimage.correlate1d(ndimage.correlate1d(values, kernel, 0, mode="constant"), kernel, 1, mode="constant")

    levels["gauss"] = smooth(x) / smooth(np.ones(x.shape))
    own = {"gauss": {"k": 0.2}, "mean-variance": {"min_deviation": 4 * unit, "k": 0.2}}
    own |= {"sauvola": {"k": 0.3, "r": 100 * unit}, "bernsen": {"min_contrast": 30 * unit}}
    for method, level in levels.items():
        options = {"offset": 2.03 * unit, **own.get(method, {})}
        clear = (high - low < 30 * unit) & (method == "bernsen")
        for test, expected in {
            "light": x - level >= 2.03 * unit,
            "dark": level - x >= 2.03 * unit,
            "equal": abs(x - level) <= 2.03 * unit,
            "not-equal": abs(x - level) > 2.03 * unit,
        }.items():
            mask = dax.threshold_local(image, method, 15, test=test, **options)
            assert np.mean((mask == 255) != (expected & ~clear)) < 2e-3, (method, test)
        np.testing.assert_array_equal(dax.threshold_local(image, method, 15, test=test, **options, pool=pool), mask)
        chosen = (rng.random(image.shape) < 0.5).astype(np.uint8)
        for threads in (None, pool):
            part = dax.threshold_local(image, method, 15, test=test, **options, mask=chosen, pool=threads)
            np.testing.assert_array_equal(part, mask * chosen)


def test_defaults_find_print(rng):
    image = page(rng)
    ink = np.zeros(image.shape, bool)
    ink[10:40:6, 5:85] = True
    for method in ("mean", "bernsen", "sauvola", "wolf", "niblack", "gauss"):
        mask = dax.threshold_local(image, method, 21, test="dark", offset=12)
        assert np.mean((mask == 255) != ink) < 0.02, method
    with pytest.raises(dax.Error):
        dax.threshold_local(image, r=0)


@pytest.mark.parametrize("dtype", DTYPES)
def test_hysteresis(rng, pool, dtype):
    image = rng.integers(0, 100, (40, 50)).astype(dtype)
    for connectivity, shape in ((4, ndimage.generate_binary_structure(2, 1)), (8, np.ones((3, 3)))):
        labels, _ = ndimage.label(image > 60, shape)
        kept = np.unique(labels[image > 95])
        expected = np.isin(labels, kept[kept > 0])
        for threads in (None, pool):
            mask = dax.hysteresis(image, 60, 95, connectivity=connectivity, pool=threads)
            np.testing.assert_array_equal(mask == 255, expected)


@pytest.mark.parametrize("dtype", DTYPES)
def test_guided(rng, pool, dtype):
    image, guide = page(rng, dtype), page(rng, dtype)[::-1].copy()
    eps = 100 * (257**2 if dtype == np.uint16 else 1)

    def mean(values):
        n = ndimage.uniform_filter(np.ones(values.shape), 7, mode="constant")
        return ndimage.uniform_filter(values, 7, mode="constant") / n

    I, p = guide.astype(float), image.astype(float)
    a = (mean(I * p) - mean(I) * mean(p)) / (mean(I * I) - mean(I) ** 2 + eps)
    expected = mean(a) * I + mean(mean(p) - a * mean(I))
    for threads in (None, pool):
        result = dax.guided(image, guide, radius=3, eps=eps, pool=threads)
        np.testing.assert_allclose(result, expected, atol=0.51 if dtype != np.float32 else 1e-2)
    np.testing.assert_array_equal(dax.guided(image, image.copy(), eps=eps), dax.guided(image, eps=eps))
    coarse, fine = (dax.guided(image, eps=eps, subsample=step).astype(float) for step in (2, 1))
    assert np.abs(coarse - fine).mean() < 0.5 * eps**0.5


@pytest.mark.parametrize("dtype", (np.uint8, np.float32))
def test_bilateral(rng, pool, dtype):
    image = page(rng, dtype)
    x = np.pad(image.astype(float), 2, mode="wrap")
    sums, weights = 0, 0
    for dy in range(-2, 3):
        for dx in range(-2, 3):
            if dx * dx + dy * dy <= 4:
                v = x[2 + dy : 52 + dy, 2 + dx : 92 + dx]
                w = np.exp(-(dx * dx + dy * dy) / 4.5 - (v - image) ** 2 / 800)
                sums, weights = sums + w * v, weights + w
    for threads in (None, pool):
        result = dax.bilateral(image, 2, sigma_space=1.5, sigma_grey=20, mode="wrap", pool=threads)
        np.testing.assert_allclose(result, sums / weights, atol=0.501 if dtype == np.uint8 else 1e-3)

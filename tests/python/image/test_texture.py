"""Texture: patterns, pairs of levels, energies."""
import numpy as np
import pytest
from scipy import ndimage

import dax

DTYPES = (np.uint8, np.uint16, np.float32)


@pytest.mark.parametrize("dtype", DTYPES)
def test_patterns(rng, pool, dtype):
    image = rng.integers(0, 9, (20, 70)).astype(dtype)
    around = np.pad(image, 1, mode="edge")
    offsets = ((0, 1), (1, 1), (1, 0), (1, -1), (0, -1), (-1, -1), (-1, 0), (-1, 1))
    bits = np.array([around[1 + y : 21 + y, 1 + x : 71 + x] >= image for y, x in offsets])
    plain = (bits * 2 ** np.arange(8)[:, None, None]).sum(0)
    turned = np.min([(plain >> k | plain << (8 - k)) & 255 for k in range(8)], axis=0)
    changes = (bits != np.roll(bits, 1, axis=0)).sum(0)
    uniform = np.where(changes <= 2, bits.sum(0), 9)
    for threads in (None, pool):
        for codes, expected in (("plain", plain), ("rotation", turned), ("uniform", uniform)):
            found = dax.local_binary_pattern(image, codes=codes, pool=threads)
            assert found.dtype == np.uint8
            np.testing.assert_array_equal(found, expected)
            counts = dax.local_binary_pattern_histogram(image, codes=codes, pool=threads)
            length = 10 if codes == "uniform" else 256
            np.testing.assert_array_equal(counts, np.bincount(expected.ravel(), minlength=length))
        wide = dax.local_binary_pattern(image, 12, 2.5, pool=threads)
        assert wide.dtype == np.uint16
        counts = dax.local_binary_pattern_histogram(image, 12, 2.5, "plain", pool=threads)
        np.testing.assert_array_equal(counts, np.bincount(wide.ravel(), minlength=4096))
    with pytest.raises(dax.Error):
        dax.local_binary_pattern(image, 9)


def test_patterns_near_skimage(rng):
    feature = pytest.importorskip("skimage.feature")
    image = ndimage.gaussian_filter(rng.normal(128, 60, (60, 80)), 1).astype(np.uint8)
    for points, radius in ((8, 1), (16, 2), (24, 3)):
        theirs = feature.local_binary_pattern(image, points, radius, "uniform")
        ours = dax.local_binary_pattern(image, points, radius, "uniform", mode="constant")
        # Values between pixels are equal to the centre's here and there, up to how they are rounded.
        assert np.mean(theirs != ours) < 0.02, points


@pytest.mark.parametrize("dtype", DTYPES[:2])
def test_pairs(rng, pool, dtype):
    unit = np.iinfo(dtype).max // 255
    levels = rng.integers(0, 16, (30, 41))
    image = (levels * 16 * unit).astype(dtype)
    expected = np.zeros((4, 16, 16), int)
    for k, (dx, dy) in enumerate(((2, 0), (2, -2), (0, -2), (-2, -2))):
        first = levels[max(0, -dy) :, max(0, -dx) : 41 - max(0, dx)]
        second = np.roll(levels, (-dy, -dx), (0, 1))[max(0, -dy) :, max(0, -dx) : 41 - max(0, dx)]
        np.add.at(expected[k], (first.ravel(), second.ravel()), 1)
    for threads in (None, pool):
        found = dax.co_occurrence4(image, 2, 16, symmetric=False, pool=threads)
        np.testing.assert_array_equal(found, expected)
        one = dax.co_occurrence(image, (2, -2), 16, symmetric=False, pool=threads)
        np.testing.assert_array_equal(one, expected[1])
    both = dax.co_occurrence(image, (2, -2), 16)
    np.testing.assert_array_equal(both, expected[1] + expected[1].T)
    limited = dax.co_occurrence(image, levels=2, limits=(64 * unit, 191 * unit), symmetric=False)
    np.testing.assert_array_equal(limited.sum(1), np.bincount((levels[:, :-1] >= 8).ravel()))
    with pytest.raises(dax.Error):
        dax.co_occurrence4(image, 0)


def test_haralick(rng):
    counts = rng.integers(0, 50, (9, 9)).astype(np.uint32)
    features, p = dax.haralick_features(counts), counts / counts.sum()
    i, j = np.indices(p.shape)
    x, y = p.sum(1), p.sum(0)
    expected = {
        "angular_second_moment": (p**2).sum(),
        "contrast": ((i - j) ** 2 * p).sum(),
        "inverse_difference": (p / (1 + (i - j) ** 2)).sum(),
        "sum_average": ((i + j + 2) * p).sum(),
        "entropy": -(p[p > 0] * np.log2(p[p > 0])).sum(),
        "maximal_correlation": np.sqrt(np.sort(np.linalg.eigvals((p / x[:, None]) @ (p / y).T).real)[-2]),
    }
    for name, value in expected.items():
        assert np.isclose(getattr(features, name), value, rtol=1e-9), name
    props = pytest.importorskip("skimage.feature").graycoprops
    for name, ours in (("correlation", "correlation"), ("ASM", "angular_second_moment"), ("contrast", "contrast")):
        assert np.isclose(props(p[:, :, None, None], name)[0, 0], getattr(features, ours), rtol=1e-9), name


@pytest.mark.parametrize("dtype", DTYPES)
def test_energy(rng, pool, dtype):
    image = rng.integers(0, 200, (23, 37)).astype(dtype)
    filtered = ndimage.correlate1d(image.astype(float), [-1, 2, 0, -2, 1], axis=1, mode="mirror")
    filtered = np.abs(ndimage.correlate1d(filtered, [1, 4, 6, 4, 1], axis=0, mode="mirror"))
    area = ndimage.uniform_filter(np.ones(image.shape), (5, 8), mode="constant")
    expected = ndimage.uniform_filter(filtered, (5, 8), mode="constant") / area
    for threads in (None, pool):
        found = dax.laws_energy(image, "W5", "L5", (8, 5), mode="mirror", pool=threads)
        np.testing.assert_allclose(found, expected, rtol=1e-5)

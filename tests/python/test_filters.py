"""Filters against NumPy's way to say the same."""
import numpy as np
import pytest

import dax

PAD = {"replicate": "edge", "mirror": "reflect", "symmetric": "symmetric", "wrap": "wrap"}


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.int32, np.uint32, np.float32, np.float64, "c8", "c16"])
def test_borders_are_those_of_pad(rng, dtype):
    image = (rng.normal(size=(5, 7)) * 50 + 60).astype(dtype)
    for mode, name in PAD.items():
        expected = np.pad(image, ((2, 3), (4, 1)), name)
        assert np.array_equal(dax.copy_border(image, 2, 3, 4, 1, mode), expected), mode
    expected = np.pad(image, ((1, 0), (0, 2)), constant_values=9)
    assert np.array_equal(dax.copy_border(image, 1, 0, 0, 2, "constant", 9), expected)
    with pytest.raises(ValueError):
        dax.copy_border(image, -1, 0, 0, 0)
    if np.dtype(dtype).kind in "iu":
        with pytest.raises(ValueError, match="value"):
            dax.copy_border(image, 1, 1, 1, 1, "constant", 2**40)


def test_thresholds(rng):
    image = rng.integers(0, 256, (20, 30), dtype=np.uint8)

    def mask(condition):
        return np.where(condition, 255, 0).astype(np.uint8)

    cases = {
        ("single", False): mask(image >= 90),
        ("single", True): mask(image < 90),
        ("band", False): mask((image >= 90) & (image <= 160)),
        ("band", True): mask((image < 90) | (image > 160)),
        ("copy", False): image,
        ("copy", True): 255 - image,
        ("soft", False): np.where(image <= 90, 0, np.where(image >= 160, 255, image)),
    }
    for (method, inverted), expected in cases.items():
        result = dax.threshold(image, method, inverted=inverted, low=90, high=160, soft=0)
        if method == "soft":  # a hard step half way
            expected = mask(image >= 125)
        assert np.array_equal(result.image, expected), (method, inverted)
    level = dax.threshold(image, "otsu").low
    assert np.array_equal(dax.otsu(image), mask(image > level))
    in_place = image.copy()
    assert dax.otsu(in_place, out=in_place) is in_place and np.array_equal(in_place, mask(image > level))


@pytest.mark.parametrize("dtype", [np.uint8, np.int16, np.int32, np.float32])
def test_box_sums(rng, dtype):
    image = rng.integers(0, 100, (12, 15)).astype(dtype)
    padded = np.pad(image.astype(np.int64), 2)
    expected = sum(padded[y : y + 12, x : x + 15] for y in range(5) for x in range(5))
    assert np.array_equal(dax.box_sum(image, 2), expected)


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32, np.float64])
def test_median(rng, dtype):
    image = rng.integers(-100 if np.dtype(dtype).kind != "u" else 0, 120, (9, 11)).astype(dtype)
    padded = np.pad(image, 1, "edge")
    stack = [padded[y : y + 9, x : x + 11] for y in range(3) for x in range(3)]
    assert np.array_equal(dax.median3x3(image), np.median(stack, axis=0))


def windows(image, width, height, mode):
    """All windows of an image padded so, as the last two axes."""
    left, top = width // 2, height // 2
    padded = np.pad(image, ((top, height - 1 - top), (left, width - 1 - left)), **mode)
    return np.lib.stride_tricks.sliding_window_view(padded, (height, width)).astype(np.float64)


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32, np.float64])
@pytest.mark.parametrize("window", [(1, 1), (3, 5), (4, 2), (15, 12)])
def test_means(rng, pool, dtype, window):
    image = rng.integers(0 if np.dtype(dtype).kind == "u" else -99, 200, (12, 15)).astype(dtype)
    exact = windows(image, *window, {"mode": "symmetric"}).mean((2, 3))
    inside = windows(np.ones_like(image), *window, {"mode": "constant"}).sum((2, 3))
    clipped = windows(image, *window, {"mode": "constant"}).sum((2, 3)) / inside
    # Half a grey level of rounding; sums of floats in their own precision.
    tolerance = {"f": 1e-4}.get(np.dtype(dtype).kind, 0.5 + 1e-4)
    for result, expected in ((dax.mean(image, window), exact), (dax.clipped_mean(image, window), clipped)):
        assert result.dtype == dtype and np.abs(result - expected).max() <= tolerance
    assert np.array_equal(dax.mean(image, window, pool=pool), dax.mean(image, window))
    for bad in ((0, 1), (16, 1), (1, 13)):
        for mean in (dax.mean, dax.clipped_mean):
            with pytest.raises(dax.Error, match="W > width or H > height"):
                mean(image, bad)


def test_weights(rng):
    image = rng.integers(0, 256, (20, 30), dtype=np.uint8)
    ramp = np.clip((image.astype(int) - 50) / (200 - 50), 0, 1)
    assert np.abs(dax.soft_weights(image, 50, 200) - ramp).max() <= 0.5 / 255 + 1e-6
    assert np.array_equal(dax.soft_weights(image, 99, 101, 0), (image >= 100).astype(np.float32))
    low, high = np.quantile(image, [0.1, 0.9])
    weights = dax.relative_soft_weights(image, (0.1, 0.1), (0, 1))
    assert np.abs(weights - np.clip((image - low) / (high - low), 0, 1)).max() < 0.02
    for levels in ((200, 50), (-1, 20), (0, 256)):
        with pytest.raises(dax.Error):
            dax.soft_weights(image, *levels)
    with pytest.raises(dax.Error):
        dax.relative_soft_weights(image, (np.nan, 0))


def test_arithmetic(rng):
    first, second = rng.integers(0, 256, (2, 9, 35), dtype=np.uint8)
    assert np.array_equal(dax.add(first, second), np.minimum(first.astype(int) + second, 255))
    assert np.array_equal(dax.invert(first), 255 - first)
    again = first.copy()
    assert dax.add(again, again, out=again) is again and np.array_equal(again, np.minimum(first.astype(int) * 2, 255))
    with pytest.raises(ValueError, match="overlap"):
        dax.invert(again[1:], out=again[:-1])
    with pytest.raises(ValueError, match="shape"):
        dax.add(first, second[1:])


def test_erosion_passes():
    mask = np.pad(np.full((3, 4), 255, np.uint8), 1)
    rows, columns = mask.copy(), mask.copy()
    rows[:, 4] = 0
    columns[3] = 0
    assert np.array_equal(dax.erode3x3(mask, along="rows"), rows)
    assert np.array_equal(dax.erode3x3(mask, along="columns"), columns)
    assert np.array_equal(dax.erode3x3(mask), rows & columns)
    with pytest.raises(ValueError, match="one pass"):
        dax.erode3x3(mask, 2, along="rows")

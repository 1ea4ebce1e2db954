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

"""Thresholds: methods, polarities and levels come through."""
import numpy as np
import pytest

import dax

WITHOUT = {
    r"DAXI_(ThresholdBin|ThresholdSoftBin|ThresholdRelativeSoft|AdpThresholdOtsu)_8u_C1R": "the second version has all",
}


@pytest.fixture
def image(rng):
    return rng.integers(0, 256, (20, 30), dtype=np.uint8)


def mask(condition):
    return np.where(condition, 255, 0).astype(np.uint8)


def test_methods(image):
    cases = {
        ("single", False): mask(image >= 90),
        ("single", True): mask(image < 90),
        ("band", False): mask((image >= 90) & (image <= 160)),
        ("band", True): mask((image < 90) | (image > 160)),
        ("copy", False): image,
        ("copy", True): 255 - image,
        ("soft", False): mask(image >= 125),  # without steps it is a hard one half way
    }
    for (method, inverted), expected in cases.items():
        result = dax.threshold(image, method, inverted=inverted, low=90, high=160, soft=0)
        assert np.array_equal(result.image, expected), (method, inverted)


METHODS = ("copy", "single", "band", "otsu", "soft", "relative-soft")


@pytest.mark.parametrize("method", METHODS)
def test_every_inversion_is_the_complement(image, method):
    two = np.where(image > 99, 255, 0).astype(np.uint8)
    near = np.where(image > 99, 121, 120).astype(np.uint8)
    orders = [(90, 160), (160, 90), (90, 90), (0, 255), (255, 0)]
    if method == "soft":
        orders = orders[:1]  # low above high is refused
    for picture in (image, two, near):
        for low, high in orders:
            for soft in (0, 3):
                plain, inverse = (
                    dax.threshold(picture, method, inverted=inverted, low=low, high=high, soft=soft)
                    for inverted in (False, True)
                )
                assert np.array_equal(inverse.image, 255 - plain.image), (low, high, soft)
                assert plain[1:] == inverse[1:]
                in_place = picture.copy()
                dax.threshold(in_place, method, inverted=True, low=low, high=high, soft=soft, out=in_place)
                assert np.array_equal(in_place, inverse.image)


def test_two_levels_are_told_apart(image):
    two = np.where(image > 99, 255, 0).astype(np.uint8)
    for result in (dax.threshold(two).image, dax.otsu(two), dax.threshold(two, inverted=True).image ^ 255):
        assert np.array_equal(result, two)


def test_otsu_and_inversion_in_place(image):
    expected = mask(image > dax.threshold(image, "otsu").low)
    assert np.array_equal(dax.otsu(image), expected)
    again = image.copy()
    assert dax.otsu(again, out=again) is again and np.array_equal(again, expected)
    assert np.array_equal(dax.invert(again, out=again), 255 - expected)


def test_weights(image):
    ramp = np.clip((image.astype(int) - 50) / (200 - 50), 0, 1)
    assert np.abs(dax.soft_weights(image, 50, 200) - ramp).max() <= 0.5 / 255 + 1e-6
    assert np.array_equal(dax.soft_weights(image, 99, 101, 0), (image >= 100).astype(np.float32))
    low, high = np.quantile(image, [0.1, 0.9])
    weights = dax.relative_soft_weights(image, (0.1, 0.1), (0, 1))
    assert np.abs(weights - np.clip((image - low) / (high - low), 0, 1)).max() < 0.02
    with pytest.raises(dax.Error, match="low < high"):
        dax.soft_weights(image, 200, 50)
    with pytest.raises(dax.Error):
        dax.relative_soft_weights(image, (np.nan, 0))

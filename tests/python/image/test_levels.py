"""Levels of histograms: the names reach the methods, and what is doubtful is said."""
import numpy as np
import pytest

import dax

WITHOUT = {"DAXI_HistLevelDefaultCfg": "part of the configuration of masks"}


def otsu(counts):
    """The level with the greatest variance between the classes."""
    levels, best = np.arange(len(counts)), (-1.0, 0)
    for t in range(len(counts) - 1):
        both = slice(t + 1), slice(t + 1, None)
        parts = [(counts[part].sum(), (counts[part] * levels[part]).sum()) for part in both]
        if parts[0][0] and parts[1][0]:
            best = max(best, (sum(float(total) ** 2 / count for count, total in parts), -t))
    return -best[1]


def test_methods(rng):
    image = np.clip(rng.normal(80, 15, (60, 80)), 0, 255)
    image[20:40, 20:60] = np.clip(rng.normal(180, 20, (20, 40)), 0, 255)
    image = image.astype(np.uint8)
    counts = np.bincount(image.ravel(), minlength=256)
    assert dax.find_levels(counts) == (otsu(counts),)
    for method in ("otsu", "kapur", "yen", "li", "kittler", "isodata", "intermodes", "triangle", "percentile"):
        levels, result = dax.find_levels(counts, method), dax.threshold_global(image, method)
        assert result.levels == levels
        np.testing.assert_array_equal(result.image == 255, image > levels[0])
        if method == "intermodes":  # not in 65536 bins
            levels = dax.find_levels(counts)
            with pytest.warns(UserWarning, match="level is Otsu's"):
                assert dax.threshold_global(image.astype(np.uint16), method).levels == levels
        else:
            assert dax.threshold_global(image.astype(np.uint16), method).levels == levels
    three = dax.threshold_global(image.astype(np.uint16), classes=3)
    assert three.levels == dax.find_levels(counts, classes=3) and set(np.unique(three.image)) == {0, 128, 255}
    darkest = dax.find_levels(counts, "percentile", percentile=20)
    assert dax.threshold_global(image, "percentile", percentile=20).levels == darkest != dax.find_levels(counts)


def test_polarity_and_warnings():
    image = np.full((20, 20), 200, np.uint8)
    image[5:9, 5:9] = 30
    result = dax.threshold_global(image, polarity="auto")
    assert result.dark and result.image.sum() == 255 * 16
    with pytest.warns(UserWarning, match="one level only, 7"):
        dax.threshold_global(np.full((3, 3), 7, np.uint8))
    with pytest.warns(UserWarning, match="level is Otsu's"):
        dax.find_levels(np.ones(100), "intermodes")
    for wrong in ({"method": "li", "classes": 3}, {"classes": 5}, {"percentile": 101}):
        with pytest.raises(ValueError, match="classes|percentile"):
            dax.threshold_global(image, **wrong)
    for counts in ([0.5, 3], [-1, 3]):
        with pytest.raises(ValueError, match="whole numbers"):
            dax.find_levels(counts)

"""Levels of histograms: the names reach the methods, and what is doubtful is said."""
import numpy as np
import pytest
from skimage import data, filters

import dax

WITHOUT = {"DAXI_HistLevelDefaultCfg": "part of the configuration of masks"}


def test_methods_of_a_photograph():
    page = data.page()
    counts = np.bincount(page.ravel(), minlength=256)
    for method, peer in (("otsu", filters.threshold_otsu), ("yen", filters.threshold_yen),
                         ("isodata", filters.threshold_isodata)):
        assert dax.find_levels(counts, method) == (peer(page),)
        result = dax.threshold_global(page, method)
        np.testing.assert_array_equal(result.image == 255, page > peer(page))
    assert dax.find_levels(counts, "otsu", classes=3) == tuple(filters.threshold_multiotsu(page, classes=3))
    for method in ("otsu", "kapur", "yen", "li", "kittler", "isodata", "intermodes", "triangle", "percentile"):
        levels = dax.find_levels(counts, method)
        assert dax.threshold_global(page, method).levels == levels
        if method == "intermodes":  # not in 65536 bins
            levels = dax.find_levels(counts, "otsu")
            with pytest.warns(UserWarning, match="level is Otsu's"):
                assert dax.threshold_global(page.astype(np.uint16), method).levels == levels
        else:
            assert dax.threshold_global(page.astype(np.uint16), method).levels == levels
    darkest = dax.find_levels(counts, "percentile", percentile=20)
    assert dax.threshold_global(page, "percentile", percentile=20).levels == darkest
    wide = dax.threshold_global(page.astype(np.uint16) * 257, "otsu")
    assert wide.levels[0] == 257 * filters.threshold_otsu(page)
    three = dax.threshold_global(page.astype(np.uint16), classes=3)
    assert three.levels == dax.find_levels(counts, classes=3) and set(np.unique(three.image)) == {0, 128, 255}


def test_polarity_and_warnings():
    image = np.full((20, 20), 200, np.uint8)
    image[5:9, 5:9] = 30
    result = dax.threshold_global(image, polarity="auto")
    assert result.dark and result.image.sum() == 255 * 16
    with pytest.warns(UserWarning, match="one level only, 7"):
        dax.threshold_global(np.full((3, 3), 7, np.uint8))
    with pytest.warns(UserWarning, match="level is Otsu's"):
        dax.find_levels(np.ones(100), "intermodes")
    with pytest.raises(ValueError, match="classes"):
        dax.threshold_global(image, "li", classes=3)

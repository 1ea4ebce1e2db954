"""Ranks of windows beside NumPy."""
import numpy as np
import pytest

import dax


def windows(image, width, height, **border):
    padded = np.pad(image, [(height // 2, (height - 1) // 2), (width // 2, (width - 1) // 2)], **border)
    found = np.lib.stride_tricks.sliding_window_view(padded, (height, width))
    return np.sort(found.reshape(*image.shape, -1), axis=2)


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32])
def test_types_and_windows(rng, dtype, pool):
    image = rng.integers(0, 120, (19, 31)).astype(dtype)
    for size in [(7, 7), (4, 3), (1, 9)]:
        ordered = windows(image, *size, mode="reflect")
        result = dax.median_filter(image, size, mode="mirror")
        assert result.dtype == dtype and (result == ordered[:, :, size[0] * size[1] // 2]).all()
        assert (dax.rank_filter(image, size, rank=1, mode="mirror") == ordered[:, :, 1]).all()
        assert (dax.median_filter(image, size, mode="mirror", pool=pool) == result).all()
        assert (dax.rank_filter(image, size, rank=1, mode="mirror", pool=pool) == ordered[:, :, 1]).all()
        assert (dax.rank_filter(image, size, percentile=1, mode="mirror") == ordered[:, :, -1]).all()


def test_constant_out_and_pool(rng, pool):
    image, out = rng.integers(0, 255, (80, 40), np.uint8), np.empty((80, 40), np.uint8)
    assert dax.median_filter(image, 5, mode="constant", value=200, out=out, pool=pool) is out
    assert (out == windows(image, 5, 5, constant_values=200)[:, :, 12]).all()


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32])
def test_weighted_and_hybrid(rng, dtype, pool):
    image = rng.integers(0, 120, (9, 11)).astype(dtype)
    weights = np.array([[1, 2, 1], [0, 5, 0], [1, 2, 3]])
    found = np.sort(np.repeat(image[3:6, 4:7].ravel(), weights.ravel()))
    result = dax.weighted_median3x3(image, weights, mode="clip")
    assert result[4, 5] == found[7]
    assert (dax.weighted_median3x3(image, weights, mode="clip", pool=pool) == result).all()
    part = image[2:7, 3:8]
    i, j = np.mgrid[-2:3, -2:3]
    crosses = part[i * j == 0], part[abs(i) == abs(j)]
    expected = np.median([np.median(crosses[0]), np.median(crosses[1]), part[2, 2]])
    result = dax.hybrid_median5x5(image)
    assert result[4, 5] == expected
    assert (dax.hybrid_median5x5(image, pool=pool) == result).all()


def test_refused(rng):
    image = np.zeros((4, 4), np.uint8)
    with pytest.raises(ValueError, match="one of the two"):
        dax.rank_filter(image, 3)
    with pytest.raises(ValueError, match="percentile"):
        dax.rank_filter(image, 3, percentile=1.5)
    with pytest.raises(dax.Error):
        dax.rank_filter(image, 3, rank=9)
    with pytest.raises(ValueError, match="integers"):
        dax.weighted_median3x3(image, np.full((3, 3), 0.5))

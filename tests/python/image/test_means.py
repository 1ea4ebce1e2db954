"""Sums and means: windows, types and the pool come through."""
import numpy as np
import pytest

import dax

WITHOUT = {
    r"DAXI_FilterMeanBufferSize_8u(_V2)?|DAXI_FilterMean_8u_C1R": "the form for pools, which does without one",
}


@pytest.mark.parametrize("dtype", [np.uint8, np.int16, np.int32, np.float32])
def test_box_sums(rng, dtype):
    image = rng.integers(0, 100, (12, 15)).astype(dtype)
    sums = dax.box_sum(image, 2)
    assert sums[5, 6] == image[3:8, 4:9].sum() and sums[0, 14] == image[:3, 12:].sum()
    assert sums.dtype == (np.float32 if dtype in (np.int16, np.float32) else np.int32)


def windows(image, size, extended):
    """All windows of odd sides, NaN outside or mirrored."""
    edges = [(size[1] // 2,) * 2, (size[0] // 2,) * 2]
    padded = np.pad(image, edges, "symmetric") if extended else np.pad(image, edges, constant_values=np.nan)
    return np.lib.stride_tricks.sliding_window_view(padded, size[::-1]).astype(np.float64)


@pytest.mark.parametrize("dtype", [np.float32, np.float64])
def test_exact_sums_leave_nothing_behind(rng, dtype):
    """Large values, infinities and NaN change the windows that hold them, and no others."""
    image = rng.uniform(0, 255, (30, 40)).astype(dtype)
    image[3, 4], image[10, 20], image[11, 21], image[20, 30], image[25, 5] = 1e20, np.inf, -np.inf, np.nan, -1e12
    with np.errstate(invalid="ignore"):
        for function, extended in ((dax.mean, True), (dax.clipped_mean, False)):
            parts = windows(np.where(np.isnan(image), -777, image), (5, 3), extended)
            expected = np.where((parts == -777).any((2, 3)), np.nan, np.nanmean(parts, (2, 3)))
            assert np.allclose(function(image, (5, 3)), expected, rtol=1e-6, equal_nan=True)
            assert not np.allclose(function(image, (5, 3), sums="running"), expected, rtol=1e-6, equal_nan=True)
        if dtype == np.float32:
            parts = windows(np.where(np.isnan(image), -777, image), (5, 5), False)
            expected = np.where((parts == -777).any((2, 3)), np.nan, np.nansum(parts, (2, 3)))
            assert np.allclose(dax.box_sum(image, 2), expected, rtol=1e-6, equal_nan=True)
    out = np.empty_like(image)
    assert dax.mean(image, 3, out=out) is out and np.array_equal(out, dax.mean(image, 3), equal_nan=True)
    with pytest.raises(ValueError, match="overlap"):
        dax.mean(out, 3, out=out)


def test_running_sums_are_asked_for(rng):
    image = rng.uniform(0, 255, (600, 900)).astype(np.float32)
    truth = dax.mean(image.astype(np.float64), 9)
    exact, running = (np.abs(dax.mean(image, 9, sums=sums) - truth).max() for sums in ("exact", "running"))
    assert exact < 2e-5 and running > 10 * exact
    dax.box_sum(image.astype(np.int16), 1, sums="running")
    sums = np.abs(dax.box_sum(image, 4)[4:-4, 4:-4] / 81 - truth[4:-4, 4:-4]).max()
    assert sums < 2e-5 and np.array_equal(dax.clipped_mean(image, 9), dax.clipped_mean(image, 9, sums="running"))


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32, np.float64])
def test_means(rng, pool, dtype):
    image = (8 * rng.integers(0, 30, (12, 15))).astype(dtype)
    # At the left upper corner half of a window of 4 columns and 2 rows lies outside, and mirrored or not.
    for mean, corner in ((dax.mean, image[0, [1, 0, 0, 1]].mean()), (dax.clipped_mean, image[0, :2].mean())):
        result = mean(image, (4, 2))
        assert result.dtype == dtype and abs(result[6, 7] - image[5:7, 5:9].mean()) <= 0.5
        assert abs(result[0, 0] - corner) <= 0.5
        for bad in ((0, 1), (16, 1), (1, 13)):
            with pytest.raises(dax.Error, match="W > width or H > height"):
                mean(image, bad)
    assert np.array_equal(dax.mean(image, (5, 3), pool=pool), dax.mean(image, (5, 3)))
    with pytest.raises(TypeError, match=r"window: \(3, 3, 3\)"):
        dax.mean(image, (3, 3, 3))

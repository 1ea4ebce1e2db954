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

"""The median of every type; the layouts of arrays are tried with it in test_arrays.py."""
import numpy as np
import pytest

import dax


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32, np.float64])
def test_median(rng, dtype):
    image = rng.integers(0, 120, (9, 11)).astype(dtype)
    result = dax.median3x3(image)
    assert result.dtype == dtype and result[4, 5] == np.median(image[3:6, 4:7])
    assert result[0, 0] == np.median(image[np.ix_([0, 0, 1], [0, 0, 1])])


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32])
def test_median5x5(rng, dtype):
    image = rng.integers(0, 120, (9, 11)).astype(dtype)
    result = dax.median5x5(image)
    assert result.dtype == dtype and result[4, 5] == np.median(image[2:7, 3:8])

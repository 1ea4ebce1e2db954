"""Passes of the erosion, and how many."""
import numpy as np
import pytest

import dax


def test_passes():
    mask = np.pad(np.full((3, 4), 255, np.uint8), 1)
    rows, columns = mask.copy(), mask.copy()
    rows[:, 4] = 0
    columns[3] = 0
    assert np.array_equal(dax.erode3x3(mask, along="rows"), rows)
    assert np.array_equal(dax.erode3x3(mask, along="columns"), columns)
    assert np.array_equal(dax.erode3x3(mask), rows & columns)
    assert np.array_equal(dax.erode3x3(mask, 2), dax.erode3x3(dax.erode3x3(mask)))
    with pytest.raises(ValueError, match="one pass"):
        dax.erode3x3(mask, 2, along="rows")
    with pytest.raises(ValueError, match="overlap"):
        dax.erode3x3(mask, along="columns", out=mask)
    assert np.array_equal(dax.erode3x3(mask, out=mask), rows & columns)

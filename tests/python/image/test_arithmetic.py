"""Sums of images."""
import numpy as np
import pytest

import dax


def test_sums(rng):
    first, second = rng.integers(0, 256, (2, 9, 35), dtype=np.uint8)
    expected = np.minimum(first.astype(int) + second, 255)
    assert np.array_equal(dax.add(first, second), expected)
    assert dax.add(first, second, out=second) is second and np.array_equal(second, expected)
    with pytest.raises(ValueError, match="shape"):
        dax.add(first, second[1:])

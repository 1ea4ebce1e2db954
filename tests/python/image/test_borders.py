"""Borders against NumPy's pad: sides, rules and types come through."""
import numpy as np
import pytest

import dax

PAD = {"replicate": "edge", "mirror": "reflect", "symmetric": "symmetric", "wrap": "wrap"}


@pytest.mark.parametrize("dtype",
                         [np.uint8, np.uint16, np.int16, np.int32, np.uint32, np.float32, np.float64, "c8", "c16"])
def test_borders_are_those_of_pad(rng, dtype):
    image = (rng.normal(size=(5, 7)) * 50 + 60).astype(dtype)
    for mode, name in PAD.items():
        assert np.array_equal(dax.copy_border(image, 2, 3, 4, 1, mode), np.pad(image, ((2, 3), (4, 1)), name)), mode
    value = 9 + 2j if np.dtype(dtype).kind == "c" else 9
    expected = np.pad(image, ((1, 0), (0, 2)), constant_values=value)
    assert np.array_equal(dax.copy_border(image, 1, 0, 0, 2, "constant", value), expected)
    with pytest.raises(ValueError):
        dax.copy_border(image, -1, 0, 0, 0)
    if np.dtype(dtype).kind in "iu":
        with pytest.raises(ValueError, match="value"):
            dax.copy_border(image, 1, 1, 1, 1, "constant", 2**40)

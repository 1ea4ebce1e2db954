"""Images of another size."""
import numpy as np
import pytest

import dax


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.float32])
@pytest.mark.parametrize("channels", [(), (3,)])
def test_resize(rng, dtype, channels):
    image = rng.integers(0, 200, (6, 8, *channels)).astype(dtype)
    half = dax.resize(image, (3, 4), anti_aliasing=False)
    means = image.reshape(3, 2, 4, 2, *channels).mean((1, 3))
    assert half.dtype == dtype and np.allclose(half, means, atol=0.51 if dtype != np.float32 else 1e-4)
    assert dax.resize(image, factor=(0.5, 1.0)).shape == (3, 8, *channels)
    assert np.array_equal(dax.resize(image, factor=0.5), dax.resize(image, (3, 4)))


def test_what_is_refused(rng):
    image = rng.integers(0, 200, (6, 8)).astype(np.uint8)
    for wrong in ({}, {"shape": (3, 4), "factor": 0.5}):
        with pytest.raises(ValueError, match="shape or factor"):
            dax.resize(image, **wrong)
    with pytest.raises(dax.Error, match="factor"):
        dax.resize(image, (6, 8000))
    with pytest.raises(ValueError, match="mode"):
        dax.resize(image, (3, 4), mode="constant")

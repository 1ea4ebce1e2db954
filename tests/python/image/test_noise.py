"""Noise in images."""
import numpy as np
import pytest

import dax


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.float32])
@pytest.mark.parametrize("method", ["mad", "immerkaer"])
def test_noise_level(rng, dtype, method):
    smooth = np.add.outer(np.arange(200) / 10, np.arange(300) / 10) + 90
    image = np.rint(smooth + rng.normal(0, 4, smooth.shape)).astype(dtype)
    assert np.isclose(dax.noise_level(image, method), 4, rtol=0.04)
    clipped = np.hstack([image, np.full((200, 3000), 250, dtype)])
    assert np.isclose(dax.noise_level(clipped, method, low=10, high=250), 4, rtol=0.04)

"""Pyramids: halves, doubles, what is between them, and all of it at once."""
import numpy as np
import pytest
from scipy import ndimage

import dax

TAPS = np.array([1, 4, 6, 4, 1])


def smoothed(image, axis, by):
    return ndimage.correlate1d(image, TAPS / by, axis, mode="mirror")


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.float32])
@pytest.mark.parametrize("channels", [(), (3,)])
def test_levels(rng, pool, dtype, channels):
    image = rng.integers(0, 250, (21, 34, *channels)).astype(dtype)
    levels = dax.pyramid(image, 3, pool=pool)
    half = smoothed(smoothed(image.astype(float), 0, 16), 1, 16)[::2, ::2]
    assert np.allclose(levels[1], half, atol=0.5 if dtype != np.float32 else 1e-3)
    for fine, coarse, alone in zip(levels, levels[1:], dax.pyramid(image, 3)[1:]):
        assert coarse.dtype == dtype and np.array_equal(coarse, alone)
        assert np.array_equal(coarse, dax.pyramid_down(fine))
        assert np.array_equal(coarse, dax.pyramid_down(fine, pool=pool))
        twice = dax.pyramid_up(coarse, fine.shape[:2])
        assert np.array_equal(twice, dax.pyramid_up(coarse, fine.shape[:2], pool=pool))
        difference = dax.laplacian_build(fine, coarse)
        assert np.array_equal(difference, dax.laplacian_build(fine, coarse, pool=pool))
        assert np.array_equal(difference, fine.astype(difference.dtype) - twice)
        back = dax.laplacian_collapse(difference, coarse)
        assert back.dtype == dtype and np.allclose(back, fine, atol=1e-4 if dtype == np.float32 else 0)
        assert np.array_equal(back, dax.laplacian_collapse(difference, coarse, pool=pool))


def test_what_is_refused(rng):
    image = rng.integers(0, 250, (21, 34)).astype(np.uint8)
    with pytest.raises(ValueError, match="shape"):
        dax.pyramid_up(image, (21, 34))
    with pytest.raises(ValueError, match="coarse"):
        dax.laplacian_build(image, image)
    with pytest.raises(ValueError, match="count"):
        dax.pyramid(image, 0)

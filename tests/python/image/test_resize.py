"""Images of another size."""
import numpy as np
import pytest

import dax


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32])
@pytest.mark.parametrize("channels", [(), (3,)])
def test_resize(rng, pool, dtype, channels):
    image = rng.integers(0, 200, (6, 8, *channels)).astype(dtype)
    means = image.reshape(3, 2, 4, 2, *channels).mean((1, 3))
    for how in ({"anti_aliasing": False}, {"interpolation": "area"}):
        half = dax.resize(image, (3, 4), **how)
        assert half.dtype == dtype and np.allclose(half, means, atol=0.51 if dtype != np.float32 else 1e-4)
    assert dax.resize(image, factor=(0.5, 1.0)).shape == (3, 8, *channels)
    assert np.array_equal(dax.resize(image, factor=0.5), dax.resize(image, (3, 4)))
    assert np.array_equal(dax.resize(image, (12, 16), interpolation="nearest"), image.repeat(2, 0).repeat(2, 1))
    whole = dax.resize(image, (31, 17), interpolation="cubic", pool=pool)
    part = dax.resize(image, (31, 17), interpolation="cubic", region=(3, 5, 10, 20))
    assert np.array_equal(part, whole[5:25, 3:13])


def test_borders_and_kernels():
    image = np.full((4, 4), 100, np.uint8)
    dark = dax.resize(image, (8, 8), mode="constant", value=0)
    assert dark[0, 0] == round(100 * 0.75**2) and dark[4, 4] == 100
    edge = np.repeat([[0, 100]], 4, 1).astype(np.float32)
    sharp, sharper = (dax.resize(edge, (1, 80), interpolation="cubic", cubic_a=a) for a in (-0.5, -1))
    assert 100 < sharp.max() < sharper.max() and dax.resize(edge, (1, 80), interpolation="lanczos").min() < 0


def test_what_is_refused(rng):
    image = rng.integers(0, 200, (6, 8)).astype(np.uint8)
    for wrong in ({}, {"shape": (3, 4), "factor": 0.5}):
        with pytest.raises(ValueError, match="shape or factor"):
            dax.resize(image, **wrong)
    with pytest.raises(dax.Error, match="factor"):
        dax.resize(image, (6, 8000))
    with pytest.raises(ValueError, match="mode"):
        dax.resize(image, (3, 4), mode="clip")
    with pytest.raises(ValueError, match="region"):
        dax.resize(image, (3, 4), region=(0, 0, 0, 2))

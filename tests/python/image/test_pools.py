"""Functions whose pixels a pool shares out: the same results as on one thread."""
import dax
import numpy as np
import pytest

CALLS = {
    "absolute": lambda image, **on: dax.absolute(image.astype(np.int16) - 128, **on),
    "sqrt": dax.sqrt,
    "add_weighted": lambda image, **on: dax.add_weighted(image, 0.3, image[::-1], 0.4, 1, **on),
    "divide": lambda image, **on: dax.divide(image, image[::-1] | 1, scale_factor=-3, **on),
    "divide_constant": lambda image, **on: dax.divide_constant(image.astype(np.float32), 3, **on),
    "flat_field": lambda image, **on: dax.flat_field(image, image // 2, np.full(image.shape, 1.5, np.float32), **on),
    "moments": lambda image, **on: np.array(dax.moments(image, **on)[:-1]),
    "moments of floats": lambda image, **on: np.array(dax.moments(image.astype(np.float32), **on)[:-1]),
}


@pytest.mark.parametrize("name", CALLS)
def test_as_on_one_thread(name, rng, pool):
    image = rng.integers(1, 256, (67, 45)).astype(np.uint8)
    assert np.array_equal(CALLS[name](image, pool=pool), CALLS[name](image))

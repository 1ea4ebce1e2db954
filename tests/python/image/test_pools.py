"""Functions whose pixels a pool shares out: the same results as on one thread."""
import dax
import numpy as np
import pytest

CALLS = {
    "absolute": (dax.absolute, "hf"),
    "sqrt": (dax.sqrt, "BHhf"),
    "add_weighted": (lambda image, **on: dax.add_weighted(image, 0.3, image[::-1], 0.4, 1, **on), "BHhf"),
    "divide": (lambda image, **on: dax.divide(image, image[::-1], **on), "BHhf"),
    "divide_constant": (lambda image, **on: dax.divide_constant(image, 3, **on), "BHhf"),
    "flat_field": (lambda image, **on: dax.flat_field(image, image // 2, np.float32(image / 99), **on), "BH"),
    "median5x5": (dax.median5x5, "BHhf"),
    "moments": (lambda image, **on: np.array(dax.moments(image, **on)[:-1]), "BHf"),
}
FORMS = [(name, dtype, ()) for name, (_, dtypes) in CALLS.items() for dtype in dtypes]
FORMS += [(name, dtype, (3,)) for name in ("divide", "divide_constant") for dtype in "BHhf"]


@pytest.mark.parametrize("name, dtype, channels", FORMS)
def test_as_on_one_thread(name, dtype, channels, rng, pool):
    function, image = CALLS[name][0], rng.integers(1, 256, (67, 45, *channels)).astype(dtype)
    assert np.array_equal(function(image, pool=pool), function(image))

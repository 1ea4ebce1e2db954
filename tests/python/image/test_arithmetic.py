"""Arithmetic of two images, and of an image and a constant."""
import numpy as np
import pytest

import dax

# In place, through the plain form.
WITHOUT = {
    f"DAXI_{operation}_{form}": "out= is the image"
    for operation in ("Add", "Sub", "Mul", "AbsDiff", "AddC", "SubC", "MulC", "AbsDiffC")
    for form in [*(f"{kind}_{layout}IRSfs" for kind in ("8u", "16u", "16s") for layout in ("C1", "C3")), "32f_C1IR",
                 "32f_C3IR"]
} | {"DAXI_Add_8u_C1RSfs_IS": "the form with a scale factor does it"}


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32])
@pytest.mark.parametrize("shape, value", [((7, 33), 3), ((7, 33, 3), [1, 2, 3])])
def test_constants(rng, dtype, shape, value):
    image = rng.integers(0, 60, shape).astype(dtype)
    limits = (0, np.inf) if np.dtype(dtype).kind == "u" else (-np.inf, np.inf)
    assert np.array_equal(dax.add_constant(image, value), image + np.array(value, dtype))
    assert np.array_equal(dax.subtract_constant(image, value), np.clip(image.astype(float) - value, *limits))
    assert np.array_equal(dax.multiply_constant(image, value), image * np.array(value, dtype))
    assert np.array_equal(dax.absolute_difference_constant(image, value), np.abs(image.astype(float) - value))


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32])
@pytest.mark.parametrize("shape", [(7, 33), (7, 33, 3)])
def test_two_images(rng, dtype, shape):
    first, second = (rng.integers(0, 15, shape).astype(dtype) for _ in range(2))
    assert np.array_equal(dax.add(first, second), first + second)
    assert np.array_equal(dax.subtract(first, np.minimum(first, second)), first - np.minimum(first, second))
    assert np.array_equal(dax.multiply(first, second), first * second)
    assert np.array_equal(dax.absolute_difference(first, second), np.abs(first.astype(float) - second))
    difference = first.astype(float) - second
    if np.dtype(dtype).kind == "u":
        difference = np.maximum(difference, 0)
    assert np.array_equal(dax.subtract(first, second, out=second), difference)  # the second one, in place


def test_scale_factor(rng):
    image = rng.integers(0, 256, (5, 40), dtype=np.uint8)
    assert np.array_equal(dax.multiply_constant(image, 51, scale_factor=4),
                          np.clip(np.round(image * 51.0 / 16), 0, 255))
    assert dax.add_constant(image, 1, out=image) is image
    with pytest.raises(ValueError, match="scale_factor"):
        dax.add_constant(image.astype(np.float32), 1, scale_factor=1)
    for value in (2.5, 256, -1, 1j, np.nan):  # none of the image's numbers
        with pytest.raises(ValueError, match="value"):
            dax.add_constant(image, value)
    with pytest.raises(dax.Error, match="scaleFactor outside -31..31"):
        dax.add_constant(image, 1, scale_factor=32)

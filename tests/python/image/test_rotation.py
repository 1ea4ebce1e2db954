"""Mirroring, transposition and turns by quarters."""
import numpy as np
import pytest

import dax

WITHOUT = {r"DAXI_(Mirror|Transpose|Rotate90)_\d+[usf]_P3I?R(_MT)?": "planes are images of their own"}

TURNS = {
    "columns": (lambda image, **how: dax.mirror(image, **how), lambda image: image[:, ::-1]),
    "both": (lambda image, **how: dax.mirror(image, "both", **how), lambda image: image[::-1, ::-1]),
    "transpose": (dax.transpose, lambda image: image.swapaxes(0, 1)),
    "quarter": (dax.rotate90, lambda image: np.rot90(image, -1)),
    "back": (lambda image, **how: dax.rotate90(image, -1, **how), np.rot90),
}


@pytest.mark.parametrize("turn", TURNS)
@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.int32, np.float32, np.float64])
@pytest.mark.parametrize("channels", [(), (3,)])
def test_equals_numpy(rng, pool, turn, dtype, channels):
    function, expected = TURNS[turn]
    image = rng.integers(0, 200, (19, 33, *channels)).astype(dtype)
    np.testing.assert_array_equal(function(image), expected(image))
    np.testing.assert_array_equal(function(image, pool=pool), expected(image))
    square = image[:, :19].copy()
    np.testing.assert_array_equal(function(square.copy(), out=square), expected(image[:, :19]))
    square = image[:, :19].copy()
    assert function(square, out=square) is square
    np.testing.assert_array_equal(square, expected(image[:, :19]))


def test_what_is_refused(rng):
    image = rng.integers(0, 200, (6, 8)).astype(np.uint8)
    with pytest.raises(ValueError, match="reverse"):
        dax.mirror(image, "up")
    with pytest.raises(ValueError, match="out"):
        dax.transpose(image, out=image)
    with pytest.raises(ValueError, match="overlap"):
        dax.mirror(image[:, :6], out=image[:, 2:])

"""Images of another pixel type, and masked copies, against NumPy."""
import numpy as np
import pytest

import dax

TYPES = [np.dtype(each) for each in (np.uint8, np.uint16, np.int16, np.float32)]
PAIRS = [(a, b) for a in TYPES for b in TYPES if a != b]


def top(dtype):
    return 1.0 if dtype.kind == "f" else float(np.iinfo(dtype).max)


def as_type(values, dtype):
    return values.astype(dtype) if dtype.kind == "f" else np.clip(np.rint(values), np.iinfo(dtype).min,
                                                                  np.iinfo(dtype).max).astype(dtype)


@pytest.mark.parametrize("shape", [(7, 33), (7, 33, 3)])
@pytest.mark.parametrize("source, dtype", PAIRS)
def test_convert(rng, pool, source, dtype, shape):
    image = (rng.random(shape) * top(source)).astype(source)
    assert np.array_equal(dax.convert(image, dtype), as_type(image.astype(float), dtype))
    assert np.array_equal(dax.convert(image[:, ::-1], dtype, scale=0.3, offset=7),
                          as_type(image[:, ::-1].astype(float) * 0.3 + 7, dtype))
    assert np.array_equal(dax.convert(image, dtype, scale=3, pool=pool), dax.convert(image, dtype, scale=3))
    full = dax.convert_full_range(image, dtype, pool=pool)
    assert np.array_equal(full, dax.convert_full_range(image, dtype))
    assert full.dtype == dtype and np.array_equal(full, as_type(image.astype(float) * top(dtype) / top(source), dtype))


def test_convert_refuses(rng):
    image = rng.integers(0, 200, (6, 8)).astype(np.uint8)
    for dtype in (np.float64, np.uint8):
        with pytest.raises(TypeError):
            dax.convert(image, dtype)
    with pytest.raises(dax.Error, match="not finite"):
        dax.convert(image, np.float32, scale=np.nan)


@pytest.mark.parametrize("dtype", TYPES)
@pytest.mark.parametrize("channels", [(), (3,)])
def test_masks(rng, dtype, channels):
    image, other = (rng.integers(0, 200, (6, 50, *channels)).astype(dtype) for _ in range(2))
    mask = rng.random((6, 50)) < 0.4
    expected = image.copy()
    expected[mask] = other[mask]
    assert dax.copyto(image, other, mask) is image and np.array_equal(image, expected)
    value = [1, 2, 3] if channels else 5
    expected[mask] = value
    assert np.array_equal(dax.putmask(image, mask.astype(np.uint8), value), expected)
    with pytest.raises(ValueError, match="rows"):
        dax.putmask(image[:, ::2], mask[:, ::2], 5)
    with pytest.raises(TypeError):
        dax.putmask(image.astype(float), mask, 5)

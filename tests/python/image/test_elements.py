"""Comparisons, logic and extrema of two images, and of an image and a number."""
import numpy as np
import pytest

import dax

# In place, through the plain form.
WITHOUT = {r"DAXI_(Min|Max|And|Or|Xor|LShift|RShift)C?_\w+_C1IR|DAXI_Not_\w+_C1IR": "out= is the image"}

TYPES = [np.uint8, np.uint16, np.int16, np.float32]
SHAPES = [(7, 33), (7, 33, 3)]


@pytest.fixture(params=SHAPES)
def pair(request, rng):
    return [rng.integers(0, 9, request.param) for _ in range(2)]


@pytest.mark.parametrize("dtype", TYPES)
def test_against_numpy(pair, dtype):
    first, second = (each.astype(dtype) for each in pair)
    for ours, theirs in ((dax.minimum, np.minimum), (dax.maximum, np.maximum)):
        for other in (second, 4):
            assert np.array_equal(ours(first, other), theirs(first, other))
    relations = {"<": np.less, "<=": np.less_equal, "==": np.equal, "!=": np.not_equal, ">=": np.greater_equal}
    for operator, relation in (relations | {">": np.greater}).items():
        for other in (second, 4):
            assert np.array_equal(dax.compare(first, operator, other), relation(first, other) * np.uint8(255))
    limits = [2, 3, 4] if first.ndim == 3 else 3
    inside = (first >= limits) & (first <= 6)
    assert np.array_equal(dax.in_range(first, limits, 6), (inside.all(2) if first.ndim == 3 else inside) * np.uint8(255))
    if dtype != np.float32:
        for name in ("bitwise_and", "bitwise_or", "bitwise_xor"):
            for other in (second, 5):
                assert np.array_equal(getattr(dax, name)(first, other), getattr(np, name)(first, other))
        assert np.array_equal(dax.invert(first), ~first)
        assert np.array_equal(dax.left_shift(first, 3), first << 3)
        assert np.array_equal(dax.right_shift(first, 3), first >> 3)


def test_tolerance(rng):
    first, second = (rng.random((5, 40), dtype=np.float32) for _ in range(2))
    for other in (second, 0.5):
        assert np.array_equal(dax.is_close(first, other, 0.1), (np.abs(first - np.float64(other)) <= 0.1) * np.uint8(255))


def test_arguments(rng):
    image = rng.integers(0, 256, (5, 40, 3), dtype=np.uint8)
    expected = np.minimum(image, 9)
    assert dax.minimum(image[:, ::-1], 9, out=image) is image
    assert dax.minimum(image, 9, out=image) is image and np.array_equal(image, expected[:, ::-1])
    with pytest.raises(ValueError, match="operator"):
        dax.compare(image, "=", 3)
    with pytest.raises(ValueError, match="second"):
        dax.maximum(image, 256)
    with pytest.raises(ValueError, match="second"):
        dax.maximum(image, image[1:])
    with pytest.raises(ValueError, match="overlap"):
        dax.maximum(image[:-1], 3, out=image[1:])
    with pytest.raises(dax.Error, match="count outside"):
        dax.left_shift(image, 8)

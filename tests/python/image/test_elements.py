"""Element-wise operations of images, of two, and of an image and a number."""
import numpy as np
import pytest

import dax

# In place, through the plain form.
WITHOUT = {
    r"DAXI_(Min|Max|And|Or|Xor|LShift|RShift)C?_\w+_C1IR|DAXI_Not_\w+_C1IR": "out= is the image",
    r"DAXI_(Abs|Sqr|Sqrt|Exp|Ln|AddWeighted)_\w+_C1IR(Sfs|_MT)?|DAXI_DivC?_\w+_C[13]IR(Sfs)?": "out= is the image",
    "DAXI_AddWeightedDefaultCfg": "the defaults are arguments",
}

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
    assert np.array_equal(dax.in_range(first, limits, 6),
                          (inside.all(2) if first.ndim == 3 else inside) * np.uint8(255))
    if dtype != np.float32:
        for name in ("bitwise_and", "bitwise_or", "bitwise_xor"):
            for other in (second, 5):
                assert np.array_equal(getattr(dax, name)(first, other), getattr(np, name)(first, other))
        assert np.array_equal(dax.bitwise_not(first), ~first)
        assert np.array_equal(dax.left_shift(first, 3), first << 3)
        assert np.array_equal(dax.right_shift(first, 3), first >> 3)


def test_tolerance(rng):
    first, second = (rng.random((5, 40), dtype=np.float32) for _ in range(2))
    for other in (second, 0.5):
        assert np.array_equal(dax.is_close(first, other, 0.1),
                              (np.abs(first - np.float64(other)) <= 0.1) * np.uint8(255))


@pytest.mark.parametrize("dtype", TYPES)
def test_division_and_roots(pair, dtype):
    first, second = (each.astype(dtype) + 1 for each in pair)
    quotient = np.float64(first) / second
    whole = np.dtype(dtype).kind != "f"
    assert np.array_equal(dax.divide(first, second), np.round(quotient) if whole else quotient.astype(dtype))
    constant = [2, 3, 4] if first.ndim == 3 else 3
    quotient = np.float64(first) / constant
    assert np.array_equal(dax.divide_constant(first, constant), np.round(quotient) if whole else quotient.astype(dtype))
    assert np.array_equal(dax.sqrt(first), np.round(np.sqrt(first)) if whole else np.sqrt(first))
    assert np.array_equal(dax.square(first), first**2)
    mean = dax.add_weighted(first, 0.5, second, 0.25, 1)
    exact = 0.5 * first + 0.25 * second + 1
    assert np.array_equal(mean, np.round(exact) if whole else exact)
    if whole:
        assert np.array_equal(dax.divide(first, second, scale_factor=-2), np.round(4.0 * first / second))
        assert np.array_equal(dax.square(first, scale_factor=2), np.round(first**2 / 4))
        with pytest.raises(dax.Error, match="zero in src2"):
            dax.divide(first, second * 0)


def test_functions_of_floats(rng, pool):
    image = rng.random((7, 33, 3), dtype=np.float32)
    exact = image.astype(np.float64)
    for pooled in (None, pool):
        assert np.allclose(dax.exp(image, pool=pooled), np.exp(exact), rtol=2e-7, atol=0)
        assert np.allclose(dax.log(image, pool=pooled), np.log(exact), rtol=2e-7, atol=0)
    assert np.array_equal(dax.absolute(-image), image)
    assert np.array_equal(dax.absolute(np.array([[-32768, -3]], np.int16)), [[32767, 3]])


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16])
def test_accumulation(rng, pair, dtype):
    image = pair[0].astype(dtype)
    sums = rng.random(image.shape, dtype=np.float32)
    before = sums.copy()
    assert dax.accumulate(image, sums) is sums and np.array_equal(sums, before + image)
    dax.accumulate_weighted(image, before, 0.5)
    assert np.allclose(before, sums / 2)


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

"""Tables and curves against NumPy."""
import numpy as np
import pytest

import dax

WITHOUT = {
    rf"DAXI_{family}_C[13]IR": "out= is the image"
    for family in ("Lut_(8u|16u)", "LutLinear_(8u|16u|16s|32f)", "Gamma_(8u|16u)", "Normalise_(8u|16u|16s|32f)",
                   "EqualizeHist_(8u|16u)")
}
SHAPES = pytest.mark.parametrize("shape", [(7, 33), (7, 33, 3)])


@SHAPES
@pytest.mark.parametrize("types", [("u1", "u1"), ("u1", "u2"), ("u1", "f4"), ("u2", "u2")])
def test_tables(rng, types, shape):
    image = rng.integers(0, np.iinfo(types[0]).max + 1, shape).astype(types[0])
    table = rng.integers(0, 256, np.iinfo(types[0]).max + 1).astype(types[1])
    assert np.array_equal(dax.apply_lut(image[::-1, ::-1], table), table[image[::-1, ::-1]])
    with pytest.raises(ValueError, match="table"):
        dax.apply_lut(image, table[:-1])
    with pytest.raises(TypeError, match="table"):
        dax.apply_lut(image, table.astype(np.int16))


@SHAPES
@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32])
def test_curves(rng, dtype, shape):
    image = rng.integers(0, 200, shape).astype(dtype)
    expected = np.interp(image, [20, 90, 120], [0, 200, 100])
    found = dax.apply_curve(image, [20, 90, 120], [0, 200, 100])
    assert found.dtype == dtype and np.abs(found - expected).max() <= 0.5
    assert dax.apply_curve(image, [20, 90], [0, 200], out=image) is image
    with pytest.raises(dax.Error, match="ascending"):
        dax.apply_curve(image, [20, 20], [0, 200])


@SHAPES
@pytest.mark.parametrize("dtype", [np.uint8, np.uint16])
def test_gamma(rng, dtype, shape):
    top = np.iinfo(dtype).max
    image = rng.integers(0, top + 1, shape).astype(dtype)
    assert np.array_equal(dax.adjust_gamma(image, 0.4), np.rint(top * (image / top) ** 0.4))
    with pytest.raises(dax.Error, match="gamma"):
        dax.adjust_gamma(image, np.nan)


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32])
def test_rescale(rng, dtype):
    image = rng.integers(20, 200, (20, 33)).astype(dtype)
    for to in {np.dtype(dtype), np.dtype(np.uint8), np.dtype(np.float32)}:
        found = dax.rescale_intensity(image, (0, 250), percentiles=(5, 95), dtype=to)
        low, high = np.percentile(image, [5, 95], method="inverted_cdf").astype(float)
        expected = (np.clip(image, low, high) - low) * 250 / (high - low)
        assert found.dtype == to and np.abs(found - expected).max() <= (0.5 if to.kind != "f" else 1e-4)
    assert dax.rescale_intensity(image, out=image) is image and (image.min(), image.max()) == (0, 255)
    with pytest.raises(TypeError, match="dtype"):
        dax.rescale_intensity(image, dtype=np.float64)


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16])
def test_equalized(rng, dtype, pool):
    image = (rng.random((40, 64)) ** 3 * np.iinfo(dtype).max).astype(dtype)
    levels, counts = np.unique(image, return_counts=True)
    below = np.cumsum(counts) - counts[0]
    expected = np.rint(below * float(np.iinfo(dtype).max) / (image.size - counts[0]))
    assert np.array_equal(dax.equalize_hist(image), expected[np.searchsorted(levels, image)])
    local = dax.equalize_adapthist(image, (4, 8), clip_limit=3)
    assert np.median(local) > 2 * np.median(image) and np.array_equal(
        dax.equalize_adapthist(image, (4, 8), clip_limit=3, pool=pool), local
    )
    with pytest.raises(dax.Error):
        dax.equalize_adapthist(image, (41, 8))

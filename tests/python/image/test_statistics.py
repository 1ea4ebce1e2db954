"""Numbers about images, beside NumPy's."""
import numpy as np
import pytest

import dax

ALL = [np.uint8, np.uint16, np.int16, np.float32]


def picture(rng, dtype, shape=(13, 37)):
    image = rng.integers(0, 200, shape)
    return (image - 90).astype(dtype) if np.dtype(dtype).kind in "if" else image.astype(dtype)


@pytest.mark.parametrize("dtype", ALL)
@pytest.mark.parametrize("channels", [(), (3,)])
@pytest.mark.parametrize("masked", [False, True])
def test_sums_and_extremes(rng, dtype, channels, masked):
    image = picture(rng, dtype, (13, 37, *channels))
    mask = rng.integers(0, 2, (13, 37), dtype=np.uint8) if masked else None
    chosen = (image[mask != 0] if masked else image.reshape(-1, *channels)).astype(float)
    assert np.allclose(dax.pixel_sum(image, mask), chosen.sum(0), rtol=1e-12)
    assert np.allclose(dax.mean_value(image, mask), chosen.mean(0), rtol=1e-12)
    assert np.allclose(dax.mean_std(image, mask).std, chosen.std(0), rtol=1e-12)
    found = dax.min_max(image, mask)
    assert np.array_equal(found.min, chosen.min(0)) and np.array_equal(found.max, chosen.max(0))
    for c, (x, y) in enumerate(np.atleast_2d(found.min_at)):
        assert image[(y, x, c) if channels else (y, x)] == np.atleast_1d(found.min)[c]


@pytest.mark.parametrize("dtype", ALL)
@pytest.mark.parametrize("masked", [False, True])
def test_norms_counts_and_percentiles(rng, pool, dtype, masked):
    first, second = picture(rng, dtype), picture(rng, dtype)
    mask = rng.integers(0, 2, (13, 37)).astype(bool) if masked else None
    one, other = ((each[mask] if masked else each.ravel()).astype(float) for each in (first, second))
    for kind, order in (("l1", 1), ("l2", 2), ("inf", np.inf)):
        assert np.isclose(dax.norm(first, kind, mask), np.linalg.norm(one, order), rtol=1e-12)
        assert np.isclose(dax.norm_of_difference(first, second, kind, mask), np.linalg.norm(one - other, order),
                          rtol=1e-12)
    assert dax.count_in_range(first, 20, 50, mask) == np.count_nonzero((one >= 20) & (one <= 50))
    shares = [0, 0.1, 0.5, 1]
    assert np.array_equal(dax.percentiles(first, shares, mask), np.quantile(one, shares, method="inverted_cdf"))
    assert np.array_equal(dax.percentiles(first, shares, mask), dax.percentiles(first, shares, mask, pool=pool))
    assert dax.median(first, mask) == np.quantile(one, 0.5, method="inverted_cdf") == dax.median(first, mask, pool=pool)


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.float32])
@pytest.mark.parametrize("masked", [False, True])
def test_histogram(rng, dtype, masked):
    image = rng.integers(0, 200, (13, 37)).astype(dtype)
    mask = rng.integers(0, 2, (13, 37), dtype=np.uint8) if masked else None
    chosen = image[mask != 0] if masked else image.ravel()
    found = dax.histogram(image, 7, (10, 150), mask=mask)
    # NumPy's last bin has its upper edge for integers too.
    expected = np.histogram(chosen, 7, (10, 150))[0]
    expected[-1] -= 0 if dtype == np.float32 else np.count_nonzero(chosen == 150)
    assert np.array_equal(found.counts, expected)
    assert found.below == np.count_nonzero(chosen < 10)
    assert found.counts.sum() + found.below + found.above == chosen.size
    edges = [0, 5, 100, 300]
    assert np.array_equal(dax.histogram(image, edges=edges, mask=mask).counts, np.histogram(chosen, edges)[0])


@pytest.mark.parametrize("dtype", ALL)
def test_integral_and_projections(rng, pool, dtype):
    image = picture(rng, dtype)
    for squared in (False, True):
        values = image.astype(float) ** (2 if squared else 1)
        for wide in (False, True):
            found = dax.integral(image, squared=squared, wide=wide)
            assert np.array_equal(found, dax.integral(image, squared=squared, wide=wide, pool=pool))
            assert np.array_equal(found[1:, 1:],
                                  values.cumsum(0).cumsum(1)) and not found[0].any() and not found[:, 0].any()
    assert np.array_equal(dax.project_rows(image), image.astype(float).sum(1))
    assert np.array_equal(dax.project_columns(image), image.astype(float).sum(0))
    with pytest.raises(ValueError, match="out"):
        dax.integral(image, out=np.empty((13, 37)))


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.float32])
def test_moments(rng, dtype):
    image = rng.integers(1, 200, (13, 37)).astype(dtype)
    y, x = np.mgrid[:13, :37].astype(float)
    found = dax.moments(image)
    assert np.isclose(found.m21, (x * x * y * image).sum()) and np.isclose(found.x,
                                                                           (x * image).sum() / image.sum(dtype=float))
    assert np.isclose(found.mu12, ((x - found.x) * (y - found.y) ** 2 * image).sum(), rtol=1e-9)
    assert np.isclose(found.hu[0], found.nu20 + found.nu02)


def test_what_is_refused(rng):
    image = picture(rng, np.uint8)
    for call in (dax.mean_value, dax.min_max, dax.median):
        with pytest.raises(dax.Error, match="mask|pixel"):
            call(image, np.zeros((13, 37), np.uint8))
        with pytest.raises(ValueError, match="mask"):
            call(image, np.zeros((3, 37), np.uint8))
    with pytest.raises(dax.Error, match="0..1"):
        dax.percentiles(image, [1.5])
    with pytest.raises(dax.Error):
        dax.histogram(image, 3, (5, 5))
    with pytest.raises(ValueError, match="bins"):
        dax.histogram(image, 0)
    with pytest.raises(ValueError, match="kind"):
        dax.norm(image, "l3")
    with pytest.raises(dax.Error):
        dax.moments(np.zeros((3, 3), np.uint8))

"""Distances, reconstructions, watersheds, thinning and windows of any shape mean what SciPy and scikit-image mean by
them."""
import numpy as np
import pytest
from scipy import ndimage

import dax

WITHOUT = {"DAXI_Flat(Line|Mask)DefaultCfg": "configurations are filled in completely"}

FOUR, EIGHT = ndimage.generate_binary_structure(2, 1), np.ones((3, 3), bool)
LOGICAL = {4: FOUR, 8: EIGHT}


@pytest.fixture
def mask(rng):
    return (ndimage.gaussian_filter(rng.normal(size=(60, 80)), 3) > 0).astype(np.uint8)


@pytest.mark.parametrize("metric, peer", [("l1", "taxicab"), ("linf", "chessboard")])
def test_distances(mask, pool, metric, peer):
    np.testing.assert_array_equal(dax.distance_transform(mask, metric), ndimage.distance_transform_cdt(mask, peer))
    squares = np.rint(ndimage.distance_transform_edt(mask) ** 2)
    np.testing.assert_array_equal(dax.distance_transform(mask, exact=True, pool=pool), squares)
    np.testing.assert_allclose(dax.distance_transform(mask, pool=pool), np.sqrt(squares), rtol=1e-7)
    exact = dax.distance_transform(mask, metric, exact=True)
    np.testing.assert_array_equal(exact, dax.distance_transform(mask, metric))
    assert (dax.distance_transform(np.ones((2, 2), np.uint8)) == np.inf).all()


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.int16, np.float32])
def test_grey_windows(rng, pool, dtype):
    image = rng.integers(0, 200, (40, 50)).astype(dtype)
    element = rng.integers(0, 2, (5, 7)).astype(bool)
    element[2, 3] = True
    form = {"footprint": element, "mode": "mirror"}
    turned = {"footprint": element[::-1, ::-1], "mode": "mirror"}
    for options in ({}, {"pool": pool}):
        options["mode"] = "mirror"
        expected = ndimage.minimum_filter(image, **form)
        np.testing.assert_array_equal(dax.gray_erode_mask(image, element, **options), expected)
        np.testing.assert_array_equal(
            dax.gray_dilate_mask(image, element, **options), ndimage.maximum_filter(image, **turned)
        )
        np.testing.assert_array_equal(
            dax.gray_erode_line(image, (4, 0), **options), ndimage.minimum_filter(image, (1, 5), mode="mirror")
        )
        np.testing.assert_array_equal(
            dax.gray_dilate_line(image, (0, 6), **options), ndimage.maximum_filter(image, (7, 1), mode="mirror")
        )
    diagonal = np.eye(5, dtype=bool)
    np.testing.assert_array_equal(dax.gray_erode_line(image, (4, 4)), dax.gray_erode_mask(image, diagonal))


def test_binary_windows(mask, pool):
    element = np.array([[0, 1, 0], [1, 1, 1]], bool)
    constant = {"mode": "constant", "pool": pool}
    for anchor, origin in ((None, (0, 0)), ((0, 0), (-1, -1))):
        expected = ndimage.binary_erosion(mask, element, origin=origin)
        np.testing.assert_array_equal(dax.erode_mask(mask, element, anchor=anchor, **constant) == 255, expected)
    opened = dax.dilate_mask(dax.erode_mask(mask, element), element, pool=pool)
    assert not (opened[mask == 0]).any()
    hit, miss = np.array([[0, 0, 0], [1, 1, 0], [0, 1, 0]], bool), np.array([[0, 1, 1], [0, 0, 1], [0, 0, 0]], bool)
    corners = ndimage.binary_hit_or_miss(mask, hit, miss)
    np.testing.assert_array_equal((dax.hit_or_miss(mask, hit, miss, pool=pool) == 255)[1:-1, 1:-1], corners[1:-1, 1:-1])
    with pytest.raises(ValueError, match="in common"):
        dax.hit_or_miss(mask, hit, hit)
    with pytest.raises(ValueError, match="shape"):
        dax.hit_or_miss(mask, hit, miss[:2])
    with pytest.raises(ValueError, match="anchor"):
        dax.erode_mask(mask, element, anchor=(3, 0))


@pytest.mark.parametrize("connectivity", [4, 8])
@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.float32])
def test_reconstructions(rng, mask, dtype, connectivity):
    other = LOGICAL[12 - connectivity]
    holes = ndimage.binary_fill_holes(mask, other)
    np.testing.assert_array_equal(dax.fill_holes(mask.astype(dtype), connectivity=connectivity), holes)
    labels, _ = ndimage.label(mask, LOGICAL[connectivity])
    edge = np.unique(np.concatenate([labels[0], labels[-1], labels[:, 0], labels[:, -1]]))
    inside = dax.clear_border(mask.astype(dtype), connectivity=connectivity)
    np.testing.assert_array_equal(inside, (mask != 0) & ~np.isin(labels, edge))
    image = rng.integers(20, 120, (30, 40)).astype(dtype)
    peaks, hollows = (f(image, 15, connectivity=connectivity) for f in (dax.h_maxima, dax.h_minima))
    np.testing.assert_array_equal(peaks, dax.reconstruct(image - 15, image, connectivity=connectivity))
    np.testing.assert_array_equal(hollows, dax.reconstruct(image + 15, image, "erosion", connectivity=connectivity))
    for function, turn in ((dax.regional_maxima, 1), (dax.regional_minima, -1)):
        found = function(image, connectivity=connectivity) == 255
        raised = turn * image.astype(float)
        grown = ndimage.grey_dilation(raised, footprint=LOGICAL[connectivity], mode="nearest")
        assert not found[grown > raised].any() and found.any()
    with pytest.raises(ValueError, match="connectivity"):
        dax.fill_holes(image, connectivity=6)


def test_watershed_in_place(rng):
    image = rng.permutation(1200).reshape(30, 40).astype(np.float32)
    markers = np.zeros((30, 40), np.int32)
    markers[5, 5], markers[20, 30], markers[12, :20] = 1, 2, -1
    labels = dax.watershed(image, markers, connectivity=4)
    assert set(np.unique(labels)) == {-1, 1, 2} and (labels[12, :20] == -1).all()
    np.testing.assert_array_equal(dax.watershed(image.astype(np.uint16), markers, connectivity=4), labels)
    assert dax.watershed(image, markers, connectivity=4, out=markers) is markers
    np.testing.assert_array_equal(markers, labels)
    assert (dax.watershed(np.zeros((3, 9), np.uint8), np.eye(3, 9, dtype=np.int32)) == 1).all()
    with pytest.raises(ValueError, match="connectivity"):
        dax.watershed(image, markers, connectivity=6)


def test_thin_lines_hang_together(mask):
    lines = dax.thin(mask)
    assert ndimage.label(lines, EIGHT)[1] == ndimage.label(mask, EIGHT)[1]
    assert (lines[mask == 0] == 0).all() and lines.sum() < 255 * mask.sum() / 3
    pruned = dax.prune_branches(lines, 5)
    assert 0 < pruned.sum() < lines.sum()
    assert lines.sum() < dax.thin(mask, 1).sum() < 255 * mask.sum()


def test_equals_scikit_image(rng, mask):
    morphology = pytest.importorskip("skimage.morphology")
    segmentation = pytest.importorskip("skimage.segmentation")
    image = rng.integers(0, 200, (40, 50)).astype(np.uint8)
    marker = np.minimum(image, rng.integers(0, 200, image.shape)).astype(np.uint8)
    expected = morphology.reconstruction(marker, image, footprint=EIGHT)
    np.testing.assert_array_equal(dax.reconstruct(marker, image), expected)
    np.testing.assert_array_equal(dax.thin(mask) == 255, morphology.thin(mask))
    heights = rng.permutation(image.size).reshape(image.shape).astype(np.uint16)
    markers = (rng.random(image.shape) < 0.02).cumsum().reshape(image.shape) * (rng.random(image.shape) < 0.02)
    labels = dax.watershed(heights, markers.astype(np.int32), connectivity=4)
    np.testing.assert_array_equal(labels, segmentation.watershed(heights, markers))
    np.testing.assert_array_equal(dax.regional_maxima(image) == 255, morphology.local_maxima(image, connectivity=2))

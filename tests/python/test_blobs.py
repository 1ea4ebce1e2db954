"""Labelling against a flood fill, selection against sums over the labelled pixels."""
import numpy as np
import pytest

import dax


def flood(mask, connectivity):
    """Labels in raster order, by walking from each first pixel."""
    labels = np.full(mask.shape, -1, np.int32)
    steps = [(0, 1), (0, -1), (1, 0), (-1, 0)] + ([(1, 1), (1, -1), (-1, 1), (-1, -1)] if connectivity == 8 else [])
    count = 0
    for start in zip(*np.nonzero(mask)):
        if labels[start] >= 0:
            continue
        todo = [start]
        labels[start] = count
        while todo:
            y, x = todo.pop()
            for dy, dx in steps:
                at = y + dy, x + dx
                if 0 <= at[0] < mask.shape[0] and 0 <= at[1] < mask.shape[1] and mask[at] and labels[at] < 0:
                    labels[at] = count
                    todo.append(at)
        count += 1
    return labels


@pytest.mark.parametrize("connectivity", [4, 8])
@pytest.mark.parametrize("share", [0.0, 0.3, 0.6, 1.0])
def test_labels(rng, connectivity, share):
    mask = (rng.random((23, 31)) < share).astype(np.uint8) * 3
    labelling = dax.label(mask, connectivity)
    expected = flood(mask, connectivity)
    assert np.array_equal(labelling.labels(), expected)
    assert len(labelling) == expected.max() + 1


def test_classes_keep_apart():
    image = np.array([[1, 1, 2, 2], [1, 2, 2, 0]], np.uint8)
    assert dax.label(image, classes=True).labels().tolist() == [[0, 0, 1, 1], [0, 1, 1, -1]]


def test_features_and_filters(rng):
    mask = (rng.random((40, 60)) < 0.4).astype(np.uint8)
    labelling = dax.label(mask)
    labels = labelling.labels()
    areas = np.bincount(labels[labels >= 0])
    blobs = dax.select_blobs(labelling, order="none")
    assert np.array_equal(blobs.area, areas[blobs.labels])
    for row, label in enumerate(blobs.labels):
        ys, xs = np.nonzero(labels == label)
        assert blobs.rect[row].tolist() == [xs.min(), ys.min(), np.ptp(xs) + 1, np.ptp(ys) + 1]
        assert np.allclose(blobs.centroid[row], [xs.mean(), ys.mean()], atol=1e-4)
    kept = dax.select_blobs(labelling, area=(3, 20), rect_width=(2, 6), sort="area", order="ascending", most=7)
    wide = blobs.rect[:, 2]
    passing = np.sort(blobs.area[(blobs.area >= 3) & (blobs.area <= 20) & (wide >= 2) & (wide <= 6)])
    assert kept.area.tolist() == passing[:7].tolist()
    scored = dax.select_blobs(labelling, area=(0, 20), weights={"area": 1.0})
    assert np.allclose(scored.score, 1 - abs(2 * scored.area / 20 - 1), atol=1e-6)


def test_outside_and_gray(rng):
    mask = np.zeros((10, 10), np.uint8)
    mask[0:3, 0:3] = mask[5:8, 5:8] = 1
    labelling = dax.label(mask)
    assert dax.select_blobs(labelling, outside_limit=0).labels.tolist() == [1]
    cover = np.ones((10, 10), np.uint8)
    cover[6, 6] = 0
    assert dax.select_blobs(labelling, outside_limit=0, mask=cover).labels.tolist() == [0]
    gray = np.full((10, 10), 51, np.uint8)
    assert dax.select_blobs(labelling, gray, gray_mode=True).area == pytest.approx([9 / 5, 9 / 5])
    with pytest.raises(ValueError, match="needs the image"):
        dax.select_blobs(labelling, gray_mode=True)
    with pytest.raises(ValueError, match="shape"):
        dax.select_blobs(labelling, gray[1:])
    with pytest.raises(dax.Error, match="DAXI_BlobSelectV3_8u_C1R_MT"):
        dax.select_blobs(labelling, circularity=(0.5, 2))


def test_nothing_to_find():
    empty = dax.label(np.zeros((5, 5), np.uint8))
    assert len(empty) == 0 and len(dax.select_blobs(empty)) == 0 and (empty.labels() == -1).all()


def test_shapes_of_domains(rng):
    y, x = np.mgrid[0:60, 0:80]
    turned = 0.3
    u, v = (x - 40) * np.cos(turned) + (y - 30) * np.sin(turned), (y - 30) * np.cos(turned) - (x - 40) * np.sin(turned)
    labelling = dax.label(((abs(u) <= 20) & (abs(v) <= 8)).astype(np.uint8))
    box = labelling.enclosing_box(0)
    assert box == pytest.approx((40, 30, 40, 16, turned), abs=1)
    assert labelling.enclosing_box(0, "perimeter") == pytest.approx(box, abs=1)
    assert 0.8 < labelling.rectangularity(0) <= 1
    hull = labelling.hull(0)
    edges = np.roll(hull, -1, 0) - hull
    # A strict turn at every corner, and every pixel of the domain on one side of every edge.
    following = np.roll(edges, -1, 0)
    assert (edges[:, 0] * following[:, 1] - edges[:, 1] * following[:, 0] > 0).all()
    points = np.argwhere(labelling.labels() == 0)[:, ::-1]
    away = points[:, None] - hull
    assert (edges[:, 0] * away[..., 1] - edges[:, 1] * away[..., 0] >= 0).all()
    assert dax.enclosing_box(hull, convex=True) == box == dax.enclosing_box(rng.permutation(points))
    for bad in (-1, 1, 2**40):
        with pytest.raises(IndexError):
            labelling.hull(bad)
    with pytest.raises(TypeError):
        dax.enclosing_box([[0.5, 1]])
    with pytest.raises(ValueError):
        dax.enclosing_box([[2**33, 1]])
    with pytest.raises(dax.Error, match="count < 1"):
        dax.enclosing_box(np.zeros((0, 2), int))


def test_ranges_by_class():
    image = np.array([[1, 1, 0, 2, 2, 0, 3], [1, 0, 2, 2, 2, 0, 3]], np.uint8)
    labelling = dax.label(image, classes=True)
    kept = dax.select_blobs(labelling, area={1: (1, 3), 2: (1, 4), 3: (5, 1)}, order="none")
    assert kept.cls.tolist() == [1]
    assert dax.select_blobs(labelling, area={2: (9, 6)}, order="none").cls.tolist() == [2]
    with pytest.raises(ValueError, match="class 256"):
        dax.select_blobs(labelling, area={256: (1, 2)})


def test_drawing(rng):
    mask = (rng.random((30, 40)) < 0.4).astype(np.uint8)
    labelling = dax.label(mask)
    labels = labelling.labels()
    expected = np.where(labels >= 0, 1 + labels % 255, 0)
    assert np.array_equal(dax.draw_labels(np.zeros((30, 40), np.uint8), labelling), expected)
    some = dax.select_blobs(labelling, area=(4, 20))
    drawn = dax.draw_labels(np.full((30, 40), 7, np.uint8), labelling, some)
    assert np.array_equal(drawn, np.where(np.isin(labels, some.labels), expected, 7))
    square = np.pad(np.ones((5, 6), np.uint8), 2)
    contour = dax.draw_contours(np.zeros_like(square), dax.label(square))
    assert np.array_equal(contour, np.where(square & ~np.pad(np.ones((3, 4), np.uint8), 3), 255, 0))
    with pytest.raises(ValueError, match="shape"):
        dax.draw_labels(np.zeros((30, 41), np.uint8), labelling)
    with pytest.raises(ValueError, match="writable"):
        dax.draw_contours(np.zeros((40, 30), np.uint8).T, labelling)

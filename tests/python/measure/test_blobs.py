"""Labelling and selection: what is asked for comes through, and what is measured comes back in its place."""
import json
import os
import subprocess

import numpy as np
import pytest

import dax

WITHOUT = {
    r"DAXI_BlobFind(ModelSize|BufferSize)?_8u.*|DAXI_BlobFindV3.*": "the second version owns its memory",
    r"DAXI_(Fast)?BlobSelect(V[234])?(BufferSize)?_8u(_C1R)?": "the pool forms do without a pool",
    r"DAXI_BlobSelect(BufferSize_8u|_8u_C1R)_MT": "the third version does more",
    r"DAXI_BlobSort": "NumPy sorts",
}


def test_labels():
    mask = np.array([[0, 7, 0, 0], [7, 0, 0, 1], [0, 0, 1, 1]], np.uint8)
    corners, edges = dax.label(mask), dax.label(mask, 4)
    assert corners.labels().tolist() == [[-1, 0, -1, -1], [0, -1, -1, 1], [-1, -1, 1, 1]] and len(corners) == 2
    assert edges.labels().tolist() == [[-1, 0, -1, -1], [1, -1, -1, 2], [-1, -1, 2, 2]] and len(edges) == 3
    assert np.array_equal(dax.label(mask > 0).labels(), corners.labels())
    assert dax.select_blobs(corners, outside_limit=0, mask=mask > 1).labels.tolist() == [0]
    assert np.array_equal(dax.erode3x3(mask > 0), dax.erode3x3((mask > 0) * np.uint8(255)))
    with pytest.raises(AttributeError, match="cannot be changed"):
        corners.size = (400, 400)


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
    kept = dax.select_blobs(labelling, area=(3, 20), rect_width=(2, 6), sort="area", order="ascending", max_count=7)
    wide = blobs.rect[:, 2]
    passing = np.sort(blobs.area[(blobs.area >= 3) & (blobs.area <= 20) & (wide >= 2) & (wide <= 6)])
    assert kept.area.tolist() == passing[:7].tolist()
    scored = dax.select_blobs(labelling, area=(0, 20), weights={"area": 1.0})
    assert np.allclose(scored.score, 1 - abs(2 * scored.area / 20 - 1), atol=1e-6)


def test_best_without_ranges(rng):
    labelling = dax.label((rng.random((40, 60)) < 0.4).astype(np.uint8))
    every = np.sort(dax.select_blobs(labelling).area)[::-1]
    assert len(every) > 20 and every[0] > every[10]
    assert dax.select_blobs(labelling, max_count=10).area.tolist() == every[:10].tolist()
    assert sorted(dax.select_blobs(labelling, max_count=10, order="none").area)[::-1] == every[:10].tolist()
    lowest = dax.select_blobs(labelling, max_count=3, sort="y", order="ascending")
    assert lowest.centroid[:, 1].max() < 2 and not lowest.score.any()


def test_shapes_and_tables(rng):
    mask = np.zeros((20, 20), np.uint8)
    mask[2:9, 2:9], mask[4:6, 4:6], mask[12, 3:9] = 1, 0, 1
    image = rng.integers(0, 256, mask.shape, dtype=np.uint8)
    labelling = dax.label(mask)
    blobs = dax.select_blobs(labelling)
    shapes = dax.measure_shapes(labelling, blobs[::-1], image)
    assert shapes.labels.tolist() == [1, 0] and shapes.holes.tolist() == [0, 1] and shapes.max_feret[0] == 5
    inside = image[mask * (labelling.labels() == 0) > 0]
    assert (shapes.min_gray[1], shapes.max_gray[1]) == (inside.min(), inside.max())
    assert shapes.mean_gray[1] == pytest.approx(inside.mean()) and dax.measure_shapes(labelling)[0].holes == 1
    assert len(dax.measure_shapes(dax.label(mask * 0))) == 0
    columns = blobs.to_dict()
    assert columns["x"] == blobs.centroid[:, 0].tolist() and columns["long_axis"] == blobs.box[:, 2].tolist()
    assert blobs[0].area == 45 and blobs[0].to_dict()["y"] == columns["y"][0]
    assert blobs[blobs.area < 10].labels.tolist() == [1]
    assert blobs._repr_html_().count("<tr>") == 3 and "<td>45</td>" in blobs[0]._repr_html_()
    edges = dax.find_edges(image, dax.Box(10, 10, 12, 8), threshold=1)
    assert edges[:1].to_dict()["x"] == edges.points[:1, 0].tolist()


@pytest.mark.skipif("DAX_TOOL" not in os.environ, reason="without the program")
def test_columns_are_those_of_the_program(rng, tmp_path):
    image = np.kron(rng.integers(0, 256, (12, 16)), np.ones((5, 5))).astype(np.uint8)
    (tmp_path / "image.pgm").write_bytes(b"P5 80 60 255\n" + image.tobytes())
    command = [os.environ["DAX_TOOL"], "inspect", tmp_path / "image.pgm", "--threshold", "200", "--shape", "--json"]
    blobs = json.loads(subprocess.run([*command, "--outside-limit", "99"],
                                      capture_output=True).stdout)["images"][0]["blobs"]
    labelling = dax.label(dax.threshold(image, "single", low=200).image)
    selected = dax.select_blobs(labelling, outside_limit=99)
    columns = {**selected.to_dict(), **dax.measure_shapes(labelling, selected, image).to_dict()}
    assert len(blobs) > 5 and {"class", *blobs[0]} == columns.keys()
    for name in blobs[0].keys() - {"score"}:
        degrees = 180 / np.pi if name.endswith("angle") else 1
        assert [blob[name] for blob in blobs] == pytest.approx(np.multiply(columns[name], degrees), rel=1e-6), name


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
    with pytest.raises(ValueError, match="circularity: maximum: 2, possible are 0..1"):
        dax.select_blobs(labelling, circularity=(0.5, 2))
    assert len(dax.select_blobs(labelling, circularity=(0.5, np.inf))) == 2
    assert len(dax.select_blobs(labelling, area=(9, np.inf))) == 2


@pytest.mark.parametrize("area, kind, match", [
    (5, TypeError, r"area: 5, needed is \(min"),
    ((5, None), TypeError, "area: .*math.inf"),
    ((9, 5), ValueError, "area: .*above"),
])
def test_ranges_that_are_none(area, kind, match):
    with pytest.raises(kind, match=match):
        dax.select_blobs(dax.label(np.eye(4, dtype=np.uint8)), area=area)
    with pytest.raises(TypeError, match="labelling: ndarray.*dax.label"):
        dax.select_blobs(np.eye(4, dtype=np.uint8), area=area)


def test_nothing_to_find():
    empty = dax.label(np.zeros((5, 5), np.uint8))
    assert len(empty) == 0 and len(dax.select_blobs(empty)) == 0 and (empty.labels() == -1).all()


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

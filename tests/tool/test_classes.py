"""Label images: regions of one grey value each, with ranges of area by class."""

import csv
import io
import re

import pictures
import pytest

# Class, x, y, width, height. The first two touch, so that a threshold would take them for one object.
REGIONS = [(3, 5, 5, 10, 6), (7, 15, 5, 4, 6), (3, 40, 5, 5, 5), (7, 40, 20, 10, 10), (255, 5, 30, 3, 3)]
AREAS = {(cls, width * height) for cls, _, _, width, height in REGIONS}


@pytest.fixture
def labels(tmp_path):
    picture = pictures.blank(60, 40, 0)
    for cls, x, y, width, height in REGIONS:
        pictures.draw(picture, x, y, width, height, cls)
    (tmp_path / "labels.png").write_bytes(pictures.png(picture))
    return "labels.png"


def found(blobs):
    return {(blob["class"], blob["area"]) for blob in blobs}


def test_every_listing_tells_the_class(dax, tmp_path, labels):
    run = dax("inspect", labels, "--classes", "--json", "--report", "page.html")
    image = run.json["images"][0]
    assert (found(run.blobs), image["regions"], image["threshold"]) == (AREAS, 5, None)
    rows = csv.DictReader(io.StringIO(dax("inspect", labels, "--classes", "--csv").out))
    order = [blob["class"] for blob in run.blobs]
    assert [float(row["class"]) for row in rows] == order
    title, columns, *lines = dax("inspect", labels, "--classes").out.splitlines()
    assert title == "labels.png: 60 x 40, classes, 5 of 5 regions"
    assert columns.split()[:2] == ["#", "class"] and [int(line.split()[1]) for line in lines] == order
    page = (tmp_path / "page.html").read_text()
    assert '<th scope="col">class</th>' in page
    assert [int(cls) for cls in re.findall(r"<tr [^>]*><td>\d+</td><td>(\d+)</td>", page)] == order
    plain = dax("inspect", labels, "--threshold", "mask", "--json")
    assert len(plain.blobs) == 4 and "class" not in plain.blobs[0]


def test_corners_join_only_one_class(dax, tmp_path):
    picture = pictures.blank(12, 12, 0)
    for x, y, cls in [(1, 1, 5), (4, 4, 5), (7, 7, 6)]:
        pictures.draw(picture, x, y, 3, 3, cls)
    (tmp_path / "steps.png").write_bytes(pictures.png(picture))
    for connectivity, areas in [(8, [(5, 18), (6, 9)]), (4, [(5, 9), (5, 9), (6, 9)])]:
        blobs = dax("inspect", "steps.png", "--classes", "--connectivity", connectivity, "--json").blobs
        assert sorted((b["class"], b["area"]) for b in blobs) == areas


@pytest.mark.parametrize("options, keeps", [
    (["3=26.."], {(3, 60), (7, 24), (7, 100), (255, 9)}),
    (["3=25..25", "7=..24"], {(3, 25), (7, 24), (255, 9)}),
    (["7=100..24"], {(3, 60), (3, 25), (255, 9)}),  # inverted: its ends are refused, too
    (["7=99..25"], {(3, 60), (3, 25), (7, 100), (7, 24), (255, 9)}),
    (["255=0..8", "--area", "25..60"], {(3, 60), (3, 25)}),
    (["255=9..", "--area", "25..60"], {(3, 60), (3, 25), (255, 9)}),
    (["9=5..6", "--area", "..24"], {(7, 24), (255, 9)}),
    (["3=60..", "--rect-height", "..6"], {(3, 60), (7, 24), (255, 9)}),
])
def test_area_by_class(dax, labels, options, keeps):
    arguments = [a for o in options for a in (["--class-area", o] if "=" in o else [o])]
    assert found(dax("inspect", labels, "--classes", *arguments, "--json").blobs) == keeps


def test_score_of_an_area_by_class(dax, labels):
    """Without a weight of its own an area by class has no part in the score; with one, the range of each class
    counts."""
    options = ["inspect", labels, "--classes", "--class-area", "3=20..80", "--class-area", "7=10..150", "--json"]
    assert dax(*options).blobs[0]["score"] is None
    scores = {(b["class"], b["area"]): b["score"] for b in dax(*options, "--weight", "area=1").blobs}
    for key, low, high in [((3, 60), 20, 80), ((3, 25), 20, 80), ((7, 100), 10, 150)]:
        assert scores[key] == pytest.approx(1 - abs(2 * key[1] / (low + high) - 1), abs=1e-5)

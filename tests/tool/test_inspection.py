"""Parts of pictures, expected numbers, millimetres, order by score, inversions, indexes of reports."""

import pictures
import pytest


@pytest.fixture
def picture(tmp_path, parts):
    (tmp_path / "in.png").write_bytes(pictures.png(parts))
    return "in.png"


def test_region_of_interest(dax, picture):
    """Places are those in the picture; an object that is cut counts as far as it is inside."""
    whole = dax("inspect", picture, "--json").blobs
    part = dax("inspect", picture, "--json", "--roi", "20,0,44,60").blobs
    assert part == [{**next(b for b in whole if b["area"] == 90), "label": 0}]
    (cut,) = dax("inspect", picture, "--json", "--roi", "0,0,9,12").blobs
    assert (cut["area"], cut["rect_x"], cut["rect_y"], cut["rect_width"]) == (4 * 7, 5, 5, 4)
    assert "--roi reaches beyond the picture of 80 x 60" in dax("inspect", picture, "--roi", "20,0,61,60", status=5).err
    for wrong in ("1,2,3", "1,2,0,4", "-1,2,3,4", "a,2,3,4"):
        assert "is not X,Y,WIDTH,HEIGHT" in dax("inspect", picture, f"--roi={wrong}", status=2).err


@pytest.mark.parametrize("expected, met", [("4", True), ("3", False), ("2..4", True), ("5..", False), ("..3", False)])
def test_expected_number(dax, picture, expected, met):
    run = dax("inspect", picture, "--expect", expected, "--json", status=0 if met else 8)
    assert run.json["images"][0]["expected"]["met"] == met and len(run.blobs) == 4
    assert ("not the expected number" in dax("inspect", picture, "--expect", expected, status=None).out) != met


def test_millimetres(dax, picture):
    """Of results and of ranges."""
    pixels = dax("inspect", picture, "--json", "--area", "80..100").blobs
    run = dax("inspect", picture, "--json", "--area", "0.8..1", "--mm-per-pixel", "0.1")
    assert run.json["units"]["length"] == "millimetre" and len(run.blobs) == len(pixels) == 2
    for one, other in zip(pixels, run.blobs):
        for name, power in (("x", 1), ("area", 2), ("perimeter", 1), ("long_axis", 1), ("axis_ratio", 0),
                            ("box_angle", 0)):
            assert other[name] == pytest.approx(one[name] * 0.1 ** power, rel=1e-6), name


def test_order_by_score(dax, picture):
    """The best by score are kept, not the largest."""
    options = ["inspect", picture, "--area", "10..200", "--axis-ratio", "0..1", "--json", "--sort", "score"]
    every = dax(*options).blobs
    scores = [blob["score"] for blob in every]
    assert scores == sorted(scores, reverse=True) and len(set(scores)) == 4
    assert dax(*options, "--count", 2).blobs == every[:2]
    assert dax(*options, "--order", "asc").blobs == every[::-1]
    assert "needs a range with an upper end" in dax("inspect", picture, "--sort", "score", status=2).err


@pytest.mark.parametrize("threshold", ["otsu", "100", "50..150", "..90", "mask", "soft:low=20,high=90",
                                       "relative:low=0.3,high=0.3"])
@pytest.mark.parametrize("levels", [(20, 200), (0, 255), (20, 100)])
def test_dark_is_the_complement_of_bright(dax, tmp_path, threshold, levels):
    """Of pictures of two levels too: no pixel is in both, none in neither."""
    low, high = levels
    (tmp_path / "in.png").write_bytes(pictures.png(pictures.draw(pictures.blank(30, 20, low), 5, 5, 6, 4, high)))
    areas = [sum(b["area"] for b in dax("inspect", "in.png", "--threshold", threshold, *side, "--json").blobs)
             for side in ([], ["--dark"])]
    assert sum(areas) == 600
    if threshold == "otsu":
        assert areas == [24, 576]


def test_index_of_reports(dax, tmp_path, picture, parts):
    (tmp_path / "a b.png").write_bytes(pictures.png(parts))
    (tmp_path / "bad.png").write_bytes(b"")
    dax("inspect", picture, "a b.png", "bad.png", "--report", "out", "--rejected", "--area", "60..", status=1)
    index = (tmp_path / "out/index.html").read_text()
    assert 'href="in-report.html"' in index and 'href="a%20b-report.html"' in index and "bad.png: is empty" in index
    assert (tmp_path / "out/a b-report.html").exists() and index.count("3 of 4 regions") == 2
    assert "rejected by" in (tmp_path / "out/in-report.html").read_text()
    assert "area 60.." in (tmp_path / "out/in-report.html").read_text()

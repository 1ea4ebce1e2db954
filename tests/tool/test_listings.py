"""Table, JSON and CSV tell the same, and names cannot break them."""

import csv
import io

import pictures
import pytest

TABLE = ["x", "y", "area", "perimeter", "long_axis", "short_axis", "box_angle", "axis_ratio", "circularity",
         "rectangularity", "central_bias"]
SHAPE = ["holes", "convexity", "max_feret", "min_feret", "eccentricity", "mean_gray"]


def save(tmp_path, name, picture):
    path = tmp_path / name
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(pictures.png(picture))


@pytest.mark.parametrize("options", [[], ["--area", "20..200", "--sort", "x"], ["--area", "5000.."], ["--shape"]])
def test_the_three_agree(dax, tmp_path, parts, options):
    save(tmp_path, "parts.png", parts)
    json = dax("inspect", "parts.png", *options, "--json").json["images"][0]
    rows = list(csv.DictReader(io.StringIO(dax("inspect", "parts.png", *options, "--csv").out)))
    table = dax("inspect", "parts.png", *options).out.splitlines()

    assert table[0] == f"parts.png: 80 x 60, threshold otsu 20, {len(json['blobs'])} of 4 regions"
    assert (json["width"], json["height"], json["regions"]) == (80, 60, 4)
    assert json["threshold"] == {"method": "otsu", "low": 20, "high": 20}
    assert len(rows) == len(json["blobs"]) == max(0, len(table) - 2)
    for number, (blob, row, line) in enumerate(zip(json["blobs"], rows, table[2:]), 1):
        assert (row.pop("file"), int(row.pop("number"))) == ("parts.png", number)
        score = row.pop("score")
        assert (float(score) if score else None) == blob["score"]
        assert {name: float(value) for name, value in row.items()} == {k: v for k, v in blob.items() if k != "score"}
        fields = [float(field) for field in line.split()]
        names = TABLE + (SHAPE if options == ["--shape"] else [])
        shown = [number, *(blob[name] for name in names), *([blob["score"]] if score else [])]
        assert fields == pytest.approx(shown, abs=0.51)


def test_several_images_each_name_theirs(dax, tmp_path, parts):
    save(tmp_path, "a/one.png", parts)
    save(tmp_path, "two, \"2\".png", parts)
    names = ["a/one.png", "two, \"2\".png", "a/one.png"]
    assert [image["file"] for image in dax("inspect", *names, "--json").json["images"]] == names
    rows = list(csv.DictReader(io.StringIO(dax("inspect", *names, "--csv").out)))
    assert [row["file"] for row in rows] == [name for name in names for _ in range(4)]
    sections = dax("inspect", *names).out.split("\n\n")
    assert [section.split(": ")[0] for section in sections] == names


@pytest.mark.parametrize("raw, shown", [
    (b"new\nline.png", "new\ufffdline.png"), (b"\x1b[31mred.png", "\ufffd[31mred.png"),
    (b"latin-\xe9.png", "latin-\ufffd.png"), ("Stück–π😀.png".encode(), "Stück–π😀.png"),
    (b"overlong-\xc0\xaf.png", "overlong-\ufffd\ufffd.png"), (b"cut-\xe2\x82.png", "cut-\ufffd\ufffd.png"),
    (b"c1-\xc2\x9b.png", "c1-\ufffd.png")])
def test_names_are_safe_to_print(dax, tmp_path, parts, raw, shown):
    with open(bytes(tmp_path) + b"/" + raw, "wb") as file:
        file.write(pictures.png(parts))
    for option in ([], ["--json"], ["--csv"]):
        run = dax("inspect", ".", *option)
        assert f"./{shown}" in run.out
        assert "\x1b" not in run.out
    assert dax("inspect", ".", "--json").json["images"][0]["file"] == f"./{shown}"


def test_failures_are_in_the_listings(dax, tmp_path, parts):
    save(tmp_path, "good.png", parts)
    (tmp_path / "bad.png").write_bytes(b"")
    good, bad = dax("inspect", "good.png", "bad.png", "--json", status=1).json["images"]
    assert len(good["blobs"]) == 4
    assert bad == {"file": "bad.png", "error": "bad.png: is empty"}
    assert "bad.png" not in dax("inspect", "good.png", "bad.png", "--csv", status=1).out


def test_times(dax, tmp_path, parts):
    """On standard error, so that listings stay the same; the last column is the sum of the others."""
    save(tmp_path, "parts.png", parts)
    run = dax("inspect", "parts.png", "parts.png", "--time")
    assert run.out == dax("inspect", "parts.png", "parts.png").out
    title, *lines = (line.split() for line in run.err.splitlines())
    assert title == ["read", "threshold", "label", "select", "draw", "all", "milliseconds"]
    assert [line[-1] for line in lines] == ["parts.png", "parts.png", "total"]
    for *stages, total, _ in lines:
        assert sum(map(float, stages)) == pytest.approx(float(total), abs=0.04)
    assert float(lines[0][0]) > 0

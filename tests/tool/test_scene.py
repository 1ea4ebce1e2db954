"""Sample scenes: the same everywhere, as the truth says, and a truth that is not met is noticed."""

import hashlib
import json
import math
import re

import pictures
import pytest

# Of the pixels; on every machine.
DIGESTS = {
    ("1200x900", 1): "87ff06facce75700d33a7b7d0abba1ad832325eebe0e18375e20e296b505eba7",
    ("600x450", 5): "28787102657cb6727a5759cc4ac5a97d3eae78da02e492a9614e79070b814b29",
    ("151x333", 77): "fa8ac3ea63090ee2f0e4ace81b323b83d43040e69c8655ba32f93ddc0807dd08",
}


def read_pgm(path):
    """Sides and pixels."""
    magic, sides, _, pixels = path.read_bytes().split(b"\n", 3)
    assert magic == b"P5"
    return tuple(map(int, sides.split())), pixels


@pytest.mark.parametrize("size, seed", DIGESTS)
def test_same_pixels_everywhere(dax, tmp_path, size, seed):
    dax("render-scene", "scene.pgm", "--size", size, "--seed", seed)
    (width, height), pixels = read_pgm(tmp_path / "scene.pgm")
    assert f"{width}x{height}" == size and len(pixels) == width * height
    assert hashlib.sha256(pixels).hexdigest() == DIGESTS[size, seed]


def test_scratches_are_found(dax, tmp_path):
    """The same pixels everywhere; a top hat across the streaks leaves the scratches, and nothing else of their size."""
    dax("render-scene", "metal.pgm", "--brushed", "--size", "600x450", "--truth", "truth.json")
    assert hashlib.sha256(read_pgm(tmp_path / "metal.pgm")[1]).hexdigest().startswith("7138af97eebf204c")
    dax("filter", "metal.pgm", "mask.png", "--top-hat", "15x1", "--hysteresis", "25,45")
    run = dax("inspect", "mask.png", "--threshold", "mask", "--area", "40..", "--truth", "truth.json",
              "--max-centre-error", 1, "--max-area-error", 25)
    assert "truth: 12 of 12 parts found, 0 missed, 0 found twice, 0 unexpected" in run.out


def test_png_and_pgm_hold_the_same(dax, tmp_path):
    dax("render-scene", "scene.pgm", "--size", "160x150")
    dax("render-scene", "scene.png", "--size", "160x150")
    rows, pixel = pictures.read_png((tmp_path / "scene.png").read_bytes())
    assert pixel == 1 and b"".join(map(bytes, rows)) == read_pgm(tmp_path / "scene.pgm")[1]


@pytest.fixture
def scene(dax, tmp_path):
    """Picture and truth of twelve parts; inspects them with more options and a changed truth."""
    dax("render-scene", "scene.pgm", "--truth", "scene.json", "--size", "600x450", "--seed", 5)

    class Scene:
        truth = json.loads((tmp_path / "scene.json").read_text())

        def inspect(self, *options, status=0):
            (tmp_path / "changed.json").write_text(json.dumps(self.truth))
            return dax("inspect", "scene.pgm", "--area", "200..", "--truth", "changed.json", *options, status=status)

    return Scene()


def test_truth_tells_the_parts(scene):
    assert (scene.truth["width"], scene.truth["height"], len(scene.truth["parts"])) == (600, 450, 12)
    for part in scene.truth["parts"]:
        assert part["kind"] in {"disc", "ring", "rectangle", "slot", "nut", "bracket"}
        assert ("angle" in part) == (part["kind"] not in {"disc", "ring"})


@pytest.mark.parametrize("seed", range(1, 4))
def test_measurements_agree_with_the_truth(dax, seed):
    dax("render-scene", "scene.png", "--truth", "scene.json", "--seed", seed)
    truth = dax("inspect", "scene.png", "--area", "200..", "--truth", "scene.json", "--json").json["truth"]
    assert (truth["agrees"], truth["parts"], truth["found"]) == (True, 48, 48)
    assert truth["missed"] == truth["found_twice"] == truth["unexpected"] == 0


def test_statistics(scene):
    """Against the same figures from the listing."""
    result = scene.inspect("--json").json
    centre, area = [], []
    for part in scene.truth["parts"]:
        distance, blob = min((math.hypot(b["x"] - part["x"], b["y"] - part["y"]), b["area"])
                             for b in result["images"][0]["blobs"])
        centre.append(distance)
        area.append(100 * abs(blob / part["area"] - 1))
    for name, errors in [("centre_error", centre), ("area_error", area)]:
        found = result["truth"][name]
        rms = math.sqrt(sum(e * e for e in errors) / len(errors))
        assert (found["mean"], found["rms"], found["worst"]) == pytest.approx(
            (sum(errors) / len(errors), rms, max(errors)), rel=1e-3)


def test_comparison_stands_by_the_listing(scene):
    assert "truth: 12 of 12 parts found, 0 missed" in scene.inspect().out
    csv = scene.inspect("--csv")
    assert "truth" not in csv.out and "truth: 12 of 12 parts found" in csv.err


def fail(scene, *options):
    return scene.inspect("--json", *options, status=6).json["truth"]


def test_missed_and_unexpected_parts_fail(scene):
    truth = fail(scene, "--count", 9)
    assert (truth["found"], truth["missed"], truth["unexpected"]) == (9, 3, 0)
    scene.truth["parts"].append({"kind": "disc", "x": 1.0, "y": 1.0, "area": 50.0})
    assert fail(scene)["missed"] == 1
    del scene.truth["parts"][-2:]
    truth = fail(scene)
    assert (truth["found"], truth["missed"], truth["unexpected"]) == (11, 0, 1)


def test_parts_found_twice_fail(scene, tmp_path):
    """A dark line splits a disc in two."""
    part = next(p for p in scene.truth["parts"] if p["kind"] == "disc")
    content = bytearray((tmp_path / "scene.pgm").read_bytes())
    start = len(content) - 600 * 450 + 600 * round(part["y"])
    content[start + int(part["x"]) - 60 : start + int(part["x"]) + 60] = bytes(120)
    (tmp_path / "scene.pgm").write_bytes(content)
    assert fail(scene)["found_twice"] == 1


@pytest.mark.parametrize("key, shift, error, option", [
    ("x", 1.0, "centre_error", "--max-centre-error"), ("y", -1.0, "centre_error", "--max-centre-error"),
    ("area", 400.0, "area_error", "--max-area-error"), ("angle", 6.0, "angle_error", "--max-angle-error"),
    ("angle", 84.0, "angle_error", "--max-angle-error")])
def test_errors_beyond_the_tolerance_fail(scene, key, shift, error, option):
    part = next(p for p in scene.truth["parts"] if p["kind"] == "rectangle")
    part[key] += shift
    statistics = fail(scene)
    assert statistics[error]["worst"] > statistics[error]["tolerance"]
    assert [name for name in statistics if name.endswith("_error") and
            statistics[name]["worst"] > statistics[name]["tolerance"]] == [error]
    assert re.search(r"EXCEEDED\n(.*\n)*.*DISAGREE", scene.inspect(status=6).out)
    scene.inspect(option, 100)


@pytest.mark.parametrize("turns", [-2, 1, 3])
def test_angles_are_compared_by_the_symmetry_of_the_shape(scene, turns):
    for part in scene.truth["parts"]:
        if "angle" in part:
            part["angle"] += turns * part["angle_period"]
    scene.inspect()


@pytest.mark.parametrize("content", [
    "", "[]", "{}", "not json", '{"width": 600, "height": 450}', '{"width": 600, "height": 450, "parts": {"x": 1}}',
    '{"width": 600, "height": 450, "parts": [{"kind": "disc", "x": 1, "y": 2}]}',
    '{"width": 600, "height": 450, "parts": [{"kind": "disc", "x": "1", "y": 2, "area": 3}]}',
    '{"width": 600, "height": 450, "parts": [{"kind": "disc", "x": 1, "y": 2, "area": 0}]}',
    '{"width": 600, "height": 450, "parts": [{"kind": "nut", "x": 1, "y": 2, "area": 9, "angle": 5}]}',
    *['{"width": %s, "height": 450, "parts": []}' % width for width in ("600.5", str(2**32 + 600), "1e99", "0")],
    '{"width": 600, "height": 450, "parts": [' + "[" * 5000])
def test_what_is_no_truth(dax, scene, tmp_path, content):
    (tmp_path / "odd.json").write_text(content)
    run = dax("inspect", "scene.pgm", "--truth", "odd.json", status=3)
    assert run.err.startswith("dax: odd.json: is no truth of a scene: ") and run.err.count("\n") == 1


def test_truth_of_another_picture(scene):
    scene.truth["width"] = 601
    assert "is the truth of an image of 601 x 450" in scene.inspect(status=6).err

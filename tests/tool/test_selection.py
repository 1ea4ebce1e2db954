"""Ranges, order, polarity, thresholds and score: what the options say is what is found."""

import pictures
import pytest

# Command-line name of each filter, and the feature that it looks at.
FILTERS = {"area": "area", "perimeter": "perimeter", "long-axis": "long_axis", "short-axis": "short_axis",
           "axis-ratio": "axis_ratio", "box-angle": "box_angle", "circularity": "circularity",
           "rectangularity": "rectangularity", "central-bias": "central_bias", "rect-width": "rect_width",
           "rect-height": "rect_height"}
SORT_KEYS = {"area": "area", "perimeter": "perimeter", "circularity": "circularity", "rectangularity": "rectangularity",
             "axis-ratio": "axis_ratio", "x": "x", "y": "y", "box-angle": "box_angle", "long-axis": "long_axis",
             "short-axis": "short_axis", "rect-x": "rect_x", "rect-y": "rect_y", "principal-angle": "principal_angle"}


@pytest.fixture
def scene(dax):
    """A file with parts of many shapes and directions."""
    dax("render-scene", "scene.pgm", "--size", "600x450", "--seed", 5)
    return "scene.pgm"


def labels(blobs):
    return [blob["label"] for blob in blobs]


@pytest.mark.parametrize("option, feature", FILTERS.items())
def test_each_range_keeps_what_lies_in_it(dax, scene, option, feature):
    every = dax("inspect", scene, "--area", "20..", "--order", "none", "--json").blobs
    assert len(every) == 12
    values = sorted(blob[feature] for blob in every)
    low, high = values[3], values[8]
    for text, keeps in [(f"{low}..{high}", lambda v: low <= v <= high), (f"{low}..", lambda v: low <= v),
                        (f"..{high}", lambda v: v <= high)]:
        again = [] if option == "area" else ["--area", "20.."]
        kept = dax("inspect", scene, *again, f"--{option}", text, "--order", "none", "--json").blobs
        expected = [b for b in every if keeps(b[feature]) and b["area"] >= 20]
        if text.startswith(".."):
            kept = [b for b in kept if b["area"] >= 20]
        assert labels(kept) == labels(expected), text


@pytest.mark.parametrize("key, feature", SORT_KEYS.items())
def test_each_sort_key(dax, scene, key, feature):
    for order, reverse in [("asc", False), ("desc", True)]:
        values = [b[feature] for b in dax("inspect", scene, "--sort", key, "--order", order, "--json").blobs]
        assert len(values) == 24
        assert values == sorted(values, reverse=reverse)


def test_count_keeps_the_best(dax, scene):
    areas = [b["area"] for b in dax("inspect", scene, "--json").blobs]
    assert [b["area"] for b in dax("inspect", scene, "--count", 5, "--json").blobs] == areas[:5]
    assert dax("inspect", scene, "--count", 5, "--order", "asc", "--json").blobs[0]["area"] == min(areas)


# Grey steps 40, 80, 120, 160 of known widths on 0.
STEPS = {40: 2, 80: 3, 120: 4, 160: 5}


def steps_picture():
    picture = pictures.blank(60, 20, 0)
    for i, (grey, width) in enumerate(STEPS.items()):
        pictures.draw(picture, 4 + 14 * i, 5, width, 10, grey)
    return picture


@pytest.mark.parametrize("threshold, found", [
    ("80", {80, 120, 160}), ("81", {120, 160}), ("80..120", {80, 120}), ("..120", None), ("120..", {120, 160}),
    ("40..40", {40}), ("255", set()), ("mask", {40, 80, 120, 160}), ("otsu", {80, 120, 160}),
    # Hard: the level is half way, 100.
    ("soft:low=80,high=120", {120, 160}),
    # Three levels between: the first starts at an eighth of the way, at 85.
    ("soft:low=80,high=120,steps=3", {120, 160}),
    # The darkest is 0, the brightest 160: the level half way is 80.
    ("relative", {80, 120, 160}), ("relative:low=0.6,high=0.6", {120, 160}), ("relative:bright=0.06", {80, 120, 160}),
])
def test_thresholds(dax, tmp_path, threshold, found):
    """By width; with --dark the rest of the picture is found instead."""
    (tmp_path / "steps.pgm").write_bytes(pictures.pgm(steps_picture()))
    bright = dax("inspect", "steps.pgm", "--threshold", threshold, "--sort", "x", "--order", "asc", "--json").blobs
    dark = dax("inspect", "steps.pgm", "--threshold", threshold, "--dark", "--json").blobs
    if found is not None:
        assert [b["rect_width"] for b in bright] == [STEPS[grey] for grey in sorted(found)]
    assert sum(b["area"] for b in bright) + sum(b["area"] for b in dark) == 60 * 20


def test_greys_within_a_soft_ramp_are_bright_and_dark(dax, tmp_path):
    """They weigh more than 0 either way. Grey 80 lies on the ramp, 120 above its last step."""
    (tmp_path / "steps.pgm").write_bytes(pictures.pgm(steps_picture()))
    for steps, bright, dark in [(0, 90, 1110), (3, 120, 1110)]:
        arguments = ["inspect", "steps.pgm", "--threshold", f"soft:low=70,high=120,steps={steps}", "--json"]
        assert sum(b["area"] for b in dax(*arguments).blobs) == bright
        assert sum(b["area"] for b in dax(*arguments, "--dark").blobs) == dark


def test_connectivity(dax, tmp_path):
    picture = pictures.draw(pictures.draw(pictures.blank(20, 20), 4, 4, 3, 3), 7, 7, 3, 3)
    (tmp_path / "corner.png").write_bytes(pictures.png(picture))
    assert [b["area"] for b in dax("inspect", "corner.png", "--json").blobs] == [18]
    assert [b["area"] for b in dax("inspect", "corner.png", "--connectivity", 4, "--json").blobs] == [9, 9]


def test_gray_weighted(dax, tmp_path):
    picture = pictures.draw(pictures.draw(pictures.blank(20, 20), 4, 4, 2, 2, 255), 6, 4, 2, 2, 51)
    (tmp_path / "two.png").write_bytes(pictures.png(picture))
    plain = dax("inspect", "two.png", "--threshold", 50, "--json").blobs[0]
    weighted = dax("inspect", "two.png", "--threshold", 50, "--gray-weighted", "--json").blobs[0]
    assert (plain["area"], plain["x"]) == (8, 5.5)
    assert weighted["area"] == pytest.approx(4 * (1 + 0.2))
    assert weighted["x"] == pytest.approx((4.5 * 1 + 6.5 * 0.2) / 1.2)


def closeness(value, low, high):
    return 1 - abs(2 * value / (low + high) - 1)


@pytest.mark.parametrize("options, score", [
    ([], None),
    (["--area", "100.."], None),  # no middle to be close to
    (["--area", "100..140"], closeness(120, 100, 140)),
    (["--area", "60..200"], closeness(120, 60, 200)),
    (["--area", "60..200", "--axis-ratio", "0.2.."], (closeness(120, 60, 200) + closeness(9 / 11, 0.2, 1)) / 2),
    (["--area", "60..200", "--axis-ratio", "0.2..", "--weight", "area=0.5"],
     (0.5 * closeness(120, 60, 200) + closeness(9 / 11, 0.2, 1)) / 1.5),
    (["--weight", "area=0", "--area", "60..200"], None),
    (["--box-angle", "-45..45"], closeness(90, 45, 135)),
    (["--box-angle", "-10..60"], closeness(90, 80, 150)),
    (["--rect-width", "6..20", "--weight", "rect-width=0.3"], closeness(12, 6, 20)),
])
def test_score(dax, tmp_path, parts, options, score):
    """Of the 12 x 10 rectangle."""
    (tmp_path / "parts.png").write_bytes(pictures.png(parts))
    blobs = dax("inspect", "parts.png", *options, "--json").blobs
    blob = next(b for b in blobs if b["area"] == 120)
    assert blob["score"] == (None if score is None else pytest.approx(score, abs=1e-5))

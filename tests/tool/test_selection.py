"""Ranges, order, polarity, thresholds and score: what the options say is what is found."""

import math

import pictures
import pytest

# A feature has one name everywhere: box_angle in JSON and CSV, box-angle as range and sort key.
SHAPE = ["euler_number", "holes", "convexity", "max_feret", "min_feret", "feret_angle", "equivalent_diameter",
         "eccentricity", "mean_gray", "min_gray", "max_gray"]
COMMON = ["area", "perimeter", "long_axis", "short_axis", "axis_ratio", "box_angle", "circularity", "rectangularity"]
FILTERS = COMMON + ["central_bias", "rect_width", "rect_height"] + SHAPE
SORT_KEYS = COMMON + ["x", "y", "rect_x", "rect_y", "principal_angle"] + SHAPE


@pytest.fixture
def scene(dax):
    """A file with parts of many shapes and directions."""
    dax("render-scene", "scene.pgm", "--size", "600x450", "--seed", 5)
    return "scene.pgm"


def labels(blobs):
    return [blob["label"] for blob in blobs]


@pytest.mark.parametrize("feature", FILTERS)
def test_each_range_keeps_what_lies_in_it(dax, scene, feature):
    every = dax("inspect", scene, "--area", "20..", "--order", "none", "--shape", "--json").blobs
    assert len(every) == 12
    values = sorted(blob[feature] for blob in every)
    low, high = values[3], values[8]
    option = "--" + feature.replace("_", "-")
    for text, keeps in [(f"{low}..{high}", lambda v: low <= v <= high), (f"{low}..", lambda v: low <= v),
                        (f"..{high}", lambda v: v <= high)]:
        again = [] if feature == "area" else ["--area", "20.."]
        kept = dax("inspect", scene, *again, option, text, "--order", "none", "--json").blobs
        expected = [b for b in every if keeps(b[feature]) and b["area"] >= 20]
        assert labels(b for b in kept if b["area"] >= 20) == labels(expected), text


@pytest.mark.parametrize("feature", SORT_KEYS)
def test_each_sort_key(dax, scene, feature):
    for order, reverse in [("asc", False), ("desc", True)]:
        arguments = ["inspect", scene, "--sort", feature.replace("_", "-"), "--order", order, "--json"]
        values = [b[feature] for b in dax(*arguments).blobs]
        assert len(values) == 24
        assert values == sorted(values, reverse=reverse)
        assert [b[feature] for b in dax(*arguments, "--count", 7).blobs] == values[:7]


def test_shape(dax, tmp_path):
    """A ring of 16 bits, and a bar: grey values are those of the file, lengths in millimetres, ranges too."""
    picture = pictures.draw(pictures.draw(pictures.blank(40, 30, 10), 4, 5, 9, 8, 200), 7, 8, 3, 2, 10)
    pictures.draw(pictures.draw(picture, 20, 5, 12, 3, 100), 20, 5, 6, 3, 150)
    (tmp_path / "in.png").write_bytes(pictures.png16([[(grey[0] // 10,) * 3 for grey in row] for row in picture]))
    for place in ([], ["--roi", "2,3,35,20"]):
        arguments = ["inspect", "in.png", "--threshold", "2000", "--mm-per-pixel", "0.1", *place, "--json"]
        ring, bar = dax(*arguments, "--shape").blobs
        expected = {"holes": 1, "euler_number": 0, "convexity": 66 / 72, "min_feret": 0.7, "mean_gray": 5140}
        assert {name: ring[name] for name in expected} == pytest.approx(expected)
        expected = {"holes": 0, "max_feret": 0.1 * (11**2 + 2**2) ** 0.5,
                    "equivalent_diameter": 0.2 * (36 / math.pi) ** 0.5,
                    "mean_gray": (2570 + 3855) / 2, "min_gray": 2570, "max_gray": 3855}
        assert {name: bar[name] for name in expected} == pytest.approx(expected)
        assert dax(*arguments, "--min-feret", "0.7..").blobs == [ring]
        run = dax(*arguments, "--holes", "..0", "--count", 1, "--rejected")
        assert run.blobs == [bar]
        assert [(b["rejected_by"], b["limit"], b["holes"])
                for b in run.json["images"][0]["rejected"]] == [("holes", "..0", 1)]
    assert "holes" not in dax("inspect", "in.png", "--json").blobs[0]
    assert "have no share in the score" in dax("inspect", "in.png", "--weight", "holes=1", status=2).err
    for option, range_ in [("convexity", "0.5..2"), ("holes", "-1.."), ("feret-angle", "..91"), ("mean-gray", "nan..")]:
        assert "is not MIN..MAX" in dax("inspect", "in.png", f"--{option}={range_}", status=2).err


def test_order_of_finding(dax, scene):
    """None of the keys orders the objects; each says which of them are the best."""
    options = ["inspect", scene, "--circularity", "0.1..1", "--json", "--count", 5]
    for key in ("score", "convexity", "area"):
        best = labels(dax(*options, "--sort", key).blobs)
        assert labels(dax(*options, "--sort", key, "--order", "none").blobs) == sorted(best) != best


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
    (["--area", "60..200", "--axis-ratio", "0.2..", "--weight", "area=0.5"],
     (0.5 * closeness(120, 60, 200) + closeness(9 / 11, 0.2, 1)) / 1.5),
    (["--weight", "area=0", "--area", "60..200"], None),
    (["--box-angle", "-10..60"], closeness(90, 80, 150)),
    (["--rect-width", "6..20", "--weight", "rect-width=0.3"], closeness(12, 6, 20)),
])
def test_score(dax, tmp_path, parts, options, score):
    """Of the 12 x 10 rectangle."""
    (tmp_path / "parts.png").write_bytes(pictures.png(parts))
    blobs = dax("inspect", "parts.png", *options, "--json").blobs
    blob = next(b for b in blobs if b["area"] == 120)
    assert blob["score"] == (None if score is None else pytest.approx(score, abs=1e-5))

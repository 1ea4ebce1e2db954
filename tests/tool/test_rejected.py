"""Pixels outside, and what became of the objects that were not kept."""

import csv
import io
import random

import pictures
import pytest

# Options in the order of the library's tests, with the feature that each looks at.
CASCADE = [("area", "area"), ("rect-width", "rect_width"), ("rect-height", "rect_height"), ("perimeter", "perimeter"),
           ("circularity", "circularity"), ("short-axis", "short_axis"), ("long-axis", "long_axis"),
           ("axis-ratio", "axis_ratio"), ("rectangularity", "rectangularity"), ("central-bias", "central_bias"),
           ("box-angle", "box_angle")]


def save(tmp_path, name, picture):
    (tmp_path / name).write_bytes(pictures.png(picture))
    return name


@pytest.fixture
def edged(tmp_path):
    """By area: 12 in the upper left corner, 30 across the lower border, 25 inside."""
    picture = pictures.blank(40, 30)
    for x, y, width, height in [(0, 0, 4, 3), (20, 25, 6, 5), (15, 10, 5, 5)]:
        pictures.draw(picture, x, y, width, height)
    return save(tmp_path, "edged.png", picture)


@pytest.fixture
def noise(tmp_path):
    """Some hundred blobs of random shapes."""
    draw = random.Random(7)
    picture = pictures.blank(150, 120)
    for _ in range(420):
        pictures.draw(picture, draw.randrange(145), draw.randrange(115), draw.randrange(1, 9), draw.randrange(1, 7))
    return save(tmp_path, "noise.png", picture)


# Both blobs at the border have 6: the corner one 4 in the first row and one in each of its other two rows.
@pytest.mark.parametrize("limit, areas", [(0, [25]), (5, [25]), (6, [30, 25, 12])])
def test_outside_limit_on_the_border(dax, edged, limit, areas):
    assert [b["area"] for b in dax("inspect", edged, "--outside-limit", limit, "--json").blobs] == areas


def test_outside_mask(dax, tmp_path, edged):
    """The mask replaces the border: it leaves out the two left columns and half of the inner square."""
    mask = pictures.draw(pictures.blank(40, 30, 0), 2, 0, 15, 30, 1)
    pictures.draw(mask, 20, 0, 20, 30, 255)
    save(tmp_path, "mask.png", mask)
    options = ["inspect", edged, "--outside-mask", "mask.png", "--json"]
    outside = {b["area"]: b["outside_pixels"] for b in dax(*options, "--outside-limit", 15).blobs}
    assert outside == {12: 6, 30: 0, 25: 15}
    assert [b["area"] for b in dax(*options, "--outside-limit", 14).blobs] == [30, 12]
    assert [b["area"] for b in dax(*options, "--outside-limit", 5).blobs] == [30]


@pytest.mark.parametrize("mask, status, message", [
    ("none.png", 3, "dax: none.png: cannot be opened: No such file or directory\n"),
    ("small.png", 5, "dax: edged.png: --outside-mask is 40 x 29, the image 40 x 30\n")])
def test_masks_that_do_not_fit(dax, tmp_path, edged, mask, status, message):
    save(tmp_path, "small.png", pictures.blank(40, 29, 255))
    run = dax("inspect", edged, "--outside-limit", 0, "--outside-mask", mask, status=status)
    assert run.err == message


def first_refusal(blob, ranges):
    for option, feature in CASCADE:
        low, high = ranges.get(option, (float("-inf"), float("inf")))
        if not low - 1e-5 <= blob[feature] <= high + 1e-5:
            return option
    return None


def middle(every, feature, share):
    """A range that refuses about that share of the objects at either end."""
    values = sorted(b[feature] for b in every)
    cut = int(share * len(values))
    return values[cut], values[-1 - cut]


@pytest.mark.parametrize("sort", ["area", "perimeter", "circularity", "x"])
@pytest.mark.parametrize("filters", [
    ["area"], ["circularity", "perimeter"], ["box-angle", "central-bias", "rect-height"],
    ["rectangularity", "axis-ratio", "long-axis", "short-axis"], [option for option, _ in CASCADE]])
def test_each_is_refused_by_the_first_range_that_it_misses(dax, noise, filters, sort):
    order = ["--sort", sort, "--order", "asc"]
    every = dax("inspect", noise, *order, "--json").blobs
    assert len(every) > 60
    ranges = {o: middle(every, f, 0.08) for o, f in CASCADE if o in filters}
    options = [a for o, (low, high) in ranges.items() for a in (f"--{o}", f"{low}..{high}")]
    image = dax("inspect", noise, *order, *options, "--rejected", "--json").json["images"][0]
    expected = [(b["label"], first_refusal(b, ranges)) for b in every]
    assert [b["label"] for b in image["blobs"]] == [label for label, by in expected if by is None]
    assert [(b["label"], b["rejected_by"]) for b in image["rejected"]] == [e for e in expected if e[1]]
    assert {b["rejected_by"] for b in image["rejected"]} >= set(filters[:1])
    features = {b["label"]: {**b, "score": None} for b in every}
    for blob in image["rejected"]:
        by = blob.pop("rejected_by")
        assert blob.pop("limit") == "..".join(map(str, ranges[by]))
        assert blob == features[blob["label"]]


def test_the_last_reasons(dax, edged):
    """Outside pixels come last, then the places."""
    options = ["inspect", edged, "--count", 1, "--area", "20..", "--outside-limit", 0, "--rejected"]
    run = dax(*options, "--json")
    rejected = run.json["images"][0]["rejected"]
    assert [(b["area"], b["rejected_by"], b["outside_pixels"]) for b in rejected] == \
        [(30, "outside-pixels", 6), (12, "area", 6)]
    crowded = dax("inspect", edged, "--count", 1, "--area", "20..", "--rejected", "--json").json["images"][0]
    assert [(b["area"], b["rejected_by"]) for b in crowded["rejected"]] == [(25, "count"), (12, "area")]


def test_listings_of_the_rejected_agree(dax, edged):
    options = ["inspect", edged, "--area", "20..", "--outside-limit", 0, "--rejected"]
    rows = list(csv.DictReader(io.StringIO(dax(*options, "--csv").out)))
    assert [(row["number"], float(row["area"]), row["rejected_by"], row["limit"]) for row in rows] == \
        [("1", 25, "", ""), ("", 30, "outside-pixels", "..0"), ("", 12, "area", "20..")]
    table = dax(*options).out.splitlines()
    assert table[3] == "rejected: 2 regions" and table[4].split()[:3] == ["rejected", "by", "x"]
    assert [line.split()[:2] for line in table[5:]] == [["outside-pixels", "..0"], ["area", "20.."]]
    assert "rejected: 0 regions" in dax("inspect", edged, "--rejected").out
    assert "rejected" not in dax("inspect", edged, "--csv").out


def test_rejected_by_class(dax, tmp_path):
    picture = pictures.draw(pictures.draw(pictures.blank(20, 20, 0), 2, 2, 4, 4, 1), 10, 10, 4, 4, 2)
    save(tmp_path, "labels.png", picture)
    options = ["--classes", "--class-area", "2=17..", "--rejected", "--json"]
    image = dax("inspect", "labels.png", *options).json["images"][0]
    assert [b["class"] for b in image["blobs"]] == [1]
    assert [(b["class"], b["rejected_by"]) for b in image["rejected"]] == [(2, "area")]


@pytest.mark.parametrize("regions, status", [(20000, 0), (20001, 5)])
def test_more_regions_than_can_be_told_of(dax, tmp_path, regions, status):
    """Pixels apart from each other, 200 in each row."""
    picture = pictures.blank(401, 2 * 101 + 1, 0)
    for i in range(regions):
        pictures.draw(picture, 1 + 2 * (i % 200), 1 + 2 * (i // 200), 1, 1)
    save(tmp_path, "dots.png", picture)
    run = dax("inspect", "dots.png", "--threshold", "mask", "--area", "2..", "--rejected", "--json", status=status)
    if status:
        assert run.err == "dax: dots.png: --rejected tells of images of at most 20000 regions; this one has 20001\n"
        assert run.json["images"][0]["error"] in run.err
        for option in (["--sort", "score", "--circularity", "0..1"], ["--sort", "holes"], ["--holes", "0.."]):
            run = dax("inspect", "dots.png", "--threshold", "mask", *option, status=status)
            assert "more than 20000 objects" in run.err
    else:
        assert len(run.json["images"][0]["rejected"]) == regions


@pytest.mark.threads
@pytest.mark.parametrize("options", [
    [], ["--area", "5..", "--circularity", "0.3..0.9", "--perimeter", "4..", "--rejected"],
    ["--classes", "--class-area", "200=40..10", "--rejected"], ["--order", "none", "--count", 20]])
def test_threads_share_one_image_without_a_trace(dax, noise, options):
    single = dax("inspect", noise, *options, "--json").out
    assert dax("inspect", noise, *options, "--json", "--threads", 2).out == single
    assert dax("inspect", noise, *options, "--json", "--threads", 0).out == single

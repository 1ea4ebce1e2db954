"""dax caliper: positions and widths of rendered edges, against where they are."""

import math
import statistics

import pictures
import pytest
import scenes

DARK, LIGHT = 40, 200
# A light stripe of 22.5 px, upright and turned by 30 degrees.
UPRIGHT, TURNED = (41.55, 30, 0, 22.5), (40.3, 31.2, 30, 22.5)
PRECISE = 0.03
GREEN = (0.16, 0.90, 0.62)


def save(tmp_path, value, size=(84, 62)):
    picture = scenes.picture(*size, value)
    (tmp_path / "in.png").write_bytes(pictures.png(picture))
    return picture


@pytest.fixture
def stripe(tmp_path):
    def draw(place):
        save(tmp_path, lambda x, y: DARK + (LIGHT - DARK) * scenes.stripe(x, y, *place))
    return draw


def calipers(run):
    return run.json["calipers"]


def test_edges(dax, stripe):
    stripe(UPRIGHT)
    box = ["caliper", "in.png", "--box", "42,30,64,10,0"]
    (caliper,) = calipers(dax(*box, "--json"))
    # Of equal scores, along the profile.
    up, down = sorted(caliper["edges"], key=lambda edge: edge["x"])
    assert [up["polarity"], down["polarity"]] == ["dark-to-light", "light-to-dark"]
    assert [up["x"], down["x"]] == pytest.approx([30.3, 52.8], abs=PRECISE)
    assert [up["position"], down["position"]] == pytest.approx([30.3 - 42, 52.8 - 42], abs=PRECISE)
    assert up["y"] == down["y"] == 30 and up["score"] == pytest.approx(abs(up["peak"]) / 255, rel=1e-5)
    assert caliper["region"] == "box 42,30,64,10,0" and caliper["length"] == 64 and caliper["kernel_length"] == 7
    table = dax(*box).out.splitlines()
    assert table[0] == "in.png: 84 x 62, 1 caliper, 2 edges" and len(table) == 4
    assert table[2].split()[:2] == ["1", "1"] and f"{up['x']:.3f}" in dax(*box).out


def test_widths(dax, stripe):
    stripe(TURNED)
    (caliper,) = calipers(dax("caliper", "in.png", "--box", "40,31,50,9,-150", "--pair", "--half-width", 6, "--json"))
    pair = caliper["pairs"][0]
    assert pair["width"] == pytest.approx(TURNED[3], abs=PRECISE)
    first, second = pair["first"], pair["second"]
    assert math.dist((first["x"], first["y"]), (second["x"], second["y"])) == pytest.approx(pair["width"], abs=1e-4)


def test_many_widths_and_how_they_are_spread(dax, stripe):
    stripe(TURNED)
    row = ["caliper", "in.png", "--box", "46,21,50,5,30", "--repeat", "6,-2,3.5", "--pair", "--count", 1]
    run = dax(*row, "--json")
    widths = [caliper["pairs"][0]["width"] for caliper in calipers(run)]
    assert len(widths) == 6 and len(set(widths)) > 1
    spread = run.json["widths"]
    assert spread == pytest.approx({"count": 6, "mean": statistics.mean(widths), "min": min(widths),
                                    "max": max(widths), "standard_deviation": statistics.stdev(widths)}, rel=1e-4)
    assert dax(*row).out.splitlines()[-1].startswith(f"widths of the best pairs of 6: mean {spread['mean']:.3f}, ")


def test_rhomboids_follow_slanted_edges(dax, tmp_path):
    """Searched along x, the edge runs along the other side: it stays sharp, where in a box it smears."""
    save(tmp_path, lambda x, y: DARK + (LIGHT - DARK) * scenes.beyond(x, y, 40.4, 30, 25))
    run = dax("caliper", "in.png", "--rhomboid", "40,30,40,20,0,115", "--box", "40,30,40,20,0", "--json")
    smeared, sharp = (caliper["edges"][0] for caliper in calipers(run))
    assert (sharp["x"], sharp["y"]) == pytest.approx((40.4, 30), abs=0.06)
    assert abs(sharp["peak"]) > 0.9 * (LIGHT - DARK) > 1.5 * abs(smeared["peak"])


def test_annuli(dax, tmp_path, start=60, sweep=90):
    save(tmp_path, lambda x, y: DARK + (LIGHT - DARK) * scenes.disc(x, y, 42, 31, 20.3))
    run = dax("caliper", "in.png", "--annulus", f"42,31,10,28,{start},{sweep}", "--half-width", 5, "--json")
    (edge,) = calipers(run)[0]["edges"]
    middle = math.radians(start + sweep / 2)
    assert edge["polarity"] == "light-to-dark" and edge["position"] == pytest.approx(20.3 - 19, abs=0.05)
    assert (edge["x"], edge["y"]) == pytest.approx((42 + 20.3 * math.cos(middle), 31 + 20.3 * math.sin(middle)),
                                                   abs=0.05)


def test_search_along_the_height(dax, tmp_path):
    """In a box down the image; in a ring along the arc, on which an edge along a radius lies at its angle."""
    save(tmp_path, lambda x, y: DARK + (LIGHT - DARK) * scenes.beyond(x, y, 42, 33.7, 90))
    run = dax("caliper", "in.png", "--box", "42,30,10,40,0", "--annulus", "42,33.7,18,22,-40,90", "--along-height",
              "--half-width", 4, "--json")
    box, ring = (caliper["edges"][0] for caliper in calipers(run))
    assert (box["x"], box["y"]) == pytest.approx((42, 33.7), abs=PRECISE)
    assert ring["position"] == pytest.approx(20 * math.radians(-5), abs=0.05)
    assert (ring["x"], ring["y"]) == pytest.approx((62, 33.7), abs=0.05)


STAIRS = [(12, 66), (30, 20), (50, 160), (70, 130)]  # from each x on, this grey; 40 before


@pytest.fixture
def stairs(tmp_path):
    def value(x, _):
        steps = zip(STAIRS, [40, *(grey for _, grey in STAIRS)])
        return 40 + sum((grey - before) * (x >= at) for (at, grey), before in steps)
    save(tmp_path, value)


@pytest.mark.parametrize("options, places", [
    ([], [50, 30, 70, 12]), (["--count", 2], [50, 30]), (["--threshold", 35], [50, 30]), (["--threshold", 200], []),
    (["--polarity", "dark-to-light"], [50, 12]), (["--polarity", "light-to-dark"], [30, 70]),
    (["--choose", 1], [12]), (["--choose", 3], [50]), (["--choose", 9], [70]),
    (["--half-width", 7], [50, 30, 70, 12]), (["--half-width", 7, "--threshold", 20], [50])])
def test_which_edges(dax, stairs, options, places):
    run = dax("caliper", "in.png", "--box", "42,30,80,6,0", "--json", *options, status=0 if places else 8)
    (caliper,) = calipers(run)
    assert [edge["x"] for edge in caliper["edges"]] == pytest.approx([x - 0.5 for x in places], abs=0.3)


def test_pairs_are_of_opposite_edges(dax, stairs):
    """Unless a staircase is asked for; the k-th counts along the profile."""
    row = ["caliper", "in.png", "--box", "42,30,80,6,0", "--pair", "--json"]
    ends = lambda run: [(p["first"]["x"], p["second"]["x"]) for p in calipers(run)[0]["pairs"]]
    opposite = ends(dax(*row))
    assert len(opposite) == 4 and len(ends(dax(*row, "--staircase"))) == 6
    expected = [(12, 30), (12, 70), (30, 50), (50, 70)]
    assert sorted(opposite) == [pytest.approx([x - 0.5 for x in pair], abs=0.3) for pair in expected]
    for k in (1, 2, 3, 9):
        pair = expected[min(k, 4) - 1]
        assert ends(dax(*row, "--choose", k)) == [pytest.approx([x - 0.5 for x in pair], abs=0.3)]


def test_pairs_of_score_0_are_none(dax, stripe):
    """More than twice as wide as expected."""
    stripe(UPRIGHT)
    run = dax("caliper", "in.png", "--box", "42,30,64,10,0", "--pair", "--width", "5", "--json", status=8)
    assert calipers(run)[0]["pairs"] == []


def test_fine(dax, tmp_path):
    """The mean of two samplings half a pixel apart takes the error of a blurred edge away."""
    errors = {"": [], "--fine": []}
    for i in range(8):
        at = 40 + i / 8
        save(tmp_path, lambda x, y: DARK + (LIGHT - DARK) / (1 + math.exp(-(x - at) / 0.4)))
        for option, found in errors.items():
            run = dax("caliper", "in.png", "--box", "40,30,30,6,0", "--half-width", 2, "--json", *option.split())
            found.append(abs(calipers(run)[0]["edges"][0]["x"] - at))
    assert max(errors["--fine"]) < max(errors[""]) / 2


def test_narrow_stripes_are_said(dax, stripe):
    stripe((41.55, 30, 0, 4.0))
    box = ["caliper", "in.png", "--box", "42,30,40,6,0", "--pair"]
    assert "1 width is narrower than the kernel" in dax(*box, "--half-width", 3).err
    assert "--half-width 1 would do" in dax(*box, "--half-width", 3, "--json").json["warnings"][0]
    assert dax(*box, "--half-width", 1).err == ""


def test_angles_are_reduced(dax, stripe):
    stripe(UPRIGHT)
    runs = [calipers(dax("caliper", "in.png", "--box", f"42,30,60,10,{angle}", "--json")) for angle in (10, 370, -350)]
    assert runs[0] == runs[1] == runs[2]


def test_expected_widths(dax, stairs, width=39):
    run = dax("caliper", "in.png", "--box", "42,30,80,6,0", "--pair", "--staircase", "--width", width, "--count", 20,
              "--json")
    pairs = calipers(run)[0]["pairs"]
    score = lambda p: math.sqrt(min(p["contrast"] / 510, 1) * max(1 - abs(p["width"] - width) / width, 0))
    assert 1 < len(pairs) <= 6 and [p["score"] for p in pairs] == pytest.approx([score(p) for p in pairs], abs=1e-4)


def test_profiles(dax, stairs):
    run = dax("caliper", "in.png", "--box", "42,30,80,6,0", "--half-width", 1, "--threshold", 7, "--json", "--profiles")
    (caliper,) = calipers(run)
    profile = caliper["profile"]
    assert profile == [value_at(x) for x in range(2, 82)]
    ends = [profile[0], *profile, profile[-1]]
    assert caliper["response"] == [ends[i] - ends[i + 2] for i in range(len(profile))]
    assert caliper["threshold"] == 7
    assert "profile" not in calipers(dax("caliper", "in.png", "--box", "42,30,80,6,0", "--json"))[0]


def value_at(x):
    return [40, *(grey for _, grey in STAIRS)][sum(x >= at for at, _ in STAIRS)]


def colours(content):
    rows, pixel = pictures.read_png(content)
    assert pixel == 3
    return [[tuple(row[i:i + 3]) for i in range(0, len(row), 3)] for row in rows]


def is_like(pixel, colour):
    return all(abs(a - 255 * b) < 40 for a, b in zip(pixel, colour))


def test_overlay_marks_the_edges(dax, stripe, tmp_path):
    stripe(UPRIGHT)
    dax("caliper", "in.png", "--box", "42,30,64,10,0", "--overlay", "out.png", "--overlay-scale", 8)
    row = colours((tmp_path / "out.png").read_bytes())[8 * 30 + 20]
    marked = [x for x, pixel in enumerate(row) if is_like(pixel, GREEN)]
    assert len(row) == 8 * 84 and marked
    assert all(min(abs(x + 0.5 - 8 * (edge + 0.5)) for edge in (30.3, 52.8)) < 2 for x in marked)


def test_overlay_of_a_ring_is_round(dax, tmp_path):
    save(tmp_path, lambda x, y: DARK + (LIGHT - DARK) * scenes.disc(x, y, 42, 31, 27.3))
    dax("caliper", "in.png", "--annulus", "42,31,23,30,0,360", "--overlay", "out.png", "--overlay-scale", 8)
    rows = colours((tmp_path / "out.png").read_bytes())
    radii = [math.hypot((x + 0.5) / 8 - 42.5, (y + 0.5) / 8 - 31.5)
             for y, row in enumerate(rows) for x, pixel in enumerate(row) if is_like(pixel, GREEN)]
    assert len(radii) > 1000 and all(abs(8 * (radius - 27.3)) < 1.6 for radius in radii)


@pytest.mark.parametrize("count, size", [(1, (560, 300)), (2, (1120, 300)), (5, (1120, 900)), (30, (1120, 3600))])
def test_plot_has_a_panel_a_caliper(dax, stripe, tmp_path, count, size):
    stripe(UPRIGHT)
    dax("caliper", "in.png", "--box", "42,5,64,2,0", "--repeat", f"{count},0,1.5", "--pair", "--plot", "plot.png")
    picture = colours((tmp_path / "plot.png").read_bytes())
    assert (len(picture[0]), len(picture)) == size
    # Marks of the two edges cross the first panel from -32 to 31.
    orange = [x for x, pixel in enumerate(picture[60][:560]) if pixel[0] > pixel[2] + 60]
    inner = 560 - 54 - 12
    expected = [54 + inner * (x - 42 + 32) / 63 for x in (30.3, 52.8)]
    assert orange and all(min(abs(x + 0.5 - e) for e in expected) < 2 for x in orange)
    assert all(any(abs(x + 0.5 - e) < 2 for x in orange) for e in expected)


@pytest.mark.parametrize("region", [["--box", "-1,30,20,6,0"], ["--box", "84,30,20,6,0"], ["--box", "40,30,0.5,6,0"],
                                    ["--box", "40,30,20,-6,0"], ["--box", "40,30,1e9,6,0"],
                                    ["--rhomboid", "40,30,20,6,10,10"], ["--annulus", "40,30,20,10,0,40"],
                                    ["--annulus", "40,30,10,20,0,361"]])
def test_impossible_regions(dax, stripe, tmp_path, region):
    stripe(UPRIGHT)
    run = dax("caliper", "in.png", "--box", "40,30,20,6,0", *region, "--overlay", "out.png", status=5)
    kind = region[0][2:]
    assert ("its centre is outside the image" in run.err) == (region[1].startswith(("-1", "84")))
    assert ("SWEEP" in run.err) == (kind == "annulus")
    assert run.err.startswith(f"dax: {kind} ") and "(0x1000002d)" in run.err and run.out == ""
    assert not (tmp_path / "out.png").exists()


def test_regions_may_reach_outside_and_find_nothing(dax, stripe):
    stripe(UPRIGHT)
    run = dax("caliper", "in.png", "--box", "2,2,20,300,45", "--box", "83,61,1,1,0", status=8)
    assert run.err.startswith("dax: in.png: box 2,2,20,300,45: beyond the picture")
    assert run.out == "in.png: 84 x 62, 2 calipers, 0 edges\n"
    assert "widths" not in dax("caliper", "in.png", "--box", "5,5,6,6,0", "--pair", "--json", status=8).json


def test_regions_that_would_take_for_ever_are_refused(dax, stripe):
    stripe(UPRIGHT)
    run = dax("caliper", "in.png", "--box", "40,30,1e7,1e7,0", status=5)
    assert "of 100000000000000 samples; at most 100000000 are taken" in run.err

"""dax line: lines through rendered edges, with and without dirt."""

import math

import pictures
import pytest
import scenes

DARK, LIGHT = 40, 200
CENTRE = (60.4, 44.3)
ROW = ["line", "in.png", "--from", "12,44", "--to", "108,46", "--length", 30]


def draw(tmp_path, degrees=97, dirt=()):
    """An edge whose normal points down, turned a little; dirt are light rectangles over the dark side."""
    def value(x, y):
        if any(left <= x < right and top <= y < bottom for left, top, right, bottom in dirt):
            return LIGHT
        return DARK + (LIGHT - DARK) * scenes.beyond(x, y, *CENTRE, degrees)
    (tmp_path / "in.png").write_bytes(pictures.png(scenes.picture(120, 90, value)))


def check(line, degrees, angle=0.1, offset=0.03):
    """The line is that of the picture; signs may both be turned."""
    assert (line["degrees"] - (degrees - 90)) == pytest.approx(0, abs=angle)
    assert line["a"] ** 2 + line["b"] ** 2 == pytest.approx(1, abs=1e-6)
    assert line["a"] * CENTRE[0] + line["b"] * CENTRE[1] + line["c"] == pytest.approx(0, abs=offset)


@pytest.mark.parametrize("degrees, start, weights", [
    (86, "least-squares", "huber"), (93.3, "all-pairs", "least-squares"), (97, "some-pairs", "tukey")])
def test_lines(dax, tmp_path, degrees, start, weights):
    draw(tmp_path, degrees)
    run = dax(*ROW, "--calipers", 24, "--half-width", 6, "--start", start, "--weights", weights, "--json")
    line = run.json["line"]
    check(line, degrees)
    assert len(line["points"]) == len(run.json["calipers"]) == 24
    on_it = [point["distance"] ** 2 for point in line["points"] if point["inlier"]]
    assert line["rms"] == pytest.approx(math.sqrt(sum(on_it) / len(on_it))) and line["rms"] < 0.03
    for point in line["points"]:
        edge = run.json["calipers"][point["caliper"] - 1]["edges"][0]
        assert edge["polarity"] == "dark-to-light" and (edge["x"], edge["y"]) == (point["x"], point["y"])
        distance = line["a"] * point["x"] + line["b"] * point["y"] + line["c"]
        assert point["distance"] == pytest.approx(distance, abs=1e-4)


def test_dirt_is_left_out(dax, tmp_path):
    draw(tmp_path, dirt=[(20, 25, 34, 40), (76, 26, 90, 36)])
    row = [*ROW, "--calipers", 32, "--breadth", 3, "--half-width", 6, "--choose", 1]
    run = dax(*row, "--reject", 10, "--json")
    check(run.json["line"], 97)
    points = run.json["line"]["points"]
    covered = [20 <= p["x"] < 34 or 76 <= p["x"] < 90 for p in points]
    assert sum(covered) >= 7 and not any(p["inlier"] for p, c in zip(points, covered) if c and abs(p["distance"]) > 3)
    assert sum(p["inlier"] for p in points) >= 20
    assert all(p["weight"] == 0 for p in points if not p["inlier"])
    table = dax(*row, "--reject", 10).out.splitlines()
    on_it = sum(p["inlier"] for p in points)
    assert table[0] == f"in.png: 120 x 90, 32 calipers, {len(points)} edges, {on_it} of them on the line"
    assert [line.split()[-1] for line in table[3:]] == ["yes" if p["inlier"] else "no" for p in points]


def test_direction_of_search(dax, tmp_path):
    """From the left to the right of who walks along: the other way round the polarity changes, the line does not."""
    draw(tmp_path)
    there = dax(*ROW, "--polarity", "dark-to-light", "--json").json["line"]
    back = dax("line", "in.png", "--from", "108,46", "--to", "12,44", "--length", 30, "--polarity", "light-to-dark",
               "--json").json["line"]
    check(there, 97)
    assert len(there["points"]) == len(back["points"]) == 20
    assert abs(back["degrees"] - there["degrees"]) == pytest.approx(180, abs=0.05)
    assert back["a"] * CENTRE[0] + back["b"] * CENTRE[1] + back["c"] == pytest.approx(0, abs=0.05)


@pytest.mark.parametrize("options", [["--polarity", "light-to-dark"], ["--tolerance", 3], ["--threshold", 900]])
def test_no_line(dax, tmp_path, options):
    draw(tmp_path)
    run = dax(*ROW, *options, "--overlay", "out.png", status=8)
    assert len(pictures.read_png((tmp_path / "out.png").read_bytes())[0]) > 90  # the calipers tell why
    assert run.out == "" and run.err.startswith("dax: line") and run.err.count("\n") == 1
    assert ("within --tolerance" in run.err) == (options[0] == "--tolerance")
    told = dax(*ROW, *options, "--json", status=8).json
    assert told["line"] is None and len(told["calipers"]) == 20


def test_tolerance(dax, tmp_path):
    draw(tmp_path)
    line = dax(*ROW, "--json").json["line"]
    assert all(p["inlier"] for p in line["points"]) and line["rms_all"] == line["rms"]
    check(dax(*ROW, "--tolerance", 7, "--half-width", 6, "--json").json["line"], 97)


def test_pictures(dax, tmp_path):
    draw(tmp_path)
    dax(*ROW, "--calipers", 6, "--overlay", "out.png", "--overlay-scale", 4, "--plot", "plot.png")
    rows, _ = pictures.read_png((tmp_path / "out.png").read_bytes())
    orange = [(x, y) for y, row in enumerate(rows) for x in range(len(row) // 3)
              if all(abs(a - b) < 60 for a, b in zip(row[3 * x:3 * x + 3], (255, 184, 51)))]
    # The line crosses the whole picture where it should.
    slope = math.tan(math.radians(7))
    hidden = set(range(2, 478)) - {x for x, _ in orange}  # below the crosses at the edges
    assert all(min(abs((x + 0.5) / 4 - 0.5 - (20 + 16 * i)) for i in range(6)) < 4 for x in hidden)
    assert all(abs((y + 0.5) / 4 - 0.5 - CENTRE[1] - slope * ((x + 0.5) / 4 - 0.5 - CENTRE[0])) < 1 for x, y in orange)
    plot, _ = pictures.read_png((tmp_path / "plot.png").read_bytes())
    assert (len(plot[0]) // 3, len(plot)) == (1120, 900)


def test_rejects_that_leave_no_line(dax, tmp_path):
    draw(tmp_path)
    assert "--reject 19 leaves less than 2 of 20 edges" in dax(*ROW, "--reject", 19, status=5).err
    assert dax(*ROW, "--reject", 18, "--json").json["line"]["points"]
    outside = dax("line", "in.png", "--from=-50,40", "--to", "60,45", status=5).err
    assert "its centre is outside the image" in outside and "0x1000002d" in outside

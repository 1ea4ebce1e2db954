"""Range images: what a file holds, pictures and clouds of it, and what is refused."""

import json
import struct

import clouds
import pictures
import pytest
from clouds import single

ROWS = [[-32768, -1, 0, None], [1, 300, 32767, 7], [None, 5, 5, -9]]
SCALE, OFFSET = (0.5, 0.25, 0.125), (-1.0, 2.0, 10.0)


@pytest.fixture
def sample(tmp_path):
    (tmp_path / "in.range").write_bytes(clouds.range_file(ROWS, scale=SCALE, offset=OFFSET))


def points_of(rows):
    return [(x * SCALE[0] + OFFSET[0], y * SCALE[1] + OFFSET[1], v * SCALE[2] + OFFSET[2])
            for y, row in enumerate(rows) for x, v in enumerate(row) if v is not None]


def read_grey(path):
    rows, pixel = pictures.read_png(path.read_bytes())
    return [list(struct.unpack(f">{len(row) // pixel}{'BH'[pixel - 1]}", row)) for row in rows]


def picture_of(greys):
    return [[(grey,) * 3 for grey in row] for row in greys]


def test_info(dax, tmp_path, sample):
    lines = dict(line.split(maxsplit=1) for line in dax("range", "info", "in.range").out.splitlines())
    assert lines == {"size": "4 x 3", "scale": "0.5, 0.25, 0.125", "offset": "-1, 2, 10",
                     "valid": "10 of 12 pixels (83.3 %), by a mask", "values": "-32768 to 32767",
                     "heights": "-4086 to 4105.875"}
    told = dax("range", "info", "in.range", "--json").json
    assert told.items() >= {"file": "in.range", "command": "dax range info in.range --json",
                            "date": "1970-01-01T00:00:00Z"}.items()
    assert told.items() >= {"width": 4, "height": 3, "type": 0, "scale": list(SCALE), "offset": list(OFFSET),
                            "mask": True,
                    "valid": 10, "values": [-32768, 32767]}.items()


def test_info_of_colour_and_cameras(dax, tmp_path):
    colour = clouds.chunk(clouds.COLOUR, struct.pack("<4I", 0, 2, 1, 201) + bytes(6))
    cameras = [500, 501, 320, 240, *[0] * 5, 600, 601, 300, 200, *[0] * 5, *[float(i % 5 == 0) for i in range(16)], 0]
    calibration = clouds.chunk(clouds.CALIBRATION, struct.pack("<35d", *cameras))
    (tmp_path / "in.range").write_bytes(clouds.range_file([[None, None]], more=colour + calibration))
    told = json.loads(dax("range", "info", "in.range", "--json").out)
    assert told["colour"] == {"width": 2, "height": 1, "format": 201} and told["valid"] == 0 and "values" not in told
    assert told["cameras"] == {"depth": {"fx": 500, "fy": 501, "cx": 320, "cy": 240},
                               "colour": {"fx": 600, "fy": 601, "cx": 300, "cy": 200}}
    assert "camera    colour: fx 600.000" in dax("range", "info", "in.range").out


@pytest.mark.parametrize("lacks, changes", [
    ("its mask has 11 bytes, of 12 for 4 x 3 pixels", {"mask": bytes(11)}),
    ("its colour has 21 bytes, of 22 for 2 x 1 pixels",
     {"more": clouds.chunk(clouds.COLOUR, struct.pack("<4I", 0, 2, 1, 201) + bytes(5))}),
    ("its colour has 9 bytes, of 16 for its head", {"more": clouds.chunk(clouds.COLOUR, bytes(9))})])
def test_short_payloads_are_refused(dax, tmp_path, lacks, changes):
    (tmp_path / "in.range").write_bytes(clouds.range_file(ROWS, **changes))
    assert dax("range", "info", "in.range", status=3).err == f"dax: in.range: is damaged: {lacks}\n"


@pytest.mark.parametrize("name", ["heights.png", "heights.tif"])
def test_pictures_there_and_back(dax, tmp_path, sample, name):
    dax("range", "convert", "in.range", name, "--mask", "valid.png")
    if name.endswith(".png"):
        assert read_grey(tmp_path / name) == [[0 if v is None else v + 32768 for v in row] for row in ROWS]
    assert read_grey(tmp_path / "valid.png") == [[0 if v is None else 255 for v in row] for row in ROWS]
    dax("range", "convert", name, "back.range", "--mask", "valid.png", "--scale", "0.5,0.25,0.125",
        "--offset", "-1,2,10")
    assert clouds.read_range((tmp_path / "back.range").read_bytes()) == (ROWS, SCALE, OFFSET)


def test_picture_of_two_levels(dax, tmp_path):
    """No encoder makes a smaller depth of it."""
    rows = [[-32767, 32767], [32767, -32767]]
    (tmp_path / "in.range").write_bytes(clouds.range_file(rows))
    for name in ("out.png", "out.tif"):
        dax("range", "convert", "in.range", name)
        dax("range", "convert", name, "back.range")
        assert clouds.read_range((tmp_path / "back.range").read_bytes())[0] == rows
    assert read_grey(tmp_path / "out.png") == [[1, 65535], [65535, 1]]


@pytest.mark.parametrize("write", [pictures.png16, pictures.tiff_big_endian16, pictures.pgm16])
def test_black_is_invalid_without_a_mask(dax, tmp_path, write):
    (tmp_path / "in.tif").write_bytes(write(picture_of([[0, 1, 1000, 32767]])))
    dax("range", "convert", "in.tif", "out.range", "--bias", "0")
    assert clouds.read_range((tmp_path / "out.range").read_bytes()) == ([[None, 1, 1000, 32767]], (1, 1, 1), (0, 0, 0))


@pytest.mark.parametrize("name, options", [("out.ply", []), ("out.pcd", []), ("out.ply", ["--ascii"]),
                                           ("out.pcd", ["--ascii"])])
def test_clouds_there_and_back(dax, tmp_path, sample, name, options):
    dax("range", "convert", "in.range", name, *options)
    assert clouds.read_cloud((tmp_path / name).read_bytes()) == points_of(ROWS)
    dax("range", "convert", name, "back.range", "--scale", "0.5,0.25,0.125", "--offset", "-1,2,10")
    assert clouds.read_range((tmp_path / "back.range").read_bytes()) == (ROWS, SCALE, OFFSET)


@pytest.mark.parametrize("name, offset, scale", [
    ("out.pcd", OFFSET, SCALE), ("out.ply", (0.0, 0.0, 0.0), (0.1, 0.1, 0.003)),
    ("out.ply", (3e6, -4e5, 128.0), SCALE)])
def test_lattice_of_a_cloud(dax, tmp_path, name, offset, scale):
    """Without a header the same pixels come back, wherever the image lies."""
    rows = [[(7 * x + 3 * y) % 11 - 300 if (x + y) % 5 else None for x in range(40)] for y in range(30)]
    rows[0][0] = rows[29][39] = 9
    (tmp_path / "in.range").write_bytes(clouds.range_file(rows, scale=scale, offset=offset))
    dax("range", "convert", "in.range", name)
    assert dax("range", "convert", name, "back.range").err == ""
    back, step, start = clouds.read_range((tmp_path / "back.range").read_bytes())
    assert step == pytest.approx(tuple(scale), rel=1e-5) and start[:2] == pytest.approx(offset[:2])
    heights = [[None if v is None else v * s[2] + o[2] for row in image for v in row]
               for image, s, o in ((rows, scale, offset), (back, step, start))]
    assert heights[1] == pytest.approx(heights[0], abs=1e-4)


def test_cloud_from_above(dax, tmp_path):
    """The highest point of a pixel stays, what lies outside is left out."""
    points = [(0.4, 0, 1.0), (-0.4, 0.3, 3.0), (0, -0.4, 2.0), (2.0, 1.0, 4.0), (-0.6, 0, 9.0), (1.0, 1.0, 1e9)]
    (tmp_path / "in.ply").write_bytes(clouds.ply(points))
    run = dax("range", "convert", "in.ply", "out.range", "--scale", "1,1,0.5")
    assert run.err == "".join(f"dax: in.ply: 2 of 6 points {what}\n" for what in (
        "hidden by higher ones of their pixel", "outside the range image"))
    assert clouds.read_range((tmp_path / "out.range").read_bytes())[0] == [[6, None, None], [None, None, 8]]


def test_cloud_without_a_header(dax, tmp_path):
    """Points on no lattice are resampled, which is said."""
    points = [(x * 0.1 + 0.01 * (y % 3), y * 0.1 + 0.003 * (x % 7) ** 0.5, x * y * 0.01) for y in range(20)
              for x in range(30)]
    (tmp_path / "in.pcd").write_bytes(clouds.pcd(points, "binary"))
    assert "no lattice of columns, rows and values: resampled" in dax("range", "convert", "in.pcd", "out.range").err
    rows, scale, offset = clouds.read_range((tmp_path / "out.range").read_bytes())
    found = [(x * scale[0] + offset[0], y * scale[1] + offset[1], v * scale[2] + offset[2])
             for y, row in enumerate(rows) for x, v in enumerate(row) if v is not None]
    assert len(found) > 400
    for x, y, z in found:
        near = min(points, key=lambda p: (p[0] - x) ** 2 + (p[1] - y) ** 2)
        assert abs(near[0] - x) < 0.06 and abs(near[1] - y) < 0.06 and abs(near[2] - z) < 0.06 * 3 + 1e-3


def test_render(dax, tmp_path):
    rows = [[x if y else None for x in range(200)] for y in range(3)]
    (tmp_path / "in.range").write_bytes(clouds.range_file(rows))
    dax("range", "render", "in.range", "out.png", "--limits", "0..199")
    picture, pixel = pictures.read_png((tmp_path / "out.png").read_bytes())
    at = lambda x, y: tuple(picture[y][3 * x : 3 * x + 3])
    assert (len(picture[0]) // pixel, pixel) == (200, 3) and len(picture) > 3
    assert at(0, 1) == (68, 1, 84) and at(199, 2) == (253, 231, 37) and len({at(x, 0) for x in range(200)}) == 1
    brightness = [sum(w * c for w, c in zip((299, 587, 114), at(x, 1))) for x in range(200)]
    assert all(b < a + 1500 for b, a in zip(brightness, brightness[1:])) and at(100, 1) == at(100, 2)
    narrow = dax("range", "render", "in.range", "narrow.png", "--limits", "50..60") and \
        pictures.read_png((tmp_path / "narrow.png").read_bytes())[0]
    assert narrow[1][: 3 * 50] == bytes((68, 1, 84)) * 50 and narrow[1][3 * 61 : 600] == bytes((253, 231, 37)) * 139


def test_despeckle(dax, tmp_path):
    """Patches up to the size go, larger ones and the header stay."""
    rows = [[0] * 12 for _ in range(8)]
    rows[0][11] = None
    for x, y in [(1, 1), (2, 1), (1, 2), (6, 2), (7, 2), (8, 2), (6, 3)]:
        rows[y][x] = 500
    (tmp_path / "in.range").write_bytes(clouds.range_file(rows, scale=SCALE, offset=OFFSET))
    run = dax("range", "despeckle", "in.range", "out.range", "--size", "3", "--step", "500")
    assert run.out == "3 of 96 pixels cleared\n"
    for x, y in [(1, 1), (2, 1), (1, 2)]:
        rows[y][x] = None
    assert clouds.read_range((tmp_path / "out.range").read_bytes()) == (rows, SCALE, OFFSET)
    assert dax("range", "despeckle", "in.range", "out.range", "--size", "3", "--step", "501").out.startswith("0 of")


def test_scene(dax, tmp_path):
    dax("range", "scene", "a.range", "--size", "320x200")
    dax("range", "scene", "b.range", "--size", "320x200")
    dax("range", "scene", "c.range", "--size", "320x200", "--seed", "2")
    a, b, c = ((tmp_path / f"{name}.range").read_bytes() for name in "abc")
    assert a == b != c
    rows, scale, _ = clouds.read_range(a)
    valid = [v for row in rows for v in row if v is not None]
    assert (len(rows[0]), len(rows)) == (320, 200) and scale[0] == single(0.1)
    assert 0.85 < len(valid) / 64000 < 0.99 and max(valid) > 1000
    assert int(dax("range", "despeckle", "a.range", "d.range", "--size", "40", "--step", "300").out.split()[0]) > 50


def test_refusals(dax, tmp_path, sample):
    (tmp_path / "wide.png").write_bytes(pictures.png16(picture_of([[40000, 9]])))
    (tmp_path / "small.png").write_bytes(pictures.png16(picture_of([[9]])))
    (tmp_path / "eight.png").write_bytes(pictures.png(picture_of([[9]])))
    (tmp_path / "far.ply").write_bytes(clouds.ply([(0.0, 0.0, 0.0), (1e9, 1e9, 0.0)]))
    (tmp_path / "none.range").write_bytes(clouds.range_file([[None]]))
    for status, arguments, message in [
            (5, ["convert", "in.range", "out.png", "--bias", "0"], "outside 0..65535"),
            (5, ["convert", "wide.png", "out.range", "--bias", "0"], "outside -32768..32767"),
            (5, ["convert", "wide.png", "out.range", "--mask", "small.png"], "differ in size"),
            (3, ["convert", "eight.png", "out.range"], "16 bits"),
            (5, ["convert", "far.ply", "out.range", "--scale", "1,1,1"], "larger than"),
            (5, ["convert", "far.ply", "out.range", "--offset", "2e9,2e9,0"], "no point"),
            (5, ["convert", "none.range", "out.ply"], "no valid pixels"),
            (2, ["render", "in.range", "out.png", "--limits", "1e9.."], "holds none of the usual heights"),
            (3, ["render", "eight.png", "out.png"], "eight.png: is no range file, or damaged\n")]:
        run = dax("range", *arguments, status=status)
        assert message in run.err and run.err.count("\n") == 1 and run.out == ""
        assert not (tmp_path / "out.range").exists() and not (tmp_path / "out.ply").exists()

"""Thresholds that are found: each method reaches the library, alone, with all in one picture, and in inspections."""

import pictures
import pytest

LOCAL = ("mean", "mean-variance", "niblack", "sauvola", "wolf", "bernsen", "gauss")
GLOBAL = ("otsu", "kapur", "yen", "li", "kittler", "isodata", "intermodes", "triangle")
DOTS = [(x, y) for x in range(6, 60, 12) for y in range(6, 36, 12)]


def grey(x, y):
    """Dark dots on light that falls off to the left, and is a little uneven."""
    near = any(abs(x - u) <= 1 and abs(y - v) <= 1 for u, v in DOTS)
    return (60 + 3 * x + (x * 7 + y * 13) % 3) // (2 if near else 1)


@pytest.fixture
def page(tmp_path):
    rows = [[(min(grey(x, y), 255) * 257,) * 3 for x in range(64)] for y in range(42)]
    (tmp_path / "in.pgm").write_bytes(pictures.pgm(rows))


def mask(path):
    return path.read_bytes().split(b"\n", 3)[3]


@pytest.mark.parametrize("method", [*GLOBAL, *LOCAL])
def test_methods(dax, page, tmp_path, method):
    text = dax("threshold", "in.pgm", "out.pgm", "--method", method, "--dark").out
    pixels = mask(tmp_path / "out.pgm")
    assert text.startswith(method) and set(pixels) <= {0, 255} and 0 < pixels.count(255) < 64 * 42
    if method in GLOBAL:
        level = int(text.split()[1])
        assert all((pixels[64 * y + x] == 255) == (grey(x, y) <= level) for x in range(64) for y in range(42))


def test_numbers(dax, page, tmp_path):
    dax("threshold", "in.pgm", "out.pgm", "--method", "percentile:25")
    assert abs(mask(tmp_path / "out.pgm").count(0) / (64 * 42) - 0.25) < 0.02
    counts = []
    for text in ("mean:9,5", "mean:9,40", "sauvola:9,0.1", "sauvola:9,0.5", "bernsen:9,15", "bernsen:9,100",
                 "gauss:9,5", "gauss:9,40"):
        dax("threshold", "in.pgm", "out.pgm", "--method", text, "--dark")
        counts.append(mask(tmp_path / "out.pgm").count(255))
    assert counts[0] > counts[1] and counts[2] > counts[3] and counts[4] > counts[5] and counts[6] > counts[7]


def test_levels_that_part_nothing_are_told(dax, tmp_path):
    (tmp_path / "flat.pgm").write_bytes(b"P5 4 1 255 aaaa")
    (tmp_path / "ramp.pgm").write_bytes(b"P5 8 1 255 " + bytes(range(40, 48)))
    for name, method, note in [("flat.pgm", "li", "one grey value"), ("ramp.pgm", "intermodes", "otsu's")]:
        assert note in dax("threshold", name, "out.pgm", "--method", method).err
        assert note in dax("threshold", name, "all.png", "--all").out
        assert note in dax("inspect", name, "--threshold", method).err


def test_more_than_8_bits_count_as_they_are(dax, tmp_path):
    """Neighbouring values are told apart, however bright the brightest is."""
    rows = [[1000 + (x > 3) for x in range(9)] for _ in range(4)]
    rows[0][8] = 4000
    (tmp_path / "in.pgm").write_bytes(b"P5\n9 4\n4095\n" + b"".join(v.to_bytes(2, "big") for row in rows for v in row))
    assert dax("threshold", "in.pgm", "out.pgm", "--method", "percentile:40").out == "percentile 1000\n"
    assert mask(tmp_path / "out.pgm") == bytes([0] * 4 + [255] * 5) * 4
    rows = [[1000 + x % 3 + 3000 * (x > 5) for x in range(12)]] * 5
    pixels = b"".join(v.to_bytes(2, "big") for row in rows for v in row)
    (tmp_path / "in.pgm").write_bytes(b"P5\n12 5\n65535\n" + pixels)
    run = dax("threshold", "in.pgm", "out.pgm", "--method", "intermodes")
    assert "otsu" not in run.err and 1100 < int(run.out.split()[1]) < 3900


def test_all_in_one_picture(dax, page, tmp_path):
    text = dax("threshold", "in.pgm", "all.png", "--all", "--dark").out
    assert [line.split()[0] for line in text.splitlines()] == [*GLOBAL, *LOCAL]
    assert (tmp_path / "all.png").read_bytes().startswith(b"\x89PNG")


@pytest.mark.parametrize("method", ["mean:9,20", "sauvola:9,0.2", "bernsen:9,30", "gauss:9,20"])
def test_inspection_finds_all_dots(dax, page, method):
    result = dax("inspect", "in.pgm", "--threshold", method, "--dark", "--area", "7..11", "--json").json
    image = result["images"][0] if "images" in result else result
    assert image["threshold"] == {"method": method.split(":")[0], "low": None, "high": None}
    assert len(image["blobs"]) == len(DOTS)


REFUSED = ["nick", "sauvola:", "sauvola:0", "wolf:9,x", "li:3", "percentile", "percentile:101"]


@pytest.mark.parametrize("method", REFUSED)
def test_refusals(dax, page, method):
    assert "--method" in dax("threshold", "in.pgm", "out.pgm", "--method", method, status=2).err
    assert "--threshold" in dax("inspect", "in.pgm", "--threshold", method, status=2).err

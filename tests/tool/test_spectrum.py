"""dax spectrum: a wave is found, and taken out."""

import math

import pictures
import pytest


def waves(depth=8):
    """A ramp, and on it crests 8 pixels apart along x and 12 along y."""

    def level(x, y):
        return 100 + x / 2 + 20 * math.cos(2 * math.pi * x / 8) + 12 * math.cos(2 * math.pi * (y / 12 + 0.2))

    scale = 257 if depth == 16 else 256
    picture = [[(int(level(x, y) * scale),) * 3 for x in range(96)] for y in range(72)]
    return pictures.pgm16(picture) if depth == 16 else pictures.pgm(picture)


def read(path):
    """Width, height and values of a PGM."""
    data = path.read_bytes()
    _, width, height, depth, rest = data.split(maxsplit=4) if b" " in data else data.split(b"\n", 4)
    size = 2 if int(depth) > 255 else 1
    pixels = data[len(data) - int(width) * int(height) * size :]
    values = [int.from_bytes(pixels[i : i + size], "big") for i in range(0, len(pixels), size)]
    return int(width), int(height), values


@pytest.mark.parametrize("depth", [8, 16])
def test_waves(dax, tmp_path, depth):
    (tmp_path / "in.pgm").write_bytes(waves(depth))
    listed = dax("spectrum", "in.pgm", "out.pgm", "--peaks", "2", "--window").out.splitlines()[1:]
    assert [line.split()[:2] for line in listed] == [["36", "36"], ["48", "30"]]
    assert [float(line.split()[2]) for line in listed] == [8, 12]
    width, height, picture = read(tmp_path / "out.pgm")
    assert (width, height) == (96, 72) and picture[36 * 96 + 36] == picture[36 * 96 + 60] > picture[36 * 96 + 33]
    notches = ["--notch", "36,36,1", "--notch", "48,30,1"]
    dax("spectrum", "in.pgm", "out.pgm", *notches, "--filtered", "clean.pgm")
    _, _, clean = read(tmp_path / "clean.pgm")
    unit = 257 if depth == 16 else 1
    errors = [abs(clean[y * 96 + x] / unit - (100 + x / 2)) for y in range(72) for x in range(24, 72)]
    assert max(errors) < 3


@pytest.mark.parametrize(
    "arguments, words",
    [
        (["--notch", "1,2"], "--filtered"),
        (["--filtered", "x.png"], "--notch"),
        (["--notch", "1", "--filtered", "x.png"], "COLUMN,ROW"),
        (["--notch", "1,2,0", "--filtered", "x.png"], "width"),
        (["--notch", "96,2", "--filtered", "x.png"], "outside"),
        (["--peaks", "0"], "--peaks"),
        (["--notch", "1,2", "--filtered", "in.pgm"], "in.pgm"),
    ],
)
def test_what_is_refused(dax, tmp_path, arguments, words):
    (tmp_path / "in.pgm").write_bytes(waves())
    assert words in dax("spectrum", "in.pgm", "out.png", *arguments, status=2).err

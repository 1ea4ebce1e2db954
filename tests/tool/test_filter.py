"""Filters: that each option calls its filter, the picture of differences, and what is refused."""

import re

import pictures
import pytest

WIDTH, HEIGHT = 23, 17


def noise():
    """Grey values that look random; the same in every run."""
    state, rows = 12345, []
    for _ in range(HEIGHT):
        row = []
        for _ in range(WIDTH):
            state = (state * 1103515245 + 12345) % 2**31
            row.append(state >> 16 & 0xFF)
        rows.append(row)
    return rows


def write(path, rows):
    path.write_bytes(pictures.pgm([[(grey * 257,) * 3 for grey in row] for row in rows]))


def read(path):
    content = path.read_bytes()
    if path.suffix == ".png":
        rows, pixel = pictures.read_png(content)
        assert pixel == 1
        return [list(row) for row in rows]
    magic, sides, _, pixels = content.split(b"\n", 3)
    width, height = map(int, sides.split())
    assert magic == b"P5" and len(pixels) == width * height
    return [list(pixels[y * width : (y + 1) * width]) for y in range(height)]


@pytest.fixture
def image(tmp_path):
    rows = noise()
    write(tmp_path / "in.pgm", rows)
    return rows


# A grey value of 90 in the middle of black, and what the options make of its surroundings (five pixels of its row).
DOT = {"--mean 3x1": [0, 30, 30, 30, 0], "--mean-inside 5x1": [18] * 5, "--box 1": [0, 10, 10, 10, 0],
       "--median3": [0] * 5, "--median5": [0] * 5, "--gauss 0.5": [0, 8, 56, 8, 0], "--sobel": [0, 45, 0, 45, 0],
       "--unsharp 0.5,1": [0, 0, 124, 0, 0], "--canny 100,300": [0] * 5,
       "--guided 1,0": [0, 0, 90, 0, 0], "--bilateral 2,1,10": [0, 0, 90, 0, 0],
       "--max-line 2,0": [0, 90, 90, 90, 0], "--min-line 0,2": [0] * 5, "--h-maxima 20": [0, 0, 70, 0, 0],
       "--h-minima 20": [20, 20, 90, 20, 20], "--clear-border": [0, 0, 90, 0, 0], "--fill-holes": [0, 0, 90, 0, 0],
       "--thin": [0, 0, 255, 0, 0], "--prune 9": [0, 0, 255, 0, 0], "--erode 1": [0, 0, 255, 0, 0],
       "--dilate 1": [0, 0, 255, 255, 0], "--distance": [0, 0, 1, 0, 0], "--split 1": [0, 0, 255, 0, 0],
       "--regional-maxima": [0, 0, 255, 0, 0], "--regional-minima": [255, 255, 0, 255, 255],
       "--open-whole 3x3": [0] * 5, "--close-whole 3x3": [0, 0, 90, 0, 0], "--deviation 3x3": [0, 28, 28, 28, 0],
       "--invert": [255, 255, 165, 255, 255], "--threshold 90": [0, 0, 255, 0, 0],
       "--threshold-dark 90": [255, 255, 0, 255, 255], "--threshold otsu": [0, 0, 255, 0, 0],
       "--hysteresis 20,89": [0, 0, 255, 0, 0], "--hysteresis 20,90": [0] * 5,
       # One after the other, in this order, some of them twice.
       "--max 3x3 --min 3x3": [0, 0, 90, 0, 0], "--min 3x3 --max 3x3": [0] * 5, "--max 3x1 --max 3x1": [90] * 5,
       "--thin --thin": [0, 0, 255, 0, 0],
       "--threshold 50 --dilate 1 --invert": [255, 255, 0, 0, 255],
       "--threshold 50 --distance --max 3x3 --threshold 1": [0, 255, 255, 255, 0]}


@pytest.mark.parametrize("options", DOT)
@pytest.mark.parametrize("result", ["out.png", "out.pgm"])
def test_filters(dax, tmp_path, options, result):
    write(tmp_path / "in.pgm", [[90 if (x, y) == (4, 4) else 0 for x in range(9)] for y in range(9)])
    assert dax("filter", "in.pgm", result, *options.split()).out == ""
    assert read(tmp_path / result)[4][2:7] == DOT[options]


# Rows of 5 5 9 5 1 5 8 8 8.
MORPHOLOGY = {"--min": [5, 5, 5, 1, 1, 1, 5, 8, 8], "--max": [5, 9, 9, 9, 5, 8, 8, 8, 8],
              "--open": [5, 5, 5, 5, 1, 5, 8, 8, 8], "--close": [5, 5, 9, 5, 5, 5, 8, 8, 8],
              "--gradient": [0, 4, 4, 8, 4, 7, 3, 0, 0], "--top-hat": [0, 0, 4, 0, 0, 0, 0, 0, 0],
              "--black-hat": [0, 0, 0, 0, 4, 0, 0, 0, 0]}


@pytest.mark.parametrize("option", MORPHOLOGY)
def test_morphology(dax, tmp_path, option):
    rows = [[5, 5, 9, 5, 1, 5, 8, 8, 8]] * 3
    write(tmp_path / "in.pgm", rows)
    (tmp_path / "deep.pgm").write_bytes(pictures.pgm16([[(v,) * 3 for v in row] for row in rows]))
    dax("filter", "in.pgm", "out.pgm", option, "3x2")
    assert read(tmp_path / "out.pgm") == [MORPHOLOGY[option]] * 3
    dax("filter", "deep.pgm", "out.pgm", option, "3x2")
    assert list((tmp_path / "out.pgm").read_bytes()[-54::2]) == [0] * 27
    assert list((tmp_path / "out.pgm").read_bytes()[-53::2]) == MORPHOLOGY[option] * 3


BORDERS = {"replicate:2": [1, 1, 1, 2, 3, 3, 3], "mirror:2": [3, 2, 1, 2, 3, 2, 1],
           "symmetric:2": [2, 1, 1, 2, 3, 3, 2],
           "circular:2": [2, 3, 1, 2, 3, 1, 2], "constant:2": [0, 0, 1, 2, 3, 0, 0],
           "constant:2:99": [99, 99, 1, 2, 3, 99, 99]}


@pytest.mark.parametrize("border", BORDERS)
def test_borders(dax, tmp_path, border):
    write(tmp_path / "in.pgm", [[1, 2, 3]] * 3)
    dax("filter", "in.pgm", "out.pgm", "--border", border)
    rows = read(tmp_path / "out.pgm")
    assert len(rows) == 7 and rows[3] == BORDERS[border]


def rectangle_mask(width, height, rectangle):
    left, top, columns, rows = rectangle
    return [[255 if left <= x < left + columns and top <= y < top + rows else 0 for x in range(width)]
            for y in range(height)]


def test_erosion(dax, tmp_path):
    """Runs lose their right end, columns their lower end, once an iteration."""
    write(tmp_path / "in.pgm", rectangle_mask(20, 15, (4, 3, 9, 8)))
    for iterations, size in [(1, (8, 7)), (3, (6, 5)), (1000, (1, 1))]:
        dax("filter", "in.pgm", "out.png", "--erode", iterations)
        assert read(tmp_path / "out.png") == rectangle_mask(20, 15, (4, 3, *size))


def test_comparison(dax, tmp_path, image):
    run = dax("filter", "in.pgm", "out.pgm", "--median3", "--compare", "change.png")
    after = read(tmp_path / "out.pgm")
    changes = [[abs(a - b) for a, b in zip(*rows)] for rows in zip(image, after)]
    flat = sum(changes, [])
    share, average, largest = map(float, re.fullmatch(
        r"([\d.]+) % of the pixels changed, by ([\d.]+) grey levels on average and (\d+) at most\n", run.out).groups())
    assert (share, average, largest) == (round(100 * sum(c > 0 for c in flat) / len(flat), 1),
                                      pytest.approx(sum(flat) / len(flat), abs=0.005), max(flat))
    assert read(tmp_path / "change.png") == [[int(255 * c / largest + 0.5) for c in row] for row in changes]


def test_nothing_changed(dax, tmp_path, image):
    run = dax("filter", "in.pgm", "out.pgm", "--mean", "1x1", "--compare", "change.pgm")
    assert run.out.startswith("0.0 % of the pixels changed")
    assert read(tmp_path / "change.pgm") == [[0] * WIDTH] * HEIGHT


def test_result_may_take_the_place_of_the_image(dax, tmp_path, image):
    dax("filter", "in.pgm", "in.pgm", "--median3")
    result = read(tmp_path / "in.pgm")
    assert result != image and len(result) == HEIGHT


@pytest.mark.parametrize("options, step", [(["--mean", "24x3"], "mean"), (["--mean-inside", "3x18"], "mean"),
                                           (["--box", "9"], "box sum")])
def test_windows_beyond_the_image(dax, image, options, step):
    run = dax("filter", "in.pgm", "out.png", *options, status=5)
    assert re.fullmatch(rf"dax: in.pgm: {step} refused: .*param.* \(0x10000019\)\n", run.err)


def test_masks_are_told_from_pictures(dax, tmp_path, image):
    """By what filters before leave, and else by the picture itself."""
    run = dax("filter", "in.pgm", "out.png", "--thin", status=5)
    assert run.err.startswith("dax: in.pgm: --thin takes a mask") and "--threshold" in run.err
    assert dax("filter", "in.pgm", "out.png", "--invert", "--split", 1, status=5).err.count("\n") == 1
    run = dax("filter", "in.pgm", "out.png", "--median3", "--gauss", 1, "--max", "3x3", "--thin", status=2)
    assert "--thin takes a mask, and --gauss leaves grey values" in run.err
    run = dax("filter", "in.pgm", "out.png", "--canny", "9,30", "--fill-holes", "--threshold", "otsu", status=2)
    assert "--threshold takes grey values, and --canny leaves a mask" in run.err
    dax("filter", "in.pgm", "mask.png", "--threshold", "otsu")
    dax("filter", "mask.png", "out.png", "--thin", "--distance")
    assert {v for row in read(tmp_path / "out.png") for v in row} == {0, 1}


def domains(dax, name):
    return len(dax("inspect", name, "--threshold", "mask", "--json").blobs)


def in_disc(x, y, radius):
    return x * x + y * y <= radius * radius


def test_splitting(dax, tmp_path):
    """Two discs that overlap are cut where they meet; a disc with a ragged edge stays one."""
    write(tmp_path / "two.pgm", [[200 * (in_disc(x - 20, y - 20, 15) or in_disc(x - 44, y - 20, 13))
                                  for x in range(64)] for y in range(41)])
    assert domains(dax, "two.pgm") == 1
    dax("filter", "two.pgm", "cut.pgm", "--split", 2)
    assert domains(dax, "cut.pgm") == 2
    before, after = (sum(v > 0 for row in read(tmp_path / name) for v in row) for name in ("two.pgm", "cut.pgm"))
    assert before - 40 < after < before
    dax("filter", "two.pgm", "whole.pgm", "--split", 12)
    assert domains(dax, "whole.pgm") == 1
    dax("filter", "two.pgm", "full.pgm", "--threshold", 0, "--split", 2)
    assert read(tmp_path / "full.pgm") == [[255] * 64] * 41


def test_blobs_stand_out(dax, tmp_path):
    """Of all sizes alike: bright above the middle, dark below it, flat ground is the middle."""
    write(tmp_path / "in.pgm", [[100 + 90 * in_disc(x - 30, y - 30, 8) - 90 * in_disc(x - 90, y - 30, 8)
                                 for x in range(140)] for y in range(61)])
    dax("filter", "in.pgm", "out.pgm", "--log", 5.6)
    row = read(tmp_path / "out.pgm")[30]
    # (2 / e) of the contrast, two thirds of it.
    assert abs(row[30] - (128 + 90 * 0.4905)) < 2.5 and abs(row[90] - (128 - 90 * 0.4905)) < 2.5 and row[139] == 128
    dax("filter", "in.pgm", "slow.pgm", "--gauss", 3)
    dax("filter", "in.pgm", "fast.pgm", "--gauss-recursive", 3)
    slow, fast = (sum(read(tmp_path / name), []) for name in ("slow.pgm", "fast.pgm"))
    assert all(abs(a - b) <= 1 for a, b in zip(slow, fast))


def test_chains_keep_16_bits_up_to_the_first_mask(dax, tmp_path):
    rows = [[1000 + 9 * x + 60 * (abs(x - 12) < 2) for x in range(24)] for _ in range(9)]
    pixels = b"".join(v.to_bytes(2, "big") for row in rows for v in row)
    (tmp_path / "deep.pgm").write_bytes(b"P5\n24 9\n4095\n" + pixels)
    for method in ("mean:9,2", "otsu", "sauvola:9,0.01"):
        dax("threshold", "deep.pgm", "one.pgm", "--method", method)
        assert dax("filter", "deep.pgm", "two.pgm", "--max", "1x3", "--threshold", method).err == ""
        assert read(tmp_path / "one.pgm") == read(tmp_path / "two.pgm")
    dax("filter", "deep.pgm", "out.pgm", "--threshold", 1100, "--thin", "--compare", "d.png", "--steps", "steps.png")
    assert {v for row in read(tmp_path / "out.pgm") for v in row} == {0, 255}
    assert (tmp_path / "steps.png").read_bytes().startswith(b"\x89PNG")

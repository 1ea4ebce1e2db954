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
       "--thin": [0, 0, 255, 0, 0], "--prune 9": [0, 0, 255, 0, 0]}


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

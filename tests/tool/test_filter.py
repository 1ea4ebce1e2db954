"""Filters: every pixel of the result by its definition, the picture of differences, and what is refused."""

import re
import statistics

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


def symmetric(i, n):
    i %= 2 * n
    return min(i, 2 * n - 1 - i)


def window(rows, x, y, width, height, column, row):
    return [rows[row(j)][column(i)] for j in range(y - height // 2, y - height // 2 + height) if row(j) is not None
            for i in range(x - width // 2, x - width // 2 + width) if column(i) is not None]


def by_window(rows, width, height, column, row, value):
    return [[value(window(rows, x, y, width, height, column, row)) for x in range(WIDTH)] for y in range(HEIGHT)]


def inside(n):
    return lambda i: i if 0 <= i < n else None


def clamped(n):
    return lambda i: min(max(i, 0), n - 1)


def nearest(share):
    return int(share + 0.5)


FILTERS = {
    ("--mean", "5x3"): lambda rows: by_window(rows, 5, 3, lambda i: symmetric(i, WIDTH), lambda j: symmetric(j, HEIGHT),
                                              lambda w: nearest(sum(w) / 15)),
    ("--mean-inside", "4x5"): lambda rows: by_window(rows, 4, 5, inside(WIDTH), inside(HEIGHT),
                                                     lambda w: nearest(sum(w) / len(w))),
    ("--box", "2"): lambda rows: by_window(rows, 5, 5, inside(WIDTH), inside(HEIGHT), lambda w: nearest(sum(w) / 25)),
    ("--median3",): lambda rows: by_window(rows, 3, 3, clamped(WIDTH), clamped(HEIGHT), statistics.median),
}


@pytest.mark.parametrize("options", FILTERS)
@pytest.mark.parametrize("result", ["out.png", "out.pgm"])
def test_filters(dax, tmp_path, image, options, result):
    assert dax("filter", "in.pgm", result, *options).out == ""
    assert read(tmp_path / result) == FILTERS[options](image)


BORDERS = {
    "replicate:7": lambda i, n: min(max(i, 0), n - 1),
    "mirror:7": lambda i, n: min(i % (2 * n - 2), -i % (2 * n - 2)),
    "symmetric:7": symmetric,
    "circular:7": lambda i, n: i % n,
    "constant:7": lambda i, n: i if 0 <= i < n else None,
    "constant:7:99": lambda i, n: i if 0 <= i < n else None,
}


@pytest.mark.parametrize("border", BORDERS)
def test_borders(dax, tmp_path, image, border):
    dax("filter", "in.pgm", "out.pgm", "--border", border)
    grey, index = 99 if border.endswith("99") else 0, BORDERS[border]
    lines = [index(y, HEIGHT) for y in range(-7, HEIGHT + 7)]
    columns = [index(x, WIDTH) for x in range(-7, WIDTH + 7)]
    assert read(tmp_path / "out.pgm") == [[grey if x is None or y is None else image[y][x] for x in columns]
                                          for y in lines]


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
    share, average, most = map(float, re.fullmatch(
        r"([\d.]+) % of the pixels changed, by ([\d.]+) grey levels on average and (\d+) at most\n", run.out).groups())
    assert (share, average, most) == (round(100 * sum(c > 0 for c in flat) / len(flat), 1),
                                      pytest.approx(sum(flat) / len(flat), abs=0.005), max(flat))
    assert read(tmp_path / "change.png") == [[nearest(255 * c / most) for c in row] for row in changes]


def test_nothing_changed(dax, tmp_path, image):
    run = dax("filter", "in.pgm", "out.pgm", "--mean", "1x1", "--compare", "change.pgm")
    assert run.out.startswith("0.0 % of the pixels changed")
    assert read(tmp_path / "change.pgm") == [[0] * WIDTH] * HEIGHT


def test_result_may_take_the_place_of_the_image(dax, tmp_path, image):
    dax("filter", "in.pgm", "in.pgm", "--median3")
    assert read(tmp_path / "in.pgm") == FILTERS[("--median3",)](image)


@pytest.mark.parametrize("options", [
    [], ["--mean", "3x3", "--median3"], ["--mean", "3"], ["--mean", "0x3"], ["--mean", "256x3"], ["--mean", "3x3x3"],
    ["--mean-inside", "3x-1"], ["--box", "0"], ["--box", "1001"], ["--erode", "0"], ["--erode", "1.5"],
    ["--border", "mirror"], ["--border", "mirror:-1"], ["--border", "none:3"], ["--border", "mirror:3:4"],
    ["--border", "constant:3:256"], ["--border", "mirror:3", "--compare", "change.png"],
    ["--median3", "--compare", "change.gif"], ["--median3", "--compare", "in.pgm"],
    ["--median3", "--compare", "out.png"]])
def test_usage_errors(dax, tmp_path, image, options):
    run = dax("filter", "in.pgm", "out.png", *options, status=2)
    assert run.out == "" and run.err.startswith("dax: ") and run.err.count("\n") == 1
    assert [path.name for path in tmp_path.iterdir()] == ["in.pgm"]


@pytest.mark.parametrize("options, step", [(["--mean", "24x3"], "mean"), (["--mean-inside", "3x18"], "mean"),
                                           (["--box", "9"], "box sum")])
def test_windows_beyond_the_image(dax, image, options, step):
    run = dax("filter", "in.pgm", "out.png", *options, status=5)
    assert re.fullmatch(rf"dax: in.pgm: {step} refused: .*param.* \(0x10000019\)\n", run.err)


def test_files_that_fail(dax, tmp_path, image):
    assert "none.png: cannot be opened" in dax("filter", "none.png", "out.png", "--median3", status=3).err
    assert "none/out.png: cannot be written" in dax("filter", "in.pgm", "none/out.png", "--median3", status=4).err
    assert "OUT: out.jpg does not end in .png or .pgm" in dax("filter", "in.pgm", "out.jpg", "--median3", status=2).err


def test_help_tells_every_filter(dax):
    text = dax("filter", "--help").out
    assert all(option in text for option in ["--mean ", "--mean-inside", "--box", "--median3", "--erode", "--border",
                                             "--compare", "constant:N:GREY"])
    assert all(f"\n  {status}  " in text for status in range(9)) and max(map(len, text.splitlines())) <= 100

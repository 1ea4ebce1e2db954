"""What two images differ in."""
import math
import random
import struct

import pictures
import pytest


def grey(values, width):
    return [[(257 * v,) * 3 for v in values[i : i + width]] for i in range(0, len(values), width)]


@pytest.fixture
def compared(dax, tmp_path):
    def run(first, second, *arguments, status=0):
        (tmp_path / "a.pnm").write_bytes(first)
        (tmp_path / "b.pnm").write_bytes(second)
        return dax("compare", "a.pnm", "b.pnm", *arguments, status=status)
    return run


def test_figures(compared):
    a = [10, 20, 30, 40, 50, 60]
    b = [10, 23, 30, 36, 50, 60]
    found = compared(pictures.pgm(grey(a, 3)), pictures.pgm(grey(b, 3)), "--json", "--tolerance", 3).json
    assert (found["identical"], found["differing"], found["over_tolerance"]) == (False, 2, 1)
    assert (found["max_difference"], found["max_difference_at"]) == (4, [0, 1])
    assert found["max_difference_values"] == [40, 36] and found["mean_difference"] == pytest.approx(-1 / 6)
    assert found["mean_absolute_difference"] == pytest.approx(7 / 6)
    assert found["mean_square_difference"] == pytest.approx(25 / 6)
    assert found["psnr"] == pytest.approx(10 * math.log10(255**2 * 6 / 25)) and found["ssim"] is None
    out = compared(pictures.pgm16(grey(a, 3)), pictures.pgm16(grey(a, 3))).out
    assert "are identical" in out and "infinite" in out and "white 65535" in out


def ssim(a, b, white):
    """Of one window, by the definition."""
    g = [math.exp(-((i - 5) ** 2) / 4.5) for i in range(11)]
    w = [x * y / sum(g) ** 2 for y in g for x in g]
    ma, mb = (sum(x * y for x, y in zip(w, v)) for v in (a, b))
    va, vb, vab = (sum(k * (x - mx) * (y - my) for k, x, y in zip(w, u, v))
                   for u, mx, v, my in ((a, ma, a, ma), (b, mb, b, mb), (a, ma, b, mb)))
    c1, c2 = (0.01 * white) ** 2, (0.03 * white) ** 2
    return (2 * ma * mb + c1) * (2 * vab + c2) / ((ma**2 + mb**2 + c1) * (va + vb + c2))


def test_ssim_is_that_of_the_paper(compared):
    draw = random.Random(1)
    a = [draw.randrange(256) for _ in range(12 * 13)]
    b = [v * 3 // 4 + draw.randrange(60) for v in a]
    window = lambda v, x, y: [v[12 * (y + j) + x + i] for j in range(11) for i in range(11)]
    mean = sum(ssim(window(a, x, y), window(b, x, y), 255) for y in range(3) for x in range(2)) / 6
    run = compared(pictures.pgm(grey(a, 12)), pictures.pgm(grey(b, 12)), "--json", "--min-ssim", mean + 1e-6, status=8)
    assert run.json["ssim"] == pytest.approx(mean, abs=1e-12) and "SSIM is" in run.err


def test_colours_and_the_picture(compared, tmp_path):
    a = [[(0, 0, 0)] * 3]
    b = [[(0, 0, 0), (257, 0, 257 * 4), (0, 257 * 2, 0)]]
    run = compared(pictures.ppm(a), pictures.ppm(b), "--json", "--out", "d.pgm", "--max-difference", 3, status=8)
    assert (run.json["differing"], run.json["max_difference_at"], run.json["max_difference_channel"]) == (2, [1, 0], 2)
    assert "white is 4, black -4" in run.err and "the largest difference is 4, above 3" in run.err
    assert (tmp_path / "d.pgm").read_bytes()[-3:] == bytes([128, 255, 192])
    compared(pictures.ppm(b), pictures.ppm(a), "--out", "d.pgm", "--extent", 8, "--max-difference", 4)
    assert (tmp_path / "d.pgm").read_bytes()[-3:] == bytes([128, 64, 96])


def pfm(*values):
    return b"Pf\n%d 1\n-1\n" % len(values) + struct.pack(f"<{len(values)}f", *values)


def test_no_numbers(compared):
    nan = math.nan
    run = compared(pfm(1, nan, nan, 2), pfm(1.5, nan, 3, 2), "--json")
    assert (run.json["left_out"], run.json["differing"]) == ({"pixels": 2, "in_one_only": 1}, 2)
    assert run.json["mean_square_difference"] == 0.125 and run.json["ssim"] is None
    assert "left out 2 pixels that are no finite numbers, 1 of them in one image only" in run.err
    for limit in ("--max-difference", "--min-psnr"):
        compared(pfm(1, nan), pfm(1, 3), limit, 9, status=8)
        compared(pfm(1, nan), pfm(1, nan), limit, 9)
    assert "no pixel is a finite number" in compared(pfm(nan), pfm(1), status=5).err


def test_limits_are_compared_as_they_are_told(compared):
    a, b = pfm(0, 0.2), pfm(0.1, 0.3)
    run = compared(a, b, "--max-difference", 0.10000001, "--tolerance", 0.1, "--min-psnr", 20, "--json")
    assert (run.json["tolerance"], run.json["over_tolerance"], run.json["max_difference"]) == (0.1, 1, 0.10000001)
    assert "is 0.10000001, above 0.1" in compared(a, b, "--max-difference", 0.1, status=8).err
    assert "is 20 dB, below 20.00001" in compared(a, b, "--min-psnr", 20.00001, status=8).err
    assert "SSIM: none below 11 x 11 pixels" in compared(a, b, "--min-ssim", 0, status=8).err


def test_refused(compared):
    a, wide = pictures.pgm(grey([1, 2], 1)), pictures.pgm(grey([1, 2], 2))
    for first, second, message in [
        (a, wide, "1 x 2 pixels of 1 channel and values up to 255 against 2 x 1"),
        (a, pictures.ppm(grey([1, 2], 1)), "--grey or --channels"),
        (a, pictures.pgm16(grey([1, 2], 1)), "up to 65535: dax convert --bits gives both the same range")]:
        assert message in compared(first, second, status=5).err
    assert "--out: a.pnm" in compared(a, a, "--out", "a.pnm", status=2).err
    assert "--tolerance" in compared(a, a, "--tolerance", "nan", status=2).err

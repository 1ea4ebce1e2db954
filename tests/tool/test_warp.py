"""Images of another size, turned, straightened, unrolled."""
import random
import re
import struct

import pictures
import pytest

GREYS = [[10, 20, 30], [40, 50, 60]]


def grey(rows):
    return pictures.pgm([[(257 * v,) * 3 for v in row] for row in rows])


@pytest.fixture
def warp(dax, tmp_path):
    """The rows of a grey picture after steps; one that is given by rows, or the bytes of its file."""
    def run(picture, *steps):
        (tmp_path / "in.pnm").write_bytes(picture if isinstance(picture, bytes) else grey(picture))
        dax("warp", "in.pnm", "out.pnm", *steps)
        magic, size, depth, data = (tmp_path / "out.pnm").read_bytes().split(b"\n", 3)
        width, height = map(int, size.split())
        form = "B" if depth == b"255" else "H"
        values = struct.unpack(f">{len(data) // struct.calcsize(form)}{form}", data)
        row = len(values) // height
        assert row == width * (3 if magic == b"P6" else 1)
        return [list(values[i : i + row]) for i in range(0, len(values), row)]
    return run


@pytest.fixture
def warp_floats(dax, tmp_path):
    def run(rows, *steps):
        values = [v for row in reversed(rows) for v in row]
        (tmp_path / "in.pfm").write_bytes(b"Pf\n%d %d\n-1\n" % (len(rows[0]), len(rows)) +
                                          struct.pack(f"<{len(values)}f", *values))
        dax("warp", "in.pfm", "out.pfm", *steps)
        _, size, _, data = (tmp_path / "out.pfm").read_bytes().split(b"\n", 3)
        width, height = map(int, size.split())
        values = struct.unpack(f"<{width * height}f", data)
        return [list(values[i : i + width]) for i in range(0, len(values), width)][::-1]
    return run


@pytest.mark.parametrize("steps,expected", [
    ("--rotate 90", [[40, 10], [50, 20], [60, 30]]), ("--rotate=-90", [[30, 60], [20, 50], [10, 40]]),
    ("--rotate 540", [[60, 50, 40], [30, 20, 10]]), ("--mirror columns", [[30, 20, 10], [60, 50, 40]]),
    ("--mirror rows", [[40, 50, 60], [10, 20, 30]]), ("--mirror both", [[60, 50, 40], [30, 20, 10]]),
    ("--mirror diagonal", [[10, 40], [20, 50], [30, 60]]), ("--rotate 90 --rotate 270", GREYS),
    ("--rotate 90 --mirror rows", [[60, 30], [50, 20], [40, 10]]), ("--rotate 180:keep", [[60, 50, 40], [30, 20, 10]]),
    ("--shift 1,0", [[0, 10, 20], [0, 40, 50]]), ("--shift 1,0 --border replicate", [[10, 10, 20], [40, 40, 50]]),
    ("--shift=-0.5,0 --border 70", [[15, 25, 50], [45, 55, 65]]),
    ("--resize 2 --interpolation nearest", [[10, 10, 20, 20, 30, 30]] * 2 + [[40, 40, 50, 50, 60, 60]] * 2),
    ("--resize 1x --interpolation area", [[35]]), ("--resize x1 --interpolation area", [[28, 42]]),
    ("--resize 3x1", [[25, 35, 45]]), ("--affine 0,-1,1,1,0,0:2x3", [[40, 10], [50, 20], [60, 30]]),
    ("--affine 0,-1,0,1,0,0:fit", [[40, 10], [50, 20], [60, 30]]),
    ("--perspective 0,0,2,0,2,1,0,1", GREYS), ("--perspective 2,0,2,1,0,1,0,0", [[30, 60], [20, 50], [10, 40]]),
    ("--perspective 0,0,1,0,1,1,0,1:3x2", [[10, 15, 20], [40, 45, 50]]),
])
def test_grey(warp, steps, expected):
    assert warp(GREYS, *steps.split()) == expected


def test_types_and_channels(warp, warp_floats):
    colours = pictures.ppm([[(257, 514, 771), (1028, 1285, 1542)]])
    assert warp(colours, "--rotate", 90, "--resize", "2x", "--interpolation", "nearest") == \
        [[1, 2, 3] * 2] * 2 + [[4, 5, 6] * 2] * 2
    deep = b"P5\n4 1\n4095\n" + struct.pack(">4H", 4095, 4095, 0, 0)
    assert max(warp(deep, "--resize", 4, "--interpolation", "cubic")[0]) == 4095
    ramp = [[0.5 * x for x in range(40)]] * 3
    moved = warp_floats(ramp, "--shift", "0.015625,0")
    assert moved[1][1:] == pytest.approx([0.5 * (x - 0.015625) for x in range(1, 40)], abs=1e-5)
    smooth = warp_floats(ramp, "--resize", 0.25)
    assert smooth[0][3:7] == pytest.approx([0.5 * (4 * x + 1.5) for x in range(3, 7)], abs=1e-5)


def test_any_angle_and_rings(warp, dax, tmp_path):
    picture = [[200 if 20 <= x < 40 and 12 <= y < 28 else 20 for x in range(60)] for y in range(40)]
    turned = warp(picture, "--rotate", 30, "--border", 20)
    assert (len(turned[0]), len(turned)) == (72, 65)
    # The block is as large as before, and the turned one reaches lower on its right side.
    assert sum(v - 20 for row in turned for v in row) == pytest.approx(180 * 20 * 16, rel=2e-3)
    assert turned[42][40] == 200 and turned[42][26] == 20
    kept = warp(picture, "--rotate", "30:keep", "--rotate=-30:keep", "--border", "replicate")
    assert (len(kept[0]), len(kept)) == (60, 40)
    assert sum(abs(a - b) for p, q in zip(kept, picture) for a, b in zip(p, q)) < 0.15 * 180 * 320
    rings = [[6 * round(((x - 30) ** 2 + (y - 20) ** 2) ** 0.5) for x in range(61)] for y in range(41)]
    strip = warp(rings, "--polar", "30,20,8,14", "--interpolation", "nearest")
    assert (len(strip[0]), len(strip)) == (88, 6)
    assert all(abs(v - 6 * (8.5 + y)) <= 8 for y, row in enumerate(strip) for v in row)
    (tmp_path / "strip.pgm").write_bytes(grey(strip))
    dax("warp", "strip.pgm", "back.pgm", "--polar-back", "30,20,8,14:61x41")
    back = (tmp_path / "back.pgm").read_bytes()[-61 * 41:]
    assert back[20 * 61 + 30] == 0 and abs(back[20 * 61 + 41] - 66) <= 8
    quarter = warp(rings, "--polar", "30,20,4,16,-90,90:20x12:log")
    assert (len(quarter[0]), len(quarter)) == (20, 12) and quarter[0][5] < 36 < 78 < quarter[11][5]


def test_align(dax, tmp_path):
    chance = random.Random(4)
    coarse = [[chance.randrange(30, 220) for _ in range(40)] for _ in range(40)]
    scene = [[coarse[y // 3][x // 3] for x in range(110)] for y in range(110)]
    (tmp_path / "scene.pgm").write_bytes(grey(scene))
    (tmp_path / "a.pgm").write_bytes(grey([row[10:100] for row in scene[10:100]]))
    (tmp_path / "b.pgm").write_bytes(grey([row[6:96] for row in scene[15:105]]))
    run = dax("warp", "b.pgm", "c.pgm", "--align", "a.pgm", "--interpolation", "nearest")
    found = re.match(r"dax: b\.pgm: aligned, was off by (\S+), (\S+) pixels \(peak (\S+), the next (\S+)\)\n", run.err)
    assert [float(each) for each in found.groups()[:2]] == pytest.approx([4, -5], abs=0.03)
    rows = [(tmp_path / f"{name}.pgm").read_bytes()[-8100:] for name in "ac"]
    assert all(a[90 * y : 90 * y + 86] == c[90 * y : 90 * y + 86] for a, c in [rows] for y in range(5, 90))
    dax("warp", "a.pgm", "turned.pgm", "--affine", "0.95,-0.5,24,0.5,0.95,-17")
    run = dax("warp", "turned.pgm", "back.png", "--align-turned", "a.pgm", "--interpolation", "cubic")
    angle, scale = re.search(r"was turned by (\S+) degrees, scaled by (\S+), off", run.err).groups()
    assert float(angle) == pytest.approx(27.76, abs=0.4) and float(scale) == pytest.approx(1.0735, rel=0.01)
    (tmp_path / "other.pgm").write_bytes(grey([[chance.randrange(250) for _ in range(90)] for _ in range(90)]))
    said = dax("warp", "other.pgm", "d.pgm", "--align", "a.pgm", status=None).err
    assert re.search("no clear match|finds nothing", said)
    (tmp_path / "flat.pgm").write_bytes(grey([[9] * 90] * 90))
    for line, status, message in [
        ("flat.pgm --align a.pgm", 5, "flat.pgm: --align finds nothing: the images are flat, or show too little alike"),
        ("scene.pgm --align a.pgm", 5, "takes images of one size, not of 110 x 110 and 90 x 90: --resize before it"),
        ("a.pgm --resize 9x9 --align a.pgm", 5, "--align takes images of one size"),
        ("a.pgm --align none.pgm", 3, "cannot be opened"),
    ]:
        source, *steps = line.split()
        assert message in dax("warp", source, "out.png", *steps, status=status).err, line


def test_several(dax, tmp_path):
    (tmp_path / "in").mkdir()
    for name in ("a", "b"):
        (tmp_path / f"in/{name}.pgm").write_bytes(grey(GREYS))
    dax("warp", "in", "out", "--format", "png", "--resize", 2)
    assert sorted(each.name for each in (tmp_path / "out").iterdir()) == ["a.png", "b.png"]


def test_refusals_tell_what_helps(dax, tmp_path):
    (tmp_path / "in.pgm").write_bytes(grey(GREYS))
    (tmp_path / "alpha.png").write_bytes(pictures.png_rgba(pictures.dots([(9, 9, 9)])))
    for line, status, message in [
        ("in.pgm out.png", 2, "warp: how? (dax warp --help tells the steps)"),
        ("in.pgm out.png --resize 0", 2, '--resize: "0" is not WxH, Wx, xH, or a factor of 1/256..256'),
        ("in.pgm out.png --resize x", 2, "Wx, xH"), ("in.pgm out.png --resize 0x5", 2, "Wx, xH"),
        ("in.pgm out.png --rotate 10:all", 2, "DEGREES:keep"), ("in.pgm out.png --rotate nan", 2, "DEGREES"),
        ("in.pgm out.png --mirror x", 2, "columns, rows, both or diagonal"),
        ("in.pgm out.png --perspective 0,0,2,1,2,0,0,1", 2, "of a convex quadrangle"),
        ("in.pgm out.png --affine 1,2,0,2,4,0", 2, "with A E - B D not 0"),
        ("in.pgm out.png --polar 1,1,3,3", 2, "R0 and R1 different"),
        ("in.pgm out.png --polar 1,1,0,3:log", 2, "R0 and R1 different"),
        ("in.pgm out.png --polar-back 1,1,0,3", 2, "with the size of the picture"),
        ("in.pgm out.png --resize 2 --interpolation best", 2, '"best" is none of nearest, linear'),
        ("in.pgm out.png --resize 2 --border grey", 2, "nor a number, the value outside"),
        ("in.pgm out.png --rotate 5 --interpolation area", 5, "--rotate does not take --interpolation area, --resize"),
        ("in.pgm out.png --resize 1000x1", 5, "--resize takes factors of 1/256 to 256 a side"),
        ("in.pgm out.png --affine 1,0,0,0,1,0:20000x20000", 5, "results have at most 268 million"),
        ("alpha.png out.png --rotate 90", 5, "--rotate takes images of 1 or 3 channels, not of 4: dax convert --chan"),
        ("in.pgm out.pfm --rotate 90", 4, "PFM holds floats: dax convert --bits 32f"),
        ("none.pgm out.png --rotate 90", 3, "cannot be opened"), ("in.pgm in.pgm --rotate 90", 2, "is the input"),
    ]:
        assert message in dax("warp", *line.split(), status=status).err, line
        assert not list(tmp_path.glob("out.*")), line

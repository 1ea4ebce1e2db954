"""Clouds: neighbours, normals and thinning against their definitions, pictures, threads, and what is refused."""

import csv
import json
import math
import random

import clouds
import pictures
import pytest
from clouds import single

pytestmark = pytest.mark.threads  # one a processor, when nothing is said


def scattered(count, seed=1):
    rng = random.Random(seed)
    return [tuple(single(rng.uniform(-5, 5)) for _ in range(3)) for _ in range(count)]


def sphere(count, radius=10.0):
    """Points spread evenly (a golden spiral)."""
    points = []
    for i in range(count):
        z = 1 - (2 * i + 1) / count
        r, angle = math.sqrt(1 - z * z), math.pi * (1 + math.sqrt(5)) * i
        points.append(tuple(single(radius * c) for c in (r * math.cos(angle), r * math.sin(angle), z)))
    return points


def write(tmp_path, points, name="in.ply"):
    make = clouds.ply if name.endswith(".ply") else clouds.pcd
    (tmp_path / name).write_bytes(make(points, "binary_little_endian" if name.endswith(".ply") else "binary"))


def read(tmp_path, name):
    return clouds.read_cloud((tmp_path / name).read_bytes())


FORMATS = {
    "ply text": lambda p: clouds.ply(p), "ply binary": lambda p: clouds.ply(p, "binary_little_endian"),
    "ply crlf": lambda p: clouds.ply(p, eol="\r\n"),
    "ply faces": lambda p: clouds.ply(p, more="element face 1\nproperty list uchar int vertex_indices") + b"3 0 1 2\n",
    "ply doubles": lambda p: clouds.ply([(1, *q, 7) for q in p], "binary_little_endian", ("red", "x", "y", "z", "w"),
                                        types=["uchar", "double", "double", "double", "short"]),
    "ply order": lambda p: clouds.ply([(z, x, y) for x, y, z in p], names=("z", "x", "y")),
    "pcd text": lambda p: clouds.pcd(p), "pcd binary": lambda p: clouds.pcd(p, "binary"),
    "pcd grid": lambda p: clouds.pcd(p, "binary", sides=(len(p) // 2, 2)),
    "pcd fields": lambda p: clouds.pcd([(*q, 0.5) for q in p], "binary", ("x", "y", "z", "rgb")),
}


@pytest.mark.parametrize("form", FORMATS)
def test_formats(dax, tmp_path, form):
    points = scattered(10)
    (tmp_path / "in").write_bytes(FORMATS[form](points))
    for result in ("out.ply", "out.pcd"):
        dax("cloud", "normals", "in", result, "--k", "4")
        rows = read(tmp_path, result)
        assert [row[:3] for row in rows] == points
        assert {row[7:] for row in rows} == {EXTRAS.get(form, ())}


EXTRAS = {"ply doubles": (1, 7), "pcd fields": (0.5,)}  # columns that pass through
FAR = (450000.0, 5600000.0, 300.0)


@pytest.mark.parametrize("name", ["in.ply", "in.pcd"])
def test_far_from_zero(dax, tmp_path, name):
    """Results are those of the same points near 0, and written so that nothing is lost."""
    near = [(i / 16 + j / 512, j / 16, 0.3 * (i / 16 + j / 512)) for i in range(16) for j in range(16)]
    far = [tuple(c + o for c, o in zip(point, FAR)) for point in near]
    write(tmp_path, near, "near.ply")
    content = clouds.ply(far, names=("x", "y", "z"), types=["double"] * 3) if name == "in.ply" else \
        clouds.pcd(far)
    (tmp_path / name).write_bytes(content.replace(b"SIZE 4 4 4", b"SIZE 8 8 8"))
    for command, *options in (["normals"], ["downsample", "--leaf", "0.25"]):
        dax("cloud", command, "near.ply", "a.ply", *options)
        run = dax("cloud", command, name, "b" + name[2:], *options)
        assert run.err == f"dax: {name}: far from 0: computed from the origin 450000, 5600000, 300\n"
        for one, other in zip(read(tmp_path, "a.ply"), read(tmp_path, "b" + name[2:]), strict=True):
            assert [c - o for c, o in zip(other, FAR)] == pytest.approx(one[:3], abs=1e-6)
            assert [abs(c) for c in other[3:]] == pytest.approx([abs(c) for c in one[3:]], abs=1e-5)
    one, other = (json.loads(stats(dax, tmp_path, n)) for n in ("near.ply", name))
    assert (one["origin"], other["origin"]) == ([0, 0, 0], list(FAR)) and other["spacing"] == one["spacing"]
    assert other["min"] == list(FAR) and "origin    450000, 5600000, 300" in dax("cloud", "stats", name).out


def test_what_is_left_out_is_said(dax, tmp_path):
    points = [(*point, 0.0, 1) for point in scattered(6)]
    (tmp_path / "in.ply").write_bytes(clouds.ply(points, names=("x", "y", "z", "nx", "red"), more="element face 0"))
    assert dax("cloud", "normals", "in.ply", "out.ply").err == "dax: in.ply: left out: nx, face\n"
    assert dax("cloud", "downsample", "out.ply", "thin.ply", "--leaf", "9").err == \
        "dax: out.ply: left out: normals, red\n"


def test_grid_of_an_organised_cloud(dax, tmp_path):
    """It stays, with NaN where no point is."""
    nan = (float("nan"),) * 3
    points = scattered(6)
    (tmp_path / "in.pcd").write_bytes(clouds.pcd([*points[:2], nan, *points[2:], nan], "binary", sides=(4, 2)))
    dax("cloud", "normals", "in.pcd", "out.pcd", "--k", "4")
    assert b"WIDTH 4\nHEIGHT 2\n" in (tmp_path / "out.pcd").read_bytes()
    rows = read(tmp_path, "out.pcd")
    assert [row[:3] for row in rows if row[0] == row[0]] == points and rows[2][0] != rows[2][0] != rows[7][0]


def test_normals_are_read_and_written(dax, tmp_path):
    points = sphere(300)
    write(tmp_path, points)
    dax("cloud", "normals", "in.ply", "a.ply")
    dax("cloud", "normals", "in.ply", "b.pcd", "--ascii")
    assert read(tmp_path, "a.ply") == [tuple(map(single, row)) for row in read(tmp_path, "b.pcd")]
    assert json.loads(stats(dax, tmp_path, "b.pcd"))["normals"] and json.loads(stats(dax, tmp_path, "a.ply"))["normals"]


def stats(dax, tmp_path, name):
    dax("cloud", "stats", name, "stats.json")
    return (tmp_path / "stats.json").read_text()


def test_nan_points_are_left_out(dax, tmp_path):
    good, nan, inf = scattered(6), float("nan"), float("inf")
    points = [good[0], (nan, 0.0, 0.0), *good[1:4], (0.0, -inf, 1.0), *good[4:], (nan, nan, nan)]
    for form in (clouds.ply(points), clouds.ply(points, "binary_little_endian"), clouds.pcd(points, "binary")):
        (tmp_path / "in").write_bytes(form)
        run = dax("cloud", "knn", "in", "out.csv", "--k", "1")
        assert run.err == "dax: in: 3 points without finite coordinates left out\n"
        assert len((tmp_path / "out.csv").read_text().splitlines()) == 1 + len(good)
        told = json.loads(stats(dax, tmp_path, "in"))
        assert (told["points"], told["dropped"]) == (6, 3)


def test_neighbours(dax, tmp_path):
    points = scattered(200)
    write(tmp_path, points)
    dax("cloud", "knn", "in.ply", "out.csv", "--k", 7)
    rows = list(csv.DictReader((tmp_path / "out.csv").open()))
    assert [(int(r["point"]), int(r["rank"])) for r in rows] == [(i, j) for i in range(200) for j in range(7)]
    for row in rows:
        point = points[int(row["point"])]
        expected = sorted(math.dist(point, other) for other in points)[int(row["rank"])]
        assert float(row["distance"]) == pytest.approx(expected, rel=1e-5, abs=1e-6)
        assert math.dist(point, points[int(row["neighbour"])]) == pytest.approx(expected, rel=1e-5, abs=1e-6)
    write(tmp_path, points[:5])
    dax("cloud", "knn", "in.ply", "out.csv", "--k", 8)
    assert len((tmp_path / "out.csv").read_text().splitlines()) == 1 + 5 * 5


def test_downsample(dax, tmp_path):
    write(tmp_path, [(0.25, 0.25, 0.5), (0.75, 0.75, 0.5), (2.5, 0.25, 0.5), (0.5, 5.5, 0.5)], "in.pcd")
    for leaf, cells in [("1", {(0.5, 0.5, 0.5), (2.5, 0.25, 0.5), (0.5, 5.5, 0.5)}),
                        ("3,1,1", {(3.5 / 3, 1.25 / 3, 0.5), (0.5, 5.5, 0.5)})]:
        run = dax("cloud", "downsample", "in.pcd", "out.pcd", "--leaf", leaf)
        assert run.out == f"{len(cells)} of 4 points\n"
        assert sorted(read(tmp_path, "out.pcd")) == [pytest.approx(cell, abs=1e-5) for cell in sorted(cells)]


def test_stats(dax, tmp_path):
    write(tmp_path, [(x * 1.0, y * 2.0, 5.0) for x in range(4) for y in range(3)] + [(10.0, 0.0, 5.0)])
    told = json.loads(stats(dax, tmp_path, "in.ply"))
    assert (told["points"], told["min"], told["max"]) == (13, [0, 0, 5], [10, 4, 5])
    assert told["centroid"] == pytest.approx([28 / 13, 24 / 13, 5])
    assert told["spacing"] == pytest.approx({"min": 1, "median": 1, "mean": 19 / 13, "max": 7})
    assert dax("cloud", "stats", "in.ply").out.splitlines()[0].split() == ["points", "13"]


def test_range_files_are_clouds(dax, tmp_path):
    (tmp_path / "in.range").write_bytes(clouds.range_file([[1, None, 3], [4, 5, 6]], scale=(2, 3, 0.5)))
    told = json.loads(stats(dax, tmp_path, "in.range"))
    assert (told["points"], told["min"], told["max"]) == (5, [0, 0, 0.5], [4, 3, 3])


@pytest.mark.parametrize("command", [["normals", "out.ply"], ["knn", "out.csv"]])
def test_threads_do_not_matter(dax, tmp_path, command):
    write(tmp_path, scattered(40000))
    results = []
    for threads in (1, 2, 3, 64):
        dax("cloud", command[0], "in.ply", command[1], "--k", "6", "--threads", threads)
        results.append((tmp_path / command[1]).read_bytes())
    assert all(result == results[0] for result in results)


def test_picture_of_a_sphere(dax, tmp_path):
    """Round, in the middle, bright to the upper left, dark to the lower right, with the background around it."""
    write(tmp_path, sphere(4000))
    for up in "xyz":
        dax("cloud", "stats", "in.ply", "--picture", "out.png", "--picture-size", "200x160", "--up", up)
        rows, pixel = pictures.read_png((tmp_path / "out.png").read_bytes())
        grey = [[sum(row[3 * x : 3 * x + 3]) for x in range(200)] for row in rows]
        background = grey[0][0]
        assert (len(rows), pixel) == (160, 3) and grey[159][199] == grey[80][20] == background
        disc = [(x, y) for y in range(160) for x in range(200) if grey[y][x] != background]
        assert len(disc) == pytest.approx(math.pi * 60 * 60, rel=0.1)
        assert sum(x for x, _ in disc) / len(disc) == pytest.approx(100, abs=2)
        assert grey[50][75] > 2 * grey[115][130]


def test_pictures_of_other_commands(dax, tmp_path):
    write(tmp_path, sphere(500))
    for arguments in (["normals", "in.ply", "a.ply"], ["downsample", "in.ply", "b.ply", "--leaf", "2"],
                      ["knn", "in.ply", "c.csv", "--k", "2"]):
        dax("cloud", *arguments, "--picture", f"{arguments[0]}.png", "--view", "30,-90", "--picture-size", "64x64")
        rows, _ = pictures.read_png((tmp_path / f"{arguments[0]}.png").read_bytes())
        assert len({bytes(row) for row in rows}) > 5


@pytest.mark.parametrize("unit", [1.0, 2.0 ** -14])
def test_normals_of_a_sphere(dax, tmp_path, unit):
    """In small units, below the bound of the search for radii, too."""
    write(tmp_path, [tuple(single(unit * c) for c in point) for point in sphere(800)])
    dax("cloud", "normals", "in.ply", "out.ply", "--radius", 2 * unit, "--viewpoint", "0,0,0")
    for x, y, z, nx, ny, nz, _ in read(tmp_path, "out.ply"):
        assert (x * nx + y * ny + z * nz) / (10 * unit) < -0.98


def test_refusals(dax, tmp_path):
    write(tmp_path, scattered(10))
    assert "--leaf too small" in dax("cloud", "downsample", "in.ply", "out.ply", "--leaf", "1e-5", status=5).err
    assert [path.name for path in tmp_path.iterdir()] == ["in.ply"]

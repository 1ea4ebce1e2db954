"""A scanned object: the vertices of the Stanford bunny, fetched by a package manager when the test runs."""

import json
import math
import re
import shutil
import subprocess
import tarfile

import clouds
import pictures
import pytest


@pytest.fixture(scope="module")
def bunny(tmp_path_factory):
    folder = tmp_path_factory.mktemp("bunny")
    if not shutil.which("npm"):
        pytest.skip("the bunny is not tested: npm, which fetches it, is not installed")
    try:
        done = subprocess.run(["npm", "pack", "bunny@1.0.1"], cwd=folder, capture_output=True, timeout=120)
    except subprocess.TimeoutExpired:
        done = None
    archives = list(folder.glob("bunny-*.tgz"))
    if done is None or done.returncode != 0 or not archives:
        pytest.skip("the bunny is not tested: it could not be downloaded (no network?)")
    with tarfile.open(archives[0]) as archive:
        source = archive.extractfile("package/index.js").read().decode()
    points = json.loads(re.search(r"positions\s*=\s*(\[\[.*?\]\])", source, re.DOTALL)[1])
    return [tuple(map(clouds.single, point)) for point in points]


@pytest.fixture
def scan(tmp_path, bunny):
    (tmp_path / "bunny.ply").write_bytes(clouds.ply(bunny, "binary_little_endian"))
    return bunny


def test_measures(dax, tmp_path, scan):
    dax("cloud", "stats", "bunny.ply", "stats.json")
    told = json.loads((tmp_path / "stats.json").read_text())
    assert told["points"] == len(scan) > 1500
    assert told["min"] == [min(c) for c in zip(*scan)] and told["max"] == [max(c) for c in zip(*scan)]
    extent = max(b - a for a, b in zip(told["min"], told["max"]))
    assert 0 < told["spacing"]["median"] < extent / 20


def test_normals(dax, tmp_path, scan):
    """Normals are across the surface: neighbours lie in planes, and the normals of neighbours agree."""
    dax("cloud", "normals", "bunny.ply", "normals.ply", "--k", "10", "--picture", "bunny.png", "--up", "y")
    dax("cloud", "knn", "bunny.ply", "near.csv", "--k", "6")
    rows = clouds.read_cloud((tmp_path / "normals.ply").read_bytes())
    assert [row[:3] for row in rows] == scan
    agreeing = flat = total = 0
    for line in (tmp_path / "near.csv").read_text().splitlines()[1:]:
        point, rank, neighbour, distance = line.split(",")
        if rank == "0":
            continue
        a, b, distance = rows[int(point)], rows[int(neighbour)], float(distance)
        total += 1
        agreeing += abs(sum(p * q for p, q in zip(a[3:6], b[3:6]))) > 0.8
        flat += abs(sum(n * (q - p) for n, p, q in zip(a[3:6], a, b))) < 0.5 * distance
    assert agreeing > 0.85 * total and flat > 0.9 * total
    assert all(math.hypot(*row[3:6]) == pytest.approx(1, abs=1e-5) for row in rows)
    picture, _ = pictures.read_png((tmp_path / "bunny.png").read_bytes())
    assert len({bytes(row[3 * x : 3 * x + 3]) for row in picture for x in range(0, 900, 3)}) > 50


def test_thinning(dax, tmp_path, scan):
    leaf = (max(y for _, y, _ in scan) - min(y for _, y, _ in scan)) / 15
    dax("cloud", "downsample", "bunny.ply", "thin.pcd", "--leaf", leaf)
    thin = clouds.read_cloud((tmp_path / "thin.pcd").read_bytes())
    assert len(thin) < len(scan) / 2
    for x, y, z in scan:
        assert any(math.dist((x, y, z), point) < 2 * math.sqrt(3) * leaf for point in thin)

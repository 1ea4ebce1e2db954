"""No file of a range image or cloud crashes the program: it is an error of one line, or a cloud."""

import resource
import struct
import subprocess

import clouds
import pytest
from conftest import TOOL, Run

POINTS = [(1.0, 2.0, 3.0), (4.0, 5.5, 6.0), (-7.0, 8.0, 9.0)]
ROWS = [[1, 2, None], [4, 5, 6]]
WHOLE = {
    "ply text": clouds.ply(POINTS), "ply binary": clouds.ply(POINTS, "binary_little_endian"),
    "pcd text": clouds.pcd(POINTS), "pcd binary": clouds.pcd(POINTS, "binary"), "range": clouds.range_file(ROWS)}


@pytest.fixture
def look(tmp_path):
    def look_at(content):
        """The number of points; None for an error."""
        (tmp_path / "in").write_bytes(content)
        run = Run(tmp_path, ["cloud", "knn", "in", "out.csv", "--k", "1"])
        table = tmp_path / "out.csv"
        if run.status != 0:
            assert run.status in (3, 5) and run.err.startswith("dax: ") and run.err.count("\n") == 1, run.err
            assert not table.exists()
            return None
        count = len(table.read_text().splitlines()) - 1
        table.unlink()
        return count

    return look_at


@pytest.mark.parametrize("name", WHOLE)
def test_truncated(look, name):
    whole = WHOLE[name]
    lengths = sorted({*range(0, len(whole), 11), *range(max(0, len(whole) - 20), len(whole))})
    # Without its last bytes, ".0" and a line end, a text is still whole.
    harmless = 3 if name.endswith("text") else 0
    for length in lengths:
        found = look(whole[:length])
        assert found is None or (length >= len(whole) - harmless and found == 3), length
    assert look(whole) == (5 if name == "range" else 3)


@pytest.mark.parametrize("name", WHOLE)
def test_corrupted(look, name):
    whole = WHOLE[name]
    for at in range(0, len(whole), 5):
        for value in (0x39, 0xFF):
            look(whole[:at] + bytes([value]) + whole[at + 1 :])


def sides(width, height):
    return clouds.chunk(clouds.HEIGHT, struct.pack("<i", height)) + clouds.chunk(clouds.WIDTH, struct.pack("<i", width))


HOSTILE = {
    "empty": b"", "a letter": b"p", "zeros": bytes(5000), "text": b"hello\n" * 100,
    "ply count": clouds.ply(POINTS, count=2**32), "ply huge count": clouds.ply(POINTS, count=10**30),
    "ply binary count": clouds.ply(POINTS, "binary_little_endian", count=2**62 // 12 + 1),
    "ply negative count": clouds.ply(POINTS, count=-1), "ply no points": clouds.ply([]),
    "ply big endian": clouds.ply(POINTS, "binary_big_endian"), "ply unknown format": clouds.ply(POINTS, "utf8"),
    "ply no x": clouds.ply(POINTS, names=("a", "y", "z")), "ply two x": clouds.ply(POINTS, names=("x", "x", "z")),
    "ply unknown type": clouds.ply(POINTS).replace(b"float", b"quark", 1),
    "ply list": clouds.ply(POINTS).replace(b"property float x", b"property list uchar float x"),
    "ply faces first": clouds.ply(POINTS).replace(b"element vertex", b"element face 0\nelement vertex"),
    "ply words": clouds.ply(POINTS).replace(b"5.5", b"five"), "ply hex": clouds.ply(POINTS).replace(b"5.5", b"0x5"),
    "ply endless header": b"ply\nformat ascii 1.0\n" + b"comment c\n" * 100000,
    "ply long line": b"ply\nformat ascii 1.0\ncomment " + b"c" * 10**6, "ply bare": b"ply\n",
    "ply only nan": clouds.ply([(float("nan"),) * 3] * 3),
    "pcd count": clouds.pcd(POINTS, sides=(2**40, 1), count=2**40),
    "pcd wrapping sides": clouds.pcd(POINTS, "binary", sides=(2**32, 2**32), count=0),
    "pcd sides": clouds.pcd(POINTS, sides=(2, 1)), "pcd compressed": clouds.pcd(POINTS, "binary_compressed"),
    "pcd field count": clouds.pcd(POINTS, "binary").replace(b"COUNT 1", b"COUNT 18446744073709551615"),
    "pcd no count": clouds.pcd(POINTS, "binary").replace(b"COUNT 1", b"COUNT 0"),
    "pcd sizes": clouds.pcd(POINTS, "binary").replace(b"SIZE 4 4 4", b"SIZE 4 4"),
    "pcd size": clouds.pcd(POINTS, "binary").replace(b"SIZE 4", b"SIZE 3"),
    "pcd twice": clouds.pcd(POINTS).replace(b"WIDTH 3", b"WIDTH 3\nWIDTH 3"),
    "pcd no fields": clouds.pcd(POINTS).replace(b"FIELDS x y z\n", b""),
    "range empty chunk": clouds.chunk(clouds.VALUES, b"") + sides(65536, 32768),
    "range negative": clouds.chunk(clouds.VALUES, b"ab") + sides(-1, -1),
    "range huge": clouds.chunk(clouds.VALUES, b"ab") + sides(32767, 32767),
    "range no values": clouds.chunk(clouds.MASK, b"ab") + sides(2, 1),
    "range no mask": clouds.chunk(clouds.VALUES, b"abcd") + sides(2, 1),
    "range no scale": clouds.chunk(clouds.VALUES, b"abcd") + clouds.chunk(clouds.MASK, b"aa") + sides(2, 1),
    "range nan scale": clouds.range_file(ROWS, scale=(float("nan"),) * 3),
    "range zero scale": clouds.range_file(ROWS, scale=(0, 1, 1)),
    "range long chunk": b"abc" + struct.pack("<II", clouds.VALUES, 2**32 - 1),
}


@pytest.mark.parametrize("name", HOSTILE)
def test_hostile(look, name):
    assert look(HOSTILE[name]) is None


@pytest.mark.parametrize("arguments", [
    ["range", "info", "in"], ["range", "convert", "in", "out.png"], ["range", "convert", "in", "out.ply"],
    ["range", "render", "in", "out.png"], ["range", "despeckle", "in", "out.range"], ["cloud", "stats", "in"],
    ["cloud", "normals", "in", "out.ply"], ["cloud", "downsample", "in", "out.ply", "--leaf", "1"],
    ["cloud", "stats", "in", "out.json", "--picture", "out.png"]])
def test_nothing_is_written_for_what_cannot_be_read(dax, tmp_path, arguments):
    for content in (HOSTILE["range huge"], WHOLE["range"][:-9], HOSTILE["zeros"]):
        (tmp_path / "in").write_bytes(content)
        dax(*arguments, status=3)
        assert [path.name for path in tmp_path.iterdir()] == ["in"]


def test_old_results_stay_when_writing_fails(tmp_path):
    """A file-size limit stands for a full disk: no half-written file appears, and the old one stays."""
    points = [(i * 0.5, i % 7 * 1.0, i % 11 * 1.0) for i in range(20000)]
    (tmp_path / "in.ply").write_bytes(clouds.ply(points, "binary_little_endian"))
    rows = [[(x * y) % 1000 for x in range(200)] for y in range(200)]
    (tmp_path / "in.range").write_bytes(clouds.range_file(rows))
    limit = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (4000, 4000))
    for arguments in (["cloud", "normals", "in.ply", "old.ply"], ["cloud", "knn", "in.ply", "old.csv"],
                      ["range", "despeckle", "in.range", "old.range"], ["range", "convert", "in.range", "old.ply"],
                      ["range", "convert", "in.range", "old.png"]):
        old = tmp_path / arguments[-1]
        old.write_bytes(b"what was there")
        before = sorted(tmp_path.iterdir())
        done = subprocess.run([TOOL, *arguments], cwd=tmp_path, capture_output=True, preexec_fn=limit, timeout=60,
                              restore_signals=False)  # Python ignores the signal of the limit
        assert done.returncode == 4 and b"cannot be written" in done.stderr, (arguments, done)
        assert old.read_bytes() == b"what was there" and sorted(tmp_path.iterdir()) == before

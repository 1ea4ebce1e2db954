"""No input crashes the program: whatever cannot be read is an error of one line, and stays out of the way of others."""

import os

import pictures
import pytest

PICTURE = pictures.draw(pictures.draw(pictures.blank(32, 16), 8, 8, 8, 8), 24, 0, 8, 8, 250)


@pytest.mark.parametrize("sides", [(65537, 1), (1, 65537), (99999999999, 99999999999), (0, 0)])
def test_impossible_sizes(dax, tmp_path, sides):
    """Beyond what the labelling takes."""
    (tmp_path / "huge").write_bytes(b"P5 %d %d 255\n" % sides + bytes(65537))
    run = dax("inspect", "huge", status=3)
    assert run.err.startswith("dax: huge: ") and run.err.count("\n") == 1


def test_what_is_no_file(dax, tmp_path):
    os.mkfifo(tmp_path / "fifo.png")
    (tmp_path / "loop.png").symlink_to("loop.png")
    (tmp_path / "folder.png").mkdir()
    (tmp_path / "empty.png").write_bytes(b"")
    cases = {"fifo.png": "is not a regular file", "loop.png": "cannot be opened: Too many levels",
             "missing.png": "cannot be opened: No such file", "/dev/zero": "is not a regular file",
             "empty.png": "is empty", "folder.png": "holds no images", "a/b.png": "cannot be opened: No such file",
             "empty.png/b.png": "cannot be opened: Not a directory"}
    for name, message in cases.items():
        run = dax("inspect", name, status=3)
        assert run.err.startswith(f"dax: {name}: {message}") and run.err.count("\n") == 1, run.err
        assert run.out == ""


@pytest.mark.skipif(os.geteuid() == 0, reason="the superuser reads everything")
def test_unreadable(dax, tmp_path):
    path = tmp_path / "secret.png"
    path.write_bytes(pictures.png(PICTURE))
    path.chmod(0)
    assert "secret.png: cannot be opened: Permission denied" in dax("inspect", "secret.png", status=3).err


def test_the_others_are_inspected(dax, tmp_path):
    (tmp_path / "bad.png").write_bytes(pictures.png(PICTURE)[:-20])
    (tmp_path / "good.png").write_bytes(pictures.png(PICTURE))
    run = dax("inspect", "good.png", "bad.png", "none.png", "good.png", status=1)
    assert run.out.count("good.png: 32 x 16") == 2
    assert [line.split(": ")[1] for line in run.err.splitlines()] == ["bad.png", "none.png"]

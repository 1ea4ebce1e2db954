"""Several images: folders, order, threads, names of outputs, progress."""

import os
import pty
import re
import subprocess

import pictures
import pytest
from conftest import TOOL


@pytest.fixture
def folder(tmp_path):
    """Images of one square each, as large as their names say, among other things."""
    root = tmp_path / "in"
    for name, side in [("b/06.png", 6), ("b/c/08.ppm", 8), ("a.png", 3), ("04.PGM", 4), ("b/a.bmp", 7), ("z.tif", 9)]:
        path = root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        writer = {".png": pictures.png, ".ppm": pictures.ppm, ".pgm": pictures.pgm, ".bmp": pictures.bmp,
                  ".tif": pictures.tiff}[path.suffix.lower()]
        path.write_bytes(writer(pictures.draw(pictures.blank(30, 30), 5, 5, side, side)))
    (root / "notes.txt").write_text("no image")
    (root / "empty").mkdir()
    return root


IN_ORDER = ["in/04.PGM", "in/a.png", "in/b/06.png", "in/b/a.bmp", "in/b/c/08.ppm", "in/z.tif"]


def test_folders_are_walked_in_order(dax, folder):
    images = dax("inspect", "in", "--json").json["images"]
    assert [image["file"] for image in images] == IN_ORDER
    assert [image["blobs"][0]["area"] for image in images] == [16, 9, 36, 49, 64, 81]
    mixed = dax("inspect", "in/z.tif", "in/b", "--json").json["images"]
    assert [image["file"] for image in mixed] == ["in/z.tif", *IN_ORDER[2:5]]
    assert "in/empty: holds no images" in dax("inspect", "in/empty", status=3).err


def everything(root):
    return {p.relative_to(root): p.read_bytes() for p in sorted(root.rglob("*")) if p.is_file()}


@pytest.mark.threads
@pytest.mark.parametrize("listing", [[], ["--json"], ["--csv"]])
def test_threads_change_nothing(dax, tmp_path, folder, listing):
    for i in range(20):
        content = pictures.png(pictures.draw(pictures.blank(40, 30), i, i % 7, 5 + i % 5, 6))
        (folder / f"more{i:02}.png").write_bytes(content[: None if i % 6 else -9])
    outputs = []
    for threads in (1, 4, 0):
        out = tmp_path / f"out{threads}"
        run = dax("inspect", "in", *listing, "--threads", threads, "--overlay", out, "--report", out, status=1)
        outputs.append((run.out, run.err, {name: re.sub(rb"<code>.*?</code>", b"", content)
                                           for name, content in everything(out).items()}))
    assert outputs[0] == outputs[1] == outputs[2]
    assert outputs[0][1].count("\n") == 4
    assert len(outputs[0][2]) == 2 * (6 + 16) + 1


def test_each_image_has_outputs_of_its_own(dax, tmp_path, folder):
    """Equal names do not collide, inputs in the same folder are safe, and a second run does the same."""
    inputs = everything(folder)
    for _ in range(2):
        dax("inspect", "in/a.png", "in/b/a.bmp", "in/a.png", "--overlay", "in", "--report", "in/reports")
    assert {path: content for path, content in everything(folder).items() if path in inputs} == inputs
    made = {str(path) for path in set(everything(folder)) - set(inputs)}
    numbers = ("", "-2", "-3")
    reports = {f"reports/a-report{n}.html" for n in numbers} | {"reports/index.html"}
    assert made == {f"a-overlay{n}.png" for n in numbers} | reports


def test_output_folder_that_cannot_be(dax, tmp_path, folder):
    (tmp_path / "file").write_text("in the way")
    run = dax("inspect", "in", "--overlay", "file/out", status=4)
    assert run.err == "dax: file/out: cannot be written: Not a directory\n" and run.out == ""


def test_progress_on_a_terminal(dax, tmp_path, folder):
    """On a terminal alone; the line is wiped at the end."""
    try:
        master, terminal = pty.openpty()
    except OSError:
        pytest.skip("no pseudo-terminals here")
    done = subprocess.run([TOOL, "inspect", "in"], cwd=tmp_path, stdout=subprocess.PIPE, stderr=terminal)
    os.close(terminal)
    shown = os.read(master, 1 << 16).decode()
    os.close(master)
    assert done.returncode == 0
    assert "\r\x1b[K6 of 6 images" in shown and shown.endswith("\r\x1b[K")
    assert dax("inspect", "in").err == ""

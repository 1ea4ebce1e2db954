"""Usage: what is refused, with which status, and that help tells it."""

import os
import re
import subprocess

import pictures
import pytest
from conftest import TOOL


@pytest.fixture
def picture(tmp_path, parts):
    (tmp_path / "parts.png").write_bytes(pictures.png(parts))
    return "parts.png"


@pytest.mark.parametrize("arguments", [
    [], ["inspect"], ["measure", "parts.png"], ["inspect", "parts.png", "--no-such-option"],
    ["inspect", "parts.png", "--threshold", "256"], ["inspect", "parts.png", "--threshold", "-1"],
    ["inspect", "parts.png", "--threshold", "bright"], ["inspect", "parts.png", "--threshold", "9..5"],
    ["inspect", "parts.png", "--threshold", ".."], ["inspect", "parts.png", "--threshold", "1...5"],
    ["inspect", "parts.png", "--threshold", ""], ["inspect", "parts.png", "--threshold", "soft:low=5"],
    ["inspect", "parts.png", "--threshold", "soft:low=5,high=9,step=2"],
    ["inspect", "parts.png", "--threshold", "soft:low=5,high=9.5"],
    ["inspect", "parts.png", "--threshold", "relative:"], ["inspect", "parts.png", "--threshold", "relative:dark"],
    ["inspect", "parts.png", "--dark", "--bright"], ["inspect", "parts.png", "--connectivity", "6"],
    ["inspect", "parts.png", "--area", "5"], ["inspect", "parts.png", "--area", "9..5"],
    ["inspect", "parts.png", "--area", ".."], ["inspect", "parts.png", "--area", "-5..9"],
    ["inspect", "parts.png", "--area", "nan..9"], ["inspect", "parts.png", "--area", "1..inf"],
    ["inspect", "parts.png", "--area", "1..2x"], ["inspect", "parts.png", "--circularity", "0.5..1.5"],
    ["inspect", "parts.png", "--circularity", "2.."], ["inspect", "parts.png", "--box-angle", "60..100"],
    ["inspect", "parts.png", "--weight", "area=0.5"], ["inspect", "parts.png", "--area", "1..9", "--weight", "area=2"],
    ["inspect", "parts.png", "--area", "1..9", "--weight", "size=1"], ["inspect", "parts.png", "--weight", "area"],
    ["inspect", "parts.png", "--sort", "colour"], ["inspect", "parts.png", "--order", "up"],
    ["inspect", "parts.png", "--count", "0"], ["inspect", "parts.png", "--count", "20001"],
    ["inspect", "parts.png", "--json", "--csv"], ["inspect", "parts.png", "--threads", "-1"],
    ["inspect", "parts.png", "--threads", "1025"], ["inspect", "parts.png", "--overlay", "out.jpg"],
    ["inspect", "parts.png", "--overlay", "parts.png"], ["inspect", "parts.png", "--overlay-scale", "9"],
    ["inspect", "parts.png", "--report", "out.png"], ["inspect", "parts.png", "--max-area-error", "3"],
    ["inspect", "parts.png", "parts.png", "--truth", "truth.json"],
    *(["inspect", "parts.png", "--classes", *more] for more in (
        ["--threshold", "9"], ["--dark"], ["--bright"], ["--gray-weighted"], ["--class-area", "0=1..9"],
        ["--class-area", "256=1..9"], ["--class-area", "1..9"], ["--class-area", "1=.."], ["--class-area", "1=5"],
        ["--class-area", "1=-3..5"], ["--class-area", "1=2.5..5"], ["--class-area", "1=1..2147483648"],
        ["--class-area", "1=2..3", "--class-area", "1=4..5"], ["--class-area", "1=2..3", "--area", "2.5.."])),
    ["inspect", "parts.png", "--class-area", "1=2..3"], ["inspect", "parts.png", "--outside-limit", "-1"],
    ["inspect", "parts.png", "--outside-limit", "0.5"], ["inspect", "parts.png", "--outside-mask", "parts.png"],
    ["render-scene"], ["render-scene", "scene.gif"], ["render-scene", "scene.png", "--size", "100x100"],
    ["render-scene", "scene.png", "--size", "200"], ["render-scene", "scene.png", "--size", "200x9000"],
    ["render-scene", "scene.png", "--seed", "-1"], ["render-scene", "scene.png", "--truth", "scene.png"],
    # An output of another kind than its name says, or in the place of another file; link.png is the input as well.
    ["inspect", "parts.png", "--overlay", "link.png"], ["chessboard", "parts.png", "--auto", "--overlay", "link.png"],
    ["filter", "parts.png", "out.png", "--median3", "--compare", "out.png"],
    ["filter", "parts.png", "out.png", "--median3", "--compare", "link.png"],
    ["filter", "parts.png", "out.png", "--median3", "--compare", "./out.png"],
    ["filter", "parts.png", "out.png", "--median3", "--compare", "none/../out.png"],
    ["filter", "parts.png", "", "--median3"], ["filter", "parts.png", "out.png", "--median3", "--compare", ""],
    ["inspect", ""], ["inspect", "parts.png", "--overlay", ""],
    ["filter", "parts.png", "out.png", "--median3", "--compare", "out.tif"],
    *(["caliper", "parts.png", "--box", "30,20,20,8,0", *more] for more in (
        ["--overlay", "link.png"], ["--plot", "plot.svg"], ["--overlay", "out.png", "--plot", "out.png"])),
    ["fit", "truth.json", "--model", "line", "--plot", "plot.png"],
    ["cloud", "normals", "parts.png", "out.png"], ["cloud", "stats", "parts.png", "--picture", "link.png"],
    ["cloud", "stats", "parts.png", "stats.csv"], ["cloud", "knn", "parts.png", "out.json"],
    ["range", "render", "parts.png", "out.pgm"],
])
def test_usage_errors(dax, tmp_path, parts, arguments):
    (tmp_path / "truth.json").write_text('{"width": 80, "height": 60, "parts": []}')
    (tmp_path / "parts.png").write_bytes(pictures.png(parts))
    (tmp_path / "link.png").symlink_to("parts.png")
    before = sorted(tmp_path.iterdir()), (tmp_path / "parts.png").read_bytes()
    run = dax(*arguments, status=2)
    assert run.out == "" and run.err.startswith("dax: ") and run.err.count("\n") == 1
    assert before == (sorted(tmp_path.iterdir()), (tmp_path / "parts.png").read_bytes())


def test_refusals_of_the_library_carry_its_text(dax, picture):
    """The shares of the darkest and the brightest pixels are more than all."""
    run = dax("inspect", picture, "--threshold", "relative:dark=0.7,bright=0.7", status=5)
    assert re.fullmatch(rf"dax: {picture}: threshold refused: .*param.* \(0x10000019\)\n", run.err)


@pytest.mark.parametrize("arguments", [["--help"], ["inspect", "--help"], ["--version"]])
def test_help_that_cannot_be_written(arguments):
    with open(os.devnull) as unwritable:
        done = subprocess.run([TOOL, *arguments], stdout=unwritable, stderr=subprocess.PIPE, text=True)
    assert (done.returncode, done.stderr) == (4, "dax: standard output: cannot be written\n")


def test_help_tells_every_option_and_status(dax):
    text = dax("inspect", "--help").out
    for option in ["--threshold", "--dark", "--bright", "--connectivity", "--area", "--rect-height", "--weight",
                   "--sort", "--order", "--count", "--gray-weighted", "--json", "--csv", "--overlay", "--report",
                   "--threads", "--time", "--truth", "--classes", "--class-area", "--outside-limit", "--outside-mask",
                   "--rejected"]:
        assert option in text
    for command in (["--help"], ["inspect", "--help"], ["render-scene", "--help"]):
        text = dax(*command).out
        assert all(f"\n  {status}  " in text for status in range(9))
        assert max(map(len, text.splitlines())) <= 100


def test_version(dax):
    assert dax("--version").out.split()[0] == "dax"


def test_full_disk(dax, picture, tmp_path):
    """Standard output that takes nothing is a failure, too."""
    with open("/dev/full", "wb") as full:
        done = subprocess.run([TOOL, "inspect", tmp_path / picture], stdout=full, stderr=subprocess.PIPE)
    assert (done.returncode, done.stderr) == (4, b"dax: standard output: cannot be written\n")

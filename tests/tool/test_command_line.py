"""Usage: what is refused, with which status, and that help tells it."""

import os
import re
import shlex
import subprocess

import clouds
import pictures
import pytest
from conftest import TOOL


@pytest.fixture
def picture(tmp_path, parts):
    (tmp_path / "parts.png").write_bytes(pictures.png(parts))
    return "parts.png"


# Command: what it refuses after it. Files are not looked at before the command line is right; link.png is the input,
# too.
REFUSED = {
    "": ["", "measure parts.png"],
    "inspect": ["", "''", "parts.png parts.png --truth truth.json"],
    "inspect parts.png": [
        "--no-such-option", "--threshold 256", "--threshold -1", "--threshold bright", "--threshold 9..5",
        "--threshold ..", "--threshold 1...5", "--threshold ''", "--threshold soft:low=5",
        "--threshold soft:low=5,high=9,step=2", "--threshold soft:low=5,high=9.5", "--threshold relative:",
        "--threshold relative:dark", "--dark --bright", "--connectivity 6", "--area 5", "--area 9..5", "--area ..",
        "--area -5..9", "--area nan..9", "--area 1..inf", "--area 1..2x", "--circularity 0.5..1.5", "--circularity 2..",
        "--box-angle 60..100", "--weight area=0.5", "--area 1..9 --weight area=2", "--area 1..9 --weight size=1",
        "--weight area", "--sort colour", "--order up", "--count 0", "--count 20001", "--json --csv", "--threads -1",
        "--threads 1025", "--overlay out.jpg", "--overlay parts.png", "--overlay link.png", "--overlay ''",
        "--overlay-scale 9", "--overlay-scale nan", "--mm-per-pixel nan", "--mm-per-pixel inf", "--report out.png",
        "--max-area-error 3", "--truth truth.json --max-area-error nan", "--class-area 1=2..3", "--outside-limit -1",
        "--outside-limit 0.5", "--outside-mask parts.png", "--outside-limit 0 --outside-mask m.png --overlay m.png"],
    "inspect parts.png --classes": [
        "--threshold 9", "--dark", "--bright", "--gray-weighted", "--class-area 0=1..9", "--class-area 256=1..9",
        "--class-area 1..9", "--class-area 1=..", "--class-area 1=5", "--class-area 1=-3..5", "--class-area 1=2.5..5",
        "--class-area 1=1..2147483648", "--class-area 1=2..3 --class-area 1=4..5", "--class-area 1=2..3 --area 2.5.."],
    "render-scene": ["", "scene.gif", "scene.png --size 100x100", "scene.png --size 200", "scene.png --size 200x9000",
                     "scene.png --seed -1", "scene.png --truth scene.png"],
    "chessboard parts.png": ["", "--size 9", "--size 1x6", "--size 26x6", "--size 9x6 --auto", "--size 9x6x2",
                             "--auto --overlay order.jpg", "--auto --overlay link.png"],
    "filter parts.png out.png": [
        "", "--mean 3x3 --median3 --mean 3", "--mean 3",
        "--mean 0x3", "--mean 256x3", "--mean 3x3x3", "--mean-inside 3x-1",
        "--box 0", "--box 1001", "--erode 0", "--erode 1.5", "--border mirror", "--border mirror:-1", "--border none:3",
        "--border mirror:3:4", "--border mirror:3 --compare change.png", "--median3 --compare change.gif",
        "--median3 --compare parts.png", "--median3 --compare out.png", "--median3 --compare link.png",
        "--median3 --compare ./out.png", "--median3 --compare none/../out.png", "--median3 --compare ''",
        "--gauss 2 --thin", "--threshold otsu --distance --split 1", "--canny 9,20 --threshold otsu",
        "--threshold otsu --median3 --h-maxima 3", "--sobel --max 3x3 --erode 1", "--threshold nick",
        "--threshold sauvola:0", "--threshold 65536", "--hysteresis 9,5", "--split -1", "--gauss-recursive 1",
        "--median3 --steps steps.pgm", "--median3 --steps parts.png", "--median3 --border mirror:3 --steps s.png",
        "--median3 --steps s.png --compare s.png"],
    "filter parts.png": ["'' --median3", "out.jpg --median3"],
    "caliper parts.png": ["", "--box 1,2,3,4", "--box 1,2,3,4,x", "--box 1,2,3,4,nan", "--box 1,2,3,4,1e30", "--box ''",
                          "--rhomboid 30,30,9,9,0", "--annulus 1,2,3,4,5,6,7"],
    "caliper parts.png --box 40,30,20,6,0": [
        "--repeat 3", "--repeat 0,1,1", "--repeat 3,inf,1", "--repeat 20000,1,1", "--half-width 0", "--half-width 51",
        "--threshold -1", "--threshold nan", "--count 0", "--choose 0", "--polarity up", "--width 9",
        "--pair --width 0",
        "--profiles", "--overlay parts.png", "--overlay link.png", "--overlay out.jpg", "--plot parts.png",
        "--plot plot.svg", "--plot a.png --overlay a.png", "--overlay-scale 9"],
    "line parts.png": ["", "--from 1,2", "--from 1,2 --to 3", "--from 1,2 --to nan,3", "--from 1,2 --to 1.5,2"],
    "line parts.png --from 1,2 --to 60,50": [
        "--calipers 1", "--length 0", "--length inf", "--breadth x", "--reject -1", "--distance 0", "--weights none",
        "--start 4", "--tolerance 181", "--profiles", "--overlay parts.png"],
    "fit truth.json": ["", "--model cubic", "--model polynomial", "--model polynomial:0", "--model polynomial:10",
                       "--model line --columns 1", "--model line --columns 0,1", "--model line --start 1",
                       "--model line --start 1,2,3", "--model line --start 1,nan", "--model line --plot out.png"],
    "graph": ["", "info", "look in.g2o", "optimise in.g2o out.png", "optimise in.g2o --plot out.png",
              "optimise in.g2o --solver best", "optimise in.g2o --kernel best", "optimise in.g2o --iterations 0",
              "plot in.g2o", "plot in.g2o out.png", "make cube out.g2o", "make ring out.svg",
              "make ring out.g2o --poses 5", "make ring out.g2o --turn 0", "make ring out.g2o --seed -1"],
    "range": ["", "info", "look in.range", "convert in.range", "convert in.range out.range",
              "convert in.range out.png --scale 1,1,1", "convert in.range out.ply --mask m.png",
              "convert in.range out.png --mask m.gif", "convert in.range out.png --mask out.png",
              "convert in.range out.png --bias 65536", "convert in.png out.range --scale 1,1",
              "convert in.png out.range --scale 1,0,1", "convert in.png out.range --scale 1,1,-1",
              "convert in.png out.range --offset 1,nan,1", "convert in.ply out.range --mask m.png",
              "convert in.png out.PNG", "convert in.ply out.pcd", "convert in.png out.ply", "render in.range out.jpg",
              "render in.range out.png --limits 9..1", "despeckle in.range out.range --size -1",
              "despeckle in.range out.range --step 0", "despeckle in.range out.png", "scene out.png",
              "scene out.range --size 100x100", "scene out.range --seed -1"],
    "cloud": ["", "smooth in.ply out.ply", "knn in.ply out.ply", "knn in.ply out.csv --k 0", "stats in.ply out.txt"],
    "cloud normals in.ply": ["", "out.txt", "out.ply --k 3", "out.ply --k 257", "out.ply --radius 0",
                             "out.ply --viewpoint 1,2", "out.ply --viewpoint 1,2,inf", "out.ply --threads 65"],
    "cloud downsample in.ply out.ply": ["", "--leaf 0", "--leaf 1,2", "--leaf 1,1,-1"],
    "cloud stats parts.png": ["--picture out.jpg", "--picture link.png", "--view 1", "--up w", "--picture-size 9x9"],
}


@pytest.mark.parametrize("line", [f"{command} {options}" for command, each in REFUSED.items() for options in each])
def test_usage_errors(dax, tmp_path, parts, line):
    (tmp_path / "truth.json").write_text('{"width": 80, "height": 60, "parts": []}')
    (tmp_path / "parts.png").write_bytes(pictures.png(parts))
    (tmp_path / "link.png").symlink_to("parts.png")
    before = sorted(tmp_path.iterdir()), (tmp_path / "parts.png").read_bytes()
    run = dax(*shlex.split(line), status=2)
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
    commands = ["", "inspect", "render-scene", "chessboard", "filter", "caliper", "line", "fit", "range",
                "range convert", "graph", "graph optimise",
                "cloud", "cloud normals", "stats", "convert", "warp", "compare", "threshold", "noise", "focus",
                "spectrum"]
    for command in commands:
        text = dax(*command.split(), "--help").out
        assert all(f"\n  {status}  " in text for status in range(9)), command
        assert max(map(len, text.splitlines())) <= 100, command


FAILING = {  # files that fail: status, message
    "inspect none.png": (3, "none.png: cannot be opened: No such file"),
    "caliper none.png --box 40,30,20,6,0": (3, "none.png: cannot be opened"),
    "caliper parts.png --box 40,30,20,6,0 --overlay none/o.png": (4, "none/o.png: cannot be written"),
    "render-scene none/scene.png": (4, "none/scene.png: cannot be written"),
    "filter none.png out.png --median3": (3, "none.png: cannot be opened"),
    "filter parts.png none/out.png --median3": (4, "none/out.png: cannot be written"),
    "fit none.csv --model line": (3, "none.csv: cannot be opened: No such file"),
    "fit . --model line": (3, "dax: .: is a folder"),
    "fit points.csv --model line --plot none/out.svg": (4, "cannot be written"),
    "range scene none/out.range": (4, "cannot be written"),
    "range convert in.range none/out.ply": (4, "cannot be written"),
    "range info missing.range": (3, "cannot be opened"),
    "range info .": (3, "is a folder"),
    "cloud stats parts.png": (3, "nor a PLY or PCD cloud"),
    "cloud normals in.ply none/out.ply": (4, "cannot be written"),
    "cloud normals in.ply in.ply/out.ply": (4, "cannot be written"),
}


@pytest.mark.parametrize("line", FAILING)
def test_files_that_fail(dax, tmp_path, picture, line):
    (tmp_path / "points.csv").write_text("1,2\n2,4\n3,6\n4,9\n")
    (tmp_path / "in.range").write_bytes(clouds.range_file([[1, 2], [3, 4]]))
    (tmp_path / "in.ply").write_bytes(clouds.ply([(1.0, 2.0, 3.0), (4.0, 5.5, 6.0), (-7.0, 8.0, 9.0)]))
    before = sorted(tmp_path.iterdir())
    status, message = FAILING[line]
    run = dax(*line.split(), status=status)
    assert message in run.err.splitlines()[-1] and run.out == "" and sorted(tmp_path.iterdir()) == before


def test_inputs_are_not_replaced(dax, tmp_path, picture):
    (tmp_path / "parts-overlay.png").write_bytes((tmp_path / picture).read_bytes())
    for command in ("inspect", "chessboard --auto"):
        run = dax(*command.split(), picture, "parts-overlay.png", "--overlay", ".", status=2)
        assert run.err == "dax: --overlay: ./parts-overlay.png is an input\n"


def test_version(dax):
    assert dax("--version").out.split()[0] == "dax"


def test_full_disk(dax, picture, tmp_path):
    """Standard output that takes nothing is a failure, too."""
    with open("/dev/full", "wb") as full:
        done = subprocess.run([TOOL, "inspect", tmp_path / picture], stdout=full, stderr=subprocess.PIPE)
    assert (done.returncode, done.stderr) == (4, b"dax: standard output: cannot be written\n")

"""What a mistake on the command line is told: what was given, what is needed, and whose help tells more."""

import pictures
import pytest

MISTAKES = {
    "a command that is none": (["inspekt", "parts.png"], r'"inspekt" is no command (annotate, caliper,'),
    "a command left out": (["cloud"], "which command? (normals, downsample, knn, stats) (dax cloud --help"),
    "a step that is none": (["range", "show", "parts.png"], '"show" is no command (info, convert,'),
    "help of the command": (["filter", "parts.png"], "OUT is required (dax filter --help"),
    "an option that is none": (["inspect", "parts.png", "--min-area", "5"], "dax: not expected: --min-area ("),
    "an option before the command": (["--json", "inspect", "parts.png"], "dax: not expected: --json ("),
    "an option without a command": (["--json"], '"--json" is no option (annotate, caliper,'),
    "blanks for commas": (["caliper", "parts.png", "--box", "120", "80", "60", "16", "0"],
                          '--box: "120" is not X,Y,WIDTH,HEIGHT,ANGLE'),
    "one end of a range": (["inspect", "parts.png", "--area", "200"], '"200" is not MIN..MAX, MIN.. or ..MAX (pixels)'),
    "a threshold by no name": (["inspect", "parts.png", "--threshold", "auto"], '"auto" is not otsu, N, N..M, mask'),
    "a threshold too high": (["inspect", "parts.png", "--threshold", "300"], "0..255"),
    "one side of a window": (["filter", "parts.png", "out.png", "--mean", "15"], "WxH with sides of 1..255"),
    "a window too large": (["filter", "parts.png", "out.png", "--mean", "300x300"], "WxH with sides of 1..255"),
    "a border by no name": (["filter", "parts.png", "out.png", "--border", "reflect:3"],
                            "replicate, mirror, symmetric"),
    "a seed by name": (["render-scene", "out.png", "--seed", "x"],
                       "--seed: Value x not in range 0 to 9223372036854775807"),
    "a radius of nothing": (["cloud", "normals", "parts.png", "out.ply", "--radius", "0"],
                            "is not a number of 1e-06..1e+18"),
    "a file for many": (["inspect", "parts.png", "parts.png", "--overlay", "out.png"], "out.png is the name of a file"),
    "a page for many": (["inspect", "parts.png", "parts.png", "--report", "out.html"],
                        "out.html is the name of a file"),
    "a picture for boards": (["chessboard", ".", "--auto", "--overlay", "out.png"], "out.png is the name of a file"),
}


@pytest.mark.parametrize("arguments, message", MISTAKES.values(), ids=MISTAKES)
def test_a_mistake_is_told(dax, tmp_path, parts, arguments, message):
    (tmp_path / "parts.png").write_bytes(pictures.png(parts))
    run = dax(*arguments, status=2)
    assert message in run.err and run.err.count("\n") == 1 and len(run.err) < 250
    assert [each.name for each in tmp_path.iterdir()] == ["parts.png"]


def test_the_examples_of_the_program_work_on_its_scene(dax):
    """A newcomer copies them in this order."""
    lines = [line.split()[1:] for line in dax("--help").out.splitlines() if line.startswith("  dax ")]
    for line in lines:
        if line[0] not in ("chessboard", "fit"):  # on pictures and tables of the user's own
            run = dax(*line)
            assert line[0] not in ("caliper", "line") or "1 pair\n" in run.out or "20 edges" in run.out


def test_points_without_normals_are_told(dax, tmp_path):
    (tmp_path / "points.pcd").write_text("VERSION .7\nFIELDS x y z\nSIZE 4 4 4\nTYPE F F F\nCOUNT 1 1 1\nWIDTH 6\n"
                                         "HEIGHT 1\nPOINTS 6\nDATA ascii\n"
                                         "0 0 0\n1 0 0\n0 1 0\n1 1 0\n2 1 0\n90 90 0\n")
    run = dax("cloud", "normals", "points.pcd", "out.ply", "--k", "5", "--radius", "5")
    assert run.err == "dax: points.pcd: 1 of 6 points have too few neighbours for a normal; theirs is 0, 0, 1\n"
    assert dax("cloud", "normals", "points.pcd", "out.ply", "--k", "5").err == ""

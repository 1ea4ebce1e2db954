"""The sharpest of several images."""

import math
import re

import pictures
import pytest


def edge(width, depth=1):
    """A step that is spread over so many pixels."""
    rows = [[(int(120 + 100 * math.tanh((x - 32) / width)) * 257,) * 3 for x in range(64)] for _ in range(20)]
    return pictures.pgm(rows) if depth == 1 else pictures.pgm16(rows)


@pytest.fixture
def stack(tmp_path):
    (tmp_path / "stack").mkdir()
    for i, width in enumerate([8, 4, 1, 2, 6]):
        (tmp_path / "stack" / f"{i}.pgm").write_bytes(edge(width))


@pytest.mark.parametrize("measure", ["tenengrad", "laplacian", "brenner"])
def test_best(dax, stack, tmp_path, measure):
    found = dax("focus", "stack", "--measure", measure, "--json", "--plot", "focus.svg").json
    assert found["best"] == "stack/2.pgm" and found["measure"] == measure
    values = [image[measure] for image in found["images"]]
    assert values[2] > values[3] > values[1] > values[4] > values[0] > 0
    svg = (tmp_path / "focus.svg").read_text()
    assert len(re.findall("<polyline", svg)) == 3 and len(re.findall("<circle", svg)) == 15
    assert "best: stack/2.pgm" in dax("focus", "stack", "--measure", measure).out


def test_what_does_not_compare(dax, stack, tmp_path):
    (tmp_path / "deep.pgm").write_bytes(edge(0.1, 2))
    (tmp_path / "large.pgm").write_bytes(pictures.pgm(pictures.blank(65, 20)))
    run = dax("focus", "stack/0.pgm", "deep.pgm", "large.pgm", "stack/1.pgm", "missing.pgm", status=1)
    assert run.out.splitlines()[-1] == "best: stack/1.pgm"
    assert [line.split(":")[1] for line in run.err.splitlines()] == [" deep.pgm", " large.pgm", " missing.pgm"]
    assert dax("focus", "missing.pgm", "--json", status=3).json["best"] is None


def test_wrong_options(dax, stack):
    assert "--measure" in dax("focus", "stack", "--measure", "sharp", status=2).err
    assert "--plot" in dax("focus", "stack", "--plot", "out.png", status=2).err

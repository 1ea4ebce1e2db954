"""Noise of images, of frames, and of a camera: numbers, tables, plots, and what is refused."""

import random
import re

import pictures
import pytest

WIDTH, HEIGHT = 96, 64


def write(path, value, depth=1):
    """value(x, y), rounded, as the values of the file."""
    scale = 257 if depth == 1 else 1
    top = 255 if depth == 1 else 65535
    rows = [[(min(max(round(value(x, y)), 0), top) * scale,) * 3 for x in range(WIDTH)] for y in range(HEIGHT)]
    path.parent.mkdir(exist_ok=True)
    path.write_bytes(pictures.pgm(rows) if depth == 1 else pictures.pgm16(rows))


def noisy(seed, deviation, level=lambda x, y: 60 + x + y / 2):
    source = random.Random(seed)
    return lambda x, y: level(x, y) + source.gauss(0, deviation)


@pytest.mark.parametrize("depth", [1, 2])
def test_images(dax, tmp_path, depth):
    write(tmp_path / "a.pgm", noisy(1, 3), depth)
    write(tmp_path / "b.pgm", noisy(2, 8), depth)
    first, second = dax("noise", "a.pgm", "b.pgm", "--json").json["images"]
    assert first["depth"] == 8 * depth and first["width"] == WIDTH
    for image, deviation in ((first, 3), (second, 8)):
        assert image["deviation"]["mad"] == pytest.approx(deviation, rel=0.06)
        assert image["deviation"]["immerkaer"] == pytest.approx(deviation, rel=0.06)
    (image,) = dax("noise", "b.pgm", "--json", "--plot", "noise.svg").json["images"]
    assert all(each["deviation"] == pytest.approx(8, rel=0.25) for each in image["levels"])
    circles = re.findall("<circle", (tmp_path / "noise.svg").read_text())
    assert len(circles) == len(image["levels"])
    head, line, _, levels, *_ = dax("noise", "b.pgm").out.splitlines()
    assert head.split()[:3] == ["image", "size", "bits"] and line.split()[0] == "b.pgm"
    assert levels.split() == ["level", "deviation", "blocks"]


def test_frames(dax, tmp_path):
    """Texture is no noise; nor is a light that grows."""
    for i in range(3):
        texture = noisy(i, 5, lambda x, y: (x * 37 + y * 53) % 64 + 60 + 10 * i)
        write(tmp_path / "in" / f"{i}.pgm", texture)
    found = dax("noise", "--frames", "in", "--json").json
    assert found["deviation"] == pytest.approx(5, rel=0.03) and len(found["frames"]) == 3
    assert sum(each["pixels"] for each in found["levels"]) == WIDTH * HEIGHT
    assert dax("noise", "--frames", "in").out.startswith("3 frames: mean ")


def expose(folder, electrons, seed):
    """A camera of 0.05 grey levels per electron, noise of 20 electrons, black 10, white beyond 4500 electrons."""
    source = random.Random(seed)
    for i in range(2):
        def value(x, y):
            held = source.gauss(electrons, electrons**0.5)
            return 10 + 0.05 * min(held + source.gauss(0, 20), 4500)

        write(folder / f"{i}.pgm", value)


def test_camera(dax, tmp_path):
    exposures = list(range(1, 15))
    expose(tmp_path / "dark", 0, 100)
    for each in exposures:
        expose(tmp_path / f"e{each:02}", 350 * each, each)
    folders = [f"e{each:02}" for each in exposures]
    light = ",".join(map(str, exposures))
    run = dax("noise", *folders, "--dark", "dark", "--exposures", light, "--json", "--plot", "curve.svg")
    found = run.json
    assert found["gain"] == pytest.approx(0.05, rel=0.04)
    assert found["read_noise"] == pytest.approx(20, rel=0.05)
    assert found["responsivity"] == pytest.approx(350 * 0.05, rel=0.01)
    assert found["flags"] == [] and run.err == "" and len(found["points"]) == 14
    assert 3700 < found["full_well"] < 4700
    svg = (tmp_path / "curve.svg").read_text()
    assert len(re.findall("<circle", svg)) == 14 and "nan" not in svg
    out = dax("noise", *folders[:8], "--dark", "dark").out
    assert "gain             0.0" in out and "linearity" not in out
    assert "no exposure saturates" in dax("noise", *folders[:8], "--dark", "dark").err
    assert "5 exposures" in dax("noise", *folders[:3], "--dark", "dark", status=5).err


REFUSED = {
    "a.pgm b.pgm --plot out.svg": (2, "--plot"),
    "a.pgm --plot out.png": (2, "--plot"),
    "a.pgm --exposures 1": (2, "--exposures"),
    "in in --dark in --exposures 1,2,3": (2, "--exposures"),
    "a.pgm --white 0": (2, "--white"),
    "--frames a.pgm": (5, "one frame only"),
    "--frames a.pgm b.pgm": (5, "another size"),
    "tiny.pgm": (5, "refused"),
    "missing.pgm": (3, "missing.pgm"),
}


@pytest.mark.parametrize("line", REFUSED)
def test_refusals(dax, tmp_path, line):
    write(tmp_path / "a.pgm", noisy(1, 3))
    write(tmp_path / "in" / "a.pgm", noisy(1, 3))
    (tmp_path / "b.pgm").write_bytes(pictures.pgm(pictures.blank(20, 20)))
    (tmp_path / "tiny.pgm").write_bytes(pictures.pgm(pictures.blank(2, 2)))
    status, words = REFUSED[line]
    assert words in dax("noise", *line.split(), status=status).err

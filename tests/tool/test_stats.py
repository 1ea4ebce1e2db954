"""Statistics of images: the file's own values, tables, JSON, plots."""

import pictures
import pytest


def write(path, picture):
    path.write_bytes(pictures.pgm(picture))


def ramp(width=20, height=10):
    """0, 1, 2, ... row by row, and 255 at the end."""
    picture = pictures.blank(width, height, 0)
    for i in range(width * height):
        pictures.draw(picture, i % width, i // width, 1, 1, i)
    pictures.draw(picture, width - 1, height - 1, 1, 1, 255)
    return picture


def test_values_of_a_picture(dax, tmp_path):
    write(tmp_path / "ramp.pgm", ramp())
    (image,) = dax("stats", "ramp.pgm", "--json", "--bins", "4").json["images"]
    values = [*range(199), 255]
    mean = sum(values) / 200
    assert (image["width"], image["height"]) == (20, 10)
    assert image["mean"] == pytest.approx(mean, abs=1e-9)
    assert image["standard_deviation"] == pytest.approx((sum((v - mean) ** 2 for v in values) / 200) ** 0.5, abs=1e-9)
    assert (image["min"], image["min_at"], image["max"], image["max_at"]) == (0, [0, 0], 255, [19, 9])
    assert image["percentiles"] == {"1": 1, "5": 9, "25": 49, "50": 99, "75": 149, "95": 189, "99": 197}
    assert (image["black"], image["white"]) == (1 / 200, 1 / 200)
    assert image["histogram"] == {"from": 0, "to": 256, "counts": [64, 64, 64, 8]}


def test_table_of_a_folder_and_plots(dax, tmp_path):
    folder = tmp_path / "images"
    folder.mkdir()
    write(folder / "a.pgm", ramp())
    write(folder / "b.pgm", pictures.blank(8, 6, 255))
    (folder / "c.pgm").write_bytes(b"P5\n9")
    run = dax("stats", "images", "--histogram", "plots", status=1)
    head, a, b = run.out.splitlines()
    assert head.split()[:5] == ["image", "size", "bits", "mean", "deviation"]
    assert a.split()[0] == "images/a.pgm" and b.split()[-1] == "100.00"
    assert "c.pgm" in run.err
    assert sorted(each.name for each in (tmp_path / "plots").iterdir()) == ["a-histogram.png", "b-histogram.png"]
    dax("stats", "images/a.pgm", "--histogram", "one.png")
    assert (tmp_path / "one.png").read_bytes().startswith(b"\x89PNG")


def test_values_of_16_bits(dax, tmp_path):
    picture = pictures.blank(10, 4, 0)
    picture[2][7] = (65535,) * 3
    picture[3][1] = (1234,) * 3
    (tmp_path / "a.pgm").write_bytes(pictures.pgm16(picture))
    (image,) = dax("stats", "a.pgm", "--json", "--bins", "65536", "--histogram", "plot.png").json["images"]
    assert (image["depth"], image["mean"], image["max"], image["max_at"]) == (16, (65535 + 1234) / 40, 65535, [7, 2])
    counts = image["histogram"]["counts"]
    assert (counts[0], counts[1234], counts[65535], sum(counts)) == (38, 1, 1, 40)


@pytest.mark.parametrize(
    "arguments, words",
    [
        (["a.pgm", "--bins", "0"], "--bins"),
        (["a.pgm", "--bins", "many"], "--bins"),
        (["a.pgm", "--histogram", "plot.jpg"], "--histogram"),
        (["a.pgm", "b.pgm", "--histogram", "plot.png"], "--histogram"),
    ],
)
def test_wrong_options(dax, tmp_path, arguments, words):
    write(tmp_path / "a.pgm", ramp())
    write(tmp_path / "b.pgm", ramp())
    assert words in dax("stats", *arguments, status=2).err

"""Conversions of image files."""
import struct

import pictures
import pytest

COLOURS = [(257 * r, 257 * g, 257 * b) for r, g, b in [(1, 2, 3), (250, 7, 99), (0, 255, 128), (77, 77, 77)]]


@pytest.mark.parametrize("ending", ["png", "tif", "tiff", "bmp", "ppm"])
def test_formats_keep_the_pixels(dax, tmp_path, ending):
    picture = pictures.dots(COLOURS)
    (tmp_path / "in.png").write_bytes(pictures.png_rgb(picture))
    dax("convert", "in.png", f"out.{ending}")
    dax("convert", f"out.{ending}", "back.ppm")
    assert (tmp_path / "back.ppm").read_bytes() == pictures.ppm(picture)


def test_bits(dax, tmp_path):
    deep = [[(v, v, v) for v in (0, 128, 129, 32768, 65535)]]
    (tmp_path / "in.png").write_bytes(pictures.png16(deep))
    dax("convert", "in.png", "out.pgm")
    assert (tmp_path / "out.pgm").read_bytes() == pictures.pgm16(deep)
    dax("convert", "in.png", "out.pgm", "--bits", 8)
    assert (tmp_path / "out.pgm").read_bytes() == b"P5\n5 1\n255\n\0\0\1\x80\xff"
    dax("convert", "in.png", "out.pgm", "--bits", 12)
    assert (tmp_path / "out.pgm").read_bytes() == b"P5\n5 1\n4095\n" + struct.pack(">5H", 0, 8, 8, 2048, 4095)
    dax("convert", "in.png", "out.pfm", "--bits", "32f")
    values = struct.unpack("<5f", (tmp_path / "out.pfm").read_bytes()[-20:])
    assert values == pytest.approx([0, 128 / 65535, 129 / 65535, 32768 / 65535, 1], abs=1e-7)
    dax("convert", "out.pfm", "again.tif", "--bits", 16)
    dax("convert", "again.tif", "again.pgm")
    assert (tmp_path / "again.pgm").read_bytes() == pictures.pgm16(deep)
    dax("convert", "in.png", "one.png", "--bits", 1)
    dax("convert", "one.png", "one.pgm")
    assert (tmp_path / "one.pgm").read_bytes().endswith(b"\0\0\0\xff\xff")
    assert (tmp_path / "one.png").read_bytes()[24] == 1


def test_refused(dax, tmp_path):
    (tmp_path / "in.png").write_bytes(pictures.png_rgb(pictures.dots(COLOURS)))
    for arguments, status, message in [
        (["in.png", "out.gif"], 2, "no ending of a format"),
        (["in.png", "out.png", "--bits", 5], 2, '"5" is not 1, 2, 4'),
        (["in.png", "in.png"], 2, "OUT: in.png is the input"), (["in.png", "out.pfm"], 4, "out.pfm: cannot be encoded"),
        (["none.png", "out.png"], 3, "cannot be opened"),
        (["in.png", "none/out.png"], 4, "none/out.png: cannot be written"),
    ]:
        assert message in dax("convert", *arguments, status=status).err, arguments
    assert not (tmp_path / "out.pfm").exists()

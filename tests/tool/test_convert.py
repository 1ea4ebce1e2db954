"""Conversions of image files."""
import colorsys
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


@pytest.fixture
def step(dax, tmp_path):
    """Samples of a picture after steps, and what is said."""
    def run(picture, *arguments):
        (tmp_path / "in.ppm").write_bytes(picture)
        said = dax("convert", "in.ppm", "out.pnm", *arguments).err
        return list((tmp_path / "out.pnm").read_bytes().split(b"\n", 3)[3]), said
    return run


def test_channels(step, dax, tmp_path):
    reds, greens, blues = ([v[i] >> 8 for row in pictures.dots(COLOURS) for v in row] for i in range(3))
    colours = pictures.ppm(pictures.dots(COLOURS))
    assert step(colours, "--channels", "2,1,0")[0] == [v for pixel in zip(blues, greens, reds) for v in pixel]
    assert step(colours, "--pick", 1) == (greens, "")
    dax("convert", "in.ppm", "opaque.png", "--channels", "0,1,2,max")
    dax("convert", "opaque.png", "plane.pgm", "--split")
    assert sorted(each.name for each in tmp_path.glob("plane*")) == [f"plane-{i}.pgm" for i in range(4)]
    assert list((tmp_path / "plane-3.pgm").read_bytes()[-len(reds):]) == [255] * len(reds)
    dax("convert", "plane-0.pgm", "plane-1.pgm", "plane-2.pgm", "back.ppm", "--merge")
    assert (tmp_path / "back.ppm").read_bytes() == colours


def test_colour_spaces(step, dax, tmp_path):
    colours = pictures.ppm(pictures.dots(COLOURS))
    pixels = [[c >> 8 for c in v] for row in pictures.dots(COLOURS) for v in row]
    assert step(colours, "--grey", "709")[0] == [(2126 * r + 7152 * g + 722 * b + 5000) // 10000 for r, g, b in pixels]
    assert step(colours, "--grey", "0,0,2")[0] == [min(2 * b, 255) for r, g, b in pixels]
    hues, said = step(colours, "--to", "hsv:180", "--pick", 0)
    assert hues == [round(colorsys.rgb_to_hsv(*v)[0] * 180) % 180 for v in pixels]
    assert said == "dax: out.pnm: channel H (HSV, hue 180 a turn)\n"
    assert step(colours, "--read-as", "32f", "--to", "lab", "--pick", 0, "--normalise", "0..100", "--bits", 8)[1] == ""
    flat = [c for v in pixels for c in v]
    for space, coding in [("ycbcr:709:video", "Y, Cb, Cr (YCbCr, BT.709, video range)"), ("hls", "H, L, S (HLS"),
                          ("xyz", "X, Y, Z (XYZ, 32768 for 1)"), ("lab", "L, a, b (Lab, as L 65535")]:
        step(colours)
        assert "channels " + coding in dax("convert", "in.ppm", "space.tif", "--read-as", 16, "--to", space).err
        dax("convert", "space.tif", "back.ppm", "--from", space, "--bits", 8)
        assert list((tmp_path / "back.ppm").read_bytes()[-len(flat):]) == pytest.approx(flat, abs=1), space


def test_mixtures(step, dax):
    colours = pictures.ppm(pictures.dots(COLOURS))
    mixture = "0.8,0.15,0.05,0.1,0.7,0.2,0.05,0.1,0.75"
    samples = step(colours)[0]
    assert step(colours, "--matrix", "0,0,1,0,1,0,1,0,0") == step(colours, "--channels", "2,1,0")
    assert step(colours, "--matrix", mixture)[0] != samples
    assert step(colours, "--read-as", 16, "--matrix", mixture, "--unmix", mixture, "--bits", 8)[0] == samples
    assert "has an inverse" in dax("convert", "in.ppm", "out.ppm", "--unmix", "1,2,3,2,4,6,0,0,1", status=2).err


@pytest.mark.parametrize("method", ["", ":bilinear"])
def test_debayer(step, method):
    mosaic = [[(c * 257,) * 3 for c in row * 3] for row in [(20, 100), (200, 20)] * 3]
    assert step(pictures.pgm(mosaic), "--debayer", "grbg" + method)[0] == [100, 20, 200] * 36
    # Corrected values stay within the 12 bits of the file.
    deep = b"P5\n6 6\n4095\n" + struct.pack(">36H", *([4095, 0] * 3 + [4095, 4095] * 3) * 3)
    assert max(step(deep, "--debayer", "rggb" + method)[0][::2]) <= 15


def test_values(step):
    ramp = [[(257 * v,) * 3 for v in (10, 20, 30, 40, 90)]]
    assert step(pictures.pgm(ramp), "--normalise", "0..100")[0] == [0, 32, 64, 96, 255]
    assert step(pictures.pgm(ramp), "--normalise", "40..80")[0] == [0, 0, 128, 255, 255]
    assert step(pictures.pgm(ramp), "--normalise", "0..100", "--gamma", 2)[0] == [0, 4, 16, 36, 255]
    assert step(pictures.pgm(ramp), "--equalise", "global")[0] == [0, 64, 128, 191, 255]
    assert step(pictures.pgm(ramp), "--equalise", "clahe:1x1:100")[0] == [51, 102, 153, 204, 255]
    # Channels of colour alike.
    assert step(pictures.ppm([[(257 * 5, 257 * 10, 257 * 15)]]), "--normalise", "0..100")[0] == [0, 128, 255]


def test_several(dax, tmp_path):
    (tmp_path / "in").mkdir()
    for name in ("a", "b"):
        (tmp_path / f"in/{name}.ppm").write_bytes(pictures.ppm(pictures.dots(COLOURS)))
    (tmp_path / "in/c.ppm").write_bytes(b"P6\n9")
    run = dax("convert", "in", "in/b.ppm", "out", "--format", "pgm", "--grey", "601", status=1)
    renamed, damaged = run.err.splitlines()
    assert renamed == "dax: in/b.ppm: written as out/b-2.pgm" and damaged.startswith("dax: in/c.ppm: is damaged")
    assert sorted(each.name for each in (tmp_path / "out").iterdir()) == ["a.pgm", "b-2.pgm", "b.pgm"]
    for arguments, message in [(["in", "out"], "--format: of several images"), (["in"], "OUT is required"),
                               (["in", "out.png", "--format", "png"], "OUT: out.png is the name of a file"),
                               (["in", "in", "--format", "ppm"], "OUT: in/a.ppm is an input")]:
        assert message in dax("convert", *arguments, status=2).err


def test_refusals_tell_what_helps(dax, tmp_path):
    (tmp_path / "colour.ppm").write_bytes(pictures.ppm(pictures.dots(COLOURS)))
    (tmp_path / "alpha.png").write_bytes(pictures.png_rgba(pictures.dots(COLOURS)))
    (tmp_path / "deep.pgm").write_bytes(b"P5\n2 1\n4095\n\1\0\2\0")
    (tmp_path / "grey.pgm").write_bytes(b"P5 1 1 255 a")
    (tmp_path / "high.pfm").write_bytes(b"Pf\n3 1\n-1\n" + struct.pack("<3f", 0.5, 7, float("nan")))
    for line, status, message in [
        ("deep.pgm out.png --grey 601", 5, "deep.pgm: --grey takes images of 3 channels, not of 1: it is grey"),
        ("alpha.png out.png --to lab", 5, "--channels 0,1,2 drops the opacity"),
        ("colour.ppm out.png --equalise global", 5, "--grey or --pick leaves one"),
        ("colour.ppm out.png --debayer rggb", 5, "takes a mosaic, of 1 channel"),
        ("colour.ppm out.png --to xyz", 5, "does not take samples of 8 bits: --read-as 16"),
        ("colour.ppm out.png --read-as 16 --to hsv:180", 5, "leave :180 out"),
        ("colour.ppm out.png --to lab --bits 16", 5, "--read-as decides before"),
        ("colour.ppm out.png --to lab --gamma 2", 5, "would treat channels of Lab"),
        ("colour.ppm out.png --pick 3", 5, "channel 3 is not in an image of 3 channels"),
        ("deep.pgm out.png --gamma 2", 5, "does not take samples of 12 bits: --read-as 16"),
        ("high.pfm out.tif --gamma 2", 5, "samples in floating point: --read-as 16"),
        ("deep.pgm colour.ppm out.tif --merge", 5, "--merge takes images of 1 channel, not image 2 of 3"),
        ("deep.pgm grey.pgm out.tif --merge", 5, "not image 2 of 1 x 1 and samples of 8 bits"),
        ("high.pfm out.png", 4, "the format holds no floats: --bits 16"),
        ("alpha.png out.jpg", 4, "out.jpg: cannot be encoded: the format holds no opacity, which --channels 0,1,2"),
        ("deep.pgm out.jpg", 4, "--bits 8"), ("deep.pgm out.pfm", 4, "--bits 32f"),
    ]:
        assert message in dax("convert", *line.split(), status=status).err, line
        assert not list(tmp_path.glob("out.*")), line
    assert "white is 4095, which the file does not tell" in dax("convert", "deep.pgm", "out.png").err
    assert "2 samples outside 0..1 become black or white" in dax("convert", "high.pfm", "out.png", "--bits", 8).err


def test_refused(dax, tmp_path):
    (tmp_path / "in.png").write_bytes(pictures.png_rgb(pictures.dots(COLOURS)))
    for arguments, status, message in [
        (["in.png", "out.gif"], 2, "no ending of a format"),
        (["in.png", "out.png", "--format", ".png"], 2, '--format: ".png" is none of png, jpg'),
        (["in.png", "out.png", "--bits", 5], 2, '"5" is not 1, 2, 4'),
        (["in.png", "in.png"], 2, "OUT: in.png is the input"), (["in.png", "out.pfm"], 4, "out.pfm: cannot be encoded"),
        (["none.png", "out.png"], 3, "cannot be opened"),
        (["in.png", "none/out.png"], 4, "none/out.png: cannot be written"),
    ]:
        assert message in dax("convert", *arguments, status=status).err, arguments
    assert not (tmp_path / "out.pfm").exists()

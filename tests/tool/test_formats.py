"""Every format gives the grey values that it holds."""

import pictures
import pytest


def bt601(red, green, blue):
    """Of 16-bit components, to 8 bits, rounded once."""
    return (299 * red + 587 * green + 114 * blue + 128500) // 257000


LEVELS = [257 * v for v in (1, 2, 3, 20, 77, 127, 128, 129, 200, 254, 255)]
# Around the steps from one 8-bit level to the next, which lie at 257 k + 128.5.
FINE_LEVELS = LEVELS + [257 * k + d for k in (1, 100, 254) for d in (128, 129)] + [1000, 40000, 65534]
PRIMARIES = [(65535, 0, 0), (0, 65535, 0), (0, 0, 65535), (65535, 65535, 0), (257 * 12, 257 * 200, 257 * 99),
             (257 * 251, 257 * 3, 257 * 17), (257 * 3, 257 * 49, 257 * 60)]  # the last one is half way between greys
FINE_COLOURS = PRIMARIES + [(30000, 12345, 54321), (1, 65535, 40000), (12850, 12850, 12851)]


def greys(dax, path):
    """The grey values of single bright pixels, from left to right: a pixel's weighted area is grey / 255."""
    run = dax("inspect", path, "--threshold", "mask", "--gray-weighted", "--sort", "x", "--order", "asc", "--json")
    return [round(255 * blob["area"]) for blob in run.blobs]


CASES = [
    *((name, [(v, v, v) for v in LEVELS]) for name in pictures.GREY),
    *((name, [(v, v, v) for v in FINE_LEVELS]) for name in pictures.GREY16),
    *((name, PRIMARIES) for name in pictures.COLOUR),
    *((name, FINE_COLOURS) for name in pictures.COLOUR16),
]


@pytest.mark.parametrize("name, colours", CASES, ids=[name for name, _ in CASES])
def test_grey_values(dax, tmp_path, name, colours):
    (tmp_path / "dots").write_bytes(pictures.WRITERS[name](pictures.dots(colours)))
    assert greys(dax, "dots") == [bt601(*colour) for colour in colours]


def test_jpeg(dax, tmp_path):
    picture = pictures.draw(pictures.draw(pictures.blank(64, 48), 8, 16, 16, 8, 210), 40, 24, 8, 16, 240)
    (tmp_path / "blocks.jpg").write_bytes(pictures.jpeg(picture))
    run = dax("inspect", "blocks.jpg", "--json", "--gray-weighted")
    assert [(b["rect_x"], b["rect_y"], b["rect_width"], b["rect_height"]) for b in run.blobs] == [
        (40, 24, 8, 16), (8, 16, 16, 8)]
    assert [b["area"] for b in run.blobs] == pytest.approx([128 * 240 / 255, 128 * 210 / 255])


@pytest.mark.parametrize("name", pictures.WRITERS)
def test_one_pixel(dax, tmp_path, name):
    side = 8 if name == "jpeg" else 1  # a block
    (tmp_path / "one").write_bytes(pictures.WRITERS[name]([[(65535,) * 3] * side] * side))
    run = dax("inspect", "one", "--threshold", "255", "--json")
    assert len(run.blobs) == 1


def test_contents_decide_not_names(dax, tmp_path):
    """A name that means something else to a decoder is just a name."""
    content = pictures.png(pictures.draw(pictures.blank(20, 20), 5, 5, 4, 4))
    for name in ["png:picture.png", "msl:x", "x.svg", "picture.png[3]", "@list", "|cat", "-", "a%d.jpg"]:
        (tmp_path / name).write_bytes(content)
        arguments = ["--json", "--", name] if name == "-" else [name, "--json"]
        assert len(dax("inspect", *arguments).blobs) == 1


@pytest.mark.parametrize("content", [
    b"<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>", b"%!PS-Adobe-3.0\nshowpage\n", b"%PDF-1.4\n",
    b"<?xml version='1.0'?><image><read filename='other.png'/></image>", b"GIF89a" + bytes(40),
    b"viewbox 0 0 9 9\n", b"push graphic-context\n", b"P4\n8 1\n\xff", b"#!/bin/sh\n", b"\0" * 100])
def test_other_formats_are_refused(dax, tmp_path, content):
    (tmp_path / "picture.png").write_bytes(content)
    run = dax("inspect", "picture.png", status=3)
    assert "picture.png: is not a PNG, JPEG, TIFF, BMP, PGM or PPM image" in run.err


def test_tiff_that_16_bits_do_not_hold(dax, tmp_path):
    """The decoder would clip or wrap the values without a word."""
    for form, values in [("h", [-5, 7]), ("I", [9, 70000]), ("i", [-1, 7]), ("f", [0.5, 300.0])]:
        (tmp_path / "in.tif").write_bytes(pictures.tiff_of_values(form, values))
        for command in (["inspect", "in.tif"], ["range", "convert", "in.tif", "out.range"]):
            run = dax(*command, status=3)
            assert run.err == "dax: in.tif: has pixels with a sign, in floating point or of more than 16 bits\n", form
    (tmp_path / "in.tif").write_bytes(pictures.tiff_of_values("H", [9, 65535]))
    dax("range", "convert", "in.tif", "out.range")
    assert "values    -32759 to 32767" in dax("range", "info", "out.range").out


def test_harmless_oddities_are_no_errors(dax, tmp_path):
    """A broken text chunk, an unknown TIFF tag, stray bytes between JPEG segments."""
    picture = pictures.draw(pictures.blank(32, 32), 8, 8, 8, 8)
    text = pictures.png_chunk(b"tEXt", b"no separator")
    profile = pictures.png_chunk(b"iCCP", b"odd\0\0not a profile")
    tiff = bytearray(pictures.tiff(picture))
    at = tiff.index(b"\x1c\x01\x04\x00", 8 + 32 * 32)
    tiff[at : at + 2] = b"\xfe\xfe"
    jpeg = pictures.jpeg(picture).replace(b"\xff\xda", b"stray\xff\xda", 1)
    cases = {"text.png": pictures.png_of(0, 8, pictures.grey8(picture), picture, text),
             "profile.png": pictures.png_of(0, 8, pictures.grey8(picture), picture, profile),
             "tag.tif": bytes(tiff), "stray.jpg": jpeg}
    for name, content in cases.items():
        (tmp_path / name).write_bytes(content)
        assert [b["area"] for b in dax("inspect", name, "--json").blobs] == [64], name

"""Every format gives the grey values that it holds."""

import struct

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


def greys(dax, path, *options):
    """The grey values of single bright pixels, from left to right: a pixel's weighted area is grey / 255."""
    run = dax("inspect", path, "--threshold", "mask", "--gray-weighted", "--sort", "x", "--order", "asc", "--json",
              *options)
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
    levels = ["--levels", "0..65535"] if "16" in name else []
    assert greys(dax, "dots", *levels) == [bt601(*colour) for colour in colours]


DEEP = {"png": pictures.png16, "tiff": pictures.tiff_big_endian16, "pgm": pictures.pgm16,
        "pgm of 12 bits": lambda picture: pictures.pnm(b"P5", 4095, pictures.grey16(picture), picture)}


@pytest.mark.parametrize("form", DEEP)
def test_12_bits_stay_12_bits(dax, tmp_path, form):
    """Of a scan with 300..3900 used: levels lie between its grey values, and what is done to them is said."""
    picture = [[(300 + 9 * x,) * 3 for x in range(400)] for _ in range(3)]
    picture[1][7:9] = [(3900,) * 3] * 2
    (tmp_path / "in").write_bytes(DEEP[form](picture))
    deep = 12 if "12" in form else 16
    note = f"dax: in: {deep} bits a pixel, of which 300..3900 taken as 0..255\n"
    run = dax("inspect", "in", "--json")
    image = run.json["images"][0]
    assert run.err == note and (image["depth"], image["levels"]) == (deep, [300, 3900]) and image["note"] in note
    assert image["threshold"]["low"] == 2100 and len(run.blobs) == 2  # of the values, not of 8 bits of them
    for threshold, areas in (("3000", [300, 2]), ("310..320", [3]), ("..308", [3])):
        found = dax("inspect", "in", "--threshold", threshold, "--json").json["images"][0]
        assert [b["area"] for b in found["blobs"]] == areas
    image = dax("inspect", "in", "--levels", "0..600", "--json").json["images"][0]
    assert image["levels"] == [0, 600] and 300 < image["threshold"]["low"] < 600
    for command in (["caliper", "in", "--box", "7.5,1,14,1,0"], ["line", "in", "--from", "5,1", "--to", "9,1"],
                    ["chessboard", "in", "--auto"]):
        assert dax(*command, status=None).err.startswith(note) or command[0] == "chessboard"
    assert "not a grey level 0.." in dax("inspect", "in", "--threshold", 65536, status=2).err


def test_filters_keep_16_bits(dax, tmp_path):
    picture = [[(1000 + 40 * x + 3 * y,) * 3 for x in range(9)] for y in range(7)]
    (tmp_path / "in.png").write_bytes(pictures.png16(picture))
    expected = {"--median3": lambda x, y: 1000 + 40 * x + 3 * y, "--mean 3x3": lambda x, y: 1000 + 40 * x + 3 * y,
                "--mean-inside 3x3": lambda x, y: 1000 + 40 * x + 3 * y,
                "--median5": lambda x, y: 1000 + 40 * x + 3 * y}
    for option, value in expected.items():
        run = dax("filter", "in.png", "out.pgm", *option.split(), "--compare", "d.png")
        pixels = (tmp_path / "out.pgm").read_bytes().split(b"\n", 3)[3]
        assert [pixels[2 * i] * 256 + pixels[2 * i + 1] for i in range(63)][3 * 9 + 4] == value(4, 3), option
        assert run.err == "" and "grey levels" in run.out
    dax("filter", "in.png", "out.png", "--border", "constant:1:4000")
    rows, pixel = pictures.read_png((tmp_path / "out.png").read_bytes())
    assert pixel == 2 and len(rows) == 9 and bytes(rows[0][:2]) == (4000).to_bytes(2, "big")
    assert "0..255" in dax("filter", "in.png", "out.png", "--border", "constant:1:4000", "--levels", "0..9",
                           status=2).err
    assert "1000..1338 taken as" in dax("filter", "in.png", "out.png", "--box", "1").err


def test_classes_and_masks_of_16_bits(dax, tmp_path):
    """Classes are numbers, not brightnesses; in a mask any number but 0 counts."""
    picture = pictures.blank(9, 5, 0)
    picture[2][2:4], picture[2][6:7] = [(3,) * 3] * 2, [(200,) * 3]
    (tmp_path / "in.png").write_bytes(pictures.png16(picture))
    assert [(b["class"], b["area"])
            for b in dax("inspect", "in.png", "--classes", "--json").blobs] == [(3, 2), (200, 1)]
    run = dax("inspect", "in.png", "--threshold", "3", "--outside-limit", 0, "--outside-mask", "in.png", "--json")
    assert len(run.blobs) == 2
    picture[0][0] = (300,) * 3
    (tmp_path / "in.png").write_bytes(pictures.png16(picture))
    assert "has the class 300" in dax("inspect", "in.png", "--classes", status=3).err


def test_pictures_are_turned_upright(dax, tmp_path):
    orientation = 6
    picture = pictures.draw(pictures.blank(40, 24), 0, 0, 8, 8)
    exif = b"Exif\0\0II*\0" + struct.pack("<IHHHIII", 8, 1, 0x112, 3, 1, orientation, 0)
    content = pictures.jpeg(picture)
    (tmp_path / "in.jpg").write_bytes(content[:2] + pictures.jpeg_segment(b"\xe1", exif) + content[2:])
    tiff = pictures.tiff(picture).replace(struct.pack("<HHII", 284, 4, 1, 1),
                                          struct.pack("<HHII", 274, 3, 1, orientation))
    (tmp_path / "in.tif").write_bytes(tiff)
    for name in ("in.jpg", "in.tif"):
        (blob,) = dax("inspect", name, "--json").blobs
        assert (blob["rect_x"], blob["rect_y"]) == (16, 0), name


def test_further_pages_are_said(dax, tmp_path):
    page = pictures.tiff(pictures.draw(pictures.blank(20, 20), 5, 5, 4, 4))
    directory = struct.unpack_from("<I", page, 4)[0]
    (tmp_path / "in.tif").write_bytes(page[:-4] + struct.pack("<I", len(page)) + page[directory:])
    assert dax("inspect", "in.tif").err == "dax: in.tif: the first of 2 pages\n"


def test_jpeg(dax, tmp_path):
    picture = pictures.draw(pictures.draw(pictures.blank(64, 48), 8, 16, 16, 8, 210), 40, 24, 8, 16, 240)
    (tmp_path / "blocks.jpg").write_bytes(pictures.jpeg(picture))
    run = dax("inspect", "blocks.jpg", "--json", "--gray-weighted")
    assert [(b["rect_x"], b["rect_y"], b["rect_width"], b["rect_height"]) for b in run.blobs] == [
        (40, 24, 8, 16), (8, 16, 16, 8)]
    assert [b["area"] for b in run.blobs] == pytest.approx([128 * 240 / 255, 128 * 210 / 255])


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

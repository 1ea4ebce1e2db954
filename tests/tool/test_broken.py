"""No input crashes the program: whatever cannot be read is an error of one line, and stays out of the way of others."""

import os
import struct
import zlib

import pictures
import pytest

PICTURE = pictures.draw(pictures.draw(pictures.blank(32, 16), 8, 8, 8, 8), 24, 0, 8, 8, 250)


def inspect_variants(dax, tmp_path, variants):
    """Inspects many contents in one run; gives what became of each."""
    folder = tmp_path / "variants"
    folder.mkdir()
    for i, content in enumerate(variants):
        (folder / f"{i:06}.png").write_bytes(content)
    images = dax("inspect", "variants", "--json", status=1).json["images"]
    assert len(images) == len(variants)
    return images


@pytest.mark.parametrize("name", pictures.WRITERS)
def test_truncated(dax, tmp_path, name):
    """Every length but the full one is an error. A TIFF may lack the link to a next directory: nothing is lost."""
    whole = pictures.WRITERS[name](PICTURE)
    optional = 4 if name in ("tiff", "tiff_rgb", "tiff_big_endian16", "tiff_rgb16") else 0
    lengths = sorted({*range(0, len(whole), max(1, len(whole) // 150)), *range(len(whole) - 40, len(whole) + 1)})
    images = inspect_variants(dax, tmp_path, [whole[:n] for n in lengths])
    for length, image in zip(lengths, images):
        assert ("error" in image) == (length < len(whole) - optional), (length, image)
        if "error" not in image:
            assert image["blobs"] == images[-1]["blobs"]
    assert [blob["area"] for blob in images[-1]["blobs"]] == [64, 64]


@pytest.mark.parametrize("name", pictures.WRITERS)
def test_corrupted(dax, tmp_path, name):
    """Wrong bytes in header and directory: an error or another picture, never a crash."""
    whole = pictures.WRITERS[name](PICTURE)
    places = [*range(min(len(whole), 90)), *range(max(90, len(whole) - 140), len(whole))]
    variants = [whole[:at] + bytes([value]) + whole[at + 1 :] for at in places for value in (0, 0x7F, 0xFF)]
    for image in inspect_variants(dax, tmp_path, [b"", *variants]):
        assert ("error" in image) != ("blobs" in image)


def png_of_sides(width, height):
    chunk = pictures.png_chunk
    header = struct.pack(">IIBBBBB", width, height, 8, 0, 0, 0, 0)
    rows = chunk(b"IDAT", zlib.compress(bytes(1000)))
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + rows + chunk(b"IEND", b"")


def bmp_of_sides(width, height):
    content = bytearray(pictures.bmp(PICTURE))
    content[18:26] = struct.pack("<ii", width, height)
    return bytes(content)


def tiff_of_sides(width, height):
    directory = b"".join(struct.pack("<HHII", tag, 4, 1, value) for tag, value in [
        (256, width), (257, height), (258, 8), (259, 1), (262, 1), (273, 8), (278, height), (279, 100)])
    return b"II*\0" + struct.pack("<IH", 8, 8) + directory + bytes(4)


HUGE = {
    "png": png_of_sides(2**31 - 1, 2**31 - 1), "png side": png_of_sides(65537, 1),
    "png area": png_of_sides(65536, 65536),
    "bmp": bmp_of_sides(2**31 - 1, 2**31 - 1), "bmp side": bmp_of_sides(70000, 1), "bmp negative": bmp_of_sides(-1, 16),
    "bmp lowest": bmp_of_sides(32, -(2**31)), "zero": bmp_of_sides(0, 0),
    "pgm": b"P5\n99999999999 99999999999\n255\n", "pgm side": b"P5\n65537 1\n255\n" + bytes(65537),
    "pgm depth": b"P5\n4 4\n99999999999\n" + bytes(16), "pgm none": b"P5\n0 0\n255\n",
    "tiff": tiff_of_sides(2**32 - 1, 2**32 - 1), "tiff area": tiff_of_sides(60000, 60000),
    "jpeg": pictures.jpeg(PICTURE).replace(struct.pack(">HH", 16, 32), b"\xff\xff\xff\xff", 1),
}


@pytest.mark.parametrize("name", HUGE)
def test_impossible_sizes(dax, tmp_path, name):
    (tmp_path / "huge").write_bytes(HUGE[name])
    run = dax("inspect", "huge", status=3)
    assert run.err.startswith("dax: huge: ") and run.err.count("\n") == 1


def test_what_is_no_file(dax, tmp_path):
    os.mkfifo(tmp_path / "fifo.png")
    (tmp_path / "loop.png").symlink_to("loop.png")
    (tmp_path / "folder.png").mkdir()
    (tmp_path / "empty.png").write_bytes(b"")
    cases = {"fifo.png": "is not a regular file", "loop.png": "cannot be opened: Too many levels",
             "missing.png": "cannot be opened: No such file", "/dev/zero": "is not a regular file",
             "empty.png": "is empty", "folder.png": "holds no images", "a/b.png": "cannot be opened: No such file",
             "empty.png/b.png": "cannot be opened: Not a directory"}
    for name, message in cases.items():
        run = dax("inspect", name, status=3)
        assert run.err.startswith(f"dax: {name}: {message}") and run.err.count("\n") == 1, run.err
        assert run.out == ""


@pytest.mark.skipif(os.geteuid() == 0, reason="the superuser reads everything")
def test_unreadable(dax, tmp_path):
    path = tmp_path / "secret.png"
    path.write_bytes(pictures.png(PICTURE))
    path.chmod(0)
    assert "secret.png: cannot be opened: Permission denied" in dax("inspect", "secret.png", status=3).err


def test_the_others_are_inspected(dax, tmp_path):
    (tmp_path / "bad.png").write_bytes(pictures.png(PICTURE)[:-20])
    (tmp_path / "good.png").write_bytes(pictures.png(PICTURE))
    run = dax("inspect", "good.png", "bad.png", "none.png", "good.png", status=1)
    assert run.out.count("good.png: 32 x 16") == 2
    assert [line.split(": ")[1] for line in run.err.splitlines()] == ["bad.png", "none.png"]

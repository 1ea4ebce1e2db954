"""Pictures and their files, made without any imaging package.

A picture is a list of rows of (red, green, blue) with components of 0..65535. Writers of 8-bit formats keep the upper
byte of each component, writers of grey formats the red one.
"""

import struct
import zlib


def blank(width, height, grey=20):
    return [[(grey * 257,) * 3] * width for _ in range(height)]


def draw(picture, x, y, width, height, grey=200):
    """Fills a rectangle."""
    for row in picture[y : y + height]:
        row[x : x + width] = [(grey * 257,) * 3] * width
    return picture


def dots(colours):
    """Pixels of the given colours, apart from each other, on black."""
    row = [(0, 0, 0)]
    for colour in colours:
        row += [colour, (0, 0, 0)]
    black = [(0, 0, 0)] * len(row)
    return [black, row, black]


def size(picture):
    return len(picture[0]), len(picture)


def grey8(picture):
    return b"".join(bytes(p[0] >> 8 for p in row) for row in picture)


def grey16(picture, order=">"):
    return b"".join(struct.pack(order + "H", p[0]) for row in picture for p in row)


def rgb8(picture):
    return b"".join(bytes(c >> 8 for c in p) for row in picture for p in row)


def rgb16(picture, order=">"):
    return b"".join(struct.pack(order + "3H", *p) for row in picture for p in row)


def pnm(magic, depth, data, picture):
    return b"%s\n%d %d\n%d\n" % (magic, *size(picture), depth) + data


def pgm(picture):
    return pnm(b"P5", 255, grey8(picture), picture)


def pgm16(picture):
    return pnm(b"P5", 65535, grey16(picture), picture)


def pgm_text(picture):
    return pnm(b"P2", 255, b" ".join(b"%d" % v for v in grey8(picture)) + b"\n", picture)


def ppm(picture):
    return pnm(b"P6", 255, rgb8(picture), picture)


def ppm_text(picture):
    return pnm(b"P3", 255, b" ".join(b"%d" % v for v in rgb8(picture)) + b"\n", picture)


def png_chunk(name, data):
    return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))


def png_of(colour_type, depth, data, picture, *chunks):
    width, height = size(picture)
    step = len(data) // height
    rows = b"".join(b"\0" + data[y * step : (y + 1) * step] for y in range(height))
    header = struct.pack(">IIBBBBB", width, height, depth, colour_type, 0, 0, 0)
    body = png_chunk(b"IHDR", header) + b"".join(chunks) + png_chunk(b"IDAT", zlib.compress(rows))
    return b"\x89PNG\r\n\x1a\n" + body + png_chunk(b"IEND", b"")


def png(picture):
    return png_of(0, 8, grey8(picture), picture)


def png16(picture):
    return png_of(0, 16, grey16(picture), picture)


def png_rgb(picture):
    return png_of(2, 8, rgb8(picture), picture)


def png_rgb16(picture):
    return png_of(2, 16, rgb16(picture), picture)


def png_rgba(picture):
    """Half transparent throughout."""
    data = b"".join(bytes([*(c >> 8 for c in p), 128]) for row in picture for p in row)
    return png_of(6, 8, data, picture)


def read_png(content):
    """Rows of bytes and bytes per pixel, of 8-bit grey or RGB, or 16-bit grey."""
    at, parts = 8, {}
    while at < len(content):
        (length,) = struct.unpack_from(">I", content, at)
        name = content[at + 4 : at + 8]
        parts[name] = parts.get(name, b"") + content[at + 8 : at + 8 + length]
        at += 12 + length
    width, height, depth, colour_type = struct.unpack_from(">IIBB", parts[b"IHDR"])
    assert (depth, colour_type) in ((8, 0), (8, 2), (16, 0))
    pixel = 3 if colour_type == 2 else depth // 8
    data = zlib.decompress(parts[b"IDAT"])
    above, rows = bytearray(width * pixel), []
    for y in range(height):
        start = y * (1 + width * pixel)
        above = unfilter(data[start], bytearray(data[start + 1 : start + 1 + width * pixel]), above, pixel)
        rows.append(above)
    return rows, pixel


def unfilter(kind, row, above, pixel):
    for i in range(len(row)):
        left = row[i - pixel] if i >= pixel else 0
        corner = above[i - pixel] if i >= pixel else 0
        distances = [(abs(p), v) for p, v in [(above[i] - corner, left), (left - corner, above[i]),
                                              (left + above[i] - 2 * corner, corner)]]
        paeth = min(distances, key=lambda d: d[0])[1]
        row[i] = (row[i] + [0, left, above[i], (left + above[i]) // 2, paeth][kind]) & 255
    return row


def bmp(picture):
    width, height = size(picture)
    rows = [b"".join(bytes([p[2] >> 8, p[1] >> 8, p[0] >> 8]) for p in row) for row in reversed(picture)]
    data = b"".join(row.ljust((3 * width + 3) // 4 * 4, b"\0") for row in rows)
    header = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(data), 2835, 2835, 0, 0)
    return b"BM" + struct.pack("<IHHI", 54 + len(data), 0, 0, 54) + header + data


def tiff_of(order, bits, samples, data, picture):
    """Pixels first, directory last."""
    width, height = size(picture)
    photometric = 2 if samples == 3 else 1
    entries = [(256, width), (257, height), (258, bits), (259, 1), (262, photometric), (273, 8), (277, samples),
               (278, height), (279, len(data)), (284, 1)]
    if samples == 3:  # three depths do not fit the entry and follow the pixels
        depths = 8 + len(data)
        data += struct.pack(order + "3H", bits, bits, bits)
    directory = struct.pack(order + "H", len(entries))
    for tag, value in entries:
        if tag == 258 and samples == 3:
            directory += struct.pack(order + "HHII", tag, 3, 3, depths)
        else:
            directory += struct.pack(order + "HHII", tag, 4, 1, value)
    mark = b"II*\0" if order == "<" else b"MM\0*"
    return mark + struct.pack(order + "I", 8 + len(data)) + data + directory + struct.pack(order + "I", 0)


def tiff(picture):
    return tiff_of("<", 8, 1, grey8(picture), picture)


def tiff_big_endian16(picture):
    return tiff_of(">", 16, 1, grey16(picture, ">"), picture)


def tiff_rgb16(picture):
    return tiff_of("<", 16, 3, rgb16(picture, "<"), picture)


def tiff_of_values(form, values):
    """One row of numbers, by their letter in struct."""
    data = struct.pack(f"<{len(values)}{form}", *values)
    plain = tiff_of("<", 8 * len(data) // len(values), 1, data, [values])
    sample_format = {"h": 2, "i": 2, "f": 3}.get(form, 1)
    chunky = struct.pack("<HHII", 284, 4, 1, 1)  # the last entry makes room for a later tag
    return plain.replace(chunky, struct.pack("<HHII", 339, 3, 1, sample_format))


def jpeg_segment(marker, data):
    return b"\xff" + marker + struct.pack(">H", len(data) + 2) + data


def jpeg(picture):
    """Baseline grey. Only the mean of each block of 8 x 8 is kept, so blocks should be of one grey."""
    width, height = size(picture)
    grey = grey8(picture)
    bits = ""
    last = 0
    for y in range(0, height, 8):
        for x in range(0, width, 8):
            level = 8 * (grey[y * width + x] - 128)
            difference, last = level - last, level
            category = abs(difference).bit_length()
            bits += format(category, "04b")  # the table below has codes of 4 bits, in order
            if category:
                value = difference if difference > 0 else difference + (1 << category) - 1
                bits += format(value, f"0{category}b")
            bits += "0"  # end of block
    bits += "1" * (-len(bits) % 8)
    data = int(bits, 2).to_bytes(len(bits) // 8, "big").replace(b"\xff", b"\xff\0")
    return b"".join([
        b"\xff\xd8",
        jpeg_segment(b"\xdb", b"\0" + b"\1" * 64),
        jpeg_segment(b"\xc0", struct.pack(">BHHBBBB", 8, height, width, 1, 1, 0x11, 0)),
        jpeg_segment(b"\xc4", b"\x00" + bytes([0, 0, 0, 12] + [0] * 12) + bytes(range(12))),
        jpeg_segment(b"\xc4", b"\x10" + bytes([1] + [0] * 15) + b"\0"),
        jpeg_segment(b"\xda", b"\1\1\0\0\x3f\0"),
        data,
        b"\xff\xd9",
    ])


GREY = {"pgm": pgm, "pgm_text": pgm_text, "png": png, "tiff": tiff}
GREY16 = {"pgm16": pgm16, "png16": png16, "tiff_big_endian16": tiff_big_endian16}
COLOUR = {"ppm": ppm, "ppm_text": ppm_text, "png_rgb": png_rgb, "png_rgba": png_rgba, "bmp": bmp}
COLOUR16 = {"png_rgb16": png_rgb16, "tiff_rgb16": tiff_rgb16}
WRITERS = {**GREY, **GREY16, **COLOUR, **COLOUR16}

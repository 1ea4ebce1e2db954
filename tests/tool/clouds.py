"""Files of range images and point clouds, written and read the plain way."""

import struct

# Tags of the chunks of a range file.
VALUES, MASK, COLOUR, SCALE, OFFSET = 0x617D18DB, 0xA5A53D03, 0xA5A53D0B, 0xA5A53D07, 0xA5A53D08
HEIGHT, WIDTH, TYPE, CALIBRATION = 0xA5A53D02, 0xA5A53D01, 1, 2


def chunk(tag, payload):
    return payload + struct.pack("<II", tag, len(payload))


def range_file(rows, mask=None, scale=(1, 1, 1), offset=(0, 0, 0), more=b""):
    """Values by row, and None where a pixel is invalid; `mask` replaces what follows from that."""
    if mask is None:
        mask = bytes(0 if v is None else 255 for row in rows for v in row)
    values = [v or 0 for row in rows for v in row]
    return (chunk(VALUES, struct.pack(f"<{len(values)}h", *values)) + chunk(MASK, mask) + more
            + chunk(SCALE, struct.pack("<3f", *scale)) + chunk(OFFSET, struct.pack("<3f", *offset))
            + chunk(TYPE, struct.pack("<I", 0)) + chunk(HEIGHT, struct.pack("<i", len(rows)))
            + chunk(WIDTH, struct.pack("<i", len(rows[0]))))


def read_range(content):
    """Rows as above, scale, offset."""
    parts, end = {}, len(content)
    while end >= 8:
        tag, size = struct.unpack_from("<II", content, end - 8)
        parts[tag] = content[end - 8 - size : end - 8]
        end -= 8 + size
    assert end == 0
    width, height = (struct.unpack("<i", parts[tag])[0] for tag in (WIDTH, HEIGHT))
    values = struct.unpack(f"<{width * height}h", parts[VALUES])
    valid = [v if m else None for v, m in zip(values, parts[MASK], strict=True)]
    return ([valid[y * width : (y + 1) * width] for y in range(height)], struct.unpack("<3f", parts[SCALE]),
            struct.unpack("<3f", parts[OFFSET]))


def ply(points, form="ascii", names=("x", "y", "z"), count=None, eol="\n", more="", types=None):
    types = types or ["float"] * len(names)
    count = len(points) if count is None else count
    header = ["ply", f"format {form} 1.0", f"element vertex {count}",
              *(f"property {t} {n}" for t, n in zip(types, names)), *more.splitlines(), "end_header"]
    return "".join(line + eol for line in header).encode() + rows_of(points, form == "ascii", types)


def pcd(points, data="ascii", names=("x", "y", "z"), sides=None, count=None):
    width, height = sides or (len(points), 1)
    many = len(names)
    header = ["# .PCD v0.7 - Point Cloud Data file format", "VERSION 0.7", "FIELDS " + " ".join(names),
              "SIZE" + " 4" * many, "TYPE" + " F" * many, "COUNT" + " 1" * many, f"WIDTH {width}", f"HEIGHT {height}",
              "VIEWPOINT 0 0 0 1 0 0 0", f"POINTS {len(points) if count is None else count}", f"DATA {data}"]
    return "".join(line + "\n" for line in header).encode() + rows_of(points, data == "ascii", ["float"] * many)


CODES = {"char": "b", "uchar": "B", "short": "h", "ushort": "H", "int": "i", "uint": "I", "float": "f", "double": "d"}


def rows_of(points, text, types):
    if text:
        return "".join(" ".join(map(repr, point)) + "\n" for point in points).encode()
    return b"".join(struct.pack("<" + "".join(CODES[t] for t in types), *point) for point in points)


def read_cloud(content):
    """The rows of a file that the program writes."""
    end = b"end_header\n" if content.startswith(b"ply\n") else b"\nDATA "
    header, body = content.split(end, 1)
    if end == b"\nDATA ":
        form, body = body.split(b"\n", 1)
        text, names = form == b"ascii", header.split(b"FIELDS ")[1].split(b"\n")[0].split()
        count = int(header.split(b"POINTS ")[1].split()[0])
        sizes, types = (header.split(key)[1].split(b"\n")[0].split() for key in (b"SIZE ", b"TYPE "))
        codes = "".join({"F4": "f", "F8": "d", "U1": "B", "I2": "h"}[(t + n).decode()] for t, n in zip(types, sizes))
    else:
        text, names = b"format ascii" in header, header.split(b"property ")[1:]
        count = int(header.split(b"element vertex ")[1].split()[0])
        codes = "".join(CODES[name.split()[0].decode()] for name in names)
    if text:
        points = [tuple(map(float, line.split())) for line in body.splitlines()]
    else:
        points = list(struct.iter_unpack("<" + codes, body))
    assert len(points) == count
    return points


def single(value):
    """Rounded to single precision."""
    return struct.unpack("<f", struct.pack("<f", value))[0]

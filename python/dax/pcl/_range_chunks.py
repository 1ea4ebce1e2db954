"""What a range file says about its parts (dax3dpcl/range_file.h), before the library reads it."""
import os
import struct
from typing import NamedTuple, Union

import numpy as np

_TRAILER, _HEADER = struct.Struct("<II"), struct.Struct("<IIII")
_WIDTH, _HEIGHT, _RANGE, _MASK, _COLOUR, _TYPE = 0xA5A53D01, 0xA5A53D02, 0x617D18DB, 0xA5A53D03, 0xA5A53D0B, 1
_FIXED: dict[int, tuple[str, tuple[int, ...]]] = {
    **{_WIDTH: ("width", (4,)), _HEIGHT: ("height", (4,)), _TYPE: ("type", (4,))},
    **{0xA5A53D07: ("scale", (12,)), 0xA5A53D08: ("offset", (12,)), 2: ("calibration", (140, 280))},
}


class Chunk(NamedTuple):
    """A part: tag, size in bytes, and its first 16 bytes."""

    tag: int
    size: int
    start: bytes


def read_chunks(path: Union[str, bytes]) -> list[Chunk]:
    """The parts of a file, the last one first, as far as it consists of such."""
    chunks = []
    with open(path, "rb") as file:
        end = file.seek(0, os.SEEK_END)
        while end >= _TRAILER.size:
            file.seek(end - _TRAILER.size)
            tag, size = _TRAILER.unpack(file.read(_TRAILER.size))
            end -= _TRAILER.size + size
            if end < 0:
                break
            file.seek(end)
            chunks.append(Chunk(tag, size, file.read(min(size, _HEADER.size))))
    return chunks


def not_finite(**triples: tuple[float, float, float]) -> list[str]:
    """What is wrong with the numbers of a header that the checks of the library let pass, and a file may hold."""
    largest = np.finfo(np.float32).max
    return [f"{name} {each}: not finite" for name, each in triples.items() if not (np.abs(each) <= largest).all()]


def wrong_chunks(chunks: list[Chunk]) -> list[str]:
    """Which parts do not have the size that they should have. Of several sides the last in the file counts, of others
    the first."""
    faults: list[str] = []
    sides: dict[int, int] = {}
    for tag, size, start in chunks:
        name, sizes = _FIXED.get(tag, ("", (size,)))
        if size not in sizes:
            faults.append(f"{name} has {size} bytes, needed are " + " or ".join(map(str, sizes)))
        elif tag in (_WIDTH, _HEIGHT):
            sides.setdefault(tag, struct.unpack("<i", start[:4])[0])
    pixels = sides.get(_WIDTH, 0) * sides.get(_HEIGHT, 0)
    last = {chunk.tag: chunk for chunk in chunks}
    for tag, name, each in ((_RANGE, "range values", 2), (_MASK, "mask", 1)):
        # An empty mask is none.
        if tag in last and last[tag].size != each * pixels and (last[tag].size or tag == _RANGE):
            faults.append(f"{name}: {last[tag].size} bytes, needed are {each * pixels}")
    if _COLOUR in last:
        faults += _wrong_colour(last[_COLOUR])
    return faults


def _wrong_colour(chunk: Chunk) -> list[str]:
    if chunk.size < _HEADER.size:
        return [f"colour has {chunk.size} bytes, needed are at least {_HEADER.size}"]
    _, width, height, _ = _HEADER.unpack(chunk.start)
    have, needed = chunk.size - _HEADER.size, 3 * width * height
    return (
        [f"colour of {width} x {height} pixels has {have} bytes, needed are {needed}"]
        if have not in (0, needed)
        else []
    )

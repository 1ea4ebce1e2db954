"""Image files: PNG, JPEG, TIFF, BMP, PGM, PPM, PFM and raw samples."""
import os
from typing import Any, NamedTuple, Optional, Union

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, choice, pointer
from .._interface import ffi
from .._library import call, codecs
from ..errors import Error

__all__ = ["ImageInfo", "imread", "imwrite", "image_info"]

Path = Union[str, "os.PathLike[str]"]

_FORMATS = {"": 0, "bmp": 1, "pnm": 2, "pfm": 3, "raw": 4, "png": 5, "jpeg": 6, "tiff": 7}
_TYPES: dict[int, "np.dtype[Any]"] = {1: np.dtype(np.uint8), 2: np.dtype(np.uint16), 3: np.dtype(np.float32)}
_COMPRESSIONS = {"none": 0, "lzw": 1, "deflate": 2}
_PLAIN = ("bmp", "pnm", "pfm", "raw")


class ImageInfo(NamedTuple):
    """What an image file holds."""

    shape: tuple[int, ...]
    dtype: "np.dtype[Any]"
    bits: int
    max_value: int
    orientation: int
    pages: int
    format: str


def image_info(
    file: Union[Path, bytes], *, upright: bool = False, page: int = 0, max_pixels: int = 2**28
) -> ImageInfo:
    """What a file holds, by its head; file: a path, or the bytes of one.

    >>> dax.image_info(b"P5 3 2 255 abcdef").shape
    (2, 3)
    """
    return _described(_query(file, _read_cfg(upright, page, max_pixels, None))[2])


def imread(
    file: Union[Path, bytes],
    *,
    upright: bool = True,
    page: int = 0,
    max_pixels: int = 2**28,
    raw: Optional[tuple[tuple[int, ...], Any]] = None,
) -> Array:
    """The image of a file, (height, width) or (height, width, channels) of uint8, uint16 or float32.

    file: a path, or the bytes of a file. Channels are red, green, blue, alpha. upright: turned as the file says that it
    was taken. max_pixels: larger ones are refused. raw: (shape, dtype) of a file of samples only.

    >>> dax.imread(b"P5 3 2 255 abcdef")
    array([[ 97,  98,  99],
           [100, 101, 102]], dtype=uint8)
    """
    prefix, given, record = _query(file, cfg := _read_cfg(upright, page, max_pixels, raw))
    info = _described(record)
    result = np.empty(info.shape, info.dtype)
    kind = "Memory" if isinstance(file, bytes) else "File"
    _call(prefix, f"ImageRead{kind}", *given, cfg, record, pointer(result, "void"), record.width * record.channels)
    return result


def imwrite(
    path: Path,
    image: ArrayLike,
    *,
    format: str = "",
    quality: int = 95,
    level: int = 6,
    compression: str = "lzw",
    bits: int = 0,
    max_value: int = 0,
) -> None:
    """Writes an image, uint8, uint16 or float32 of 1 to 4 channels. The file is complete, or the old one.

    format: "png", "jpeg", "tiff", "bmp", "pnm", "pfm" or "raw", where the ending of the name does not tell. quality: of
    JPEG, 1..100. level: of PNG and of deflated TIFF, 0..9. compression: of TIFF. bits: 1, 2 or 4 for PNG files of fewer
    grey levels. max_value: the largest value of deep PGM and PPM files.

    >>> import tempfile
    >>> with tempfile.TemporaryDirectory() as folder:
    ...     dax.imwrite(folder + "/a.pgm", np.eye(2, dtype=np.uint8))
    ...     dax.imread(folder + "/a.pgm")
    array([[1, 0],
           [0, 1]], dtype=uint8)
    """
    array = np.asarray(image)
    if array.dtype == bool:
        array = array.astype(np.uint8) * np.uint8(255)
    types = {dtype: code for code, dtype in _TYPES.items()}
    if array.dtype not in types:
        raise TypeError(f"image: pixels of type {array.dtype}; taken are uint8, uint16, float32")
    if array.ndim not in (2, 3) or (array.ndim == 3 and not 1 <= array.shape[2] <= 4) or 0 in array.shape:
        raise ValueError(f"image: shape {array.shape}, an image is (height, width) or (height, width, 1..4)")
    array = np.ascontiguousarray(array)
    record = ffi.new("DaxiImageRecord*")
    record.height, record.width = array.shape[:2]
    record.channels = array.shape[2] if array.ndim == 3 else 1
    record.type, record.bits, record.maxValue, record.orientation = types[array.dtype], bits, max_value, 1
    cfg = ffi.new("DaxiImageWriteCfg*")
    call("DAXI_ImageWriteDefaultCfg", cfg)
    cfg.format, cfg.quality, cfg.level = choice("format", format, _FORMATS), quality, level
    cfg.compression = choice("compression", compression, _COMPRESSIONS)
    name = os.fspath(path)
    ending = os.path.splitext(name)[1].lower()
    plain = format in _PLAIN or (not format and ending in (".bmp", ".pgm", ".ppm", ".pnm", ".pfm", ".raw"))
    prefix = "DAXI_" if plain else "DAXIO_"
    step = record.width * record.channels
    _call(prefix, "ImageWriteFile", record, pointer(array, "void"), step, cfg, os.fsencode(name))


def _read_cfg(upright: bool, page: int, max_pixels: int, raw: Optional[tuple[tuple[int, ...], Any]]) -> Any:
    cfg = ffi.new("DaxiImageReadCfg*")
    call("DAXI_ImageReadDefaultCfg", cfg)
    cfg.upright, cfg.page, cfg.maxPixels = int(upright), page, max_pixels
    if raw is not None:
        shape, dtype = raw[0], np.dtype(raw[1])
        cfg.format = _FORMATS["raw"]
        cfg.rawHeight, cfg.rawWidth = shape[:2]
        cfg.rawChannels = shape[2] if len(shape) > 2 else 1
        cfg.rawBigEndian = int(dtype.newbyteorder("=") != dtype)
        types = {each: code for code, each in _TYPES.items()}
        if dtype.newbyteorder("=") not in types:
            raise TypeError(f"raw: samples of type {dtype}; taken are uint8, uint16, float32")
        cfg.rawType = types[dtype.newbyteorder("=")]
    return cfg


def _query(file: Union[Path, bytes], cfg: Any) -> tuple[str, tuple[Any, ...], Any]:
    """Which library reads a file, the file as its arguments, and its record. The codecs are needed for their formats
    only."""
    record = ffi.new("DaxiImageRecord*")
    given: tuple[Any, ...]
    if isinstance(file, bytes):
        head, kind = file[:4], "Memory"
        given = (ffi.from_buffer(file), len(file))
    else:
        with open(file, "rb") as stream:
            head = stream.read(4)
        given, kind = (os.fsencode(file),), "File"
    magics = (b"\x89PNG", b"II*\0", b"MM\0*", b"II+\0", b"MM\0+", b"\xff\xd8\xff")
    coded = cfg.format == 0 and head.startswith(magics)
    prefix = "DAXIO_" if coded else "DAXI_"
    _call(prefix, f"ImageInfo{kind}", *given, cfg, record)
    return prefix, given, record


def _call(prefix: str, name: str, *arguments: Any) -> None:
    if prefix == "DAXI_":
        call(prefix + name, *arguments)
        return
    message = ffi.new("DaxioMessage*")
    status = getattr(codecs(), prefix + name)(*arguments, message)
    if status:
        said = ffi.string(message.text).decode(errors="replace")
        raise Error("DAXI_" + name, status, said or "see the contract")


def _described(record: Any) -> ImageInfo:
    shape: tuple[int, ...] = (record.height, record.width)
    if record.channels > 1:
        shape += (record.channels,)
    names = {code: name for name, code in _FORMATS.items()}
    return ImageInfo(shape, _TYPES[record.type], record.bits, record.maxValue, record.orientation, record.pages,
                     names[record.format])

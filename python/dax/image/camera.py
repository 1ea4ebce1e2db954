"""What cameras send: Bayer patterns, packed pixels, YUV; and the correction of sensors."""
from typing import Any, Literal, NamedTuple, Optional

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, choice, of_shape, pointer, refuse_overlap, source, target
from .._interface import ffi
from .._library import call
from ..pool import Pool, handle_of
from .colour import RANGES, STANDARDS, Range, Standard

__all__ = [
    "Mended",
    "bayer_phase_at",
    "decode_yuv420",
    "decode_yuv422",
    "demosaic",
    "flat_field",
    "luma2gray",
    "pack_pixels",
    "replace_defects",
    "unpack_pixels",
]

Pattern = Literal["RGGB", "GRBG", "GBRG", "BGGR"]
_PATTERNS = {"RGGB": 0, "GRBG": 1, "GBRG": 2, "BGGR": 3}
_METHODS = {"bilinear": "Bilinear", "mhc": "MHC"}
_BITS = {"Mono10p": 10, "Mono12p": 12, "Mono10Packed": 12, "Mono12Packed": 12}
_FORMATS = {name: name for name in _BITS}
_BYTES, _RAW = (np.dtype(np.uint8),), (np.dtype(np.uint8), np.dtype(np.uint16))
_TO = {"rgb": "RGB", "bgr": "BGR"}


def _on(pool: Optional[Pool], function: str, arguments: list[Any]) -> None:
    if pool is None:
        call(function, *arguments)
        return
    threads, handle = handle_of(pool)
    call(function + "_MT", handle, threads, *arguments)


def demosaic(
    image: ArrayLike,
    pattern: Pattern = "RGGB",
    *,
    method: Literal["mhc", "bilinear"] = "mhc",
    to: Literal["rgb", "bgr", "gray"] = "rgb",
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """Colours, or grey, from a Bayer pattern, uint8 or uint16. pattern: the 2 x 2 pixels at the top left, row by row.
    method: "mhc" of Malvar, He and Cutler, sharper, or "bilinear".

    >>> dax.demosaic(np.array([[200, 100], [100, 50]], np.uint8), method="bilinear")[0, 0]
    array([200, 100,  50], dtype=uint8)
    """
    src = source("image", image, _RAW)
    phase = choice("pattern", pattern, _PATTERNS)
    kind = choice("to", to, {"rgb": "", "bgr": "", "gray": "ToGray"})
    dst = target("out", out, src.array.shape + (() if kind else (3,)), src.array.dtype)
    refuse_overlap(("image", src), ("out", dst))
    layout = "C1R" if kind else "C1C3R"
    name = f"DAXI_Bayer{choice('method', method, _METHODS)}{kind}_{src.suffix}_{layout}"
    swapped = 3 - phase if to == "bgr" else phase
    _on(pool, name, [src.pointer, src.step, dst.pointer, dst.step, src.size, swapped])
    return dst.array


def bayer_phase_at(pattern: Pattern, x: int, y: int) -> str:
    """The pattern of the part of an image that begins at column x and row y.

    >>> dax.bayer_phase_at("RGGB", 1, 0)
    'GRBG'
    """
    at = ffi.new("int32_t*")
    call("DAXI_BayerPhaseAt", choice("pattern", pattern, _PATTERNS), x, y, at)
    return str(list(_PATTERNS)[at[0]])


def unpack_pixels(
    data: ArrayLike, shape: tuple[int, int], pixel_format: str, *, step: int = 0, out: Optional[Array] = None
) -> Array:
    """Pixels of 10 or 12 bits as uint16, not scaled. data: the bytes, one dimension. pixel_format: "Mono10p", "Mono12p"
    (also Bayer...10p, 12p), "Mono10Packed" or "Mono12Packed" of GigE Vision. step: bytes from row to row; 0: pixels run
    on through the rows.

    >>> dax.unpack_pixels(np.array([0x23, 0x61, 0x45], np.uint8), (1, 2), "Mono12p")
    array([[ 291, 1110]], dtype=uint16)
    """
    name = choice("pixel_format", pixel_format, _FORMATS)
    stream = np.ascontiguousarray(data, np.uint8)
    rows, columns = shape
    dst = target("out", out, (rows, columns), np.uint16)
    needed = (rows - 1) * step + _packed(columns if step else rows * columns, name)
    if stream.ndim != 1 or len(stream) < needed:
        raise ValueError(f"data: {stream.shape}, needed are {needed} bytes")
    call(f"DAXI_Unpack{name}_8u16u_C1R", pointer(stream, "uint8_t"), step, dst.pointer, dst.step, dst.size)
    return dst.array


def pack_pixels(image: ArrayLike, pixel_format: str, *, step: int = 0) -> Array:
    """The bytes of uint16 pixels in a format of `unpack_pixels`. Larger values become the largest.

    >>> [hex(byte) for byte in dax.pack_pixels(np.array([[0x123, 0x456]], np.uint16), "Mono12Packed")]
    ['0x12', '0x63', '0x45']
    """
    name = choice("pixel_format", pixel_format, _FORMATS)
    src = source("image", image, (np.dtype(np.uint16),))
    rows, columns = src.array.shape
    stream = np.zeros(max(rows - 1, 0) * step + _packed(columns if step else rows * columns, name), np.uint8)
    call(f"DAXI_Pack{name}_16u8u_C1R", src.pointer, src.step, pointer(stream, "uint8_t"), step, src.size)
    return stream


def _packed(pixels: int, name: str) -> int:
    return (pixels * _BITS[name] + 7) // 8


def decode_yuv420(
    y: ArrayLike,
    *chroma: ArrayLike,
    order: Literal["uv", "vu"] = "uv",
    to: Literal["rgb", "bgr"] = "rgb",
    standard: Standard = "bt601",
    range: Range = "video",
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """Colours of a plane of Y and chroma of half its size: one plane of pairs (NV12, with order="vu" NV21), of twice as
    many columns, or two planes, U and V (I420).

    >>> dax.decode_yuv420(np.full((2, 2), 235, np.uint8), np.full((1, 2), 128, np.uint8))[0, 0]
    array([255, 255, 255], dtype=uint8)
    """
    luma = source("y", y, _BYTES)
    rows, columns = ((side + 1) // 2 for side in luma.array.shape)
    colours = choice("to", to, _TO)
    if len(chroma) == 1:
        planes = [of_shape("chroma", chroma[0], (rows, 2 * columns))]
        name = f"DAXI_{choice('order', order, {'uv': 'NV12', 'vu': 'NV21'})}To{colours}_8u_P2C3R"
    elif len(chroma) == 2:
        planes = [of_shape("chroma", each, (rows, columns)) for each in chroma]
        name = f"DAXI_I420To{colours}_8u_P3C3R"
    else:
        raise TypeError("chroma: one plane of pairs, or two planes")
    dst = target("out", out, (*luma.array.shape, 3), np.uint8)
    refuse_overlap(("y", luma), *(("chroma", plane) for plane in planes[:1]), ("out", dst))
    sources = [part for plane in (luma, *planes) for part in (plane.pointer, plane.step)]
    codes = [choice("standard", standard, STANDARDS), choice("range", range, RANGES)]
    _on(pool, name, [*sources, dst.pointer, dst.step, luma.size, *codes])
    return dst.array


def decode_yuv422(
    pairs: ArrayLike,
    *,
    width: Optional[int] = None,
    order: Literal["yuyv", "uyvy"] = "yuyv",
    to: Literal["rgb", "bgr", "gray"] = "rgb",
    standard: Standard = "bt601",
    range: Range = "video",
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """Colours, or grey, of packed pairs of pixels, four bytes each: uint8 (height, 4 * pairs). width: of the image,
    where it is odd.

    >>> dax.decode_yuv422(np.array([[16, 128, 235, 128]], np.uint8), to="gray")
    array([[  0, 255]], dtype=uint8)
    """
    src = source("pairs", pairs, _BYTES)
    rows, size = src.array.shape
    columns = size // 2 if width is None else width
    if size % 4 or columns not in (size // 2, size // 2 - 1):
        raise ValueError(f"pairs: {size} bytes a row for a width of {columns}")
    kind = choice("to", to, {**_TO, "gray": "Gray"})
    dst = target("out", out, (rows, columns) + (() if to == "gray" else (3,)), np.uint8)
    refuse_overlap(("pairs", src), ("out", dst))
    images = [src.pointer, src.step, dst.pointer, dst.step, {"width": columns, "height": rows}]
    name = f"DAXI_{choice('order', order, {'yuyv': 'YUYV', 'uyvy': 'UYVY'})}To{kind}_8u_C2"
    code = choice("range", range, RANGES)
    if to == "gray":
        call(name + "C1R", *images, code)
    else:
        _on(pool, name + "C3R", [*images, choice("standard", standard, STANDARDS), code])
    return dst.array


def luma2gray(y: ArrayLike, *, range: Range = "video", out: Optional[Array] = None) -> Array:
    """Grey of a plane of Y.

    >>> dax.luma2gray(np.array([[16, 235]], np.uint8))
    array([[  0, 255]], dtype=uint8)
    """
    src = source("y", y, _BYTES)
    dst = target("out", out, src.array.shape, np.uint8)
    refuse_overlap(("y", src), ("out", dst))
    call("DAXI_YToGray_8u_C1R", src.pointer, src.step, dst.pointer, dst.step, src.size, choice("range", range, RANGES))
    return dst.array


def flat_field(
    image: ArrayLike,
    dark: ArrayLike,
    gain: ArrayLike,
    *,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """(image - dark) * gain, uint8 or uint16, rounded and saturated; 0 where the dark frame is brighter. `out` may be
    the image. pool: works in bands of rows.

    gain: float32; light.mean() / light, where light is flat.astype(np.float32) - dark and flat the frame of an even
    white surface. Of a Bayer pattern each of the four places has a mean of its own.

    >>> dax.flat_field(np.array([[30, 5]], np.uint8), np.full((1, 2), 10, np.uint8), np.full((1, 2), 1.5, np.float32))
    array([[30,  0]], dtype=uint8)
    """
    src = source("image", image, _RAW)
    shape, dtype = src.array.shape, src.array.dtype
    offset, factor = of_shape("dark", dark, shape, (dtype,)), of_shape("gain", gain, shape, (np.dtype(np.float32),))
    dst = target("out", out, shape, dtype)
    refuse_overlap(("image", src), ("out", dst), in_place=True)
    refuse_overlap(("dark", offset), ("out", dst))
    images = [part for each in (src, offset, factor, dst) for part in (each.pointer, each.step)]
    _on(pool, f"DAXI_FlatField_{src.suffix}_C1R", [*images, src.size])
    return dst.array


class Mended(NamedTuple):
    """An image without defects, and how many could not be mended."""

    image: Array
    unmended: int


def replace_defects(
    image: ArrayLike, defects: ArrayLike, *, distance: Literal[1, 2] = 1, out: Optional[Array] = None
) -> Mended:
    """Replaces the pixels that `defects` marks (uint8 or bool) by the mean of the nearest good ones to the left, right,
    above and below. distance: 2 in Bayer patterns. `out` may be the image.

    >>> dax.replace_defects(np.array([[10, 99, 21]], np.uint8), np.array([[False, True, False]])).image
    array([[10, 16, 21]], dtype=uint8)
    """
    src = source("image", image, _RAW)
    marks = of_shape("defects", defects, src.array.shape)
    dst = target("out", out, src.array.shape, src.array.dtype)
    refuse_overlap(("image", src), ("out", dst), in_place=True)
    refuse_overlap(("defects", marks), ("out", dst))
    unmended = ffi.new("int64_t*")
    images = [part for each in (src, marks, dst) for part in (each.pointer, each.step)]
    call(f"DAXI_ReplaceDefects_{src.suffix}_C1R", *images, src.size, distance, unmended)
    return Mended(dst.array, int(unmended[0]))

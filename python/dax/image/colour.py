"""Colour: grey, YCbCr, HSV, HLS, XYZ, Lab, matrices and white balance. Channels are the last axis, red first unless
bgr=True."""
from typing import Any, Literal, Optional, Sequence, Union

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, choice, numbers, refuse_overlap, source, target
from .._interface import ffi
from .._library import buffer, call
from ..pool import Pool, handle_of

__all__ = [
    "colour_matrix",
    "gray2rgb",
    "gray_world_gains",
    "hls2rgb",
    "hsv2rgb",
    "lab2rgb",
    "rgb2gray",
    "rgb2hls",
    "rgb2hsv",
    "rgb2lab",
    "rgb2xyz",
    "rgb2ycbcr",
    "white_balance",
    "white_patch_gains",
    "xyz2rgb",
    "ycbcr2rgb",
]

Standard = Literal["bt601", "bt709"]
Range = Literal["video", "full"]
STANDARDS = {"bt601": 0, "bt709": 1}
RANGES = {"video": 0, "full": 1}
_TYPES = (np.dtype(np.uint8), np.dtype(np.uint16), np.dtype(np.float32))


def _convert(
    function: str,
    image: ArrayLike,
    *parameters: Any,
    out: Optional[Array],
    pool: Optional[Pool] = None,
    types: Any = _TYPES,
    layouts: tuple[str, str] = ("C3", "C3"),
) -> Array:
    """Calls function(source, step, out, step, size, parameters...) for a type, or its form for a pool."""
    src = source("image", image, types, layouts[0])
    shape = src.array.shape[:2] + ((3,) if layouts[1] == "C3" else ())
    dst = target("out", out, shape, src.array.dtype)
    refuse_overlap(("image", src), ("out", dst), in_place=layouts == ("C3", "C3"))
    arguments = [src.pointer, src.step, dst.pointer, dst.step, src.size, *parameters]
    layout = "C3R" if layouts == ("C3", "C3") else f"{layouts[0]}{layouts[1]}R"
    name = f"{function}_{src.suffix}_{layout}"
    if pool is not None:
        threads, handle = handle_of(pool)
        name, arguments = name + "_MT", [handle, threads, *arguments]
    call(name, *arguments)
    return dst.array


def _order(bgr: bool) -> str:
    return "BGR" if bgr else "RGB"


def rgb2gray(
    image: ArrayLike,
    weights: Union[Standard, Sequence[float]] = "bt601",
    *,
    bgr: bool = False,
    out: Optional[Array] = None,
) -> Array:
    """Grey of colours: uint8, uint16 or float32, (height, width, 3).

    weights: "bt601" (0.299, 0.587, 0.114), "bt709" (0.2126, 0.7152, 0.0722), or one number for each channel as they lie
    in the image. Integers of the standards are exact, halves up.

    >>> dax.rgb2gray(np.array([[[255, 0, 0], [0, 255, 0]]], np.uint8))
    array([[ 76, 150]], dtype=uint8)
    """
    form: Any = {"out": out, "layouts": ("C3", "C1")}
    if isinstance(weights, str):
        return _convert(f"DAXI_{_order(bgr)}ToGray", image, choice("weights", weights, STANDARDS), **form)
    own = ffi.new("double[3]", list(numbers("weights", weights, (3,), np.float64)))
    return _convert("DAXI_ColourToGray", image, own, **form)


def gray2rgb(image: ArrayLike, *, out: Optional[Array] = None) -> Array:
    """Grey as colours: each pixel three times.

    >>> dax.gray2rgb(np.array([[7]], np.uint8))
    array([[[7, 7, 7]]], dtype=uint8)
    """
    return _convert("DAXI_GrayToRGB", image, out=out, layouts=("C1", "C3"))


def rgb2ycbcr(
    image: ArrayLike,
    *,
    standard: Standard = "bt601",
    range: Range = "video",
    bgr: bool = False,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """Luma and colour differences, in the order Y, Cb, Cr. range: "video" (Y 16..235) or "full"; others in proportion,
    float32 in 0..1.

    >>> dax.rgb2ycbcr(np.array([[[255, 255, 255]]], np.uint8))
    array([[[235, 128, 128]]], dtype=uint8)
    """
    codes = choice("standard", standard, STANDARDS), choice("range", range, RANGES)
    return _convert(f"DAXI_{_order(bgr)}ToYCbCr", image, *codes, out=out, pool=pool)


def ycbcr2rgb(
    image: ArrayLike,
    *,
    standard: Standard = "bt601",
    range: Range = "video",
    bgr: bool = False,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """Colours of Y, Cb, Cr. Arguments as for `rgb2ycbcr`.

    >>> dax.ycbcr2rgb(np.array([[[235, 128, 128]]], np.uint8))
    array([[[255, 255, 255]]], dtype=uint8)
    """
    codes = choice("standard", standard, STANDARDS), choice("range", range, RANGES)
    return _convert(f"DAXI_YCbCrTo{_order(bgr)}", image, *codes, out=out, pool=pool)


def _hue(function: str, image: ArrayLike, hue180: bool, out: Optional[Array], pool: Optional[Pool]) -> Array:
    array = np.asarray(image)
    if array.dtype == np.uint8:
        return _convert(function, array, int(hue180), out=out, pool=pool)
    if hue180:
        raise ValueError("hue180: of uint8 only")
    return _convert(function, array, out=out, pool=pool)


def rgb2hsv(
    image: ArrayLike,
    *,
    hue180: bool = False,
    bgr: bool = False,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None
) -> Array:
    """Hue, saturation, value. A turn of the hue is 256 (uint8; with hue180 180), 65536 (uint16) or 360 degrees
    (float32).

    >>> dax.rgb2hsv(np.array([[[0, 128, 0]]], np.uint8))
    array([[[ 85, 255, 128]]], dtype=uint8)
    """
    return _hue(f"DAXI_{_order(bgr)}ToHSV", image, hue180, out, pool)


def hsv2rgb(
    image: ArrayLike,
    *,
    hue180: bool = False,
    bgr: bool = False,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None
) -> Array:
    """Colours of hue, saturation, value. Arguments as for `rgb2hsv`.

    >>> dax.hsv2rgb(np.array([[[0, 255, 128]]], np.uint8))
    array([[[128,   0,   0]]], dtype=uint8)
    """
    return _hue(f"DAXI_HSVTo{_order(bgr)}", image, hue180, out, pool)


def rgb2hls(
    image: ArrayLike,
    *,
    hue180: bool = False,
    bgr: bool = False,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None
) -> Array:
    """Hue, lightness, saturation. Arguments as for `rgb2hsv`.

    >>> dax.rgb2hls(np.array([[[255, 0, 0]]], np.uint8))
    array([[[  0, 128, 255]]], dtype=uint8)
    """
    return _hue(f"DAXI_{_order(bgr)}ToHLS", image, hue180, out, pool)


def hls2rgb(
    image: ArrayLike,
    *,
    hue180: bool = False,
    bgr: bool = False,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None
) -> Array:
    """Colours of hue, lightness, saturation. Arguments as for `rgb2hsv`.

    >>> dax.hls2rgb(np.array([[[0, 255, 0]]], np.uint8))
    array([[[255, 255, 255]]], dtype=uint8)
    """
    return _hue(f"DAXI_HLSTo{_order(bgr)}", image, hue180, out, pool)


def rgb2xyz(
    image: ArrayLike,
    *,
    linear: bool = False,
    bgr: bool = False,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None
) -> Array:
    """XYZ of sRGB colours, uint16 (1 is 32768) or float32 (colours in 0..1). linear: the image has linear light.

    >>> dax.rgb2xyz(np.ones((1, 1, 3), np.float32)).round(4)
    array([[[0.9505, 1.    , 1.0891]]], dtype=float32)
    """
    return _convert(f"DAXI_{'' if linear else 'S'}{_order(bgr)}ToXYZ", image, out=out, pool=pool, types=_TYPES[1:])


def xyz2rgb(
    image: ArrayLike,
    *,
    linear: bool = False,
    bgr: bool = False,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None
) -> Array:
    """sRGB colours of XYZ. Arguments as for `rgb2xyz`.

    >>> dax.xyz2rgb(np.zeros((1, 1, 3), np.uint16))
    array([[[0, 0, 0]]], dtype=uint16)
    """
    return _convert(f"DAXI_XYZTo{'' if linear else 'S'}{_order(bgr)}", image, out=out, pool=pool, types=_TYPES[1:])


def rgb2lab(image: ArrayLike, *, bgr: bool = False, out: Optional[Array] = None, pool: Optional[Pool] = None) -> Array:
    """CIE L*a*b* of sRGB colours: float32 L 0..100; uint8 L 255 / 100, a + 128, b + 128; uint16 L 65535 / 100, 256 a +
    32768.

    >>> dax.rgb2lab(np.array([[[255, 255, 255]]], np.uint8))
    array([[[255, 128, 128]]], dtype=uint8)
    """
    return _convert(f"DAXI_{_order(bgr)}ToLab", image, out=out, pool=pool)


def lab2rgb(image: ArrayLike, *, bgr: bool = False, out: Optional[Array] = None, pool: Optional[Pool] = None) -> Array:
    """sRGB colours of L*a*b*. Arguments as for `rgb2lab`.

    >>> dax.lab2rgb(np.array([[[255, 128, 128]]], np.uint8))
    array([[[255, 255, 255]]], dtype=uint8)
    """
    return _convert(f"DAXI_LabTo{_order(bgr)}", image, out=out, pool=pool)


def colour_matrix(
    image: ArrayLike, matrix: ArrayLike, *, out: Optional[Array] = None, pool: Optional[Pool] = None
) -> Array:
    """A linear map of the channels, uint8 or uint16, rounded and saturated, or float32. matrix: (3, 3), a row for each
    channel of the result, or (3, 4) with what is added as last column. Where the columns of `mixed` are the colours
    that three sources have alone, np.linalg.inv(mixed) gives the share of each.

    >>> dax.colour_matrix(np.array([[[1, 2, 3]]], np.uint8), np.eye(3)[::-1])
    array([[[3, 2, 1]]], dtype=uint8)
    """
    rows = numbers("matrix", matrix, (3, None), np.float64)
    if rows.shape[1] == 3:
        rows = np.hstack([rows, np.zeros((3, 1))])
    if rows.shape[1] != 4:
        raise ValueError(f"matrix: shape {rows.shape}, needed is (3, 3) or (3, 4)")
    return _convert("DAXI_ColourMatrix", image, ffi.new("double[12]", list(rows.ravel())), out=out, pool=pool)


def white_balance(
    image: ArrayLike, gains: ArrayLike, *, out: Optional[Array] = None, pool: Optional[Pool] = None
) -> Array:
    """Each channel times its gain.

    >>> dax.white_balance(np.array([[[100, 100, 100]]], np.uint8), (1.5, 1, 2))
    array([[[150, 100, 200]]], dtype=uint8)
    """
    own = ffi.new("double[3]", list(numbers("gains", gains, (3,), np.float64)))
    return _convert("DAXI_WhiteBalance", image, own, out=out, pool=pool)


def gray_world_gains(image: ArrayLike) -> Array:
    """Gains of the channels that make the mean of the image grey; green has 1. Saturated pixels do not count.

    >>> dax.gray_world_gains(np.array([[[10, 20, 40], [255, 0, 0]]], np.uint8))
    array([2. , 1. , 0.5])
    """
    src = source("image", image, _TYPES, "C3")
    gains = ffi.new("double[3]")
    call(f"DAXI_GrayWorld_{src.suffix}_C3R", src.pointer, src.step, src.size, gains)
    return np.array(list(gains))


def white_patch_gains(image: ArrayLike, percentile: float = 0.99) -> Array:
    """Gains of the channels that make their brightest levels alike, those of a percentile of 0..1; green has 1.
    Saturated pixels do not count.

    >>> dax.white_patch_gains(np.array([[[10, 20, 40], [5, 5, 5]]], np.uint8))
    array([2. , 1. , 0.5])
    """
    src = source("image", image, _TYPES, "C3")
    gains = ffi.new("double[3]")
    work = buffer(f"DAXI_WhitePatchBufferSize_{src.suffix}_C3R")
    call(f"DAXI_WhitePatch_{src.suffix}_C3R", src.pointer, src.step, src.size, float(percentile), gains, work)
    return np.array(list(gains))

"""Masks and weights of what is bright."""
from typing import Literal, NamedTuple, Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import BYTES, Array, Image, choice, refuse_overlap, source, target
from .._interface import ffi
from .._library import call
from .._operation import apply

__all__ = ["Thresholded", "invert", "otsu", "relative_soft_weights", "soft_weights", "threshold"]

_METHODS = {"copy": 1, "single": 2, "band": 3, "otsu": 4, "soft": 5, "relative-soft": 6}


class Thresholded(NamedTuple):
    """A binarised image and the levels that were applied."""

    image: Array
    low: int
    high: int


def threshold(
    image: ArrayLike,
    method: Literal["copy", "single", "band", "otsu", "soft", "relative-soft"] = "otsu",
    *,
    inverted: bool = False,
    low: int = 0,
    high: int = 255,
    soft: int = 0,
    tails: tuple[float, float] = (0.05, 0.05),
    positions: tuple[float, float] = (0.4, 0.6),
    out: Optional[Array] = None,
) -> Thresholded:
    """Binarises an 8-bit image: 255 where it is bright, 0 where it is dark. `inverted` gives 255 minus that.

    otsu: bright is above Otsu's level, which is returned. single: bright is at least `low`. band: bright is `low` to
    `high`, both included; with low > high what is below `high` or above `low`. copy: the image as it is. soft: `soft`
    grey levels between `low` and `high`. relative-soft: the same between levels found in the histogram: `tails` are the
    shares of darkest and brightest pixels left out, `positions` the ends of the ramp between the levels found (0..1).
    `out` may be the image itself.

    >>> dax.threshold(np.array([[10, 12, 200, 210]], np.uint8))
    Thresholded(image=array([[  0,   0, 255, 255]], dtype=uint8), low=12, high=12)
    """
    code = choice("method", method, _METHODS)
    src = source("image", image, BYTES)
    dst = target("out", out, src.array.shape, np.uint8)
    refuse_overlap(("image", src), ("out", dst), in_place=True)
    images = src.pointer, src.step, dst.pointer, dst.step, dst.size
    if method == "band" and inverted == (low <= high):
        call("DAXI_ThresholdBin_out_range_is_255_NEON", *images, min(low, high), max(low, high))
        return Thresholded(dst.array, low, high)
    if method == "band":
        t1, t2 = min(low, high), max(low, high)
    elif method == "otsu":
        level = _otsu_level(src)
        code, t1, t2 = _METHODS["single"], level + 1, 0
    else:
        t1, t2 = low, high
    cfg = ffi.new(
        "DaxiThresholdBinCfg*",
        {
            "method": code,
            # A ramp that rises has polarity 1.
            "polarity": int(inverted != (method in ("soft", "relative-soft"))),
            "darkTail": tails[0],
            "brightTail": tails[1],
            "lowPos": positions[0],
            "highPos": positions[1],
            "soft": soft,
            "softLow": low,
            "softHigh": high,
            "t1": t1,
            "t2": t2,
        },
    )
    levels = ffi.new("uint8_t[2]")
    call("DAXI_ThresholdBinV2_8u_C1R", *images, cfg, levels, levels + 1)
    if method == "otsu":
        return Thresholded(dst.array, level, level)
    return Thresholded(dst.array, low if method == "band" else levels[0], high if method == "band" else levels[1])


def _otsu_level(src: Image) -> int:
    """The level of the dark class: what is above it is bright."""
    levels, scratch = ffi.new("uint8_t[2]"), target("out", None, src.array.shape, np.uint8)
    cfg = ffi.new("DaxiThresholdBinCfg*", {"method": _METHODS["otsu"]})
    images = src.pointer, src.step, scratch.pointer, scratch.step, src.size
    call("DAXI_ThresholdBinV2_8u_C1R", *images, cfg, levels, levels + 1)
    return int(levels[0])


def otsu(image: ArrayLike, out: Optional[Array] = None) -> NDArray[np.uint8]:
    """Two classes by Otsu's level: 255 strictly above it. `out` may be the image itself.

    >>> dax.otsu(np.array([[10, 12, 200, 210]], np.uint8))
    array([[  0,   0, 255, 255]], dtype=uint8)
    """
    src = source("image", image, BYTES)
    dst = target("out", out, src.array.shape, np.uint8)
    np.copyto(dst.array, src.array)
    call("DAXI_AdpThresholdOtsu_8u_C1IR", dst.pointer, dst.step, dst.size)
    return dst.array


def soft_weights(
    image: ArrayLike, low: int, high: int, soft: int = 254, out: Optional[Array] = None
) -> NDArray[np.float32]:
    """How bright pixels are between two levels, as weights: 0 up to `low`, 1 from `high` on, and `soft` (0..254) steps
    in between.

    image: (height, width) uint8. 0 <= low < high <= 255.

    >>> dax.soft_weights(np.array([[10, 20, 25, 30]], np.uint8), 20, 30, soft=1)
    array([[0. , 0. , 0.5, 1. ]], dtype=float32)
    """
    name = "DAXI_ThresholdSoftBin_{type}_{layout}R"
    return apply(name, {"image": image}, low, high, soft, types="8u32f", out=out)


def relative_soft_weights(
    image: ArrayLike,
    tails: tuple[float, float] = (0.05, 0.05),
    positions: tuple[float, float] = (0.4, 0.6),
    soft: int = 254,
    out: Optional[Array] = None,
) -> NDArray[np.float32]:
    """As `soft_weights`, between levels found in the histogram: `tails` are the shares of darkest and brightest pixels
    left out, `positions` the ends of the ramp between the levels found (0..1).

    >>> dax.relative_soft_weights(np.array([[10, 20, 25, 30]], np.uint8), (0, 0), (0, 1), soft=3)
    array([[0.  , 0.5 , 0.75, 1.  ]], dtype=float32)
    """
    name = "DAXI_ThresholdRelativeSoft_{type}_{layout}R"
    return apply(name, {"image": image}, *tails, *positions, soft, types="8u32f", out=out)


def invert(image: ArrayLike, out: Optional[Array] = None) -> NDArray[np.uint8]:
    """255 minus each pixel. `out` may be the image itself.

    >>> dax.invert(np.array([[0, 1, 255]], np.uint8))
    array([[255, 254,   0]], dtype=uint8)
    """
    return apply("DAXI_ThresholdBin_0to255_{type}_{layout}R_NEON", {"image": image}, types="8u", out=out, in_place=True)

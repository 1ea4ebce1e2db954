"""Noise in images."""
from typing import Any, Literal, NamedTuple, Optional, Sequence

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, Image, choice, of_shape, source
from .._interface import ffi
from .._library import buffer, call
from .._records import view
from ..pool import Pool, handle_of

__all__ = ["NoiseByLevel", "noise_by_level", "noise_by_level_of_frames", "noise_level"]

_TYPES = tuple(np.dtype(each) for each in (np.uint8, np.uint16, np.int16, np.float32))
_METHODS = {"mad": "Mad", "immerkaer": "Immerkaer"}


class NoiseByLevel(NamedTuple):
    """Points by grey level: the levels, the variances of the noise there, and how many blocks or pixels tell each."""

    levels: Array
    variances: Array
    counts: Array


def noise_level(
    image: ArrayLike,
    method: Literal["mad", "immerkaer"] = "mad",
    *,
    low: Optional[float] = None,
    high: Optional[float] = None,
    pool: Optional[Pool] = None,
) -> float:
    """The standard deviation of the noise, in grey levels.

    image: (height, width) uint8, uint16, int16 or float32, at least 3 x 3. method: mad takes the median of a
    high-pass, which stands texture and edges; immerkaer its mean, for images that are mostly smooth. low, high:
    pixels at or beyond them are clipped and do not count; by default the ends of the type, for 12 bits in uint16 give
    high=4095.

    >>> round(dax.noise_level(np.tile(np.array([[9, 11], [11, 9]], np.float32), (4, 4)), "immerkaer"), 3)
    3.342
    """
    src = source("image", image, _TYPES)
    sigma = ffi.new("double*")
    method_name = choice("method", method, _METHODS)
    arguments = (src.pointer, src.step, src.size, *limits_of(src, low, high), sigma)
    if pool is None:
        call(f"DAXI_Noise{method_name}_{src.suffix}_C1R", *arguments)
    else:
        threads, handle = handle_of(pool)
        measures = (src.size, threads) if method == "mad" else (src.size,)
        work = buffer(f"DAXI_Noise{method_name}BufferSize_{src.suffix}_MT", *measures)
        call(f"DAXI_Noise{method_name}_{src.suffix}_C1R_MT", handle, threads, *arguments, work)
    return float(sigma[0])


def noise_by_level(
    image: ArrayLike,
    *,
    block: int = 16,
    bins: int = 16,
    min_count: int = 8,
    share: float = 0.25,
    low: Optional[float] = None,
    high: Optional[float] = None,
    pool: Optional[Pool] = None,
) -> NoiseByLevel:
    """The variance of the noise by grey level, from one image.

    The image is split in blocks, 8 to 64 pixels wide and high, and the range of their means in bins of one width. The
    variance of a bin comes from the block of that share of the bin's blocks, counted from the smoothest: texture in a
    fifth of them raises a deviation by 2 per cent, in half of them by 7. Bins with fewer than min_count blocks are
    left out. low, high: as of noise_level.

    >>> image = np.tile(np.array([[9, 11], [11, 9]], np.float32), (16, 16))
    >>> dax.noise_by_level(image, block=8).levels
    array([10.])
    """
    src = source("image", image, _TYPES)
    cfg = _cfg(src, block, bins, min_count, share, low, high)
    arguments = (src.pointer, src.step, src.size, cfg)
    work = buffer("DAXI_NoiseLevelFunctionBufferSize", src.size, cfg)
    if pool is None:
        return _points(f"DAXI_NoiseLevelFunction_{src.suffix}_C1R", arguments, bins, work)
    threads, handle = handle_of(pool)
    return _points(f"DAXI_NoiseLevelFunction_{src.suffix}_C1R_MT", (handle, threads, *arguments), bins, work)


def noise_by_level_of_frames(
    frames: Sequence[ArrayLike],
    *,
    bins: int = 16,
    min_count: int = 8,
    low: Optional[float] = None,
    high: Optional[float] = None,
) -> NoiseByLevel:
    """The variance of the noise by grey level, from two frames or more of a scene that stands still.

    frames: 2 to 1024 images of one type and shape. Texture is no noise here, nor is a light that flickers; what moves
    is. Other parameters as of noise_by_level; a bin is told by min_count pixels.

    >>> dax.noise_by_level_of_frames([np.float32([[1, 2, 1, 2]]), np.float32([[2, 1, 1, 2]])], min_count=1, bins=1)
    NoiseByLevel(levels=array([1.5]), variances=array([0.25]), counts=array([4], dtype=uint64))
    """
    stack = stack_of(frames)
    src = stack[0]
    cfg = _cfg(src, 16, bins, min_count, 0.25, low, high)
    work = buffer("DAXI_NoiseLevelFramesBufferSize", len(stack), cfg)
    pointers = ffi.new(f"{src.ctype}*[]", [each.pointer for each in stack])
    arguments = (pointers, len(stack), src.step, src.size, cfg)
    return _points(f"DAXI_NoiseLevelFrames_{src.suffix}_C1R", arguments, bins, work)


def limits_of(src: Image, low: Optional[float], high: Optional[float]) -> tuple[float, float]:
    """What was given, or the ends of the image's type."""
    ends = (-np.inf, np.inf) if src.suffix == "32f" else (np.iinfo(src.array.dtype).min, np.iinfo(src.array.dtype).max)
    return float(ends[0] if low is None else low), float(ends[1] if high is None else high)


def stack_of(frames: Sequence[ArrayLike]) -> list[Image]:
    """Images of one shape, type and step."""
    if not 2 <= len(frames) <= 1024:
        raise ValueError(f"frames: {len(frames)}, needed are 2 to 1024")
    first = source("frames", frames[0], _TYPES)
    stack = [of_shape("frames", each, first.array.shape, (first.array.dtype,)) for each in frames]
    if len({each.step for each in stack}) > 1:
        return [source("frames", np.ascontiguousarray(each.array)) for each in stack]
    return stack


def _cfg(
    src: Image,
    block: int,
    bins: int,
    min_count: int,
    share: float,
    low: Optional[float],
    high: Optional[float],
) -> Any:
    cfg = ffi.new("DaxiNoiseLevelCfg*")
    call(f"DAXI_NoiseLevelDefaultCfg_{src.suffix}", cfg)
    cfg.block, cfg.bins, cfg.minCount, cfg.share = block, bins, min_count, share
    cfg.low, cfg.high = limits_of(src, low, high)
    return cfg


def _points(name: str, arguments: tuple[Any, ...], bins: int, work: Any) -> NoiseByLevel:
    points, count = ffi.new("DaxiNoiseLevel[]", bins), ffi.new("int32_t*")
    call(name, *arguments, points, count, work)
    found = view("DaxiNoiseLevel", points, count[0])
    return NoiseByLevel(*(found[each].copy() for each in ("level", "variance", "count")))

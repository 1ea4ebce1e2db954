"""Texture: local binary patterns, co-occurrence of grey levels, Laws' energies."""
from typing import Any, Literal, NamedTuple, Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import Array, Window, as_size, choice, pair, source
from .._filters import FILTER_BORDERS, FilterMode
from .._interface import ffi
from .._library import buffer, call
from .._operation import apply
from ..pool import Pool, handle_of

__all__ = [
    "HaralickFeatures",
    "co_occurrence",
    "co_occurrence4",
    "haralick_features",
    "laws_energy",
    "local_binary_pattern",
    "local_binary_pattern_histogram",
]

Codes = Literal["plain", "rotation", "uniform"]
LawsVector = Literal["L5", "E5", "S5", "W5", "R5"]
_CODES = {"plain": 0, "rotation": 1, "uniform": 2}
_VECTORS = {"L5": 0, "E5": 1, "S5": 2, "W5": 3, "R5": 4}
_TYPES = tuple(np.dtype(each) for each in (np.uint8, np.uint16, np.float32))


def _patterns(points: int, radius: float, codes: str, mode: str, value: float) -> Any:
    cfg = ffi.new("DaxiLbpCfg*")
    call("DAXI_LBPDefaultCfg", cfg)
    cfg.points, cfg.radius, cfg.codes = points, radius, choice("codes", codes, _CODES)
    cfg.border, cfg.value = choice("mode", mode, FILTER_BORDERS), value
    return cfg


def local_binary_pattern(
    image: ArrayLike,
    points: int = 8,
    radius: float = 0,
    codes: Codes = "plain",
    *,
    mode: FilterMode = "replicate",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """Which neighbours of each pixel are at least as bright as it is: bit 0 that to the east, the next ones clockwise.

    image: (height, width) uint8, uint16 or float32. points: 4 to 24 on a circle of this radius, 0.5 to 32 pixels;
    radius 0: the eight pixels around. codes: plain patterns, uint8 of up to 8 points, uint16 of up to 16; rotation:
    the smallest number that turning them gives; uniform: how many bits are set, where they lie in one piece on the
    circle, else points + 1, uint8. mode: what lies outside the image; value: of mode constant. pool: threads.

    >>> dax.local_binary_pattern(np.array([[9, 9, 9], [1, 5, 7], [1, 1, 1]], np.uint8))[1, 1:2]
    array([225], dtype=uint8)
    """
    cfg = _patterns(points, radius, codes, mode, value)
    types = "8u 16u8u 32f8u" if points <= 8 or codes == "uniform" else "8u16u 16u 32f16u"
    name = "DAXI_LBP_{type}_{layout}R"
    return apply(name, {"image": image}, cfg, types=types, out=out, pooled=name + "_MT", pool=pool)


def local_binary_pattern_histogram(
    image: ArrayLike,
    points: int = 8,
    radius: float = 0,
    codes: Codes = "uniform",
    *,
    mode: FilterMode = "replicate",
    value: float = 0,
    pool: Optional[Pool] = None,
) -> NDArray[np.uint64]:
    """How often each code of local_binary_pattern occurs: points + 2 numbers, or 2**points of codes that are not
    uniform. Arguments as of local_binary_pattern.

    >>> dax.local_binary_pattern_histogram(np.array([[1, 2], [1, 2]], np.uint8), 4, 1)
    array([0, 0, 0, 2, 2, 0], dtype=uint64)
    """
    src = source("image", image, _TYPES)
    cfg, length = _patterns(points, radius, codes, mode, value), ffi.new("int32_t*")
    call("DAXI_LBPCodeCount", cfg, length)
    counts = np.empty(length[0], np.uint64)
    arguments = [src.pointer, src.step, src.size, cfg, ffi.cast("uint64_t*", counts.ctypes.data)]
    name = f"DAXI_LBPHistogram_{src.suffix}_C1R"
    if pool is not None:
        threads, handle = handle_of(pool)
        work = buffer(f"DAXI_LBPHistogramBufferSize_{src.suffix}_MT", cfg, threads)
        name, arguments = name + "_MT", [handle, threads, *arguments, work]
    call(name, *arguments)
    return counts


def _co_occurrence(
    name: str,
    shape: tuple[int, ...],
    image: ArrayLike,
    offset: tuple[int, int],
    levels: int,
    limits: Optional[tuple[int, int]],
    symmetric: bool,
    pool: Optional[Pool],
) -> NDArray[np.uint32]:
    src = source("image", image, _TYPES[:2])
    cfg = ffi.new("DaxiCoOccurrenceCfg*")
    call("DAXI_CoOccurrenceDefaultCfg", cfg)
    cfg.dx, cfg.dy = offset
    cfg.low, cfg.high = limits if limits is not None else (0, np.iinfo(src.array.dtype).max)
    cfg.levels, cfg.symmetric = levels, bool(symmetric)
    function, work = f"DAXI_{name}_{src.suffix}_C1R", f"DAXI_{name}BufferSize_{src.suffix}"
    before: list[Any] = []
    measures: list[Any] = [src.size, cfg]
    if pool is not None:
        threads, handle = handle_of(pool)
        function, before = function + "_MT", [handle, threads]
        work, measures = work + "_MT", [*measures, threads]
    memory = buffer(work, *measures)
    counts = np.empty((*shape, levels, levels), np.uint32)
    call(function, *before, src.pointer, src.step, src.size, cfg, ffi.cast("uint32_t*", counts.ctypes.data), memory)
    return counts


def co_occurrence(
    image: ArrayLike,
    offset: tuple[int, int] = (1, 0),
    levels: int = 32,
    *,
    limits: Optional[tuple[int, int]] = None,
    symmetric: bool = True,
    pool: Optional[Pool] = None,
) -> NDArray[np.uint32]:
    """How often a pixel of one level has, at an offset, one of another: an array (levels, levels).

    image: (height, width) uint8 or uint16. offset: (dx, dy), y downwards. levels: 2 to 256, into which the values from
    limits[0] to limits[1], by default all, are divided evenly. symmetric: pairs count in both orders. pool: threads.

    >>> dax.co_occurrence(np.array([[0, 0, 200, 200]], np.uint8), levels=2, symmetric=False)
    array([[1, 1],
           [0, 1]], dtype=uint32)
    """
    dx, dy = pair("offset", offset, "(dx, dy)")
    return _co_occurrence("CoOccurrence", (), image, (dx, dy), levels, limits, symmetric, pool)


def co_occurrence4(
    image: ArrayLike,
    distance: int = 1,
    levels: int = 32,
    *,
    limits: Optional[tuple[int, int]] = None,
    symmetric: bool = True,
    pool: Optional[Pool] = None,
) -> NDArray[np.uint32]:
    """The same for four directions in one pass: 0, 45, 90 and 135 degrees, which are the offsets (d, 0), (d, -d),
    (0, -d) and (-d, -d). An array (4, levels, levels).

    >>> dax.co_occurrence4(np.array([[0, 200], [0, 200]], np.uint8), levels=2)[2]
    array([[2, 0],
           [0, 2]], dtype=uint32)
    """
    return _co_occurrence("CoOccurrence4", (4,), image, (distance, 0), levels, limits, symmetric, pool)


class HaralickFeatures(NamedTuple):
    """The features f1 to f14 of Haralick, Shanmugam and Dinstein 1973; entropies in bits."""

    angular_second_moment: float
    contrast: float
    correlation: float
    sum_of_squares: float
    inverse_difference: float
    sum_average: float
    sum_variance: float
    sum_entropy: float
    entropy: float
    difference_variance: float
    difference_entropy: float
    information_measure1: float
    information_measure2: float
    maximal_correlation: float


def haralick_features(counts: ArrayLike) -> HaralickFeatures:
    """Fourteen numbers that describe a texture, from the counts of co_occurrence: (levels, levels) uint32.

    >>> dax.haralick_features(np.array([[3, 1], [1, 3]], np.uint32)).contrast
    0.25
    """
    matrix = source("counts", counts, (np.dtype(np.uint32),)).array
    if matrix.shape[0] != matrix.shape[1]:
        raise ValueError(f"counts: shape {matrix.shape}, needed is (levels, levels)")
    matrix, levels = np.ascontiguousarray(matrix), len(matrix)
    features, work = ffi.new("DaxiHaralickFeatures*"), buffer("DAXI_HaralickFeaturesBufferSize", levels)
    call("DAXI_HaralickFeatures", ffi.cast("uint32_t*", matrix.ctypes.data), levels, features, work)
    return HaralickFeatures(*np.frombuffer(ffi.buffer(features)).tolist())


def laws_energy(
    image: ArrayLike,
    across: LawsVector = "L5",
    down: LawsVector = "E5",
    window: Window = 15,
    *,
    mode: FilterMode = "replicate",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """Texture energy by Laws: the mean, over a window, of the magnitude of an image filtered by 5 x 5 pixels; float32.

    image: (height, width) uint8, uint16 or float32. across, down: the filter along rows and along columns: level L5,
    edge E5, spot S5, wave W5, ripple R5. window: pixels each way, or (width, height), up to 32767; it ends at the
    image. mode: what the filter finds outside the image; value: of mode constant. pool: threads.

    >>> dax.laws_energy(np.tile(np.array([0, 0, 9], np.uint8), (3, 3)), "R5", "L5", 3)[1, 3:6]
    array([576., 576., 576.], dtype=float32)
    """
    cfg = ffi.new("DaxiLawsEnergyCfg*")
    call("DAXI_LawsEnergyDefaultCfg", cfg)
    cfg.across, cfg.down = choice("across", across, _VECTORS), choice("down", down, _VECTORS)
    cfg.window, cfg.border, cfg.value = as_size(window), choice("mode", mode, FILTER_BORDERS), value
    name, work = "DAXI_LawsEnergy_{type}_{layout}R", "DAXI_LawsEnergyBufferSize_{type}"
    form: dict[str, Any] = {"work": work, "measures": (cfg,), "pooled": name + "_MT", "pool": pool, "out": out}
    return apply(name, {"image": image}, cfg, types="8u32f 16u32f 32f", **form)

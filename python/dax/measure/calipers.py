"""Calipers: edges and pairs of edges across a region, to a fraction of a pixel.

A region is sampled into a profile along its search direction; extrema of the profile's derivative beyond a threshold
are edges, which are scored by criteria and ranked. Lengths are pixels, angles radians from x towards y, pixel centres
lie at whole numbers. A region that reaches beyond the image, and stripes too narrow for the filter, give a warning.
"""
import dataclasses
from typing import Any, Callable, Literal, NamedTuple, Optional, Sequence

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import BYTES, Array, choice, of_shape, source, warn
from .._interface import ffi
from .._library import buffer, call
from .._records import view
from ..pool import Pool, handle_of
from .regions import REGIONS, Region, checked, half_a_pixel_on, longest, record_of

__all__ = [
    "EdgePairs",
    "Edges",
    "Profile",
    "Ramp",
    "find_edge_pairs",
    "find_edge_pairs_in",
    "find_edges",
    "find_edges_in",
]


class Ramp(NamedTuple):
    """How a value scores. Rising: 0 below x0, low up to x1, from low to high up to x2, high beyond. Falling: high below
    x0, from high to low up to x1, low up to x2, 0 beyond.

    x0 <= x1 <= x2 in units of the value, 0 <= low <= high <= 1.
    """

    x0: float
    x1: float
    x2: float
    low: float = 0.0
    high: float = 1.0
    falling: bool = False


Polarity = Literal["dark-to-light", "light-to-dark", "any"]
Along = Literal["width", "height"]
PairPolarity = Literal["dark-to-light", "light-to-dark", "any", "staircase"]
_POLARITIES = {"dark-to-light": 1, "light-to-dark": 2, "any": 3}
_OPPOSITE, _STAIRCASE = 0, 3  # "any" of pairs is both polarities in turn
_PAIR_POLARITIES = {"dark-to-light": 1, "light-to-dark": 2, "any": _OPPOSITE, "staircase": _STAIRCASE}
_ALONG = {"height": 0, "width": 1}
# By their contrast: 255 grey levels score 1.
_BY_CONTRAST = Ramp(0, 0, 255)


class Profile(NamedTuple):
    """What an edge was found in: grey values along the search direction, and the response of the derivative filter."""

    gray: NDArray[np.float32]
    response: NDArray[np.float32]
    kernel_length: int


@dataclasses.dataclass(frozen=True)
class _Found:
    points: NDArray[np.float32]
    position: NDArray[np.float32]
    score: NDArray[np.float32]
    profile: Optional[Profile]

    def __len__(self) -> int:
        return len(self.score)


@dataclasses.dataclass(frozen=True)
class Edges(_Found):
    """Edges, the best first.

    points: (n, 2) x, y in the image. position: from the centre of the profile, along the search direction. score: 0..1.
    polarity: 1 dark to light, 2 light to dark. peak: response at the position, grey levels for filter half widths up to
    5. gray, response: of the profile at `index`. profile: where it was asked for.
    """

    polarity: NDArray[np.uint32]
    peak: NDArray[np.float32]
    gray: NDArray[np.float32]
    response: NDArray[np.float32]
    index: NDArray[np.int32]


@dataclasses.dataclass(frozen=True)
class EdgePairs(_Found):
    """Pairs of edges, the best first.

    points: (n, 2, 2) x, y of the first and the second edge. position: of their middle. width: between them. contrast:
    sum of both peaks' magnitudes. gray: sum of both grey values. positions, peaks: (n, 2) of the two edges. polarity:
    (n, 2).
    """

    width: NDArray[np.float32]
    contrast: NDArray[np.float32]
    gray: NDArray[np.float32]
    positions: NDArray[np.float32]
    peaks: NDArray[np.float32]
    polarity: NDArray[np.uint32]


def find_edges(
    image: ArrayLike,
    region: Region,
    *,
    along: Along = "width",
    polarity: Polarity = "any",
    threshold: float = 10.0,
    half_width: int = 2,
    max_count: int = 100,
    only: int = 0,
    contrast: Optional[Ramp] = None,
    distance: Optional[Ramp] = None,
    offset: Optional[Ramp] = None,
    gray: Optional[Ramp] = None,
    min_score: float = 0.0,
    fine: bool = False,
    mask: Optional[ArrayLike] = None,
    profile: bool = False,
) -> Edges:
    """Finds edges across a region.

    image: (height, width) uint8; int16 too for boxes without mask and profile. region: Box, Rhomboid or Annulus, its
    centre in the image. along: search direction; "width" of an annulus is its radius, "height" its arc. threshold:
    minimum response, grey levels for half_width up to 5. half_width: of the derivative filter, 1..50. max_count: edges
    returned, at least 1. only: k >= 1 returns the k-th edge along the profile alone, or the last. contrast, distance
    (from the centre), offset (signed), gray: ramps that score an edge; without any, the contrast out of 255. Edges of
    score 0 are none. min_score: minimum score. fine: positions are the mean of two samplings half a pixel apart, which
    takes most of the error of blurred edges away and twice the time. mask: as the image; pixels of 0 are not used.
    profile: return the profile too.

    >>> image = np.zeros((20, 40), np.uint8); image[:, 20:] = 100
    >>> edges = dax.find_edges(image, dax.Box(20, 10, 20, 10), polarity="dark-to-light")
    >>> edges.points, edges.response
    (array([[19.5, 10. ]], dtype=float32), array([-100.], dtype=float32))
    """
    ramps = {"contrast": contrast, "distance": distance, "offset": offset, "gray": gray}
    cfg = _configuration("Edge", along, polarity, threshold, half_width, max_count, only, ramps, min_score)
    return _edges(*_find("Edge", image, region, cfg, mask, profile, fine))


def find_edges_in(
    image: ArrayLike,
    regions: Sequence[Region],
    *,
    along: Along = "width",
    polarity: Polarity = "any",
    threshold: float = 10.0,
    half_width: int = 2,
    max_count: int = 100,
    only: int = 0,
    contrast: Optional[Ramp] = None,
    distance: Optional[Ramp] = None,
    offset: Optional[Ramp] = None,
    gray: Optional[Ramp] = None,
    min_score: float = 0.0,
    fine: bool = False,
    pool: Optional[Pool] = None,
) -> list[Edges]:
    """As `find_edges` for many regions of one kind in one call, in a uint8 image; on a pool where there is one.

    >>> image = np.zeros((20, 40), np.uint8); image[:, 20:] = 100
    >>> found = dax.find_edges_in(image, [dax.Box(20, y, 20, 3) for y in (5, 10)])
    >>> [edges.points.tolist() for edges in found]
    [[[19.5, 5.0]], [[19.5, 10.0]]]
    """
    ramps = {"contrast": contrast, "distance": distance, "offset": offset, "gray": gray}
    cfg = _configuration("Edge", along, polarity, threshold, half_width, max_count, only, ramps, min_score)
    return [_edges(*found) for found in _find_in("Edge", image, regions, cfg, pool, fine)]


def find_edge_pairs(
    image: ArrayLike,
    region: Region,
    *,
    expected_width: float = 1.0,
    along: Along = "width",
    polarity: PairPolarity = "any",
    threshold: float = 10.0,
    half_width: int = 2,
    max_count: int = 100,
    only: int = 0,
    contrast: Optional[Ramp] = None,
    position: Optional[Ramp] = None,
    signed_position: Optional[Ramp] = None,
    relative_position: Optional[Ramp] = None,
    signed_relative_position: Optional[Ramp] = None,
    relative_width: Optional[Ramp] = None,
    width_error: Optional[Ramp] = None,
    signed_width_error: Optional[tuple[Ramp, Ramp]] = None,
    straddle: Optional[Ramp] = None,
    gray: Optional[Ramp] = None,
    min_score: float = 0.0,
    fine: bool = False,
    mask: Optional[ArrayLike] = None,
    profile: bool = False,
) -> EdgePairs:
    """Finds pairs of edges of opposite polarity: stripes, gaps, widths.

    Arguments as for `find_edges`; polarity is that of the first edge, only the k-th pair; "staircase" pairs any two
    edges, those of one polarity too. Widths below about 1.25 half_width + 2 are too large; a warning says so. Criteria: contrast, gray,
    position (distance of the middle from the centre) and signed_position; the same relative to expected_width E; width
    / E; width_error, the magnitude of (width - E) / E; signed_width_error (width - E) / E with a ramp below 0 and one
    above; straddle, 1 where the edges lie on both sides of the centre.

    >>> image = np.zeros((20, 40), np.uint8); image[:, 15:23] = 100
    >>> pairs = dax.find_edge_pairs(image, dax.Box(20, 10, 30, 10), polarity="dark-to-light")
    >>> pairs.width, pairs.points.tolist()
    (array([8.], dtype=float32), [[[14.5, 10.0], [22.5, 10.0]]])
    """
    below, above = signed_width_error or (None, None)
    ramps = {
        **{"contrast": contrast, "position": position, "positionNeg": signed_position, "positionNorm": relative_position},
        **{"positionNormNeg": signed_relative_position, "sizeNorm": relative_width, "sizeDiffNorm": width_error},
        **{"sizeDiffBelow": below, "sizeDiffAbove": above, "straddle": straddle, "gray": gray},
    }
    cfg = _configuration("EdgePair", along, polarity, threshold, half_width, max_count, only, ramps, min_score)
    cfg.expectedWidth = expected_width
    return _pairs(*_find("EdgePair", image, region, cfg, mask, profile, fine), half_width)


def find_edge_pairs_in(
    image: ArrayLike,
    regions: Sequence[Region],
    *,
    expected_width: float = 1.0,
    along: Along = "width",
    polarity: PairPolarity = "any",
    threshold: float = 10.0,
    half_width: int = 2,
    max_count: int = 100,
    only: int = 0,
    contrast: Optional[Ramp] = None,
    position: Optional[Ramp] = None,
    relative_width: Optional[Ramp] = None,
    width_error: Optional[Ramp] = None,
    straddle: Optional[Ramp] = None,
    min_score: float = 0.0,
    fine: bool = False,
    pool: Optional[Pool] = None,
) -> list[EdgePairs]:
    """As `find_edge_pairs` for many regions of one kind in one call, in a uint8 image; on a pool where there is one.

    >>> image = np.zeros((20, 40), np.uint8); image[:, 15:23] = 100
    >>> [len(pairs) for pairs in dax.find_edge_pairs_in(image, [dax.Box(20, y, 30, 3) for y in (5, 10)])]
    [1, 1]
    """
    ramps = {"contrast": contrast, "position": position, "sizeNorm": relative_width, "sizeDiffNorm": width_error}
    ramps["straddle"] = straddle
    cfg = _configuration("EdgePair", along, polarity, threshold, half_width, max_count, only, ramps, min_score)
    cfg.expectedWidth = expected_width
    return [_pairs(*found, half_width) for found in _find_in("EdgePair", image, regions, cfg, pool, fine)]


# Criterion: flag.
_FLAGS = {
    "Edge": {"contrast": 0x1, "distance": 0x2, "offset": 0x4, "gray": 0x200},
    "EdgePair": {
        **{"contrast": 0x1, "position": 0x2, "positionNeg": 0x4, "positionNorm": 0x8, "positionNormNeg": 0x10},
        **{"sizeNorm": 0x20, "sizeDiffNorm": 0x40, "sizeDiffBelow": 0x80, "sizeDiffAbove": 0x80, "straddle": 0x100},
        **{"gray": 0x200},
    },
}


def _configuration(
    kind: str,
    along: str,
    polarity: str,
    threshold: float,
    half_width: int,
    max_count: int,
    only: int,
    ramps: dict[str, Optional[Ramp]],
    min_score: float,
) -> Any:
    cfg = ffi.new(f"Caliper{kind}Cfg*")
    polarities = _POLARITIES if kind == "Edge" else _PAIR_POLARITIES
    cfg.projection, cfg.polarity = choice("along", along, _ALONG), choice("polarity", polarity, polarities)
    cfg.threshold, cfg.filterHalfWidth, cfg.minScore = threshold, half_width, min_score
    if kind == "Edge":
        cfg.maxEdges, cfg.edgeChoice = max_count, only
    else:
        cfg.maxPairs, cfg.pairChoice = max_count, only
    active = {name: ramp for name, ramp in ramps.items() if ramp is not None} or {"contrast": _BY_CONTRAST}
    for name, (x0, x1, x2, low, high, falling) in active.items():
        cfg.scoreFlags |= _FLAGS[kind][name]
        setattr(cfg, name, {"mode": int(falling), "x0": x0, "x1": x1, "x2": x2, "y0": low, "y1": high})
    return cfg


_Records = tuple[Array, Array, Optional[Profile]]


def _find(
    kind: str, image: ArrayLike, region: Region, cfg: Any, mask: Optional[ArrayLike], profile: bool, fine: bool
) -> _Records:
    region = checked(region, np.shape(image))
    part, _ = record_of(region)
    plain = part == "" and mask is None and not profile
    src = source("image", image, (*BYTES, np.dtype(np.int16)) if plain else BYTES)
    images = [src.pointer, src.step]
    if mask is not None:
        cover = of_shape("mask", mask, src.array.shape)
        images += [cover.pointer, cover.step]
    version, masked = "V1" if profile else "", "M" if mask is not None else ""
    name = f"DAXI_Calip{kind}Detect{part}{version}_{src.suffix}_C1R{masked}"

    def detect(regions: Sequence[Region], cfg: Any) -> list[_Records]:
        _, record = record_of(regions[0])
        work = buffer(f"DAXI_Calip{kind}Detect{part}{version}BufferSize_{src.suffix}", record)
        results, records, points = _results(kind, cfg, regions)
        curve = _Curve(regions[0]) if profile else None
        call(name, *images, src.size, record, cfg, results, *([curve.record] if curve else []), work)
        count = results[0].count
        return [(records[0, :count].copy(), points[0, :count].copy(), curve.profile() if curve else None)]

    return _search(kind, detect, [region], cfg, fine)[0]


def _find_in(
    kind: str, image: ArrayLike, regions: Sequence[Region], cfg: Any, pool: Optional[Pool], fine: bool
) -> list[_Records]:
    src = source("image", image, BYTES)
    if type(regions) in REGIONS:
        raise TypeError(f"regions: one {type(regions).__name__}, needed is a list; for a single region there is find_edges")
    regions = [checked(region, src.array.shape) for region in regions]
    if not regions:
        return []
    if len({type(region) for region in regions}) > 1:
        raise TypeError("regions: all of one kind")
    part, _ = record_of(regions[0])
    threads, handle = handle_of(pool)
    name = f"DAXI_Calip{kind}Detect{part}V2_8u_C1R"

    def detect(regions: Sequence[Region], cfg: Any) -> list[_Records]:
        rows = ffi.new(f"{REGIONS[type(regions[0])][1]}[]", [list(region) for region in regions])
        work = buffer(f"DAXI_Calip{kind}Detect{part}V2BufferSize_8u", rows, len(regions), threads)
        results, records, points = _results(kind, cfg, regions)
        call(name, src.pointer, src.step, src.size, rows, len(regions), cfg, results, work, threads, handle)
        counts = [results[i].count for i in range(len(regions))]
        return [(records[i, :count].copy(), points[i, :count].copy(), None) for i, count in enumerate(counts)]

    return _search(kind, detect, regions, cfg, fine)


_Detect = Callable[[Sequence[Region], Any], list[_Records]]


def _search(kind: str, detect: _Detect, regions: list[Region], cfg: Any, fine: bool) -> list[_Records]:
    """What there is in each region: of opposite polarities where pairs may have either, without those of score 0, and of
    two samplings where they are to be fine."""

    def once(regions: list[Region]) -> list[_Records]:
        found = _either(detect, regions, cfg) if kind == "EdgePair" and cfg.polarity == _OPPOSITE else detect(regions, cfg)
        scored = [records["score"] > 0 for records, _, _ in found]
        return [(each[0][keep], each[1][keep], each[2]) for each, keep in zip(found, scored)]

    found = once(regions)
    if not fine:
        return found
    along = "width" if cfg.projection == _ALONG["width"] else "height"
    shifted = once([half_a_pixel_on(region, along) for region in regions])
    return [_mean_of(kind, one, other) for one, other in zip(found, shifted)]


def _either(detect: _Detect, regions: list[Region], cfg: Any) -> list[_Records]:
    """Pairs of both polarities: the best, or the k-th along the profile."""
    wanted, number = cfg.maxPairs, cfg.pairChoice
    if number > 0:
        cfg.pairChoice, cfg.maxPairs = 0, max(wanted, _EVERY)
    each = []
    for polarity in (1, 2):
        cfg.polarity = polarity
        each.append(detect(regions, cfg))
    cfg.polarity, cfg.pairChoice, cfg.maxPairs = _OPPOSITE, number, wanted
    both = []
    for one, other in zip(*each):
        records, points = (np.concatenate([one[i], other[i]]) for i in range(2))
        keys = records["second"]["index"], records["first"]["index"]
        order = np.lexsort(keys if number > 0 else (*keys, -records["score"]))
        if number > 0:
            order = order[: min(number, len(order))][-1:]
            records["score"] = 1
        both.append((records[order[:wanted]], points[order[:wanted]], one[2]))
    return both


_EVERY = 10**6  # pairs among which the k-th is counted


def _mean_of(kind: str, one: _Records, other: _Records) -> _Records:
    """Positions of the first sampling, where the second one, half a pixel further, has the same edges the mean of both."""
    records, points, profile = one
    parts = ("",) if kind == "Edge" else ("first", "second")
    for i in range(len(records)):
        fits = np.ones(len(other[0]), bool)
        for part in parts:
            mine, theirs = (records[i][part], other[0][part]) if part else (records[i], other[0])
            near = np.abs(theirs["position"] + 0.5 - mine["position"]) < 0.75
            fits &= near & (theirs["polarity"] == mine["polarity"])
        if not fits.any():
            continue
        j = int(np.flatnonzero(fits)[0])
        points[i] = (points[i] + other[1][j]) / 2
        for part in parts:
            mine, theirs = (records[part], other[0][part]) if part else (records, other[0])
            mine["position"][i] = (mine["position"][i] + theirs["position"][j] + np.float32(0.5)) / 2
        if kind == "EdgePair":
            first, second = records["first"]["position"][i], records["second"]["position"][i]
            records["width"][i], records["position"][i] = second - first, (first + second) / 2
    return records, points, profile


def _results(kind: str, cfg: Any, regions: Sequence[Region]) -> tuple[Any, Array, Array]:
    """Results with room for what the configuration asks, and the room as arrays: (count, max_count) records, their points.
    The configuration is made to ask for no more than there can be."""
    count, samples = len(regions), max(longest(region) for region in regions)
    limit, field, each = ("maxEdges", "edges", 1) if kind == "Edge" else ("maxPairs", "pairs", 2)
    setattr(cfg, limit, min(getattr(cfg, limit), samples**each))
    room = max(getattr(cfg, limit), 1)
    records = ffi.new(f"Caliper{kind}[]", count * room)
    points = np.empty((count, room, each, 2), np.float32)
    results = ffi.new(f"Caliper{kind}Result[]", count)
    for i in range(count):
        setattr(results[i], field, records + i * room)
        results[i].points = ffi.cast("DaxiPoint32f*", points[i].ctypes.data)
    return results, view(f"Caliper{kind}", records, count * room).reshape(count, room), points


class _Curve:
    """A profile's record and arrays."""

    def __init__(self, region: Region) -> None:
        self.rows = np.empty((2, longest(region)), np.float32)
        gray, response = (ffi.cast("float*", row.ctypes.data) for row in self.rows)
        self.record = ffi.new("CaliperProfile*", {"profile": gray, "response": response, "capacity": self.rows.shape[1]})

    def profile(self) -> Profile:
        gray, response = self.rows[:, : self.record.length].copy()
        return Profile(gray, response, self.record.kernelLength)


def _edges(records: Array, points: Array, profile: Optional[Profile]) -> Edges:
    names = ("position", "score", "polarity", "peak", "gray", "response", "index")
    return Edges(points=points[:, 0], profile=profile, **{name: records[name].copy() for name in names})


def _warn_if_narrow(widths: Array, half_width: int) -> None:
    """Of the best pair: below about 1.25 half_width + 2 the responses of its edges push each other apart."""
    if len(widths) == 0 or widths[0] >= 1.25 * half_width + 2:
        return
    would_do = max(1, int((widths[0] - 2) / 1.25))
    advice = f"half_width={would_do} would do" if would_do < half_width else "no half width would do: magnify"
    bias = f"too large: with half_width={half_width} widths are exact from {1.25 * half_width + 2:.1f} on"
    warn(f"a width of {widths[0]:.2f} pixels is probably {bias}; {advice}")


def _pairs(records: Array, points: Array, profile: Optional[Profile], half_width: int) -> EdgePairs:
    _warn_if_narrow(records["width"], half_width)

    def both(name: str) -> Array:
        return np.stack([records["first"][name], records["second"][name]], axis=-1)

    return EdgePairs(
        points=points,
        profile=profile,
        positions=both("position"),
        peaks=both("peak"),
        polarity=both("polarity"),
        **{name: records[name].copy() for name in ("position", "score", "width", "contrast", "gray")},
    )

"""Calipers: edges and pairs of edges across a region, to a fraction of a pixel.

A region is sampled into a profile along its search direction; extrema of the profile's derivative beyond a threshold
are edges, which are scored by criteria and ranked. Lengths are pixels, angles radians from x towards y, pixel centres
lie at whole numbers. A region that reaches beyond the image, and stripes too narrow for the filter, give a warning.
"""
import dataclasses
from typing import Any, Literal, NamedTuple, Optional, Sequence

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import Array, choice, warn, within
from .._interface import ffi
from .._table import Table
from ..pool import Pool
from ._caliper_search import ALONG, OPPOSITE, Profile, find, find_in
from .regions import Region

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
_PAIR_POLARITIES = {"dark-to-light": 1, "light-to-dark": 2, "any": OPPOSITE, "staircase": 3}
# By their contrast: 255 grey levels score 1.
_BY_CONTRAST = Ramp(0, 0, 255)


@dataclasses.dataclass(frozen=True)
class _Found(Table):
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

    COLUMNS = {"points": ("x", "y")}


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

    COLUMNS = {"points": ("first_x", "first_y", "second_x", "second_y")} | {
        name: (f"first_{each}", f"second_{each}")
        for name, each in (("positions", "position"), ("peaks", "peak"), ("polarity", "polarity"))
    }


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
    score 0 are none. min_score: minimum score. fine: positions are the mean of two samplings half a pixel apart: of
    edges blurred by half a pixel or more that takes most of the error away, sharp edges along the pixels get 0.05
    pixels worse.
    mask: as the image; pixels of 0 are not used.
    profile: return the profile too.

    >>> image = np.zeros((20, 40), np.uint8); image[:, 20:] = 100
    >>> edges = dax.find_edges(image, dax.Box(20, 10, 20, 10), polarity="dark-to-light")
    >>> edges.points, edges.response
    (array([[19.5, 10. ]], dtype=float32), array([-100.], dtype=float32))
    """
    ramps = {"contrast": contrast, "distance": distance, "offset": offset, "gray": gray}
    cfg = _configuration("Edge", along, polarity, threshold, half_width, max_count, only, ramps, min_score)
    return _edges(*find("Edge", image, region, cfg, mask, profile, fine))


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
    return [_edges(*found) for found in find_in("Edge", image, regions, cfg, pool, fine)]


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

    Arguments as for `find_edges`. polarity: of the first edge; "staircase" pairs any two edges, also of one polarity.
    only: the k-th pair. Widths below about 1.25 half_width + 2 are too large; a warning says so. Criteria: contrast,
    gray, position (distance of the middle from the centre) and signed_position; the same relative to expected_width E;
    width / E; width_error, the magnitude of (width - E) / E; signed_width_error (width - E) / E with a ramp below 0 and
    one above; straddle, 1 where the edges lie on both sides of the centre.

    >>> image = np.zeros((20, 40), np.uint8); image[:, 15:23] = 100
    >>> pairs = dax.find_edge_pairs(image, dax.Box(20, 10, 30, 10), polarity="dark-to-light")
    >>> pairs.width, pairs.points.tolist()
    (array([8.], dtype=float32), [[[14.5, 10.0], [22.5, 10.0]]])
    """
    below, above = signed_width_error or (None, None)
    ramps = {
        **{
            "contrast": contrast,
            "position": position,
            "positionNeg": signed_position,
            "positionNorm": relative_position,
        },
        **{"positionNormNeg": signed_relative_position, "sizeNorm": relative_width, "sizeDiffNorm": width_error},
        **{"sizeDiffBelow": below, "sizeDiffAbove": above, "straddle": straddle, "gray": gray},
    }
    common = along, polarity, threshold, half_width, max_count, only, ramps, min_score
    cfg = _configuration("EdgePair", *common, expected_width)
    return _pairs(*find("EdgePair", image, region, cfg, mask, profile, fine), half_width)


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
    common = along, polarity, threshold, half_width, max_count, only, ramps, min_score
    cfg = _configuration("EdgePair", *common, expected_width)
    return [_pairs(*found, half_width) for found in find_in("EdgePair", image, regions, cfg, pool, fine)]


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
    expected_width: Optional[float] = None,
) -> Any:
    within("half_width", half_width, 1, 50)
    within("max_count", max_count, 1)
    within("threshold", threshold, 0)
    within("min_score", min_score, 0, 1)
    within("only", only, 0)
    cfg = ffi.new(f"Caliper{kind}Cfg*")
    polarities = _POLARITIES if kind == "Edge" else _PAIR_POLARITIES
    cfg.projection, cfg.polarity = choice("along", along, ALONG), choice("polarity", polarity, polarities)
    cfg.threshold, cfg.filterHalfWidth, cfg.minScore = threshold, half_width, min_score
    if kind == "Edge":
        cfg.maxEdges, cfg.edgeChoice = max_count, only
    else:
        within("expected_width", expected_width, 0)
        cfg.maxPairs, cfg.pairChoice, cfg.expectedWidth = max_count, only, expected_width
    active = {name: ramp for name, ramp in ramps.items() if ramp is not None} or {"contrast": _BY_CONTRAST}
    for name, (x0, x1, x2, low, high, falling) in active.items():
        if not (-np.inf < x0 <= x1 <= x2 < np.inf and 0 <= low <= high <= 1 and high > 0):
            raise ValueError(f"{name}: needed are finite x0 <= x1 <= x2, 0 <= low <= high <= 1 and high above 0")
        cfg.scoreFlags |= _FLAGS[kind][name]
        setattr(cfg, name, {"mode": int(falling), "x0": x0, "x1": x1, "x2": x2, "y0": low, "y1": high})
    return cfg


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

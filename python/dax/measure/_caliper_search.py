"""Calls of calipers: one region or many, both polarities in turn, one sampling or the mean of two."""
from typing import Any, Callable, NamedTuple, Optional, Sequence

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import BYTES, Array, of_shape, source
from .._interface import ffi
from .._library import buffer, call
from .._records import view
from ..pool import Pool, handle_of
from .regions import REGIONS, Region, checked, half_a_pixel_on, longest, record_of

ALONG = {"height": 0, "width": 1}
OPPOSITE = 0  # polarity of pairs in a configuration: 1 and 2 in turn


class Profile(NamedTuple):
    """What an edge was found in: grey values along the search direction, and the response of the derivative filter."""

    gray: NDArray[np.float32]
    response: NDArray[np.float32]
    kernel_length: int


_Records = tuple[Array, Array, Optional[Profile]]


def find(
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


def find_in(
    kind: str, image: ArrayLike, regions: Sequence[Region], cfg: Any, pool: Optional[Pool], fine: bool
) -> list[_Records]:
    src = source("image", image, BYTES)
    if type(regions) in REGIONS:
        raise TypeError(
            f"regions: one {type(regions).__name__}, needed is a list; for a single region there is find_edges"
        )
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
    """What there is in each region: of opposite polarities where pairs may have either, without those of score 0, and
    of two samplings where they are to be fine."""

    def once(regions: list[Region]) -> list[_Records]:
        found = (
            _either(detect, regions, cfg) if kind == "EdgePair" and cfg.polarity == OPPOSITE else detect(regions, cfg)
        )
        scored = [records["score"] > 0 for records, _, _ in found]
        return [(each[0][keep], each[1][keep], each[2]) for each, keep in zip(found, scored)]

    found = once(regions)
    if not fine:
        return found
    along = "width" if cfg.projection == ALONG["width"] else "height"
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
    cfg.polarity, cfg.pairChoice, cfg.maxPairs = OPPOSITE, number, wanted
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
    """Positions of the first sampling, where the second one, half a pixel further, has the same edges the mean of
    both."""
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
    """Results with room for what the configuration asks, and the room as arrays: (count, max_count) records, their
    points. The configuration is made to ask for no more than there can be."""
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
        self.record = ffi.new(
            "CaliperProfile*", {"profile": gray, "response": response, "capacity": self.rows.shape[1]}
        )

    def profile(self) -> Profile:
        gray, response = self.rows[:, : self.record.length].copy()
        return Profile(gray, response, self.record.kernelLength)

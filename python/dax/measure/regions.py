"""Regions that calipers look at. Lengths are pixels, angles radians from x towards y."""
import math
from typing import Any, NamedTuple, Union

from .._interface import ffi

__all__ = ["Annulus", "Box", "Rhomboid"]


class Box(NamedTuple):
    """A turned rectangle: centre, sides, angle of the width in -pi..pi."""

    x: float
    y: float
    width: float
    height: float
    angle: float = 0.0


class Rhomboid(NamedTuple):
    """A parallelogram: centre, sides, angle of the side `width`, angle of the side `height`."""

    x: float
    y: float
    width: float
    height: float
    angle: float
    side_angle: float


class Annulus(NamedTuple):
    """A sector of a ring: centre, radii, start angle in -pi..pi, sweep in 0..2 pi."""

    x: float
    y: float
    inner_radius: float
    outer_radius: float
    start_angle: float = -math.pi
    sweep: float = 2 * math.pi


Region = Union[Box, Rhomboid, Annulus]
# Region: (part of the C names, C type).
REGIONS: dict[type, tuple[str, str]] = {
    Box: ("", "CaliperBox"),
    Rhomboid: ("Rhomboid", "CaliperRhomboid"),
    Annulus: ("Annulus", "CaliperAnnulus"),
}


def record_of(region: Region) -> tuple[str, Any]:
    if type(region) not in REGIONS:
        raise TypeError(f"region: {type(region).__name__}, needed is a Box, a Rhomboid or an Annulus")
    part, ctype = REGIONS[type(region)]
    return part, ffi.new(f"{ctype}*", [float(value) for value in region])


def longest(region: Region) -> int:
    """No profile of a region is longer."""
    if isinstance(region, Annulus):
        sides = region.outer_radius - region.inner_radius, region.sweep * (region.inner_radius + region.outer_radius) / 2
    else:
        sides = region.width, region.height
    longest = max(sides)
    return int(longest) + 4 if 0 < longest <= 2**24 else 1  # impossible ones are refused before the capacity

"""Regions that calipers look at. Lengths are pixels, angles radians from x towards y."""
import math
from typing import Any, NamedTuple, Union

from .._arrays import warn
from .._interface import ffi

__all__ = ["Annulus", "Box", "Rhomboid"]


class Box(NamedTuple):
    """A turned rectangle: centre, sides, angle of the width."""

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
    """A sector of a ring: centre, radii, start angle, sweep in 0..2 pi."""

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


MAX_SAMPLES = 10**8  # of a region: about a second


def checked(region: Region, shape: tuple[int, ...]) -> Region:
    """The region with its angles between -pi and pi, those within a turn of that; warns where it reaches beyond an
    image of a shape, and refuses more than MAX_SAMPLES."""
    if type(region) not in REGIONS:
        raise TypeError(f"region: {type(region).__name__}, needed is a Box, a Rhomboid or an Annulus")
    region = type(region)(*map(float, region))
    names = [name for name in region._fields if name.endswith("angle")]
    region = region._replace(**{name: _reduced(getattr(region, name)) for name in names})
    width, height = _sides(region)
    if not (math.isfinite(sum(region)) and width > 0 and height > 0):
        return region  # the library says what is wrong
    if width * height > MAX_SAMPLES:
        raise ValueError(f"region: {width:.0f} by {height:.0f} samples, at most {MAX_SAMPLES} are taken")
    if any(x < -0.5 or y < -0.5 or x > shape[1] - 0.5 or y > shape[0] - 0.5 for x, y in _outline(region)):
        warn(f"the region reaches beyond the image, where the edge pixels are repeated: {region}")
    return region


def _reduced(angle: float) -> float:
    if math.isfinite(angle) and abs(angle) > 3 * math.pi:
        raise ValueError(f"angle: {angle:g} radians, more than a turn beyond -pi..pi; are these degrees?")
    return math.remainder(angle, 2 * math.pi) if abs(angle) > math.pi and math.isfinite(angle) else angle


def _sides(region: Region) -> tuple[float, float]:
    if isinstance(region, Annulus):
        mean = (region.inner_radius + region.outer_radius) / 2
        return region.outer_radius - region.inner_radius, region.sweep * mean
    return region.width, region.height


def _outline(region: Region) -> list[tuple[float, float]]:
    """Points of the outline."""
    if isinstance(region, Annulus):
        angles = [region.start_angle + region.sweep * i / 64 for i in range(65)]
        radii = region.inner_radius, region.outer_radius
        return [(region.x + r * math.cos(a), region.y + r * math.sin(a)) for r in radii for a in angles]
    side = region.side_angle if isinstance(region, Rhomboid) else region.angle + math.pi / 2
    along = region.width / 2 * math.cos(region.angle), region.width / 2 * math.sin(region.angle)
    across = region.height / 2 * math.cos(side), region.height / 2 * math.sin(side)
    signs = (-1, 1)
    return [
        (region.x + i * along[0] + j * across[0], region.y + i * along[1] + j * across[1]) for i in signs for j in signs
    ]


def half_a_pixel_on(region: Region, along: str) -> Region:
    """The region, half a pixel further in its search direction."""
    if isinstance(region, Annulus):
        if along == "width":
            return region._replace(inner_radius=region.inner_radius + 0.5, outer_radius=region.outer_radius + 0.5)
        mean = (region.inner_radius + region.outer_radius) / 2
        return region._replace(start_angle=_reduced(region.start_angle + 0.5 / mean))
    angle = region.angle
    if along == "height":
        angle = region.side_angle if isinstance(region, Rhomboid) else region.angle + math.pi / 2
    return region._replace(x=region.x + 0.5 * math.cos(angle), y=region.y + 0.5 * math.sin(angle))


def record_of(region: Region) -> tuple[str, Any]:
    part, ctype = REGIONS[type(region)]
    return part, ffi.new(f"{ctype}*", [float(value) for value in region])


def longest(region: Region) -> int:
    """No profile of a region is longer."""
    if isinstance(region, Annulus):
        sides = (
            region.outer_radius - region.inner_radius,
            region.sweep * (region.inner_radius + region.outer_radius) / 2,
        )
    else:
        sides = region.width, region.height
    longest = max(sides)
    return int(longest) + 4 if 0 < longest <= 2**24 else 1  # impossible ones are refused before the capacity

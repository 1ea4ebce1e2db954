"""Pictures with straight edges and discs, every pixel close to the exact mean over its area."""

import math


def picture(width, height, value):
    """Pixels from value(x, y), a grey level."""
    def pixel(x, y):
        return (min(max(math.floor(value(x, y) + 0.5), 0), 255) * 257,) * 3
    return [[pixel(x, y) for x in range(width)] for y in range(height)]


def beyond(x, y, cx, cy, degrees):
    """The part of a pixel beyond the line through (cx, cy) whose normal points at an angle."""
    c, s = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
    d, p, q = (x - cx) * c + (y - cy) * s, max(abs(c), abs(s)), min(abs(c), abs(s))
    if q < 1e-9:
        return min(max(d + 0.5, 0), 1)
    ramp = lambda t: max(t, 0) ** 2
    return (ramp(d + (p + q) / 2) - ramp(d + (p - q) / 2) - ramp(d - (p - q) / 2) + ramp(d - (p + q) / 2)) / (2 * p * q)


def stripe(x, y, cx, cy, degrees, width):
    c, s = width / 2 * math.cos(math.radians(degrees)), width / 2 * math.sin(math.radians(degrees))
    return beyond(x, y, cx - c, cy - s, degrees) - beyond(x, y, cx + c, cy + s, degrees)


def disc(x, y, cx, cy, radius):
    """The part of a pixel in a disc much larger than it: of the half plane at the nearest tangent."""
    angle = math.degrees(math.atan2(y - cy, x - cx))
    c, s = math.cos(math.radians(angle)), math.sin(math.radians(angle))
    return 1 - beyond(x, y, cx + radius * c, cy + radius * s, angle)

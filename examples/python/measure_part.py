#!/usr/bin/env python3
"""Measures a turned part: calipers along two sides, a line through each side's edges, width and angle between them."""
import math

import dax
import numpy as np

ANGLE, WIDTH = 0.12, 62.4


def scene(rng):
    """A bar of known width and direction with a nick and a burr on its upper side, and noise."""
    y, x = np.mgrid[0:240, 0:320]
    across = (y - 120) * math.cos(ANGLE) - (x - 160) * math.sin(ANGLE)
    along = (x - 160) * math.cos(ANGLE) + (y - 120) * math.sin(ANGLE)
    upper = -WIDTH / 2 + np.where(abs(along + 40) < 8, 6, 0) - np.where(abs(along - 50) < 5, 5, 0)
    inside = np.minimum(across - upper, WIDTH / 2 - across)
    return np.clip(60 + 120 * np.clip(inside + 0.5, 0, 1) + rng.normal(0, 4, x.shape), 0, 255).astype(np.uint8)


def side(image, offset, polarity, pool):
    """The line through the edges that calipers find along one side."""
    u, v = np.array([math.cos(ANGLE), math.sin(ANGLE)]), np.array([-math.sin(ANGLE), math.cos(ANGLE)])
    centres = np.array([160, 120]) + offset * v + np.arange(-110, 111, 5)[:, None] * u
    boxes = [dax.Box(*centre, 30, 5, ANGLE + math.pi / 2) for centre in centres]
    found = dax.find_edges_in(image, boxes, polarity=polarity, threshold=20, max_count=1, pool=pool)
    points = np.concatenate([edges.points for edges in found])
    return points, dax.fit_line(points, weights="tukey", start="all-pairs", threshold=1.5)


def main():
    image = scene(np.random.default_rng(5))
    with dax.Pool(2) as pool:
        upper_points, upper = side(image, -WIDTH / 2, "dark-to-light", pool)
        lower_points, lower = side(image, WIDTH / 2, "light-to-dark", pool)
    middle = lower_points[lower.inliers].mean(0)
    width = abs(upper.distances(middle[None])[0])
    direction = math.atan2(-upper.a, upper.b) if upper.b > 0 else math.atan2(upper.a, -upper.b)
    between = math.acos(min(1.0, abs(upper.a * lower.a + upper.b * lower.b)))
    print(f"upper side: {upper.inliers.sum()} of {len(upper_points)} edges, rms {upper.rms:.3f} pixels")
    print(f"lower side: {lower.inliers.sum()} of {len(lower_points)} edges, rms {lower.rms:.3f} pixels")
    print(f"width {width:.2f} pixels (drawn {WIDTH}), direction {direction:.4f} rad (drawn {ANGLE})")
    print(f"sides parallel within {between:.4f} rad")
    assert abs(width - WIDTH) < 0.1 and abs(direction - ANGLE) < 0.002 and upper.inliers.sum() < len(upper_points)


if __name__ == "__main__":
    main()

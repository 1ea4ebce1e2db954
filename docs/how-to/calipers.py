"""A circle through the edges of a coin, its diameters, and a profile."""
import matplotlib.patches as patches
import numpy as np
from skimage import data

import dax
from pictures import INK, SKY, number, outline, panels, save, show

figure, axes = panels(3, 3.0, 2.7)
coins = data.coins()[145:230, 300:384].copy()
show(axes[0], coins, "a circle through the edges of a coin", vmin=0, vmax=255)
middle = 48, 41
ring = [dax.Annulus(*middle, 22, 35, start, 0.2) for start in np.linspace(-np.pi, np.pi, 24, endpoint=False)]
found = dax.find_edges_in(coins, ring, polarity="light-to-dark", max_count=1, half_width=3)
points = np.concatenate([edges.points for edges in found])
circle = dax.least_squares(lambda p: np.hypot(*(points - p[:2]).T) - p[2], [*middle, 30], huber=1).x
for sector in ring:
    start, width = np.degrees(sector.start_angle), np.degrees(sector.sweep)
    axes[0].add_patch(patches.Wedge(middle, 35, start, start + width, width=13, fill=False, edgecolor=SKY, lw=0.6))
axes[0].add_patch(patches.Circle(circle[:2], circle[2], fill=False, edgecolor=INK, linewidth=0.8))
axes[0].plot(*points.T, ".", color=INK, markersize=4)
number(axes[0], *circle[:2], f"radius\n{circle[2]:.2f}", va="center")

show(axes[1], coins, "its diameter in four directions", vmin=0, vmax=255)
near = dax.Ramp(0, 0.2, 1, falling=True)  # worth nothing beyond a fifth of the width
expected = {"polarity": "dark-to-light", "expected_width": 63, "width_error": near, "max_count": 1}
boxes = [dax.Box(*circle[:2], 72, 6, angle) for angle in np.radians((-45, 0, 45, 90))]
pairs = dax.find_edge_pairs_in(coins, boxes, **expected)
for box, pair, (x, y) in zip(boxes, pairs, ((70, 12), (74, 52), (70, 76), (32, 10))):
    outline(axes[1], box)
    axes[1].plot(*pair.points[0].T, ".-", color=INK, markersize=4)
    number(axes[1], x, y, f"{pair.width[0]:.2f}", va="center")
axes[2].set_axis_on()
profile = dax.find_edge_pairs(coins, boxes[1], **expected, profile=True)
at = np.arange(len(profile.profile.gray)) - len(profile.profile.gray) / 2
axes[2].plot(at, profile.profile.gray, color="0.3", linewidth=1, label="grey values")
axes[2].plot(at, profile.profile.response, color=INK, linewidth=1, label="response")
for position in profile.positions[0]:
    axes[2].axvline(position, color=SKY, linewidth=0.8)
axes[2].set_title("profile along the level box", fontsize=9)
axes[2].tick_params(labelsize=7)
axes[2].legend(fontsize=7, frameon=False)
save(figure, "calipers")

"""Widths of a bar, a circle through the edges of a ring, and a profile."""
import matplotlib.patches as patches
import numpy as np

import dax
from pictures import INK, SKY, noisy, number, outline, panels, save, show

y, x = np.mgrid[0:200, 0:320]
image = noisy(np.maximum(20.3 - abs(x - 70.6), 60.25 - np.hypot(x - 220.4, y - 99.7)), 5)
figure, axes = panels(2, 4.2, 2.8)
show(axes[0], image, "widths, and a circle through the edges of a ring", vmin=0, vmax=255)
boxes = [dax.Box(70, at, 80, 16) for at in range(30, 180, 35)]
pairs = dax.find_edge_pairs_in(image, boxes, polarity="dark-to-light", max_count=1)
for box, pair in zip(boxes, pairs):
    outline(axes[0], box)
    axes[0].plot(*pair.points[0].T, ".-", color=INK, markersize=4)
    number(axes[0], 70, box.y + 3, f"{pair.width[0]:.2f}", va="top")
ring = [dax.Annulus(218, 102, 45, 75, start, 0.2) for start in np.linspace(-np.pi, np.pi, 24, endpoint=False)]
found = dax.find_edges_in(image, ring, polarity="light-to-dark", max_count=1)
points = np.concatenate([edges.points for edges in found])
circle = dax.least_squares(lambda p: np.hypot(*(points - p[:2]).T) - p[2], [218, 102, 60]).x
for sector in ring:
    width = np.degrees(sector.sweep)
    start = np.degrees(sector.start_angle)
    axes[0].add_patch(patches.Wedge((218, 102), 75, start, start + width, width=30, fill=False, edgecolor=SKY, lw=0.8))
axes[0].add_patch(patches.Circle(circle[:2], circle[2], fill=False, edgecolor=INK, linewidth=0.8))
axes[0].plot(*points.T, ".", color=INK, markersize=5)
number(axes[0], *circle[:2], f"radius\n{circle[2]:.2f}", va="center")
axes[1].set_axis_on()
profile = dax.find_edge_pairs(image, boxes[2], polarity="dark-to-light", max_count=1, profile=True)
at = np.arange(len(profile.profile.gray)) - len(profile.profile.gray) / 2
axes[1].plot(at, profile.profile.gray, color="0.3", linewidth=1, label="grey values")
axes[1].plot(at, profile.profile.response, color=INK, linewidth=1, label="response")
for position in profile.positions[0]:
    axes[1].axvline(position, color=SKY, linewidth=0.8)
axes[1].set_title("profile across the middle one", fontsize=9)
axes[1].tick_params(labelsize=7)
axes[1].legend(fontsize=7, frameon=False)
save(figure, "calipers")

"""A line through the edges of a tripod's leg, some of them of other things, and the distances from it."""
import numpy as np
from skimage import data

import dax
from pictures import INK, SKY, outline, panels, save, show

image = data.camera()[330:500, 210:310].copy()
ends = np.array([[76, 9], [27, 163]])  # beyond the leg at both ends
angle = np.arctan2(*(ends[1] - ends[0])[::-1]) - np.pi / 2  # across the leg
boxes = [dax.Box(*at, 26, 4, angle) for at in ends[0] + np.linspace(0, 1, 34)[:, None] * (ends[1] - ends[0])]
found = dax.find_edges_in(image, boxes, polarity="light-to-dark", max_count=1, threshold=15)
points = np.concatenate([edges.points for edges in found])
robust = dax.fit_line(points, weights="tukey", start="all-pairs", threshold=2)
plain = dax.fit_line(points, weights="least-squares")
figure, axes = panels(2, 4.2, 3.4)
show(axes[0], image, "calipers along the leg of a tripod", vmin=0, vmax=255)
for box in boxes:
    outline(axes[0], box)
for chosen, colour in ((robust.inliers, SKY), (~robust.inliers, INK)):
    axes[0].plot(*points[chosen].T, ".", color=colour, markersize=4)
rows = np.array([5, 165])
axes[0].plot(-(robust.b * rows + robust.c) / robust.a, rows, color=SKY, linewidth=1)
axes[1].set_axis_on()
side = np.sign(robust.a)
axes[1].plot(points[:, 1], side * robust.distances(points), ".", color=INK, markersize=4, label="edges")
drawn = -(plain.b * points[:, 1] + plain.c) / plain.a
axes[1].axhline(0, color=SKY, linewidth=1, label="robust line")
lines_apart = side * robust.distances(np.stack([drawn, points[:, 1]], 1))
axes[1].plot(points[:, 1], lines_apart, color="0.5", linewidth=1, label="plain least squares")
axes[1].set_title("distance from the robust line, pixels", fontsize=9)
axes[1].tick_params(labelsize=7)
axes[1].legend(fontsize=7, frameon=False)
save(figure, "lines")

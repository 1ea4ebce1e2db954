"""A line through the edges of a nicked side, and the distances from it."""
import numpy as np

import dax
from pictures import INK, SKY, noisy, outline, panels, save, show

y, x = np.mgrid[0:160, 0:320]
image = noisy(y - (40.3 + 0.15 * x + np.where(abs(x - 110) < 12, 8, 0) - np.where(abs(x - 230) < 6, 5, 0)), 5)
boxes = [dax.Box(at, 42 + 0.15 * at, 40, 5, np.pi / 2) for at in range(20, 310, 8)]
found = dax.find_edges_in(image, boxes, polarity="dark-to-light", max_count=1, threshold=40)
points = np.concatenate([edges.points for edges in found])
robust = dax.fit_line(points, weights="tukey", start="all-pairs", threshold=2)
plain = dax.fit_line(points, weights="least-squares")
figure, axes = panels(2, 4.2, 2.3)
show(axes[0], image, "calipers along a side with a nick and a burr", vmin=0, vmax=255)
for box in boxes:
    outline(axes[0], box)
for chosen, colour in ((robust.inliers, SKY), (~robust.inliers, INK)):
    axes[0].plot(*points[chosen].T, ".", color=colour, markersize=4)
ends = np.array([0, 319])
axes[0].plot(ends, -(robust.a * ends + robust.c) / robust.b, color=SKY, linewidth=1)
axes[1].set_axis_on()
side = np.sign(robust.b)
axes[1].plot(points[:, 0], side * robust.distances(points), ".", color=INK, markersize=4, label="edges")
drawn = -(plain.a * points[:, 0] + plain.c) / plain.b
axes[1].axhline(0, color=SKY, linewidth=1, label="robust line")
lines_apart = side * robust.distances(np.stack([points[:, 0], drawn], 1))
axes[1].plot(points[:, 0], lines_apart, color="0.5", linewidth=1, label="plain least squares")
axes[1].set_title("distance from the robust line, pixels", fontsize=9)
axes[1].tick_params(labelsize=7)
axes[1].legend(fontsize=7, frameon=False)
save(figure, "lines")

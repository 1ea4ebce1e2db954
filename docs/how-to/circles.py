"""The circle through the edges around a coin, and how far the edges lie from it."""
import numpy as np
from skimage import data

import dax
from pictures import INK, SKY, outline, panels, save, show

image = data.coins()[83:167, 4:86].copy()
angles = np.linspace(0, 2 * np.pi, 40, endpoint=False)
centre = np.array([40.8, 41.3])
places = centre + 21 * np.stack([np.cos(angles), np.sin(angles)], 1)
boxes = [dax.Box(*at, 18, 4, angle) for at, angle in zip(places, angles)]
found = dax.find_edges_in(image, boxes, polarity="light-to-dark", threshold=15, max_count=1)
points = np.concatenate([edges.points for edges in found])
circle = dax.fit_circle(points, weights="tukey")
figure, axes = panels(2, 4.2, 3.4)
show(axes[0], image, f"radius {circle.r:.2f} ± {circle.errors[2]:.2f} pixels", vmin=0, vmax=255)
for box in boxes[::4]:
    outline(axes[0], box)
for chosen, colour in ((circle.inliers, SKY), (~circle.inliers, INK)):
    axes[0].plot(*points[chosen].T, ".", color=colour, markersize=4)
turn = np.linspace(0, 2 * np.pi, 200)
axes[0].plot(circle.x + circle.r * np.cos(turn), circle.y + circle.r * np.sin(turn), color=SKY, linewidth=1)
axes[1].set_axis_on()
at = np.degrees(np.arctan2(points[:, 1] - circle.y, points[:, 0] - circle.x))
away = circle.distances(points)
axes[1].plot(at[circle.inliers], away[circle.inliers], ".", color=INK, markersize=4, label="used")
axes[1].plot(at[~circle.inliers], away[~circle.inliers], "x", color="0.5", markersize=4, label="not used")
axes[1].axhline(0, color=SKY, linewidth=1)
axes[1].set_xlabel("angle, degrees", fontsize=8)
axes[1].set_title("distance from the circle, pixels", fontsize=9)
axes[1].tick_params(labelsize=7)
axes[1].legend(fontsize=7, frameon=False)
save(figure, "circles")

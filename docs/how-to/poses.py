"""Two scans of a part brought together, its box and hull, and averages of poses with outliers."""
import numpy as np

import dax
from pictures import INK, SKY, panels, save

rng = np.random.default_rng(6)


def bracket(n):
    """Points on an angle of two plates, one with a round hole."""
    t, u = rng.uniform(0, 1, (2, n))
    flat = np.c_[4 * t, 2 * u, np.zeros(n)]
    flat = flat[np.hypot(flat[:, 0] - 2.7, flat[:, 1] - 1) > 0.5]
    up = np.c_[np.zeros(n // 2), 2 * u[: n // 2], 2 * t[: n // 2]]
    return np.r_[flat, up]


def seen(points):
    """As from the side and above."""
    view = dax.pose.from_euler("XYZ", [-1.1, 0.0, -0.7])
    return (points @ view.T)[:, :2].T


points = bracket(1500)
motion = np.eye(4)
motion[:3, :3] = dax.pose.from_euler("ZYX", [0.5, -0.3, 0.4])
motion[:3, 3] = 1, 2, -1
scan = dax.pose.apply(motion, points) + rng.normal(0, 0.02, points.shape)
found = dax.pose.align(points, scan)
figure, axes = panels(3, 3.2, 2.9)
for axis, model, title in zip(axes, (points, dax.pose.apply(found.pose, points)), ("before", "aligned")):
    axis.plot(*seen(scan), ".", color="0.6", markersize=1)
    axis.plot(*seen(model), ".", color=INK, markersize=1)
    axis.set_title(title, fontsize=9)
    axis.set_aspect("equal")
axis = axes[2]
axis.plot(*seen(points), ".", color="0.6", markersize=1)
for triangle in dax.space.convex_hull(points):
    axis.plot(*seen(points[triangle[[0, 1, 2, 0]]]), color=SKY, linewidth=0.5)
box = dax.space.box(points)
corners = np.array([[i & 1, i >> 1 & 1, i >> 2] for i in range(8)]) - 0.5
corners = dax.pose.apply(box.pose, corners * box.size)
for i in range(8):
    for k in (1, 2, 4):
        if not i & k:
            axis.plot(*seen(corners[[i, i | k]]), color=INK, linewidth=1)
axis.set_title("hull and least box", fontsize=9)
axis.set_aspect("equal")
save(figure, "poses")

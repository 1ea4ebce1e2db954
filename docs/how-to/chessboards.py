"""Two views of a board, and what is left after a calibration with five."""
import numpy as np

import dax
from pictures import INK, panels, save, show


def board(turn, camera, columns=9, rows=6, square=0.03):
    """A board of that many inner corners half a metre before a camera, with some blur and noise."""
    moved = np.eye(4)
    moved[:3, :3], moved[:3, 3] = dax.so3_exp(turn), (0, 0, 0.5)
    flat = np.array([[camera[0], 0, camera[2]], [0, camera[1], camera[3]], [0, 0, 1]]) @ moved[:3, [0, 1, 3]]
    y, x = np.mgrid[0:1440, 0:1920] / 3 - 1 / 3
    u, v, w = np.tensordot(np.linalg.inv(flat), np.stack([x, y, np.ones_like(x)]), 1)
    i, j = np.floor(u / w / square + (columns - 1) / 2), np.floor(v / w / square + (rows - 1) / 2)
    dark = (i >= -1) & (i < columns) & (j >= -1) & (j < rows) & ((i + j) % 2 == 0)
    image = np.where(dark, 40, 200).reshape(480, 3, 640, 3).mean((1, 3))
    return dax.mean(np.clip(image + np.random.default_rng(7).normal(0, 4, image.shape), 0, 255).astype(np.uint8), 3)


camera = np.array([800, 800, 322, 238])
places = 0.03 * np.stack(np.meshgrid(np.arange(9) - 4, np.arange(6) - 2.5), -1).reshape(-1, 2)
views = [board(turn, camera) for turn in ([0.5, 0, 0], [-0.5, 0, 0.1], [0, 0.5, -0.1], [0, -0.5, 0], [0.35, 0.35, 0.1])]
seen = np.array([dax.refine_corners(view, dax.find_chessboard(view, 9, 6)).reshape(-1, 2) for view in views])


def residuals(p):
    def project(twist):
        motion = dax.se3_exp(twist)
        moved = places @ motion[:3, :2].T + motion[:3, 3]
        return p[:2] * moved[:, :2] / moved[:, 2:] + p[2:4]

    return np.concatenate([project(p[k : k + 6]) for k in range(4, 34, 6)]).ravel() - seen.ravel()


def update(p, step):
    return np.concatenate([p[:4] + step[:4], *(dax.se3_update(p[k : k + 6], step[k : k + 6]) for k in range(4, 34, 6))])


start = np.concatenate([[600, 600, 320, 240], np.tile([0, 0, 0.5, 0, 0, 0], 5)])
solved = dax.least_squares(residuals, start, update=update)
figure, axes = panels(3, 3.3, 2.7)
for axis, number in zip(axes, (0, 4)):
    show(axis, views[number], f"view {number + 1}, {len(seen[number])} corners", vmin=0, vmax=255)
    axis.plot(*seen[number].T, "-", color=INK, linewidth=0.6)
    axis.plot(*seen[number].T, ".", color=INK, markersize=4)
axes[2].set_axis_on()
axes[2].plot(*solved.residuals.reshape(-1, 2).T, ".", color=INK, markersize=3)
axes[2].set_aspect("equal")
axes[2].set_xlim(-0.4, 0.4)
axes[2].set_ylim(-0.4, 0.4)
axes[2].tick_params(labelsize=7)
axes[2].set_title(f"left after calibration, pixels\nfocal length {solved.x[0]:.1f}, drawn 800", fontsize=8)
save(figure, "chessboards")

"""What the recipes of the how-to pages' pictures share (scripts/gallery): panels, colours, scenes made by
arithmetic."""
import os
import pathlib

import matplotlib

matplotlib.use("Agg")
import matplotlib.patches as patches
import matplotlib.pyplot as plt
import numpy as np

ROOT = pathlib.Path(__file__).resolve().parents[2]
OUT = ROOT / "docs/pictures"
TOOL = os.environ.get("DAX_TOOL", ROOT / "build/native/tools/dax/dax")
INK = "#e4572e"
SKY = "#2e86ab"


def panels(count, width=2.6, height=2.4):
    figure, axes = plt.subplots(1, count, figsize=(width * count, height))
    for axis in np.atleast_1d(axes):
        axis.set_axis_off()
    return figure, np.atleast_1d(axes)


def show(axis, image, title, **options):
    axis.imshow(image, cmap="gray", interpolation="nearest", **options)
    axis.set_title(title, fontsize=9)


def save(figure, name):
    figure.tight_layout()
    OUT.mkdir(parents=True, exist_ok=True)
    figure.savefig(OUT / f"{name}.png", dpi=200, metadata={"Software": None})
    plt.close(figure)
    print(f"gallery: docs/pictures/{name}.png")


def photograph(name):
    """A photograph that comes with scikit-image, in grey."""
    from skimage import data
    image = getattr(data, name)()
    return image if image.ndim == 2 else (image @ (0.299, 0.587, 0.114)).astype(np.uint8)


def number(axis, x, y, text, **options):
    """Dark on a light ground: readable on every grey."""
    axis.text(x, y, text, fontsize=8, ha="center", color="#7a1f0a",
              bbox={"boxstyle": "round,pad=0.15", "facecolor": "#ffffffd8", "edgecolor": "none"}, **options)


def parts(seed=5, size=(160, 220), noise=6):
    """Discs and bars on a background that darkens to one side."""
    rng = np.random.default_rng(seed)
    ys, xs = np.mgrid[: size[0], : size[1]]
    image = 50 + 30 * xs / size[1]
    for cx, cy, r in ((40, 40, 22), (100, 50, 12), (60, 115, 30)):
        image[(xs - cx) ** 2 + (ys - cy) ** 2 < r * r] = 190
    for cx, cy, a, b, angle in ((165, 45, 40, 9, 0.5), (150, 115, 34, 16, -0.4)):
        u = (xs - cx) * np.cos(angle) + (ys - cy) * np.sin(angle)
        v = (ys - cy) * np.cos(angle) - (xs - cx) * np.sin(angle)
        image[(abs(u) < a) & (abs(v) < b)] = 175
    return np.clip(image + rng.normal(0, noise, size), 0, 255).astype(np.uint8)


def corners_of(box):
    """The four corners of an upright or turned region, in order."""
    along = np.array([np.cos(box.angle), np.sin(box.angle)]) * box.width / 2
    across = np.array([-np.sin(box.angle), np.cos(box.angle)]) * box.height / 2
    return np.array([box.x, box.y]) + np.array([along + across, along - across, -along - across, -along + across])


def outline(axis, box):
    axis.add_patch(patches.Polygon(corners_of(box), fill=False, edgecolor=SKY, linewidth=0.8))

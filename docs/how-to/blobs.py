"""Domains, and parts with their boxes."""
import matplotlib.patches as patches
import numpy as np

import dax
from pictures import INK, corners_of, number, panels, parts, photograph, save, show

image = parts()
labelling = dax.label(dax.otsu(dax.median3x3(image)))
found = dax.select_blobs(labelling, area=(100, 10000))
figure, axes = panels(3, 3.4, 2.9)
show(axes[0], image, "image", vmin=0, vmax=255)
labels = labelling.labels()
axes[1].imshow(np.ma.masked_less(labels, 0) % 7, cmap="Set2", interpolation="nearest")
axes[1].set_title(f"{len(labelling)} domains", fontsize=9)
show(axes[2], image, f"{len(found)} parts, boxes of least area", vmin=0, vmax=255)
for values, area in zip(found.box, found.area):
    box = dax.Box(*values)
    axes[2].add_patch(patches.Polygon(corners_of(box), fill=False, edgecolor=INK))
    number(axes[2], box.x, box.y, f"{area:.0f}", va="center")
save(figure, "blobs")

coins = photograph("coins")
around = dax.clipped_mean(coins, 151).astype(int)
mask = dax.median5x5(np.where(coins > around + 5, 255, 0).astype(np.uint8))
labelling = dax.label(mask)
found = dax.select_blobs(labelling, area=(800, 6000), circularity=(0.5, 1.0))
diameters = dax.measure_shapes(labelling, found).equivalent_diameter
figure, axes = panels(3, 3.4, 2.9)
show(axes[0], coins, "photograph", vmin=0, vmax=255)
show(axes[1], mask, "brighter than around, median 5 x 5")
show(axes[2], dax.draw_contours(coins // 2 + 40, labelling, found), f"{len(found)} coins, diameters in pixels")
for (x, y), diameter in zip(found.centroid, diameters):
    number(axes[2], x, y, f"{diameter:.0f}", va="center")
save(figure, "blobs_photograph")

"""The five rules, on a photograph."""
import matplotlib.patches as patches

import dax
from pictures import INK, panels, photograph, save, show

SIDE = 12
image = photograph("chelsea")[96:144:3, 108:168:3].copy()
height, width = image.shape
modes = ("constant", "replicate", "mirror", "symmetric", "wrap")
figure, axes = panels(len(modes), 2.2, 2.4)
for axis, mode in zip(axes, modes):
    show(axis, dax.copy_border(image, SIDE, SIDE, SIDE, SIDE, mode, 128), mode, vmin=0, vmax=255)
    axis.add_patch(patches.Rectangle((SIDE - 0.5, SIDE - 0.5), width, height, fill=False, edgecolor=INK))
save(figure, "borders")

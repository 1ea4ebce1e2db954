"""The five rules."""
import matplotlib.patches as patches
import numpy as np

import dax
from pictures import INK, panels, save, show

image = np.add.outer(np.arange(12) * 6, np.arange(16) * 12).astype(np.uint8)
image[3:6, 3:7] = 250
modes = ("constant", "replicate", "mirror", "symmetric", "wrap")
figure, axes = panels(len(modes), 2.2, 2.1)
for axis, mode in zip(axes, modes):
    show(axis, dax.copy_border(image, 7, 7, 9, 9, mode, 128), mode, vmin=0, vmax=255)
    axis.add_patch(patches.Rectangle((8.5, 6.5), 16, 12, fill=False, edgecolor=INK))
save(figure, "borders")

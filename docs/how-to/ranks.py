"""A page, its ground by a large median and what is left without it; thin lines after a median and a hybrid one."""
import numpy as np
from skimage import data

import dax
from pictures import panels, save, show

page = data.page()
ground = dax.median_filter(page, 41)
lines = np.full((40, 80), 40, np.uint8)
lines[8, 6:70] = lines[14:34, 60:76] = 220
for k in range(24):
    lines[12 + k, 10 + k] = 220
figure, axes = panels(6)
show(axes[0], page, "page")
show(axes[1], ground, "median 41 x 41")
show(axes[2], 255 - dax.subtract(ground, page), "difference, inverted")
show(axes[3], lines, "lines of one pixel")
show(axes[4], dax.median5x5(lines), "median 5 x 5")
show(axes[5], dax.hybrid_median5x5(lines), "hybrid median 5 x 5")
save(figure, "ranks")

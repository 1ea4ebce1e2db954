"""A page, its histogram with the levels of all methods, and the masks of three of them."""
import numpy as np
from skimage import data

import dax
from pictures import panels, save, show

page = data.page()
figure, axes = panels(4)
axes[0].fill_between(range(256), np.bincount(page.ravel(), minlength=256), step="mid", alpha=0.4)
for place, method in enumerate(("otsu", "kapur", "yen", "li", "kittler", "isodata", "intermodes", "triangle")):
    level = dax.threshold_global(page, method).levels[0]
    axes[0].axvline(level, linewidth=1)
    axes[0].text(level + 2, 4500 - 450 * place, method, fontsize=7)
axes[0].set_title("levels")
for axis, method in zip(axes[1:], ("otsu", "kittler", "triangle")):
    show(axis, dax.threshold_global(page, method).image, method)
save(figure, "levels")

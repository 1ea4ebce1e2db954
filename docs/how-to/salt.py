"""Specks of 2 x 3 pixels on a photograph, and what the two medians leave."""
import numpy as np

import dax
from pictures import panels, photograph, save, show

noisy = photograph("camera")[80:280, 120:380].copy()
rng = np.random.default_rng(2)
for y, x in zip(*np.nonzero(rng.random(noisy.shape) < 0.01)):
    noisy[y : y + 2, x : x + 3] = 255
figure, axes = panels(3)
show(axes[0], noisy, "specks of 2 x 3 pixels")
show(axes[1], dax.median3x3(noisy), "median 3 x 3")
show(axes[2], dax.median5x5(noisy), "median 5 x 5")
save(figure, "salt")

"""Coins, and one of them unrolled and rolled up again."""
import numpy as np
from skimage import data

import dax
from pictures import INK, panels, save, show

coins = data.coins()
ring = {"centre": (335, 44), "radii": (6, 38), "start": -np.pi / 2}
strip = dax.polar(coins, shape=(64, 480), **ring)
figure, axes = panels(3, 3.2, 2.2)
show(axes[0], coins, "coins")
for radius in ring["radii"]:
    angle = np.linspace(0, 2 * np.pi, 100)
    axes[0].plot(335 + radius * np.cos(angle), 44 + radius * np.sin(angle), color=INK, linewidth=0.8)
show(axes[1], strip, "one of them unrolled", aspect="auto")
show(axes[2], dax.polar_back(strip, shape=coins.shape, **ring)[:90, 290:380], "and rolled up again")
save(figure, "polar")

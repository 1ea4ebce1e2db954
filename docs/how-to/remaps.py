"""A brick wall, the places that a map reads, and what it makes of the wall."""
import numpy as np
from skimage import data

import dax
from pictures import INK, panels, save, show

wall = data.brick()
y, x = np.mgrid[:512, :512].astype(np.float32) - 255.5
bend = 1 - 0.15 * (x**2 + y**2) / 256**2
map_x, map_y = 255.5 + x * bend, 255.5 + y * bend
figure, axes = panels(3)
show(axes[0], wall, "a wall")
show(axes[1], wall, "places that the map reads")
for line in range(0, 512, 73):
    axes[1].plot(map_x[line], map_y[line], color=INK, linewidth=0.8)
    axes[1].plot(map_x[:, line], map_y[:, line], color=INK, linewidth=0.8)
show(axes[2], dax.remap(wall, map_x, map_y), "what the map makes of it")
save(figure, "remaps")

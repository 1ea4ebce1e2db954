"""A slanted photograph of handwriting, upright, and turned."""
import numpy as np
from skimage import data

import dax
from pictures import INK, panels, save, show

text = data.text()
corners = [(155, 15), (360, 95), (260, 130), (65, 40)]
front = dax.perspective_from_points(corners, [(0, 0), (299, 0), (299, 49), (0, 49)])
figure, axes = panels(3, 3.4, 1.7)
show(axes[0], text, "a photograph, and a part of it")
axes[0].plot(*np.array(corners + corners[:1]).T, color=INK, linewidth=1)
show(axes[1], dax.warp_perspective(text, front, (50, 300), interpolation="cubic"), "the part from the front")
show(axes[2], dax.rotate(text, np.radians(20), value=255), "turned by 20 degrees")
save(figure, "warps")

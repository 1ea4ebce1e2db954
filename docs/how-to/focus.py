"""A photograph out of focus and in focus, and its sharpness over the blur."""
import numpy as np

import dax
from pictures import panels, photograph, save, show

camera = photograph("camera")
figure, axes = panels(3, 3.2, 2.8)
show(axes[0], dax.gauss(camera, 4), "blurred by 4 pixels")
show(axes[1], camera, "as taken")
axes[2].set_axis_on()
places = np.arange(-12, 13)
images = [camera if place == 0 else dax.gauss(camera, max(abs(place) / 2, 0.3)) for place in places]
for measure in ("tenengrad", "laplacian", "brenner"):
    values = np.array([dax.sharpness(image, measure) for image in images])
    axes[2].plot(places, values / values.max(), "o-", ms=3, label=measure)
axes[2].set_title("sharpness by place of the lens", fontsize=9)
axes[2].tick_params(labelsize=7)
axes[2].legend(fontsize=7)
save(figure, "focus")

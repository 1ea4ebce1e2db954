"""A photograph smoothed, sharpened, the length of its gradient and its edges."""
import numpy as np
from skimage import data

import dax
from pictures import panels, save, show

image = data.camera()
part = np.s_[50:306, 130:386]
figure, axes = panels(5)
show(axes[0], image[part], "cameraman")
show(axes[1], dax.gauss(image, 4)[part], "Gaussian, sigma 4")
show(axes[2], dax.unsharp(image, 2, 2)[part], "unsharp mask")
show(axes[3], dax.gradient_mag_dir(image).magnitude[part].clip(0, 400), "magnitude of the gradient")
show(axes[4], 255 - dax.canny(image, 60, 150, 1.5)[part], "edges by Canny")
save(figure, "edges")

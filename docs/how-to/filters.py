"""Salt taken out of a photograph, smoothing, and erosions of a mask."""
import numpy as np
from skimage import data

import dax
from pictures import panels, save, show

image = data.coins()[:160, :200].copy()
noisy = image.copy()
noisy[np.random.default_rng(2).random(noisy.shape) < 0.06] = 255
mask = dax.otsu(dax.median3x3(noisy))
figure, axes = panels(4)
show(axes[0], noisy, "coins under salt")
show(axes[1], dax.median3x3(noisy), "median 3 x 3")
show(axes[2], dax.mean(noisy, 15), "mean 15 x 15")
show(axes[3], mask.astype(int) + dax.erode3x3(mask, 6), "mask, and 6 erosions of it")
save(figure, "filters")

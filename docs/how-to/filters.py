"""Salt taken out, smoothing, and erosions of a mask."""
import numpy as np

import dax
from pictures import panels, parts, save, show

rng = np.random.default_rng(2)
noisy = parts(noise=2)
noisy[rng.random(noisy.shape) < 0.06] = 255
mask = dax.otsu(dax.median3x3(noisy))
figure, axes = panels(4)
show(axes[0], noisy, "salt on parts")
show(axes[1], dax.median3x3(noisy), "median 3 x 3")
show(axes[2], dax.mean(noisy, 15), "mean 15 x 15")
show(axes[3], mask.astype(int) + dax.erode3x3(mask, 6), "mask, and 6 erosions of it")
save(figure, "filters")

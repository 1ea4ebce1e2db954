"""Text with noise, and what three filters make of it."""
import numpy as np
from skimage import data

import dax
from pictures import panels, save, show

text = data.text()
noisy = np.clip(text + np.random.default_rng(1).normal(0, 8, text.shape), 0, 255).astype(np.uint8)
part = slice(40, 120), slice(60, 220)
figure, axes = panels(4)
show(axes[0], noisy[part], "with noise")
show(axes[1], dax.local_mean(noisy, 9)[part].astype(np.uint8), "mean, 9 x 9")
show(axes[2], dax.guided(noisy, radius=4, eps=200)[part], "guided")
show(axes[3], dax.bilateral(noisy, 4, sigma_grey=30)[part], "bilateral")
save(figure, "smoothing")

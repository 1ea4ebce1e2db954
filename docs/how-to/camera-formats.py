"""A photograph as a sensor sees it, its colours again, and defects."""
import dax
import numpy as np
from pictures import panels, save, show
from skimage import data

cup = data.coffee()
raw = np.empty(cup.shape[:2], np.uint8)
for i, channel in enumerate((0, 1, 1, 2)):
    raw[i // 2 :: 2, i % 2 :: 2] = cup[i // 2 :: 2, i % 2 :: 2, channel]
defects = np.random.default_rng(1).random(raw.shape) < 0.004
broken = np.where(defects, 255, raw).astype(np.uint8)
near, far = (slice(60, 120), slice(180, 270)), (slice(0, 200), slice(100, 400))
figure, axes = panels(6, 2.1, 1.6)
show(axes[0], raw[near], "mosaic")
show(axes[1], dax.demosaic(raw, method="bilinear")[near], "bilinear")
show(axes[2], dax.demosaic(raw)[near], "MHC")
show(axes[3], cup[near], "photograph")
show(axes[4], dax.demosaic(broken)[far], "with defects")
show(axes[5], dax.demosaic(dax.replace_defects(broken, defects, distance=2).image)[far], "mended")
save(figure, "camera-formats")

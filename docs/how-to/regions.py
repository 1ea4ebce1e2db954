"""Coins whose masks touch, their distances, and the regions of the watershed; letters thinned to lines."""
import numpy as np
from skimage import data

import dax
from pictures import panels, save, show

coins, page = data.coins(), data.page()
mask = dax.threshold_global(dax.top_hat(coins, 81), "otsu").image
y, x = np.ogrid[-11:12, -11:12]
touching = dax.dilate_mask(dax.gray_open(dax.fill_holes(mask), 7), x * x + y * y <= 11.5**2)
distances = dax.distance_transform(touching)
peaks = dax.label(dax.regional_maxima(dax.h_maxima(distances, 1.5)))
regions = dax.watershed(-distances, np.where(touching == 0, -1, peaks.labels() + 1).astype(np.int32))
lines = dax.thin(dax.threshold_global(dax.black_hat(page, 15), "otsu").image)

figure, axes = panels(4)
show(axes[0], coins, "coins")
axes[0].contour(touching, [128], colors="#e4572e", linewidths=0.7)
show(axes[1], distances, "distances")
show(axes[2], coins, "watershed")
axes[2].imshow(np.ma.masked_less(regions * 7 % 24, 0) * np.where(regions > 0, 1, np.nan), cmap="hsv", alpha=0.35)
show(axes[3], 255 - np.where(lines[80:190, 20:200] > 0, 255, (255 - page[80:190, 20:200]) // 3), "thinned letters")
save(figure, "regions")

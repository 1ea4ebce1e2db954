"""A page under uneven light, a mask by one level, and masks by thresholds from windows."""
from skimage import data

import dax
from pictures import panels, save, show

page = data.page()
figure, axes = panels(5)
show(axes[0], page, "page")
show(axes[1], dax.threshold_global(page, polarity="dark").image, "otsu")
for axis, method in zip(axes[2:], ("mean", "sauvola", "wolf")):
    show(axis, dax.threshold_local(page, method, 31, test="dark"), f"{method}, 31 x 31")
save(figure, "uneven-light")

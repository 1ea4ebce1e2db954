"""A photograph, what is orange, what is bright, and what is both."""
from skimage import data

import dax
from pictures import panels, save, show

picture = data.astronaut()[150:, 60:400].copy()
orange = dax.in_range(picture, (150, 40, 0), (255, 140, 80))
bright = dax.compare(picture[:, :, 1], ">", 100)
figure, axes = panels(4)
show(axes[0], picture, "photograph")
show(axes[1], orange, "in range")
show(axes[2], bright, "> 100")
show(axes[3], dax.bitwise_and(orange, bright), "both")
save(figure, "masks")

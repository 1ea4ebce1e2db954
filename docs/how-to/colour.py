"""A photograph in several colour spaces, and its white balance."""
import dax
from pictures import panels, save, show
from skimage import data

cat = data.chelsea()[20:280, 60:420]
figure, axes = panels(6, 2.1, 1.6)
warm = dax.white_balance(cat, (1.3, 1, 0.6))
show(axes[0], cat, "photograph")
show(axes[1], dax.rgb2gray(cat), "grey")
show(axes[2], dax.rgb2hsv(cat)[..., 1], "saturation")
show(axes[3], dax.rgb2lab(cat)[..., 0], "lightness")
show(axes[4], warm, "in warm light")
show(axes[5], dax.white_balance(warm, dax.gray_world_gains(warm)), "balanced")
save(figure, "colour")

"""A photograph, one of its channels, and another order of them."""
import dax
from pictures import panels, save, show
from skimage import data

cat = data.chelsea()[40:260, 60:400]
figure, axes = panels(3)
show(axes[0], cat, "photograph")
show(axes[1], dax.pick_channel(cat, 0), "red", vmin=0, vmax=255)
show(axes[2], dax.swap_channels(cat, (2, 1, 0)), "red and blue exchanged")
save(figure, "channels")

"""A photographed page at a quarter of its size, and a part of it enlarged by two kernels."""
import dax
from pictures import panels, photograph, save, show

page = photograph("page")
part = page[60:85, 60:110]
figure, axes = panels(4, 2.8, 1.9)
show(axes[0], dax.resize(page, factor=0.25, anti_aliasing=False), "a quarter, without anti-aliasing")
show(axes[1], dax.resize(page, factor=0.25), "with anti-aliasing")
show(axes[2], dax.resize(part, factor=6), "a part, linear")
show(axes[3], dax.resize(part, factor=6, interpolation="lanczos"), "a part, Lanczos")
save(figure, "resize")

"""A photographed page at a quarter of its size, and a part of it enlarged."""
import dax
from pictures import panels, photograph, save, show

page = photograph("page")
figure, axes = panels(3, 3.4, 2.2)
show(axes[0], dax.resize(page, factor=0.25, anti_aliasing=False), "a quarter, without anti-aliasing")
show(axes[1], dax.resize(page, factor=0.25), "with anti-aliasing")
show(axes[2], dax.resize(page[60:90, 60:120], factor=4), "a part, four times as large")
save(figure, "resize")

"""Levels of a photograph's pyramid, and a Laplacian."""
import dax
from pictures import panels, photograph, save, show

levels = dax.pyramid(photograph("camera"), 3)
figure, axes = panels(5, 2.1, 2.3)
for axis, level in zip(axes, levels):
    show(axis, level, f"{level.shape[1]} x {level.shape[0]}")
detail = dax.laplacian_build(levels[0], levels[1])
show(axes[4], detail, "first less second", vmin=-60, vmax=60)
save(figure, "pyramids")

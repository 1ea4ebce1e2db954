"""Roots of a quartic on its graph, and a spline beside Akima's curve on measured points."""
import numpy as np

import dax
from pictures import INK, SKY, panels, save

eq = dax.equations
figure, axes = panels(2, 4.2, 2.8)
for axis in axes:
    axis.set_axis_on()
    axis.tick_params(labelsize=7)
quartic = np.array([6.0, -17, 17, -7, 1])  # (x - 1)^2 (x - 2) (x - 3)
x = np.linspace(0.6, 3.25, 300)
found = eq.real_roots(quartic)
axes[0].axhline(0, color="0.7", linewidth=0.8)
axes[0].plot(x, eq.Polynomial(quartic)(x), color=SKY, linewidth=1.4)
for root, multiplicity, offset in zip(found.x, found.multiplicity, ((0, -12), (15, 5), (-16, 5))):
    axes[0].plot(root, 0, "o", color=INK, markersize=4)
    axes[0].annotate("double" if multiplicity == 2 else "single", (root, 0), offset, textcoords="offset points",
                     fontsize=7, ha="center", color=INK)
axes[0].set_ylim(-0.35, 0.8)
axes[0].set_title("real roots of a quartic", fontsize=9)

# A step as a stylus measures it, in micrometres.
rng = np.random.default_rng(3)
places = np.arange(13.0)
height = np.where(places < 6.5, 0, 20) + rng.normal(0, 0.15, 13)
fine = np.linspace(0, 12, 600)
axes[1].plot(fine, eq.spline(places, height)(fine), color=SKY, linewidth=1.2, label="spline")
axes[1].plot(fine, eq.akima(places, height)(fine), color=INK, linewidth=1.2, label="Akima")
axes[1].plot(places, height, ".", color="0.2", markersize=6)
axes[1].set_title("a measured step", fontsize=9)
axes[1].set_xlabel("mm", fontsize=7)
axes[1].set_ylabel("µm", fontsize=7)
axes[1].legend(fontsize=7, frameon=False)
save(figure, "equations")

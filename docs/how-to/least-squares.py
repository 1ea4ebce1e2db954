"""A decay with outliers, and the residuals of two fits."""
import numpy as np

import dax
from pictures import INK, panels, save

rng = np.random.default_rng(1)
t = np.linspace(0, 5, 60)
seen = 3 * np.exp(-0.8 * t) + 0.5 + rng.normal(0, 0.05, t.size)
seen[[10, 30, 45]] += 2


def curve(p):
    return p[0] * np.exp(-p[1] * t) + p[2]


plain = dax.least_squares(lambda p: curve(p) - seen, [1, 1, 0])
robust = dax.least_squares(lambda p: curve(p) - seen, [1, 1, 0], huber=0.1)
figure, axes = panels(2, 4.2, 2.6)
for axis in axes:
    axis.set_axis_on()
    axis.tick_params(labelsize=7)
axes[0].plot(t, seen, ".", color="0.3", markersize=4)
for fit, colour, name in ((plain, "0.6", "least squares"), (robust, INK, "Huber")):
    axes[0].plot(t, curve(fit.x), color=colour, linewidth=1.2, label=name)
    axes[1].plot(t, seen - curve(fit.x), ".-", color=colour, markersize=3, linewidth=0.6, label=name)
axes[0].set_title("a decay with three wrong readings", fontsize=9)
axes[1].set_title("residuals", fontsize=9)
axes[1].set_ylim(-0.4, 0.4)
axes[0].legend(fontsize=7, frameon=False)
save(figure, "least-squares")

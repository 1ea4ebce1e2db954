"""A line through points with errors in both coordinates, and singular values of a graded matrix."""
import numpy as np

import dax
from pictures import INK, SKY, panels, save

rng = np.random.default_rng(4)
t = rng.uniform(-1, 1, 400)
x, y = t + rng.normal(0, 0.25, 400), 2 * t + rng.normal(0, 0.25, 400)
figure, axes = panels(2, 4.2, 2.8)
for axis in axes:
    axis.set_axis_on()
    axis.tick_params(labelsize=7)
axes[0].plot(x, y, ".", color="0.4", markersize=3)
ends = np.array([-1.4, 1.4])
for slope, colour, name in (
    (2, "0.75", "drawn"),
    (dax.linalg.least_squares(x[:, None], y)[0], SKY, "least squares"),
    (dax.linalg.total_least_squares(x[:, None], y).x[0], INK, "total least squares"),
):
    axes[0].plot(ends, slope * ends, color=colour, linewidth=1.4, label=f"{name}: {slope:.2f}")
axes[0].set_title("errors in both coordinates", fontsize=9)
axes[0].legend(fontsize=7, frameon=False)
n = 24
scale = 10.0 ** -np.arange(n)
graded = (scale[:, None] * rng.normal(size=(n, n)))[rng.permutation(n)] * rng.permutation(scale)
axes[1].semilogy(np.linalg.svd(graded)[1], "o", color=SKY, markersize=4, label="NumPy")
axes[1].semilogy(dax.linalg.svd(graded).s, ".", color=INK, markersize=5, label="dax.linalg")
axes[1].set_title("singular values of a graded matrix", fontsize=9)
axes[1].legend(fontsize=7, frameon=False)
save(figure, "matrices")

"""A line and a circle among other points, and how often a line is found beside the theory."""
import numpy as np

import dax
from pictures import INK, SKY, panels, save

rng = np.random.default_rng(4)
angle = rng.uniform(0, 2 * np.pi, 100)
ring = np.stack([75 + 28 * np.cos(angle), 40 + 28 * np.sin(angle)], 1)
along = rng.uniform(5, 115, 100)
side = np.stack([along, 75 + 0.3 * along], 1)
points = np.concatenate([ring, side, rng.uniform(0, 120, (250, 2))]) + rng.normal(0, 0.3, (450, 2))
figure, axes = panels(2, 4.2, 3.4)
for each in axes:
    each.set_axis_on()
    each.tick_params(labelsize=7)
axes[0].plot(*points.T, ".", color="0.7", markersize=3)
circle, line = dax.consensus.circle(points, 0.9), dax.consensus.line(points, 0.9)
for found in (circle, line):
    axes[0].plot(*points[found.inliers].T, ".", color=INK, markersize=4)
x, y, radius = circle.model
turn = np.linspace(0, 2 * np.pi, 200)
axes[0].plot(x + radius * np.cos(turn), y + radius * np.sin(turn), color=SKY, linewidth=1)
a, b, c = line.model
ends = np.array([0, 120])
axes[0].plot(ends, -(a * ends + c) / b, color=SKY, linewidth=1)
axes[0].set_aspect("equal")
axes[0].set_title(f"{circle.inliers.sum()} and {line.inliers.sum()} of {len(points)} points", fontsize=9)

samples = 20
shares = np.arange(0.1, 0.95, 0.1)
rates = []
for share in shares:
    count = round(100 * (1 - share))
    exact = np.stack([np.arange(100.0), 0.5 * np.arange(100)], 1)
    exact[count:] = rng.uniform(0, 100, (100 - count, 2))

    def through(i):
        step = exact[i[1]] - exact[i[0]]
        return None if not step.any() else [-step[1], step[0], step[1] * exact[i[0], 0] - step[0] * exact[i[0], 1]]

    def away(model, part):
        return (exact[part] @ model[:2] + model[2]) / np.hypot(*model[:2])

    options = dict(sample_size=2, model_size=3, threshold=1e-6, method="ransac", max_iterations=samples)
    found = [dax.consensus.run(100, through, away, seed=seed, **options).inliers.sum() for seed in range(1000)]
    rates.append(np.mean(np.array(found) >= count))
clean = np.round(100 * (1 - shares))
expected = 1 - (1 - clean * (clean - 1) / 9900) ** samples
axes[1].plot(shares, expected, color=SKY, linewidth=1, label="1 - (1 - w)^20")
axes[1].plot(shares, rates, "o", color=INK, markersize=4, label="found, of 1000 seeds")
axes[1].set_xlabel("share of outliers", fontsize=8)
axes[1].set_title("a line by 20 samples", fontsize=9)
axes[1].legend(fontsize=7, frameon=False)
save(figure, "consensus")

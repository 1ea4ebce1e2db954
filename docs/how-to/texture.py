"""Three textures side by side, local binary patterns, an energy by Laws, pairs of levels, and a map by patterns."""
import numpy as np
from skimage import data

import dax
from pictures import panels, save, show

textures = [data.brick(), data.grass(), data.gravel()]
scene = np.hstack([image[256:, :192] for image in textures])


def shares(image):
    counts = dax.local_binary_pattern_histogram(image, 16, 2, "uniform")
    return counts / counts.sum()


known = [shares(image[:256]) for image in textures]
found = np.zeros(scene.shape, np.uint8)
for y in range(0, scene.shape[0], 8):
    for x in range(0, scene.shape[1], 8):
        window = shares(scene[max(y - 28, 0) : y + 36, max(x - 28, 0) : x + 36])
        found[y : y + 8, x : x + 8] = np.argmin([np.abs(window - each).sum() for each in known])
figure, axes = panels(5, 3, 1.7)
show(axes[0], scene, "brick, grass, gravel")
show(axes[1], dax.local_binary_pattern(scene, 16, 2, "uniform"), "16 points on radius 2, uniform")
show(axes[2], dax.laws_energy(scene, "L5", "E5"), "energy, level by edge")
pairs = np.hstack([dax.co_occurrence(image, (0, 1), 64) for image in textures])
show(axes[3], np.log1p(pairs), "pairs of levels, one above the other")
show(axes[4], found, "what each place was taken for")
save(figure, "texture")

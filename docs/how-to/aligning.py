"""A photograph, the same turned and scaled with noise, and what is left after it was laid upon the first."""
import numpy as np
from skimage import data

import dax
from pictures import panels, save, show

scene = data.camera()
first = scene[20:276, 120:376]
turn = dax.rotation_matrix((247.5, 147.5), np.radians(25), 1.15)
turned = dax.warp_affine(scene, turn, interpolation="cubic", mode="mirror")[20:276, 120:376]
noise = np.random.default_rng(1).normal(0, 8, turned.shape)
second = np.clip(0.7 * turned + 20 + noise, 0, 255).astype(np.uint8)
motion = dax.phase_rotation_scale(first, second)
back = dax.warp_affine(second, motion.matrix, inverse=True)
inside = dax.warp_affine(np.full_like(second, 255), motion.matrix, inverse=True) == 255
level = np.where(inside, np.abs((back.astype(float) - 20) / 0.7 - first), 0)
figure, axes = panels(4, 2.5, 2.5)
show(axes[0], first, "an image")
show(axes[1], second, "turned, larger, noisier")
show(axes[2], back, f"laid upon it: {np.degrees(motion.angle):.2f}°, {motion.scale:.3f}")
show(axes[3], np.clip(level, 0, 255).astype(np.uint8), "what differs")
save(figure, "aligning")

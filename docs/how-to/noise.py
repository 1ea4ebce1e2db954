"""A photograph with noise, noise by grey level from one image and from two, and a photon transfer curve."""
import numpy as np

import dax
from pictures import INK, SKY, panels, photograph, save, show

rng = np.random.default_rng(1)
clean = dax.gauss(photograph("coins"), 2) // 2 + 20


def frame():
    return np.rint(clean + rng.normal(0, 1, clean.shape) * np.sqrt(4 + 0.2 * clean)).astype(np.uint8)


def pair(electrons):
    held = np.minimum(rng.poisson(electrons, (2, 150, 200)), 9500) + rng.normal(0, 5, (2, 150, 200))
    return list(np.clip(np.rint(0.4 * held + 100), 0, 4095).astype(np.uint16))


figure, axes = panels(3, 3.4, 2.8)
first, second = frame(), frame()
show(axes[0], first, f"noise {dax.noise_level(first):.1f} levels")
axes[1].set_axis_on()
for found, name, colour in ((dax.noise_by_level(first, bins=10), "blocks of one image", INK),
                            (dax.noise_by_level_of_frames([first, second], bins=10), "two frames", SKY)):
    axes[1].plot(found.levels, np.sqrt(found.variances), "o", ms=4, color=colour, label=name)
levels = np.linspace(20, 150, 50)
axes[1].plot(levels, np.sqrt(4 + 0.2 * levels), color="gray", linewidth=1, label="true")
axes[1].set_title("noise by grey level", fontsize=9)
axes[1].legend(fontsize=7)
axes[2].set_axis_on()
dark = dax.frame_noise(pair(0), high=4095)
bright = [dax.frame_noise(pair(500 * each), high=4095) for each in range(1, 24)]
result = dax.photon_transfer(bright, dark)
signal = np.array([each.mean - dark.mean for each in bright])
axes[2].plot(signal, [each.variance - dark.variance for each in bright], "o", ms=4, color=SKY)
axes[2].plot([0, 0.7 * result.saturation], [0, 0.7 * result.saturation * result.gain], color=INK)
axes[2].set_title(f"gain {result.gain:.3f}, read noise {result.read_noise:.1f} electrons", fontsize=9)
for axis in axes[1:]:
    axis.tick_params(labelsize=7)
save(figure, "noise")

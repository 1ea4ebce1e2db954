"""A photograph with a printing screen, and what notches make of it."""
import dax
import numpy as np
from pictures import panels, photograph, save, show

camera = photograph("camera").astype(np.float32)
rows, columns = camera.shape
y, x = np.mgrid[:rows, :columns]
screen = 25 * np.cos(2 * np.pi * (0.21 * x + 0.08 * y)) + 25 * np.cos(2 * np.pi * (0.08 * x - 0.21 * y))
printed = (camera + screen).astype(np.float32)
notches = [(0.21 * columns, 0.08 * rows, 4), (0.08 * columns, -0.21 * rows, 4)]
spectrum = dax.dft(dax.apply_window(printed))
clean = dax.idft_real(dax.spectrum_notch(dax.dft_real(printed), notches, width=columns))
part = np.s_[60:260, 150:350]
figure, axes = panels(4, 2.6, 2.8)
show(axes[0], printed[part], "printed", vmin=0, vmax=255)
show(axes[1], dax.shift_quadrants(dax.log_spectrum(spectrum)), "its spectrum")
show(axes[2], dax.shift_quadrants(dax.log_spectrum(dax.spectrum_notch(spectrum, notches))), "with notches")
show(axes[3], clean[part], "without the screen", vmin=0, vmax=255)
save(figure, "spectra")

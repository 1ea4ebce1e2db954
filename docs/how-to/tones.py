"""A dark photograph: stretched, by a gamma curve, equalised, and equalised by tiles."""
import dax
from pictures import panels, photograph, save, show

dark = dax.adjust_gamma(photograph("moon"), 2.5)[80:420, 40:500]
figure, axes = panels(5, 2.4, 2.2)
results = {
    "dark": dark,
    "stretched": dax.rescale_intensity(dark, percentiles=(1, 99)),
    "gamma 0.4": dax.adjust_gamma(dark, 0.4),
    "equalised": dax.equalize_hist(dark),
    "equalised by tiles": dax.equalize_adapthist(dark, clip_limit=4),
}
for axis, (title, image) in zip(axes, results.items()):
    show(axis, image, title, vmin=0, vmax=255)
save(figure, "tones")

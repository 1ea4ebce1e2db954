"""Otsu's level, a band and a ramp."""
import dax
from pictures import panels, parts, photograph, save, show

image = parts()
figure, axes = panels(4)
show(axes[0], image, "image", vmin=0, vmax=255)
show(axes[1], dax.otsu(image), f"Otsu, level {dax.threshold(image).low}")
show(axes[2], dax.threshold(image, "band", low=50, high=70).image, "band 50..70")
show(axes[3], dax.threshold(image, "soft", low=60, high=190, soft=254).image, "soft ramp 60..190")
save(figure, "thresholds")

page = photograph("page")
figure, axes = panels(3, 3.6, 2.2)
show(axes[0], page, "photograph", vmin=0, vmax=255)
show(axes[1], dax.otsu(page), f"Otsu, level {dax.threshold(page).low}")
show(axes[2], page >= dax.clipped_mean(page, 41).astype(int) - 10, "by the mean around, 41 x 41")
save(figure, "thresholds_photograph")

"""A photograph, mirrored, turned by a quarter and transposed."""
import dax
from pictures import panels, photograph, save, show

camera = dax.resize(photograph("camera")[:, 100:], factor=0.5)
figure, axes = panels(4, 2.4, 3.0)
show(axes[0], camera, "an image")
show(axes[1], dax.mirror(camera), "mirrored")
show(axes[2], dax.rotate90(camera), "a quarter turn")
show(axes[3], dax.transpose(camera), "transposed")
save(figure, "rotate")

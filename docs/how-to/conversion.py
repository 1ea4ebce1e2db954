"""A photograph as a camera of 12 bits sends it: saturated, scaled, and with what is bright replaced."""
import dax
import numpy as np
from pictures import panels, photograph, save, show

coins = photograph("coins")[20:200, 20:280]
twelve = dax.convert(coins, np.uint16, scale=4095 / 255)
figure, axes = panels(3)
grey = {"vmin": 0, "vmax": 255}
show(axes[0], dax.convert(twelve, np.uint8), "12 bits as they are", **grey)
scaled = dax.convert(twelve, np.uint8, scale=255 / 4095)
show(axes[1], scaled, "times 255 / 4095", **grey)
show(axes[2], dax.putmask(scaled.copy(), scaled > 130, 255), "bright pixels set", **grey)
save(figure, "conversion")

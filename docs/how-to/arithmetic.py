"""A photograph with a constant added, multiplied, and subtracted without a sign."""
import dax
from pictures import panels, photograph, save, show

coins = photograph("coins")[20:200, 20:280]
figure, axes = panels(4)
grey = {"vmin": 0, "vmax": 255}
show(axes[0], coins, "photograph", **grey)
show(axes[1], dax.add_constant(coins, 60), "+ 60", **grey)
show(axes[2], dax.multiply_constant(dax.subtract_constant(coins, 40), 3, scale_factor=1), "(- 40) 3 / 2", **grey)
show(axes[3], dax.absolute_difference_constant(coins, 128), "distance from 128", **grey)
save(figure, "arithmetic")

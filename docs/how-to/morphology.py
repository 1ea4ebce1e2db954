"""A page on uneven light and its black-hat, coins and the gradient of their opening."""
from skimage import data

import dax
from pictures import panels, save, show

page, coins = data.page(), data.coins()
figure, axes = panels(4)
show(axes[0], page, "page")
show(axes[1], 255 - dax.black_hat(page, 15), "black-hat 15 x 15, inverted")
show(axes[2], coins, "coins")
show(axes[3], dax.gray_gradient(dax.gray_open(coins, 5)), "gradient of the opening")
save(figure, "morphology")

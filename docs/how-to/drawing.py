"""Measured coins: circles, markers and arrows on a photograph; joins and caps enlarged."""
import numpy as np
from skimage import data

import dax
from pictures import panels, save, show

photograph = data.coins()[190:303, :250]
parts = dax.select_blobs(dax.label(dax.otsu(photograph)), photograph, area=(500, 5000))
left, top, width, height = parts.rect.T
parts = parts[(left > 0) & (top > 0) & (left + width < photograph.shape[1]) & (top + height < photograph.shape[0])]
coins = np.repeat(photograph[..., None], 3, axis=2)
for centre, area in zip(parts.centroid, parts.area):
    dax.draw_ellipse(coins, centre, np.sqrt(area / np.pi), dax.Stroke((255, 80, 0), width=1.5))
dax.draw_markers(coins, parts.centroid, "cross", dax.Stroke((0, 220, 255), width=1.2), size=7)
dax.draw_arrow(coins, (125, 57), parts.centroid[0] + (4, 4), dax.Stroke((255, 255, 0), width=1.5))
joins = np.full((48, 66), 255, np.uint8)
for i, (join, cap) in enumerate([("round", "round"), ("miter", "square"), ("bevel", "butt")]):
    pen = dax.Stroke(40, width=6, join=join, cap=cap, alpha=0.8)
    dax.draw_polyline(joins, np.array([(5, 12), (11, 32), (18, 10)]) + (21.5 * i, 0), pen)
star = np.full((48, 66), 255, np.uint8)
angle = np.arange(5) * 4 * np.pi / 5 - np.pi / 2
for x, rule in ((17, "even-odd"), (49, "non-zero")):
    outline = np.column_stack([x + 15 * np.cos(angle), 24 + 15 * np.sin(angle)])
    dax.draw_polygon(star, outline, dax.Stroke(40), rule=rule)
figure, axes = panels(3, 3.2, 2.4)
show(axes[0], coins, "measured coins")
show(axes[1], joins, "joins, caps, alpha 0.8")
show(axes[2], star, "even-odd, non-zero")
save(figure, "drawing")

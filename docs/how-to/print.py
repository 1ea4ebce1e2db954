"""Print, coins and specks under uneven light: from the photograph to blobs, step by step."""
import matplotlib.pyplot as plt
import numpy as np
from skimage import data

import dax
from pictures import save, show


def contours(image, labelling, blobs):
    return dax.draw_contours(image // 2 + 40, labelling, blobs)


def print_of(image, side, offset):
    yield image, "photograph"
    yield dax.black_hat(image, 25), "black hat: the light is gone"
    mask = dax.threshold_local(image, "gauss", side, test="dark", offset=offset)
    yield mask, f"gauss, {side} x {side}, {offset} darker"
    labelling = dax.label(mask)
    found = dax.select_blobs(labelling, area=(12, 3000))
    yield contours(image, labelling, found), f"{len(found)} blobs of 12 pixels and more"


def coins_of(image):
    yield image, "photograph"
    mask = dax.threshold_local(image, "gauss", 151, test="light", offset=10)
    yield mask, "gauss, 151 x 151, 10 lighter"
    whole = dax.fill_holes(dax.median5x5(mask))
    yield whole, "median 5 x 5, holes filled"
    labelling = dax.label(dax.clear_border(whole))
    found = dax.select_blobs(labelling, area=(800, 6000))
    yield contours(image, labelling, found), f"{len(found)} of {len(labelling)} blobs: coins"


def specks_of(image):
    yield image, "photograph"
    hat = dax.black_hat(dax.gauss(image, 1), 11)
    yield hat, "Gaussian 1, black hat 11 x 11"
    lines = [(13, 0), (12, 5), (9, 9), (5, 12), (0, 13), (-5, 12), (-9, 9), (-12, 5)]
    vessels = np.max([dax.gray_dilate_line(dax.gray_erode_line(hat, line), line) for line in lines], axis=0)
    specks = hat - vessels
    yield specks, "less openings by lines"
    labelling = dax.label(dax.hysteresis(specks, 6, 14))
    found = dax.select_blobs(labelling, area=(9, 200), circularity=(0.4, 1.0))
    yield contours(image, labelling, found), f"{len(found)} of {len(labelling)} blobs: small and round"


rows = [print_of(data.page(), 31, 12), print_of(data.text(), 61, 16), coins_of(data.coins()),
        specks_of(data.microaneurysms())]
figure, axes = plt.subplots(len(rows), 4, figsize=(9, 7.2), height_ratios=[1, 0.8, 1.6, 2])
for line, steps in zip(axes, rows):
    for axis, (image, title) in zip(line, steps):
        axis.set_axis_off()
        show(axis, image, title)
save(figure, "print")

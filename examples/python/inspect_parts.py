#!/usr/bin/env python3
"""Draws parts on a NumPy array, finds them, and prints what they measure."""
import dax
import numpy as np


def scene():
    """A bar, a disc, and a speck of dust, on a background with a gradient."""
    y, x = np.mgrid[0:200, 0:300]
    image = (20 + x / 20).astype(np.uint8)
    image[20:60, 30:90] = 180
    image[(x - 200) ** 2 + (y - 120) ** 2 <= 30**2] = 220
    image[180:182, 10:12] = 200
    return image


def main():
    image = scene()
    with dax.Pool(2) as pool:
        smooth = dax.median3x3(image, pool=pool)
    blobs = dax.select_blobs(dax.label(dax.otsu(smooth)), area=(100, 5000), sort="area")
    print(f"DAX {dax.__version__}: {len(blobs.area)} parts")
    for area, (x, y), circularity in zip(blobs.area, blobs.centroid, blobs.circularity):
        print(f"area {area:.0f} at ({x:.2f}, {y:.2f}), circularity {circularity:.2f}")


if __name__ == "__main__":
    main()

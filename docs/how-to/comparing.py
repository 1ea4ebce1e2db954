"""Colours of a mosaic by two methods, and their differences from the photograph, by the program."""
import subprocess
import tempfile

import dax
from pictures import TOOL, panels, save, show
from skimage import data

cup = data.coffee()
mosaic = cup[:, :, 1].copy()
mosaic[::2, ::2], mosaic[1::2, 1::2] = cup[::2, ::2, 0], cup[1::2, 1::2, 2]
figure, axes = panels(5, 2.4, 2)
near = (slice(60, 140), slice(170, 290))
show(axes[0], mosaic[near], "mosaic")
with tempfile.TemporaryDirectory() as folder:
    def run(*arguments):
        return subprocess.run([TOOL, *arguments], cwd=folder, check=True, capture_output=True, text=True).stdout

    dax.imwrite(f"{folder}/photograph.png", cup)
    dax.imwrite(f"{folder}/mosaic.pgm", mosaic)
    for i, method in enumerate(("rggb:bilinear", "rggb")):
        run("convert", "mosaic.pgm", "colours.png", "--debayer", method)
        table = run("compare", "photograph.png", "colours.png", "--out", "difference.png", "--extent", "60")
        psnr = next(line.split()[1] for line in table.splitlines() if "PSNR" in line)
        show(axes[1 + 2 * i], dax.imread(f"{folder}/colours.png")[near], ("bilinear", "MHC")[i])
        show(axes[2 + 2 * i], dax.imread(f"{folder}/difference.png")[near], f"difference, {psnr} dB", vmin=0, vmax=255)
save(figure, "comparing")

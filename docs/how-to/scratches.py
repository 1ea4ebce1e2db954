"""Scratches on brushed metal, rendered by the program: its filters one after the other, and the blobs."""
import json
import subprocess
import tempfile

import dax
from pictures import INK, TOOL, panels, save, show

with tempfile.TemporaryDirectory() as folder:
    def run(*arguments):
        return subprocess.run([TOOL, *arguments], cwd=folder, check=True, capture_output=True, text=True).stdout

    run("render-scene", "metal.png", "--brushed", "--size", "600x450")
    run("filter", "metal.png", "hat.png", "--top-hat", "15x1")
    run("filter", "hat.png", "mask.png", "--hysteresis", "25,45")
    metal, hat, mask = (dax.imread(f"{folder}/{name}.png") for name in ("metal", "hat", "mask"))
    listing = run("inspect", "mask.png", "--threshold", "mask", "--area", "40..", "--json")

figure, axes = panels(5, 2.6, 2.2)
show(axes[0], metal, "brushed metal", vmin=0, vmax=255)
show(axes[1], dax.otsu(metal), "one level does not do")
show(axes[2], hat, "--top-hat 15x1", vmin=0, vmax=100)
show(axes[3], mask, "--hysteresis 25,45")
blobs = json.loads(listing)["images"][0]["blobs"]
show(axes[4], metal, f"{len(blobs)} blobs of 40 pixels and more", vmin=0, vmax=255)
for blob in blobs:
    axes[4].plot(blob["x"], blob["y"], "+", color=INK)
save(figure, "scratches")

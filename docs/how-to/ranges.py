"""The program's own pictures, side by side."""
import subprocess
import tempfile

import matplotlib.pyplot as plt

from pictures import TOOL, panels, save, show

with tempfile.TemporaryDirectory() as folder:
    def run(*arguments):
        subprocess.run([TOOL, *arguments], cwd=folder, check=True, stdout=subprocess.DEVNULL)
        return plt.imread(f"{folder}/{arguments[-1]}") if arguments[-1].endswith(".png") else None

    run("range", "scene", "parts.range", "--size", "600x450")
    raw = run("range", "render", "parts.range", "raw.png")
    run("range", "despeckle", "--size", "60", "--step", "300", "parts.range", "clean.range")
    clean = run("range", "render", "clean.range", "clean.png")
    run("cloud", "downsample", "--leaf", "0.2", "clean.range", "thin.ply")
    lit = run("cloud", "normals", "thin.ply", "normals.ply", "--picture-size", "640x480", "--picture", "lit.png")
figure, axes = panels(3, 3.0, 2.4)
for axis, picture, title in zip(axes, (raw, clean, lit), ("heights, as the sensor sees them", "without speckles",
                                                          "thinned, lit by the normals")):
    show(axis, picture, title)
save(figure, "ranges")

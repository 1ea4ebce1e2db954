"""A drive through a town: the measurements chained up, and after optimisation."""
import subprocess
import tempfile

import dax
from pictures import INK, SKY, TOOL, panels, save

with tempfile.TemporaryDirectory() as folder:
    subprocess.run([TOOL, "graph", "make", "manhattan", f"{folder}/town.g2o", "--poses", "1500"], check=True)
    with open(f"{folder}/town.g2o", "rb") as file:
        graph = dax.graph.read(file.read())
figure, axes = panels(2, 3.6, 3.6)
for axis, title in zip(axes, ("measurements chained up", "optimised")):
    where = {v["id"]: v["estimate"][:2] for v in graph.vertices}
    for i, j in graph.edges["vertices"]:
        (x0, y0), (x1, y1) = where[i], where[j]
        loop = j != i + 1
        axis.plot([x0, x1], [y0, y1], color=SKY if loop else INK, linewidth=0.4 if loop else 0.6, zorder=-int(loop))
    axis.set_aspect("equal")
    axis.set_title(f"{title}: energy {graph.energy:.4g}", fontsize=9)
    graph.optimise()
save(figure, "graphs")

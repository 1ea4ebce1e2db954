"""Graphs: samples, optimisation, pictures, and what is refused."""

import json

import pytest


@pytest.mark.parametrize("kind", ["ring", "manhattan", "garage", "sphere", "torus"])
def test_samples_are_optimised(dax, tmp_path, kind):
    """The energy that is left is about half of what measurements are more than numbers."""
    source, mapped, plot = (str(tmp_path / name) for name in ("in.g2o", "out.g2o", "plot.svg"))
    dax("graph", "make", kind, source, "--poses", "300")
    assert "fixed vertices  1" in dax("graph", "info", source).out
    result = json.loads(dax("graph", "optimise", source, mapped, "--plot", plot, "--json").out)
    surplus = result["residuals"] - result["parameters"]
    assert result["converged"] and (surplus < 50 or 0.7 * surplus < 2 * result["energy_after"] < 1.3 * surplus)
    assert result["energies"][-1] == pytest.approx(result["energy_after"]) and result["held_vertices"] == 0
    told = json.loads(dax("graph", "info", mapped, "--json").out)
    assert told["energy"] == pytest.approx(result["energy_after"], rel=1e-9)
    assert (tmp_path / "plot.svg").read_text().count("<path") == 4
    dax("graph", "plot", mapped, plot)
    again = dax("graph", "optimise", mapped, "--kernel", "huber", "--solver", "jacobian").out
    assert "energy  " in again and "iterations" in again


def test_wrong_files(dax, tmp_path):
    graph = tmp_path / "wrong.g2o"
    graph.write_text("VERTEX_SE2 1 0 0 0\nEDGE_SE2 1 2 0 0 0 1 0 0 1 0 1\n")
    assert "wrong.g2o: line 2: there is no such vertex" in dax("graph", "info", str(graph), status=3).err
    graph.write_text("nothing\n")
    assert "no vertex" in dax("graph", "plot", str(graph), str(tmp_path / "a.svg"), status=3).err

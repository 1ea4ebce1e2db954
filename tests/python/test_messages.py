"""What a mistake is told: which argument, what was given, what is needed."""
import importlib.util
import pydoc
import re

import numpy as np
import pytest

import dax

image = np.zeros((40, 60), np.uint8)
image[10:30, 20:40] = 200
labelling = dax.label(image)
box = dax.Box(20, 20, 20, 5)
record = dax.RangeImage(np.ones((2, 2), np.int16))

MISTAKES = {
    "a colour image": (ValueError, "grey first", lambda: dax.otsu(np.zeros((4, 4, 3), np.uint8))),
    "a comparison for a mask": (TypeError, r"mask: .*view\(np.uint8\)", lambda: dax.label(image > 100)),
    "an image for a labelling": (TypeError, "labelling: ndarray.*dax.label", lambda: dax.select_blobs(image)),
    "one end of a range": (TypeError, r"area: 5, needed is \(least", lambda: dax.select_blobs(labelling, area=5)),
    "an end left out": (TypeError, "area: .*math.inf", lambda: dax.select_blobs(labelling, area=(5, None))),
    "ends the wrong way round": (ValueError, "area: .*above", lambda: dax.select_blobs(labelling, area=(9, 5))),
    "a window of three sides": (TypeError, r"window: \(3, 3, 3\)", lambda: dax.mean(image, (3, 3, 3))),
    "one region for many": (TypeError, "list.*find_edges", lambda: dax.find_edges_in(image, box)),
    "an angle in degrees": (dax.Error, "degrees", lambda: dax.find_edges(image, box._replace(angle=90))),
    "an angle without tolerance": (TypeError, "angle: 0", lambda: dax.fit_line([[0, 0], [1, 1], [2, 2]], angle=0)),
    "two sides of a cell": (ValueError, "leaf: ", lambda: dax.voxel_grid(np.ones((5, 3)), (1, 1))),
    "a file that is not there": (dax.Error, "^nowhere.range: ", lambda: dax.read_range("nowhere.range")),
    "arguments changed over": (TypeError, "the path comes first", lambda: dax.write_range(record, "part.range")),
    "levels the wrong way round": (dax.Error, "low < high", lambda: dax.soft_weights(image, 200, 100)),
    "no line in sight": (dax.Error, "no initial line", lambda: dax.fit_line([[0, 0], [1, 5], [2, 2], [3, 9]], threshold=1e-3)),
}


@pytest.mark.parametrize("kind, message, mistake", MISTAKES.values(), ids=MISTAKES)
def test_a_mistake_is_told(kind, message, mistake):
    with pytest.raises(kind, match=message):
        mistake()


def test_open_ends():
    assert len(dax.select_blobs(labelling, area=(100, np.inf))) == 1


def test_help_lists_what_there_is():
    listed = set(re.findall(r"\w+", dax.__doc__))
    assert set(dax.__all__) - {"version"} <= listed
    assert "otsu(" in pydoc.plain(pydoc.render_doc(dax))


def test_all_is_all():
    public = {name for name, value in vars(dax).items() if not name.startswith("_") and getattr(value, "__module__", "")}
    assert public == set(dax.__all__)


def test_a_library_that_is_not_there(monkeypatch):
    monkeypatch.setenv("DAX_LIBRARY", "/nowhere/libdax.so")
    spec = importlib.util.find_spec("dax._library")
    with pytest.raises(ImportError, match="DAX_LIBRARY"):
        spec.loader.exec_module(importlib.util.module_from_spec(spec))

"""Rectangles around a turned bar, and around points."""
import numpy as np
import pytest

import dax


def test_boxes_and_hull_of_a_domain(rng):
    y, x = np.mgrid[0:60, 0:80]
    turned = 0.3
    u, v = (x - 40) * np.cos(turned) + (y - 30) * np.sin(turned), (y - 30) * np.cos(turned) - (x - 40) * np.sin(turned)
    labelling = dax.label(((abs(u) <= 20) & (abs(v) <= 8)).astype(np.uint8))
    box = labelling.enclosing_box(0)
    assert box == pytest.approx((40, 30, 40, 16, turned), abs=1)
    assert labelling.enclosing_box(0, "perimeter") == pytest.approx(box, abs=1)
    assert 0.8 < labelling.rectangularity(0) <= 1
    hull, points = labelling.hull(0), np.argwhere(labelling.labels() == 0)[:, ::-1]
    assert dax.enclosing_box(hull, convex=True) == box == dax.enclosing_box(rng.permutation(points))
    for bad in (-1, 1, 2**40):
        with pytest.raises(IndexError):
            labelling.hull(bad)


def test_points_that_are_refused():
    for points, kind in (([[0.5, 1]], TypeError), ([[2**33, 1]], ValueError), (np.zeros((0, 2), int), dax.Error)):
        with pytest.raises(kind):
            dax.enclosing_box(points)

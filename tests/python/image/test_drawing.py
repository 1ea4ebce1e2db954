"""Drawing: every shape in every layout, and what the arguments mean."""
import numpy as np
import pytest

import dax

PEN = dax.Stroke(200, width=3)
FILL = dax.Stroke(200, width=0)
SHAPES = {
    "line": (lambda image, pen: dax.draw_line(image, (4, 4), (44, 30), pen), PEN),
    "polyline": (lambda image, pen: dax.draw_polyline(image, [(4, 4), (44, 9), (20, 30)], pen, closed=True), PEN),
    "arrow": (lambda image, pen: dax.draw_arrow(image, (4, 4), (40, 30), pen, head=9, spread=0.5), PEN),
    "rectangle": (lambda image, pen: dax.draw_rectangle(image, (25, 18), (30, 12), pen, angle=0.3), FILL),
    "ellipse": (lambda image, pen: dax.draw_ellipse(image, (25, 18), (15, 7), pen, angle=0.3), FILL),
    "arc": (lambda image, pen: dax.draw_arc(image, (25, 18), 14, 0.5, 2, pen), FILL),
    "polygon": (lambda image, pen: dax.draw_polygon(image, [(4, 4), (44, 9), (20, 30)], pen), FILL),
    "markers": (lambda image, pen: dax.draw_markers(image, [(10, 10), (30, 20)], "diamond", pen, size=12), FILL),
}


@pytest.mark.parametrize("name", SHAPES)
def test_every_type_and_layout(name):
    draw, pen = SHAPES[name]
    gray = draw(np.zeros((36, 50), np.uint8), pen)
    assert (gray == 200).any() and (gray == 0).any()
    wide = draw(np.zeros((36, 50), np.uint16), pen)
    np.testing.assert_array_equal(wide, gray)
    for dtype in (np.uint8, np.uint16):
        colour = np.zeros((36, 60, 3), dtype)[:, 5:55]
        assert draw(colour, pen) is not None  # in place, rows apart
        for channel in range(3):
            np.testing.assert_array_equal(colour[..., channel], gray)


def test_areas_of_shapes():
    def area(draw):
        return draw(np.zeros((60, 60), np.uint16)).sum() / 60000

    white = dax.Stroke(60000, width=0)
    assert area(lambda a: dax.draw_ellipse(a, (30, 30), 20, white)) == pytest.approx(np.pi * 400, rel=1e-3)
    assert area(lambda a: dax.draw_arc(a, (30, 30), 20, 0, np.pi / 2, white)) == pytest.approx(np.pi * 100, rel=1e-3)
    assert area(lambda a: dax.draw_rectangle(a, (30, 30), (20, 7.5), white, angle=1)) == pytest.approx(150, rel=1e-3)
    line = dax.Stroke(60000, width=4, cap="square")
    assert area(lambda a: dax.draw_line(a, (10, 10), (40, 50), line)) == pytest.approx(54 * 4, rel=1e-3)


def test_arguments():
    image = np.zeros((20, 20, 3), np.uint8)
    dax.draw_line(image, (-5, 10), (30, 10), dax.Stroke((1, 2, 3), antialias=False, alpha=1))
    np.testing.assert_array_equal(image[10], np.tile([1, 2, 3], (20, 1)))
    with pytest.raises(TypeError, match="uint16"):
        dax.draw_line(np.zeros((3, 3)), (0, 0), (1, 1))
    with pytest.raises(ValueError, match="writable"):
        dax.draw_line(np.zeros((6, 6), np.uint8)[:, ::2], (0, 0), (1, 1))
    with pytest.raises(ValueError, match="cap"):
        dax.draw_line(image, (0, 0), (1, 1), dax.Stroke(cap="flat"))
    with pytest.raises(dax.Error, match="x0, y0"):
        dax.draw_line(image, (np.nan, 0), (1, 1))
    with pytest.raises(dax.Error):
        dax.draw_line(image, (0, 0), (1, 1), dax.Stroke(256))

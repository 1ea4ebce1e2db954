"""Shapes and text of a JSON file on pictures, and how a wrong file is refused."""
import json
import struct

import pictures
import pytest

GREY = 100


@pytest.fixture
def annotate(dax, tmp_path):
    """Rows of (r, g, b) of a grey picture with shapes on it."""
    def run(*shapes, style=None, size=(40, 30)):
        (tmp_path / "in.png").write_bytes(pictures.png(pictures.blank(*size, grey=GREY)))
        (tmp_path / "shapes.json").write_text(json.dumps({"style": style or {}, "shapes": shapes}), encoding="utf-8")
        dax("annotate", "in.png", "shapes.json", "-o", "out.png")
        rows, pixel = pictures.read_png((tmp_path / "out.png").read_bytes())
        return [[tuple(row[x : x + pixel]) for x in range(0, len(row), pixel)] for row in rows]
    return run


RED = {"color": "#ff0000"}
CLOSED = {"points": [[10, 5], [30, 5], [20, 25]], **RED}
# A shape, a pixel that it covers, and one that it leaves.
SHAPES = [
    ({"type": "line", "from": [2, 10], "to": [30, 10], **RED}, (20, 10), (20, 12)),
    ({"type": "polyline", **CLOSED}, (20, 5), (15, 15)),
    ({"type": "polyline", "closed": True, **CLOSED}, (15, 15), (20, 10)),
    ({"type": "polygon", "fill": "#ff0000", "width": 0, **CLOSED}, (20, 15), (10, 20)),
    ({"type": "polygon", "rings": [CLOSED["points"], [[18, 8], [22, 8], [20, 12]]], "fill": "#ff0000", "width": 0},
     (20, 20), (20, 9)),
    ({"type": "arrow", "from": [2, 10], "to": [30, 10], "width": 2, "head": 12, **RED}, (21, 14), (10, 13)),
    ({"type": "rectangle", "center": [20, 15], "size": [20, 10], **RED}, (20, 10), (20, 15)),
    ({"type": "rectangle", "center": [20, 15], "size": [20, 4], "angle": 90, "fill": "#ff0000", **RED},
     (20, 22), (27, 15)),
    ({"type": "circle", "center": [20, 15], "radius": 10, **RED}, (10, 15), (20, 15)),
    ({"type": "ellipse", "center": [20, 15], "radii": [12, 5], "fill": "#ff0000", "width": 0}, (30, 15), (20, 22)),
    ({"type": "arc", "center": [20, 15], "radius": 10, "start": 0, "span": 90, **RED}, (27, 22), (13, 8)),
    ({"type": "marker", "at": [20, 15], **RED}, (24, 15), (24, 19)),
    ({"type": "marker", "at": [20, 15], "kind": "square", "size": 20, **RED}, (20, 5), (20, 15)),
    ({"type": "text", "at": [20, 25], "text": "I", "height": 20, "align": "centre", "width": 3, **RED},
     (20, 15), (28, 15)),
]


@pytest.mark.parametrize("shape, on, off", SHAPES, ids=[f"{i}-{shape[0]['type']}" for i, shape in enumerate(SHAPES)])
def test_shapes(annotate, shape, on, off):
    rows = annotate(shape)
    red, green, blue = rows[on[1]][on[0]]
    assert red > 200 and green < 40 and blue < 40
    assert rows[off[1]][off[0]] == (GREY,) * 3


def test_style_and_order(annotate):
    bar = {"type": "line", "from": [-50, 15], "to": [90, 15]}
    rows = annotate(bar, {**bar, "color": "black", "width": 2}, style={"color": "white", "width": 6})
    assert [rows[y][20][0] for y in (10, 13, 14, 15, 18)] == [GREY, 255, 127, 0, 178]  # and still grey
    assert len(rows[0][0]) == 1
    rows = annotate({**bar, "alpha": 0.5}, style={"color": "blue"})
    assert rows[15][20] == (66, 101, 165)


def test_16_bits_are_kept(dax, tmp_path):
    (tmp_path / "in.pgm").write_bytes(b"P5\n4 1\n4095\n" + struct.pack(">4H", 0, 1000, 2000, 4095))
    shapes = [{"type": "rectangle", "center": [1, 0], "size": [1, 1], "fill": "white", "width": 0}]
    (tmp_path / "shapes.json").write_text(json.dumps({"shapes": shapes, "style": {"color": "black"}}))
    dax("annotate", "in.pgm", "shapes.json", "--out", "out.pgm")
    assert (tmp_path / "out.pgm").read_bytes() == b"P5\n4 1\n4095\n" + struct.pack(">4H", 0, 4095, 2000, 4095)


def test_opacity_is_left_out(dax, tmp_path):
    (tmp_path / "in.png").write_bytes(pictures.png_rgba(pictures.blank(9, 9)))
    (tmp_path / "shapes.json").write_text('{"shapes": []}')
    assert dax("annotate", "in.png", "shapes.json", "-o", "out.ppm").err == "dax: in.png: the opacity is left out\n"
    assert (tmp_path / "out.ppm").read_bytes() == pictures.ppm(pictures.blank(9, 9))


# A file, and what is said of it.
WRONG = {
    "{": "line 1, column 2: is no JSON",
    '{"shapes": [\n {"type": "line",,}]}': "line 2, column 18: is no JSON",
    "[]": "it is not an object",
    "{}": "shapes is missing",
    '{"shapes": 3}': "shapes is not a list",
    '{"shapes": [], "shape": 1}': "shape is not known here (shapes, style)",
    '{"shapes": [], "shapes": []}': 'has the key "shapes" twice in one object',
    '{"shapes": [3]}': "shapes[0] is not an object",
    '{"shapes": [{"type": "blob"}]}': "line 1: shapes[0].type is none of line, polyline",
    '{"shapes": [{}]}': "shapes[0].type is missing (line, ",
    '{"shapes": [\n\n{"type": "line", "from": [1, 2]}]}': "line 3: shapes[0].to is missing",
    '{"shapes": [{"type": "line", "from": [1, 2, 3], "to": [4, 5]}]}':
        "shapes[0].from is not a list of 2 numbers in -1e+09..1e+09",
    '{"shapes": [{"type": "line", "from": [1, 2], "to": [1, 5], "widht": 3}]}':
        "shapes[0].widht is not known here (alpha, ",
    '{"shapes": [{"type": "line", "from": [1, 2], "to": [1, 5], "fill": "red"}]}': "shapes[0].fill is not known here",
    '{"shapes": [{"type": "polygon", "points": [[1, 2], [3, 4]]}]}':
        "shapes[0].points is not a list of at least 3 points",
    '{"shapes": [{"type": "circle", "center": [1, 2], "radius": -1}]}': "shapes[0].radius is not a number in 0..1e+09",
    '{"style": {"color": "mauve"}, "shapes": []}': 'style.color is neither "#rrggbb" nor one of black, ',
    '{"style": {"antialias": 1}, "shapes": []}': "style.antialias is neither true nor false",
    '{"shapes": [{"type": "text", "at": [0, 0], "text": 5}]}': "shapes[0].text is not a text",
}


@pytest.mark.parametrize("content", WRONG)
def test_wrong_files_are_refused_with_their_place(dax, tmp_path, content):
    (tmp_path / "in.png").write_bytes(pictures.png(pictures.blank(9, 9)))
    (tmp_path / "shapes.json").write_text(content)
    run = dax("annotate", "in.png", "shapes.json", "-o", "out.png", status=3)
    assert run.err.startswith("dax: shapes.json: ") and WRONG[content] in run.err and run.err.count("\n") == 1
    assert not (tmp_path / "out.png").exists()


def test_names(dax, tmp_path):
    (tmp_path / "in.png").write_bytes(pictures.png(pictures.blank(9, 9)))
    (tmp_path / "shapes.json").write_text('{"shapes": []}')
    for out, why in [("in.png", "--out: in.png is the picture"), ("out.gif", '--out: "out.gif" ends in none of')]:
        assert why in dax("annotate", "in.png", "shapes.json", "-o", out, status=2).err
    assert dax("annotate", "in.png", "none.json", "-o", "out.png", status=3).err.startswith("dax: none.json: ")

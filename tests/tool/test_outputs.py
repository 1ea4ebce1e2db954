"""Overlays and reports: what they show, where they go, and that they are whole or absent."""

import base64
import html.parser
import os
import re

import pictures
import pytest


@pytest.fixture
def picture(tmp_path, parts):
    (tmp_path / "parts.png").write_bytes(pictures.png(parts))
    return "parts.png"


def is_contour(red, green, blue):
    return green > 180 and red < 100


def test_overlay(dax, tmp_path, picture):
    """Contours lie on the edges of the parts; the picture shows through elsewhere."""
    dax("inspect", picture, "--overlay", "out.png")
    rows, pixel = pictures.read_png((tmp_path / "out.png").read_bytes())
    assert (len(rows[0]) // pixel, len(rows), pixel) == (640, 480, 3)
    at = lambda x, y: tuple(rows[y][3 * x : 3 * x + 3])
    # The 12 x 10 rectangle at (5, 5), eight times as large.
    for x, y in [(40, 80), (136, 80), (88, 40), (88, 120)]:
        assert any(is_contour(*at(x + dx, y + dy)) for dx in (-1, 0, 1) for dy in (-1, 0, 1)), (x, y)
    assert at(60, 60) == (200, 200, 200)
    assert at(320, 300) == (20, 20, 20)


@pytest.mark.parametrize("scale, sides", [("1", (80, 60)), ("0.5", (40, 30)), ("2.5", (200, 150)), ("0.1", (8, 6))])
def test_overlay_scale(dax, tmp_path, picture, scale, sides):
    dax("inspect", picture, "--overlay", "out.png", "--overlay-scale", scale)
    rows, pixel = pictures.read_png((tmp_path / "out.png").read_bytes())
    assert (len(rows[0]) // pixel, len(rows)) == sides


class Page(html.parser.HTMLParser):
    """Elements of a page, which must nest."""

    VOID = {"meta", "link", "br", "img", "input"}

    def __init__(self, text):
        super().__init__()
        self.open, self.elements, self.texts = [], [], []
        self.feed(text)
        self.close()
        assert self.open == []

    def handle_starttag(self, tag, attributes):
        self.elements.append((tag, dict(attributes)))
        if tag not in self.VOID:
            self.open.append(tag)

    def handle_startendtag(self, tag, attributes):
        self.elements.append((tag, dict(attributes)))

    def handle_endtag(self, tag):
        assert self.open.pop() == tag

    def handle_data(self, data):
        self.texts.append((self.open[-1] if self.open else "", data))

    def of(self, tag, style=None):
        return [a for t, a in self.elements if t == tag and (style is None or a.get("class") == style)]

    def text(self, tag):
        return [data for t, data in self.texts if t == tag]


NAME = """<img src=x onerror='alert(1)'>&amp;"b".png"""


def test_report(dax, tmp_path, parts):
    (tmp_path / NAME).write_bytes(pictures.png(parts))
    run = dax("inspect", NAME, "--report", "out.html", "--area", "20..200", "--json")
    text = (tmp_path / "out.html").read_text()
    page = Page(text)
    assert page.text("h1") == page.text("title") == [NAME]
    assert page.of("img") == []
    assert len(page.of("g", "blob")) == len(page.of("tr")) - 1 == len(run.blobs) == 4
    assert "dax inspect" in page.text("code")[0] and "--area 20..200" in page.text("code")[0]
    assert any("1970-01-01" in text and "lengths in pixels" in text for text in page.text("p"))
    first = run.blobs[0]
    assert page.text("td")[:4] == ["1", f"{first['x']:.1f}", f"{first['y']:.1f}", f"{first['area']:.0f}"]
    # Nothing comes from elsewhere, and the policy sees to it.
    links = [value for _, attributes in page.elements for name, value in attributes.items() if name in ("src", "href")]
    assert len(links) == 1 and links[0].startswith("data:image/png;base64,")
    assert re.findall(r"url\(|@import|https?:", text) == []
    assert "default-src 'none'" in page.of("meta")[2]["content"]
    assert [row.get("tabindex") for row in page.of("tr")] == [None, "0", "-1", "-1", "-1"]


def test_report_holds_the_picture(dax, tmp_path, parts):
    (tmp_path / "parts.png").write_bytes(pictures.png(parts))
    dax("inspect", "parts.png", "--report", "out.html")
    (image,) = Page((tmp_path / "out.html").read_text()).of("image")
    kind, content = image["href"].split(",")
    assert kind == "data:image/png;base64"
    rows, pixel = pictures.read_png(base64.b64decode(content, validate=True))
    assert b"".join(bytes(row[::pixel]) for row in rows) == pictures.grey8(parts)


def area_of_path(data):
    """Of a closed polygon, by the shoelace formula."""
    numbers = list(map(float, re.findall(r"-?[\d.]+", data)))
    points = list(zip(numbers[::2], numbers[1::2]))
    return sum(x0 * y1 - x1 * y0 for (x0, y0), (x1, y1) in zip(points, points[1:] + points[:1])) / 2


@pytest.mark.parametrize("cells, connectivity, enclosed", [
    (["#"], 8, [1]),
    (["####", "####"], 8, [8]),
    (["####", "#..#", "####"], 8, [12]),
    (["##", "#."], 8, [3]),
    ([".#.", "###", ".#."], 4, [5]),
    (["#.", ".#"], 8, [2]),
    (["#.", ".#"], 4, [1, 1]),
    # A ring that closes across a diagonal.
    (["##.", "#.#", "###"], 8, [8]),
    (["##.", "#.#", "###"], 4, [7]),
])
def test_contours(dax, tmp_path, cells, connectivity, enclosed):
    """It holds its pixels and holes, less an eighth of a pixel for each corner; there are four more than notches."""
    picture = pictures.blank(12, 9)
    for y, line in enumerate(cells):
        for x, cell in enumerate(line):
            if cell == "#":
                pictures.draw(picture, 3 + x, 2 + y, 1, 1)
    (tmp_path / "cells.png").write_bytes(pictures.png(picture))
    dax("inspect", "cells.png", "--report", "out.html", "--connectivity", connectivity)
    page = Page((tmp_path / "out.html").read_text())
    assert [area_of_path(path["d"]) for path in page.of("path", "contour")] == [n - 0.5 for n in enclosed]


def test_nothing_found(dax, tmp_path):
    (tmp_path / "dark.png").write_bytes(pictures.png(pictures.blank(30, 20)))
    run = dax("inspect", "dark.png", "--threshold", 100, "--report", "out.html", "--overlay", "out.png", "--json")
    assert run.blobs == []
    assert "No objects." in Page((tmp_path / "out.html").read_text()).text("p")
    assert dax("inspect", "dark.png", "--threshold", 100, "--csv").out.count("\n") == 1


@pytest.mark.parametrize("option, name", [("--overlay", "out.png"), ("--report", "out.html")])
def test_failed_writing_leaves_nothing(dax, tmp_path, picture, option, name):
    (tmp_path / name).mkdir()
    for target, message in [(name, "Is a directory"), (f"none/{name}", "No such file or directory")]:
        run = dax("inspect", picture, option, target, status=4)
        assert run.err == f"dax: {target}: cannot be written: {message}\n"
    assert sorted(os.listdir(tmp_path)) == sorted([name, picture])

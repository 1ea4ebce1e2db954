"""Text: that all arguments arrive, and what is no UTF-8 as Python sees it."""
import numpy as np
import pytest

import dax


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16])
@pytest.mark.parametrize("channels", [1, 3])
def test_ink_lies_in_the_box(dtype, channels):
    full = np.iinfo(dtype).max
    image = np.zeros((120, 200, channels)[: 2 + (channels > 1)], dtype)
    pen = dax.Stroke(int(full), width=2)
    style = {"height": 14, "angle": 0.3, "slant": 0.2, "align": "centre", "anchor": "middle"}
    text = "Gr\u00f6\u00dfe \u2300\n100 \u00b5m"
    drawn = dax.draw_text(image, text, (100, 60), pen, **style)
    assert drawn is image and drawn.max() == full
    box = dax.text_box(text, width=2, **style)
    rows, columns = np.nonzero(drawn.reshape(120, 200, -1).max(2))
    assert columns.min() >= 100 + box.left - 0.5 and columns.max() <= 100 + box.right + 0.5
    assert abs(rows.min() - 60 - box.top) < 1.5 and abs(rows.max() - 60 - box.bottom) < 1.5
    assert box.lines == 2 and box.replaced == 0


def test_color_and_alpha():
    image = np.full((20, 20, 3), 100, np.uint8)
    drawn = dax.draw_text(image.copy(), "\u25a0", (-4, 20), dax.Stroke((200, 100, 0), width=3, alpha=0.5), height=30)
    assert drawn[10, 10].tolist() == [150, 100, 50]
    hard = dax.draw_text(image, "\u00e9", (4, 16), dax.Stroke(0, antialias=False), height=12)
    assert set(np.unique(hard)) == {0, 100}
    with pytest.raises(dax.Error):
        dax.draw_text(image, "A", (0, 0), dax.Stroke(256))


def test_bytes_are_read_as_python_reads_them():
    random = np.random.default_rng(1)
    lead = np.array([0x41, 0x80, 0xA0, 0xBF, 0xC3, 0xE0, 0xE2, 0xED, 0xF0, 0xF4, 0xFF], np.uint8)
    for _ in range(200):
        data = random.choice(lead, 12).tobytes()
        text = data.decode("utf-8", "replace")
        box, expected = dax.text_box(data), dax.text_box(text)
        assert box.advance == expected.advance
        assert box.replaced == expected.replaced + text.count("\ufffd")


def test_lines():
    one, three = dax.text_box("A"), dax.text_box("A\nA\nA", line_step=2)
    assert three.lines == 3 and three.bottom == one.bottom + 64
    assert dax.text_box("A", align="right").right <= 1 and dax.text_box("A", anchor="top").top > -1.5

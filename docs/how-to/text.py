"""The whole font at four heights, and text on a photograph."""
import numpy as np
from skimage import data

import dax
from pictures import OUT

LINES = [
    "ABCDEFGHIJKLMNOPQRSTUVWXYZ ÄÅÆÇÉÈÊËÍÑÓÔÖØÚÜÝÞŒŠŽ",
    "abcdefghijklmnopqrstuvwxyz äåæçéèêëíñóôöøúüýþßœšžð",
    "0123456789 .,:;!?'\"()[]{}<>+-*/=%&@#$_|~^` ¼½¾ ¹²³ ₀₁₂",
    "ΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡΣΤΥΦΧΨΩ αβγδεζηθικλμνξοπρςστυφχψω",
    "°⌀±µ×÷≈≠≤≥∞√∑∫∂∇ ←↑→↓↔↕↗↘ €£¥§¶©®™ «»‹›„“”’–—…•†‰",
    "∠∥⊥⏤⏥○⌭⌒⌓◎⌖⌯⌰⌲⌳⌴⌵↧□△▽◇✓✗ⓁⓂⓅ℄ ⌀ 12.5 ±0.05",
]
HEIGHTS = (8, 12, 20, 40)
BLACK = dax.Stroke(0, width=0)


def specimen():
    """Black on white, pixel by pixel as it is drawn."""
    boxes = [dax.text_box("\n".join(LINES), height=height, line_step=1.9) for height in HEIGHTS]
    paper = np.full((int(sum(box.bottom - box.top + 26 for box in boxes)), int(boxes[-1].right) + 20), 255, np.uint8)
    y = 12.0
    for height, box in zip(HEIGHTS, boxes):
        dax.draw_text(paper, "\n".join(LINES), (10, round(y - box.top)), BLACK, height=height, line_step=1.9)
        y += box.bottom - box.top + 26
    return paper


coins = data.coins()[20:140, 250:384].repeat(3, 0).repeat(3, 1)
for text, place, angle in [("⌀ 52.3 px", (255, 210), 0), ("A = 2148 px²", (70, 330), -0.4), ("№ 7  ✓", (20, 40), 0)]:
    dax.draw_text(coins, text, place, dax.Stroke(0, width=6, alpha=0.7), height=20, angle=angle)
    dax.draw_text(coins, text, place, dax.Stroke(255, width=2.2), height=20, angle=angle)
sheet = specimen()
sheet[20 : 20 + coins.shape[0], -20 - coins.shape[1] : -20] = coins
OUT.mkdir(parents=True, exist_ok=True)
dax.imwrite(OUT / "text.png", sheet)
print("gallery: docs/pictures/text.png")

"""What filters of neighbourhoods share: the names of what lies outside an image. Windows may also end there: "clip"."""
from typing import Literal

FilterMode = Literal["replicate", "mirror", "symmetric", "wrap", "constant"]
FILTER_BORDERS = {"replicate": 0, "mirror": 1, "symmetric": 2, "wrap": 3, "constant": 4}

WindowMode = Literal["clip", "replicate", "mirror", "symmetric", "wrap", "constant"]
WINDOW_BORDERS = {**FILTER_BORDERS, "clip": 6}

"""What filters of neighbourhoods share."""
from typing import Literal

FilterMode = Literal["replicate", "mirror", "symmetric", "wrap", "constant"]
FILTER_BORDERS = {"replicate": 0, "mirror": 1, "symmetric": 2, "wrap": 3, "constant": 4}

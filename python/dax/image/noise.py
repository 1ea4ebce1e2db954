"""Noise in images."""
from typing import Literal, Optional

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import choice, source
from .._interface import ffi
from .._library import call

__all__ = ["noise_level"]

_TYPES = tuple(np.dtype(each) for each in (np.uint8, np.uint16, np.float32))
_METHODS = {"mad": "Mad", "immerkaer": "Immerkaer"}
_CLIPPED = {"8u": (0.0, 255.0), "16u": (0.0, 65535.0), "32f": (-np.inf, np.inf)}


def noise_level(
    image: ArrayLike,
    method: Literal["mad", "immerkaer"] = "mad",
    *,
    low: Optional[float] = None,
    high: Optional[float] = None,
) -> float:
    """The standard deviation of the noise, in grey levels.

    image: (height, width) uint8, uint16 or float32, at least 3 x 3. method: mad takes the median of a high-pass, which
    stands texture and edges; immerkaer its mean, for images that are mostly smooth. low, high: pixels at or beyond them
    are clipped and do not count; by default the ends of the type, for 12 bits in uint16 give high=4095.

    >>> round(dax.noise_level(np.tile(np.array([[9, 11], [11, 9]], np.float32), (4, 4)), "immerkaer"), 3)
    3.342
    """
    src = source("image", image, _TYPES)
    least, greatest = _CLIPPED[src.suffix]
    sigma = ffi.new("double*")
    name = f"DAXI_Noise{choice('method', method, _METHODS)}_{src.suffix}_C1R"
    limits = least if low is None else low, greatest if high is None else high
    call(name, src.pointer, src.step, src.size, *limits, sigma)
    return float(sigma[0])

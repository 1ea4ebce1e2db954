"""How sharp an image is."""
from typing import Literal

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import choice, source
from .._interface import ffi
from .._library import call

__all__ = ["sharpness"]

_TYPES = tuple(np.dtype(each) for each in (np.uint8, np.uint16, np.float32))
_MEASURES = {"tenengrad": "Tenengrad", "laplacian": "LaplacianVariance", "brenner": "Brenner"}


def sharpness(image: ArrayLike, measure: Literal["tenengrad", "laplacian", "brenner"] = "tenengrad") -> float:
    """A number that is greatest where the lens is in focus, for images of one scene and one exposure.

    image: (height, width) uint8, uint16 or float32, at least 3 x 3. measure: the mean square of Sobel's gradient, the
    variance of the Laplace operator, or the mean square of horizontal differences over two pixels.

    >>> dax.sharpness(np.tile(np.array([0, 0, 3, 3], np.uint8), (3, 1)), "brenner")
    9.0
    """
    src = source("image", image, _TYPES)
    value = ffi.new("double*")
    name = f"DAXI_Sharpness{choice('measure', measure, _MEASURES)}_{src.suffix}_C1R"
    call(name, src.pointer, src.step, src.size, value)
    return float(value[0])

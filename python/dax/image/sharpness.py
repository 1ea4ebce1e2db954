"""How sharp an image is."""
from typing import Literal, Optional

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import choice, source
from .._interface import ffi
from .._library import buffer, call
from ..pool import Pool, handle_of

__all__ = ["sharpness"]

_TYPES = tuple(np.dtype(each) for each in (np.uint8, np.uint16, np.int16, np.float32))
_MEASURES = {"tenengrad": "Tenengrad", "laplacian": "LaplacianVariance", "brenner": "Brenner"}


def sharpness(
    image: ArrayLike,
    measure: Literal["tenengrad", "laplacian", "brenner"] = "tenengrad",
    *,
    pool: Optional[Pool] = None,
) -> float:
    """A number that is greatest where the lens is in focus, for images of one scene and one exposure.

    image: (height, width) uint8, uint16, int16 or float32, at least 3 x 3. measure: the mean square of Sobel's
    gradient, the variance of the Laplace operator, or the mean square of horizontal differences over two pixels. pool:
    measures bands of rows.

    >>> dax.sharpness(np.tile(np.array([0, 0, 3, 3], np.uint8), (3, 1)), "brenner")
    9.0
    """
    src = source("image", image, _TYPES)
    value = ffi.new("double*")
    name, arguments = choice("measure", measure, _MEASURES), (src.pointer, src.step, src.size, value)
    if pool is None:
        call(f"DAXI_Sharpness{name}_{src.suffix}_C1R", *arguments)
    else:
        threads, handle = handle_of(pool)
        work = buffer(f"DAXI_Sharpness{name}BufferSize_{src.suffix}_MT", src.size)
        call(f"DAXI_Sharpness{name}_{src.suffix}_C1R_MT", handle, threads, *arguments, work)
    return float(value[0])

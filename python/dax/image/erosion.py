"""Morphology of masks."""
from typing import Literal, Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import Array, choice
from .._operation import apply

__all__ = ["dilate3x3", "erode3x3"]


def erode3x3(
    mask: ArrayLike,
    iterations: int = 1,
    out: Optional[Array] = None,
    along: Literal["both", "rows", "columns"] = "both",
) -> NDArray[np.uint8]:
    """One-sided erosion of a mask by 3-pixel passes along rows and columns: a run loses its last pixel.

    mask: uint8, not 0 is set. iterations: at least 1. along: only rows, or only columns, in one pass. `out` may be the
    mask itself, but for columns.

    >>> dax.erode3x3(np.array([[0, 0, 0], [0, 255, 255], [0, 255, 255], [0, 0, 0]], np.uint8)[:, [0, 1, 2, 0]])[1]
    array([  0, 255,   0,   0], dtype=uint8)
    """
    part = choice("along", along, {"both": "3x3", "rows": "Row3", "columns": "Col3"})
    name, images = f"DAXI_Erode{part}_{{type}}_{{layout}}R", {"mask": mask}
    if along == "both":
        work = "DAXI_Erode3x3BufferSize_{type}"
        return apply(name, images, iterations, types="8u", out=out, in_place=True, work=work)
    if iterations != 1:
        raise ValueError("iterations: one pass along rows or columns")
    return apply(name, images, types="8u", out=out, in_place=along != "columns")


def dilate3x3(mask: ArrayLike, iterations: int = 1, out: Optional[Array] = None) -> NDArray[np.uint8]:
    """One-sided dilation of a mask, which gives back what erode3x3 takes: a run grows by one pixel at its end, unless
    that joins it to the next one.

    mask: uint8, not 0 is set. iterations: at least 1. `out` may be the mask itself.

    >>> dax.dilate3x3(np.array([[0, 255, 0, 0]], np.uint8))
    array([[  0, 255, 255,   0]], dtype=uint8)
    """
    name, work = "DAXI_Dilate3x3_{type}_{layout}R", "DAXI_Dilate3x3BufferSize_{type}"
    return apply(name, {"mask": mask}, iterations, types="8u", out=out, in_place=True, work=work)

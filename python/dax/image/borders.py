"""Borders around images."""
from typing import Literal, Optional

from numpy.typing import ArrayLike

from .._arrays import Array, choice, pixel_value, refuse_overlap, source, target
from .._library import call

__all__ = ["copy_border"]

_BORDERS = {
    "constant": "Const",
    "replicate": "Replicate",
    "mirror": "Mirror",
    "symmetric": "Symmetric",
    "wrap": "Circular",
}


def copy_border(
    image: ArrayLike,
    top: int,
    bottom: int,
    left: int,
    right: int,
    mode: Literal["constant", "replicate", "mirror", "symmetric", "wrap"] = "replicate",
    value: complex = 0,
    out: Optional[Array] = None,
) -> Array:
    """The image with a border around it.

    image: (height, width), any of the nine pixel types. top, bottom, left, right: pixels, at least 0.
    mode: constant (`value`), replicate (a a|a b c), mirror (c b|a b c), symmetric (b a|a b c), wrap (b c|a b c).
    Returns (top + height + bottom, left + width + right) of the image's type.

    >>> dax.copy_border(np.array([[1, 2, 3]], np.uint8), 0, 0, 2, 2, "symmetric")
    array([[2, 1, 1, 2, 3, 3, 2]], dtype=uint8)
    """
    name = choice("mode", mode, _BORDERS)
    src = source("image", image)
    height, width = src.array.shape
    if min(top, bottom, left, right) < 0:
        raise ValueError("top, bottom, left, right: at least 0")
    dst = target("out", out, (top + height + bottom, left + width + right), src.array.dtype)
    refuse_overlap(("image", src), ("out", dst))
    call(
        f"DAXI_Copy{name}Border_{src.suffix}_C1R",
        *(src.pointer, src.step, src.size, dst.pointer, dst.step, dst.size, top, left),
        *(pixel_value("value", value, src) if mode == "constant" else ()),
    )
    return dst.array

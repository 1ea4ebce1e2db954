"""Distances to the background of masks."""
from typing import Literal, Optional

from numpy.typing import ArrayLike

from .._arrays import Array, choice
from .._operation import apply
from ..pool import Pool

__all__ = ["distance_transform"]


def distance_transform(
    mask: ArrayLike,
    metric: Literal["l2", "l1", "linf"] = "l2",
    *,
    exact: bool = False,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The distance of each set pixel from the nearest clear one; clear pixels are 0.

    mask: uint8, not 0 is set; pixels outside the image are not clear. metric: Euclidean, city block or chessboard.
    exact: int32, of l2 squares of distances, instead of float32. Where no pixel is clear, the distance is infinite, or
    2**31 - 1.

    >>> dax.distance_transform(np.array([[255, 255, 255, 255, 0]], np.uint8))
    array([[4., 3., 2., 1., 0.]], dtype=float32)
    """
    number = choice("metric", metric, {"l2": 0, "l1": 1, "linf": 2})
    name, work = "DAXI_DistanceTransform_{type}_{layout}R", "DAXI_DistanceTransformBufferSize_{type}"
    types = "8u32s" if exact else "8u32f"
    return apply(
        name,
        {"mask": mask},
        number,
        types=types,
        out=out,
        work=work,
        measures=(number,),
        pooled=name + "_MT",
        pool=pool,
    )

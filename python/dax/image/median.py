"""Order of the pixels in a window."""
from typing import Optional

from numpy.typing import ArrayLike

from .._arrays import Array
from .._operation import apply
from ..pool import Pool

__all__ = ["median3x3", "median5x5"]


def median3x3(image: ArrayLike, out: Optional[Array] = None, pool: Optional[Pool] = None) -> Array:
    """Exact median of 3 x 3 pixels, the edge replicated. NaN is ordered beyond infinity.

    image: uint8, uint16, int16, float32 or float64, at least 3 x 3. pool: for uint8, works in bands.

    >>> dax.median3x3(np.eye(3, dtype=np.uint8))
    array([[1, 0, 0],
           [0, 0, 0],
           [0, 0, 1]], dtype=uint8)
    """
    name = "DAXI_FilterMedian3x3_{type}_{layout}R"
    return apply(name, {"image": image}, types="8u 16u 16s 32f 64f", out=out, pooled=name + "_NEON_MT", pool=pool)


def median5x5(image: ArrayLike, out: Optional[Array] = None, pool: Optional[Pool] = None) -> Array:
    """Exact median of 5 x 5 pixels, the edge replicated. NaN is ordered beyond infinity.

    image: uint8, uint16, int16 or float32, at least 5 x 5. pool: works in bands.

    >>> dax.median5x5(np.eye(5, dtype=np.uint8)).sum()
    0
    """
    name = "DAXI_FilterMedian5x5_{type}_{layout}R"
    return apply(name, {"image": image}, types="8u 16u 16s 32f", out=out, pooled=name + "_MT", pool=pool)

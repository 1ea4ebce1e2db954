"""Grey reconstruction, holes, objects at the edge, peaks, and watersheds."""
from typing import Any, Literal, Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import Array, choice, of_shape, refuse_overlap, source, target, within
from .._library import buffer, call
from .._operation import Value, apply

__all__ = [
    "clear_border",
    "fill_holes",
    "h_maxima",
    "h_minima",
    "reconstruct",
    "regional_maxima",
    "regional_minima",
    "watershed",
]

Connectivity = Literal[4, 8]
_TYPES = "8u 16u 32f"


def _apply(
    operation: str,
    images: dict[str, ArrayLike],
    connectivity: int,
    out: Optional[Array],
    *parameters: Any,
    to: str = "",
) -> Array:
    if connectivity not in (4, 8):
        raise ValueError(f"connectivity: {connectivity}, possible are 4, 8")
    name, work = f"DAXI_{operation}_{{type}}_{{layout}}R", f"DAXI_{operation}BufferSize_{{type}}"
    form: dict[str, Any] = {"types": _TYPES, "to": to, "out": out, "in_place": not to and len(images) == 1}
    return apply(name, images, *parameters, connectivity, work=work, measures=(connectivity,), **form)


def reconstruct(
    marker: ArrayLike,
    mask: ArrayLike,
    method: Literal["dilation", "erosion"] = "dilation",
    *,
    connectivity: Connectivity = 8,
    out: Optional[Array] = None,
) -> Array:
    """The marker grown below the mask, or shrunk above it: what of the mask can be reached from the marker without
    getting lower.

    marker, mask: uint8, uint16 or float32, of one shape and type; the marker is clamped to the mask.

    >>> dax.reconstruct(np.array([[0, 3, 0, 0, 0, 0]], np.uint8), np.array([[5, 5, 5, 1, 9, 9]], np.uint8))
    array([[3, 3, 3, 1, 1, 1]], dtype=uint8)
    """
    word = choice("method", method, {"dilation": "Dilate", "erosion": "Erode"})
    return _apply("Reconstruct" + word, {"marker": marker, "mask": mask}, connectivity, out)


def fill_holes(image: ArrayLike, *, connectivity: Connectivity = 8, out: Optional[Array] = None) -> Array:
    """Dark regions that do not reach the edge are raised until they would; holes of a mask are set.

    image: uint8, uint16 or float32. connectivity: of the bright objects; holes have the other one.

    >>> dax.fill_holes(np.array([[0, 9, 9, 9], [0, 9, 2, 7], [0, 9, 9, 9]], np.uint8))[1]
    array([0, 9, 7, 7], dtype=uint8)
    """
    return _apply("FillHoles", {"image": image}, connectivity, out)


def clear_border(image: ArrayLike, *, connectivity: Connectivity = 8, out: Optional[Array] = None) -> Array:
    """Bright objects that touch the edge vanish.

    image: uint8, uint16 or float32.

    >>> dax.clear_border(np.array([[0, 0, 0, 0, 0], [9, 9, 0, 9, 0], [0, 0, 0, 0, 0]], np.uint8), connectivity=4)[1]
    array([0, 0, 0, 9, 0], dtype=uint8)
    """
    return _apply("ClearBorder", {"image": image}, connectivity, out)


def h_maxima(image: ArrayLike, h: float, *, connectivity: Connectivity = 8, out: Optional[Array] = None) -> Array:
    """The image without the peaks that rise by at most h above the pass to a higher one; higher ones lose h.

    image: uint8, uint16 or float32. h: at least 0.

    >>> dax.h_maxima(np.array([[1, 9, 1, 3, 1]], np.uint8), 3)
    array([[1, 6, 1, 1, 1]], dtype=uint8)
    """
    within("h", h, 0)
    return _apply("HMaxima", {"image": image}, connectivity, out, Value("h", h))


def h_minima(image: ArrayLike, h: float, *, connectivity: Connectivity = 8, out: Optional[Array] = None) -> Array:
    """The same of hollows.

    >>> dax.h_minima(np.array([[9, 1, 9, 7, 9]], np.uint8), 3)
    array([[9, 4, 9, 9, 9]], dtype=uint8)
    """
    within("h", h, 0)
    return _apply("HMinima", {"image": image}, connectivity, out, Value("h", h))


def regional_maxima(
    image: ArrayLike, *, connectivity: Connectivity = 8, out: Optional[Array] = None
) -> NDArray[np.uint8]:
    """255 where a region of one value has lower neighbours only, else 0. A constant image is such a region.

    image: uint8, uint16 or float32.

    >>> dax.regional_maxima(np.array([[1, 5, 5, 2, 3]], np.uint8))
    array([[  0, 255, 255,   0, 255]], dtype=uint8)
    """
    return _apply("RegionalMaxima", {"image": image}, connectivity, out, to="8u")


def regional_minima(
    image: ArrayLike, *, connectivity: Connectivity = 8, out: Optional[Array] = None
) -> NDArray[np.uint8]:
    """255 where a region of one value has higher neighbours only, else 0.

    >>> dax.regional_minima(np.array([[1, 5, 5, 2, 3]], np.uint8))
    array([[255,   0,   0, 255,   0]], dtype=uint8)
    """
    return _apply("RegionalMinima", {"image": image}, connectivity, out, to="8u")


def watershed(
    image: ArrayLike, markers: ArrayLike, *, connectivity: Connectivity = 8, out: Optional[Array] = None
) -> NDArray[np.int32]:
    """Regions that grow from markers uphill, until they meet: an array of labels, without lines between regions.

    image: uint8, uint16 or float32; NaN is not flooded. markers: int32, of its shape: above 0 a label, 0 open, below 0
    a barrier. `out` may be the markers.

    >>> dax.watershed(np.array([[3, 1, 4, 2, 3]], np.uint8), np.array([[0, 1, 0, 2, 0]], np.int32))
    array([[1, 1, 1, 2, 2]], dtype=int32)
    """
    if connectivity not in (4, 8):
        raise ValueError(f"connectivity: {connectivity}, possible are 4, 8")
    one = source("image", image, tuple(np.dtype(each) for each in (np.uint8, np.uint16, np.float32)))
    marked = of_shape("markers", markers, one.array.shape, (np.dtype(np.int32),))
    labels = target("out", out, one.array.shape, np.int32)
    refuse_overlap(("image", one), ("out", labels))
    labels.array[...] = marked.array
    form = f"{one.suffix}32s"
    work = buffer(f"DAXI_WatershedBufferSize_{form}", one.size, connectivity)
    name = f"DAXI_Watershed_{form}_C1R"
    call(name, one.pointer, one.step, labels.pointer, labels.step, one.size, connectivity, work)
    return labels.array

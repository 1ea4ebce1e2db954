"""Shape and grey values of blobs, beside what selection measures."""
import dataclasses
from typing import Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import instance, of_shape, pointer
from .._interface import ffi
from .._library import buffer, call
from .._records import view
from .._table import Table
from .blobs import Blobs, Labelling

__all__ = ["Shapes", "measure_shapes"]


@dataclasses.dataclass(frozen=True)
class Shapes(Table):
    """Further features of blobs, one row each, as of `Blobs`. Lengths are between pixel centres.

    euler_number: 1 - holes. holes: regions of the background that a blob encloses. convexity: share of the pixels in
    the convex hull. max_feret, min_feret: greatest distance of two pixels, and least of two parallel lines around the
    blob. feret_angle: direction of max_feret. equivalent_diameter: of the circle of the same area. eccentricity: of the
    ellipse of the same second moments, 0 circle, 1 line. mean_gray, min_gray, max_gray: 0 without an image.
    """

    COLUMNS = {"labels": ("label",)}

    labels: NDArray[np.uint32]
    euler_number: NDArray[np.int32]
    holes: NDArray[np.int32]
    convexity: NDArray[np.float32]
    max_feret: NDArray[np.float32]
    min_feret: NDArray[np.float32]
    feret_angle: NDArray[np.float32]
    equivalent_diameter: NDArray[np.float32]
    eccentricity: NDArray[np.float32]
    mean_gray: NDArray[np.float32]
    min_gray: NDArray[np.uint8]
    max_gray: NDArray[np.uint8]

    def __len__(self) -> int:
        return len(self.labels)


_SHAPE_FIELDS = ("eulerNumber", "holes", "convexity", "maxFeret", "minFeret", "feretAngle", "equivalentDiameter") + (
    "eccentricity",
    "meanGray",
    "minGray",
    "maxGray",
)


def measure_shapes(labelling: Labelling, blobs: Optional[Blobs] = None, image: Optional[ArrayLike] = None) -> Shapes:
    """Holes, convexity, diameters and grey values of blobs, or of all domains of a labelling.

    image: (height, width) uint8, for the grey values.

    >>> ring = np.array([[1, 1, 1], [1, 0, 1], [1, 1, 1]], np.uint8)
    >>> shapes = dax.measure_shapes(dax.label(ring))
    >>> shapes.holes, shapes.convexity.round(3), shapes.max_feret.round(3)
    (array([1], dtype=int32), array([0.889], dtype=float32), array([2.828], dtype=float32))
    """
    instance("labelling", labelling, Labelling, "a Labelling, made by dax.label")
    labels = np.arange(len(labelling), dtype=np.uint32) if blobs is None else np.array(blobs.labels, np.uint32, ndmin=1)
    records = ffi.new("DaxiBlobShape[]", max(1, len(labels)))
    if len(labels):
        shape = labelling.size[::-1]
        gray = of_shape("image", np.zeros(shape, np.uint8) if image is None else image, shape)
        work = buffer("DAXI_BlobShapeBufferSize_8u", gray.size)
        measured = labelling._domains, labelling.connectivity, pointer(labels, "uint32_t"), len(labels)
        call("DAXI_BlobShape_8u_C1R", gray.pointer, gray.step, gray.size, *measured, records, work)
    rows = view("DaxiBlobShape", records, len(labels))
    return Shapes(labels, *(rows[name].copy() for name in _SHAPE_FIELDS))

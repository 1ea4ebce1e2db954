"""Blobs: the connected regions of a mask, measured, filtered, ranked and scored."""
import dataclasses
from typing import Any, Literal, Optional, Union

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import BYTES, Array, Image, choice, instance, numbers, of_shape, pair, pointer, source, target, within
from .._interface import ffi
from .._library import Fixed, buffer, call, function
from .._records import view
from ..pool import Pool, handle_of
from .._table import Table
from .boxes import BOXES, RotatedBox, rotated_box

__all__ = ["Blobs", "Labelling", "draw_contours", "draw_labels", "label", "select_blobs"]

_ORDERS = {"ascending": 1, "descending": 2, "none": 3}
_KEYS = {
    name: key
    for key, name in enumerate(
        ("area", "perimeter", "circularity", "rectangularity", "x", "y", "box_angle", "long_axis", "short_axis")
        + ("rect_x", "rect_y", "principal_angle", "axis_ratio"),
        start=1,
    )
}
# Filter: (flag, field of the configuration).
_FILTERS = {
    "area": (0x1, "area"),
    "perimeter": (0x2, "perimeter"),
    "short_axis": (0x4, "shortAxis"),
    "long_axis": (0x8, "longAxis"),
    "circularity": (0x10, "circularity"),
    "rectangularity": (0x20, "rectangularity"),
    "central_bias": (0x40, "centralBias"),
    "axis_ratio": (0x80, "axisRatio"),
    "box_angle": (0x100, "boxAngle"),
    "rect_width": (0x200, "rectWidth"),
    "rect_height": (0x400, "rectHeight"),
}
_OUTSIDE = 0x800
_MAX_COUNT = 20000


class Labelling(Fixed):
    """The domains of a mask, numbered from 0 in raster order of their first pixel. Made by `label`.

    size: (width, height) of the mask. connectivity: 4 or 8. runs: structured array of all runs (row, start, end, cls,
    label).
    """

    def __init__(self, size: tuple[int, int], model: Any, domains: Any, connectivity: int) -> None:
        self._model = model  # the memory that everything below lies in
        self._domains = domains
        self.connectivity = connectivity
        self.size = size
        self.runs = view("DomainRun", domains.runs, domains.runCount, model)
        self.runs.flags.writeable = False

    def __len__(self) -> int:
        return int(function("_DAXI_DomainCount")(self._domains))

    def labels(self) -> NDArray[np.int32]:
        """(height, width): the label of each pixel, -1 where there is no domain.

        >>> dax.label(np.array([[1, 0, 1], [0, 0, 1]], np.uint8)).labels()
        array([[ 0, -1,  1],
               [-1, -1,  1]], dtype=int32)
        """
        dst = target("labels", None, self.size[::-1], np.int32)
        call("DAXI_BlobLabelImage_32s_C1R", self._domains, -1, dst.pointer, dst.step, dst.size)
        return dst.array

    def hull(self, label: int) -> NDArray[np.int32]:
        """(n, 2): corners x, y of the convex hull of a domain's pixel centres, from the topmost on, from x towards y.

        >>> dax.label(np.ones((2, 3), np.uint8)).hull(0).tolist()
        [[0, 0], [2, 0], [2, 1], [0, 1]]
        """
        corners, size = self._hull_room()
        count = ffi.new("int32_t*")
        call(
            "_DAXI_DomainConvexHull_ROI",
            self._domains,
            self._domain(label),
            size,
            pointer(corners, "DaxiPoint32s"),
            count,
        )
        return corners[: count[0]].copy()

    def enclosing_box(self, label: int, minimal: Literal["area", "perimeter"] = "area") -> RotatedBox:
        """The best rectangle around a domain's pixel centres.

        >>> dax.label(np.ones((2, 3), np.uint8)).enclosing_box(0)
        RotatedBox(x=1.0, y=0.5, width=2.0, height=1.0, angle=0.0)
        """
        mode = choice("minimal", minimal, BOXES)
        corners, size = self._hull_room()
        box, room = ffi.new("DaxiRotatedBox*"), pointer(corners, "DaxiPoint32s")
        call("_DAXI_DomainEncloseBox", self._domains, self._domain(label), size, mode, room, box)
        return rotated_box(box)

    def rectangularity(self, label: int) -> float:
        """Share of the rectangle of minimum area that a domain fills, at most 1.

        >>> dax.label(np.ones((2, 3), np.uint8)).rectangularity(0)
        1.0
        """
        corners, size = self._hull_room()
        share, room = ffi.new("float*"), pointer(corners, "DaxiPoint32s")
        call("_DAXI_DomainRectangularity", self._domains, self._domain(label), size, room, share)
        return float(share[0])

    def _hull_room(self) -> tuple[Array, dict[str, int]]:
        width, height = self.size
        return np.empty((3 * height + 1, 2), np.int32), {"width": width, "height": height}

    def _domain(self, label: int) -> Any:
        domain = function("_DAXI_SelectDomainIndex")(self._domains, label) if 0 <= label < 2**32 else ffi.NULL
        if not domain:
            raise IndexError(f"label: {label}, there are {len(self)}")
        return domain


def label(mask: ArrayLike, connectivity: Literal[4, 8] = 8, classes: bool = False) -> Labelling:
    """Labels the connected regions of a mask.

    mask: (height, width) uint8 up to 65536 pixels each way, not 0 is foreground. connectivity: 4 joins over edges, 8
    over corners too. classes: pixel values are classes, and only equal ones join.

    >>> len(dax.label(np.eye(4, dtype=np.uint8))), len(dax.label(np.eye(4, dtype=np.uint8), connectivity=4))
    (1, 4)
    """
    if connectivity not in (4, 8):
        raise ValueError(f"connectivity: {connectivity}, possible are 4 and 8")
    src = source("mask", mask, BYTES)
    domains = ffi.new("DaxiDomainList**")
    if classes:
        model = buffer("DAXI_BlobFindMultiClsModelSize_8u", src.size)
        work = buffer("DAXI_BlobFindMultiClsBufferSize_8u", src.size)
        name = "DAXI_BlobFindMultiCls_8u_C1R"
        call(name, src.pointer, src.step, src.size, connectivity, model, domains, work)
    else:
        handle = ffi.new("DaxiBlobModel**")
        call("DAXI_BlobFindV2_8u_C1R", src.pointer, src.step, src.size, connectivity, handle, domains)
        model = ffi.gc(handle, function("DAXI_BlobFindV2DestroyModel_8u"))
    height, width = src.array.shape
    return Labelling((width, height), model, domains[0], connectivity)


@dataclasses.dataclass(frozen=True)
class Blobs(Table):
    """Selected blobs, one row each: blobs[0], blobs[blobs.area > 9] and to_dict() take some of them. Lengths in pixels,
    angles in radians; pixel centres are integers.

    labels: in the labelling. cls: class. rect: (n, 4) upright rectangle x, y, width, height. centroid: (n, 2). box:
    (n, 5) rectangle of minimum area: centre x, y, long axis, short axis, angle of the long axis. outside_pixels: those
    outside the mask or on the border, where they were counted. score: 0..1 where filters carry weights, else 0. The
    columns of to_dict() are named as ranges and sort keys are, and as `dax inspect` names them.
    """

    labels: NDArray[np.uint32]
    cls: NDArray[np.uint32]
    area: NDArray[np.float32]
    rect: NDArray[np.int32]
    centroid: NDArray[np.float32]
    perimeter: NDArray[np.float32]
    circularity: NDArray[np.float32]
    rectangularity: NDArray[np.float32]
    box: NDArray[np.float32]
    axis_ratio: NDArray[np.float32]
    central_bias: NDArray[np.float32]
    principal_angle: NDArray[np.float32]
    outside_pixels: NDArray[np.uint32]
    score: NDArray[np.float32]

    COLUMNS = {
        "labels": ("label",),
        "cls": ("class",),
        "rect": ("rect_x", "rect_y", "rect_width", "rect_height"),
        "centroid": ("x", "y"),
        "box": ("box_x", "box_y", "long_axis", "short_axis", "box_angle"),
    }

    def __len__(self) -> int:
        return len(self.labels)


Range = tuple[float, float]
AreaRange = Union[Range, dict[int, tuple[int, int]]]


def select_blobs(
    labelling: Labelling,
    image: Optional[ArrayLike] = None,
    *,
    gray_mode: bool = False,
    area: Optional[AreaRange] = None,
    perimeter: Optional[Range] = None,
    short_axis: Optional[Range] = None,
    long_axis: Optional[Range] = None,
    circularity: Optional[Range] = None,
    rectangularity: Optional[Range] = None,
    central_bias: Optional[Range] = None,
    axis_ratio: Optional[Range] = None,
    box_angle: Optional[Range] = None,
    rect_width: Optional[Range] = None,
    rect_height: Optional[Range] = None,
    outside_limit: Optional[int] = None,
    mask: Optional[ArrayLike] = None,
    weights: Optional[dict[str, float]] = None,
    sort: str = "area",
    order: Literal["ascending", "descending", "none"] = "descending",
    max_count: int = _MAX_COUNT,
    pool: Optional[Pool] = None,
) -> Blobs:
    """Measures the domains of a labelling and keeps those within all given ranges, the best `max_count` by `sort`, with
    order "none" those of the largest area.

    image: (height, width) uint8, for gray_mode: area and centroid weighted by gray value. Ranges are (min, max),
    both included; math.inf leaves the end open. outside_limit: maximum number of pixels where `mask` is 0, or without a
    mask on the border of the image. weights: filter to weight 0..1, for the score. area may hold a range of whole
    numbers for each class, {cls: (min, max)}: classes that it does not name are rejected; with min > max it is what
    lies outside that is accepted. sort: area, perimeter, circularity, rectangularity, x, y, box_angle, long_axis,
    short_axis, rect_x, rect_y, principal_angle or axis_ratio.

    >>> mask = np.zeros((8, 8), np.uint8); mask[1:4, 1:3] = 1; mask[6, 6] = 1
    >>> blobs = dax.select_blobs(dax.label(mask), area=(2, 100))
    >>> blobs.area, blobs.centroid
    (array([6.], dtype=float32), array([[1.5, 2. ]], dtype=float32))
    """
    arguments = locals()
    instance("labelling", labelling, Labelling, "a Labelling, made by dax.label")
    ranges = {name: arguments[name] for name in _FILTERS if arguments[name] is not None}
    key, direction = choice("sort", sort, _KEYS), choice("order", order, _ORDERS)
    within("max_count", max_count, 1, _MAX_COUNT)
    if gray_mode and image is None:
        raise ValueError("gray_mode: needs the image")
    by_class = ranges.pop("area") if isinstance(area, dict) else None
    if by_class is not None:
        ranges["area"] = (0, 0)  # not read
    cfg, inside = _configuration(ranges, weights or {}, outside_limit, mask, labelling)
    cfg.grayMode, cfg.maxCount, cfg.sortKey, cfg.sortOrder = int(gray_mode), max_count, key, direction
    return _select(labelling, image, cfg, by_class, any((weights or {}).values()), pool)


def _configuration(
    ranges: dict[str, Range],
    weights: dict[str, float],
    outside_limit: Optional[int],
    mask: Optional[ArrayLike],
    labelling: Labelling,
) -> tuple[Any, Optional[Image]]:
    """The record, and what has to live as long as it."""
    cfg = ffi.new("BlobSelectCfg*")
    for name, given in ranges.items():
        low, high = pair(name, given, "(min, max); math.inf leaves the end open")
        if low > high:
            raise ValueError(f"{name}: {given!r}, the minimum is above the maximum")
        if name in ("circularity", "rectangularity", "axis_ratio"):
            high = 1 if high == np.inf else high
            within(f"{name}: maximum", high, 0, 1)
        if name not in ("box_angle", "rect_width", "rect_height"):
            within(f"{name}: minimum", low, 0)
        flag, field = _FILTERS[name]
        cfg.flags |= flag
        getattr(cfg, field).min, getattr(cfg, field).max = low, high
    for name, weight in weights.items():
        if name not in ranges:
            raise ValueError(f"weights: {name!r} is not among the ranges given")
        within(f"weights: {name}", weight, 0, 1)
        field = _FILTERS[name][1]
        if name.startswith(("box_", "rect_")):
            getattr(cfg, field).weight = weight
        else:
            setattr(cfg, field + "Weight", weight)
    inside = None
    if outside_limit is not None:
        cfg.flags |= _OUTSIDE
        cfg.outsideLimit = outside_limit
        if mask is not None:
            inside = of_shape("mask", mask, labelling.size[::-1])
            cfg.mask, cfg.maskStep = inside.pointer, inside.step
    elif mask is not None:
        raise ValueError("mask: goes with outside_limit")
    return cfg, inside


def _of_classes(cfg: Any, ranges: dict[int, tuple[int, int]]) -> Any:
    """The record of the fourth version, with a range for each class."""
    wide = ffi.new("BlobSelectV4Cfg*", {"common": cfg[0], "perClass": 1})
    refused = 2**31 - 1  # an area that no image has
    for cls in range(256):
        wide.classAreaMin[cls], wide.classAreaMax[cls] = ranges.get(cls, (refused, refused))
    for cls in ranges:
        if not 0 <= cls <= 255:
            raise ValueError(f"area: class {cls}, possible are 0..255")
    return wide


def _select(
    labelling: Labelling,
    image: Optional[ArrayLike],
    cfg: Any,
    by_class: Optional[dict[int, tuple[int, int]]],
    weighted: bool,
    pool: Optional[Pool],
) -> Blobs:
    count = len(labelling)
    records = ffi.new("BlobInfo[]", max(1, min(cfg.maxCount, count) if 0 < cfg.maxCount else 1))
    result = ffi.new("BlobSelectResult*", {"array": records})
    if count:
        if 0 < cfg.maxCount < count and not cfg.flags:
            # Without a filter the first domains would be kept: one that all pass makes it the best.
            cfg.flags, cfg.area.max = _FILTERS["area"][0], np.inf
        if 0 < cfg.maxCount:
            cfg.maxCount = min(cfg.maxCount, count)
        blank = np.zeros(labelling.size[::-1], np.uint8) if image is None else image
        gray = of_shape("image", blank, labelling.size[::-1])
        threads, handle = handle_of(pool)
        work = buffer("DAXI_BlobSelectV3BufferSize_8u_MT", gray.size, threads)
        name, record = ("DAXI_BlobSelectV3_8u_C1R_MT", cfg)
        if by_class is not None:
            name, record = ("DAXI_BlobSelectV4_8u_C1R_MT", _of_classes(cfg, by_class))
        call(
            name,
            *(gray.pointer, gray.step, gray.pointer, gray.step, gray.size, labelling._domains, count),
            *(result, record, work, threads, handle),
        )
    return _blobs(view("BlobInfo", records, result.count), cfg, weighted)


def _blobs(records: Array, cfg: Any, weighted: bool) -> Blobs:
    def columns(*names: str) -> Array:
        return np.stack([records[name] for name in names], axis=-1)

    def where(given: Any, name: str) -> Array:
        """Zeros where the library leaves the field undefined."""
        return records[name].copy() if given and len(records) else np.zeros(len(records), records.dtype[name])

    return Blobs(
        labels=records["label"].copy(),
        cls=records["cls"].copy(),
        area=records["area"].copy(),
        rect=columns("rectX", "rectY", "rectWidth", "rectHeight"),
        centroid=columns("centroidX", "centroidY"),
        perimeter=records["perimeter"].copy(),
        circularity=records["circularity"].copy(),
        rectangularity=records["rectangularity"].copy(),
        box=columns("boxX", "boxY", "boxWidth", "boxHeight", "boxAngle"),
        axis_ratio=records["axisRatio"].copy(),
        central_bias=records["centralBias"].copy(),
        principal_angle=records["principalAngle"].copy(),
        outside_pixels=where(cfg.flags & _OUTSIDE, "borderPixels"),
        score=where(weighted, "score"),
    )


def draw_labels(image: Array, labelling: Labelling, blobs: Optional[Blobs] = None) -> Array:
    """Writes 1 + label modulo 255 into the pixels of the blobs, or of all domains; the others stay.

    image: (height, width) uint8, written where it lies, and returned.

    >>> dax.draw_labels(np.zeros((2, 3), np.uint8), dax.label(np.array([[1, 0, 0], [0, 0, 1]], np.uint8)))
    array([[1, 0, 0],
           [0, 0, 2]], dtype=uint8)
    """
    dst, records, count = _canvas(image, labelling, blobs)
    call("DAXI_DrawBlobLabel_8u_C1IR", dst.pointer, dst.step, dst.size, labelling._domains, records, count)
    return image


def draw_contours(image: Array, labelling: Labelling, blobs: Optional[Blobs] = None, value: int = 255) -> Array:
    """Writes a value into the pixels of the outer boundary of the blobs, or of all domains. Arguments as `draw_labels`.

    >>> mask = np.ones((3, 3), np.uint8)
    >>> dax.draw_contours(np.zeros_like(mask), dax.label(mask), value=7)
    array([[7, 7, 7],
           [7, 0, 7],
           [7, 7, 7]], dtype=uint8)
    """
    dst, records, count = _canvas(image, labelling, blobs)
    work = buffer("DAXI_BlobSelectBufferSize_8u", dst.size)
    arguments = dst.pointer, dst.step, dst.size, labelling._domains, records, count, value, work
    call("DAXI_BlobSelect_draw_blob_contour", *arguments)
    return image


def _canvas(image: Array, labelling: Labelling, blobs: Optional[Blobs]) -> tuple[Image, Any, int]:
    """The image, and the blobs as records of which drawing reads the domain."""
    if image is None:
        raise TypeError("image: needed to draw into")
    dst = target("image", image, labelling.size[::-1], np.uint8)
    if blobs is None:
        return dst, ffi.NULL, 0
    records = ffi.new("BlobInfo[]", max(1, len(blobs)))
    for record, domain in zip(records, blobs.labels):
        record.domain = labelling._domain(int(domain))
    return dst, records, len(blobs)

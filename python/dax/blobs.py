"""Blobs: the connected regions of a mask, measured, filtered, ranked and scored."""
import dataclasses
from typing import Literal, Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._arrays import source, target
from ._interface import ffi
from ._library import buffer, call, library, memory
from ._records import view
from .pool import Pool, handle_of

_ORDERS = {"ascending": 1, "descending": 2, "none": 3}
_KEYS = {
    name: key
    for key, name in enumerate(
        ("area", "perimeter", "circularity", "rectangularity", "x", "y", "box_angle", "box_width", "box_height")
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
_MOST = 20000


class Labelling:
    """The domains of a mask, numbered from 0 in raster order of their first pixel. Made by `label`.

    size: (width, height) of the mask. runs: structured array of all runs (row, start, end, cls, label).
    """

    def __init__(self, size, model, domains):
        self._model = model  # the memory that everything below lies in
        self._domains = domains
        self.size: tuple[int, int] = size
        self.runs: NDArray = view("DomainRun", domains.runs, domains.runCount)
        self.runs.flags.writeable = False

    def __len__(self) -> int:
        return self._domains.domainCount

    def labels(self) -> NDArray[np.int32]:
        """(height, width): the label of each pixel, -1 where there is no domain.

        >>> dax.label(np.array([[1, 0, 1], [0, 0, 1]], np.uint8)).labels()
        array([[ 0, -1,  1],
               [-1, -1,  1]], dtype=int32)
        """
        width, height = self.size
        steps = np.zeros((height, width + 1), np.int64)
        runs = self.runs
        steps[runs["row"], runs["start"]] += runs["label"].astype(np.int64) + 1
        # A run may start where another one ends.
        np.subtract.at(steps, (runs["row"], runs["end"].astype(np.int64) + 1), runs["label"].astype(np.int64) + 1)
        return (np.cumsum(steps, axis=1)[:, :width] - 1).astype(np.int32)


def label(mask: ArrayLike, connectivity: Literal[4, 8] = 8, classes: bool = False) -> Labelling:
    """Labels the connected regions of a mask.

    mask: (height, width) uint8 up to 65536 pixels each way, not 0 is foreground. connectivity: 4 joins over edges, 8 over
    corners too. classes: pixel values are classes, and only equal ones join.

    >>> len(dax.label(np.eye(4, dtype=np.uint8))), len(dax.label(np.eye(4, dtype=np.uint8), connectivity=4))
    (1, 4)
    """
    if connectivity not in (4, 8):
        raise ValueError(f"connectivity: {connectivity}, possible are 4 and 8")
    src = source("mask", mask, (np.dtype(np.uint8),))
    domains = ffi.new("DaxiDomainList**")
    if classes:
        model = buffer("DAXI_BlobFindMultiClsModelSize_8u", src.size)
        work = buffer("DAXI_BlobFindMultiClsBufferSize_8u", src.size)
        name = "DAXI_BlobFindMultiCls_8u_C1R"
        call(name, src.pointer, src.step, src.size, connectivity, model, domains, work)
    else:
        handle = ffi.new("DaxiBlobModel**")
        call("DAXI_BlobFindV2_8u_C1R", src.pointer, src.step, src.size, connectivity, handle, domains)
        model = ffi.gc(handle, library.DAXI_BlobFindV2DestroyModel_8u)
    height, width = src.array.shape
    return Labelling((width, height), model, domains[0])


@dataclasses.dataclass(frozen=True)
class Blobs:
    """Selected blobs, one row each. Lengths in pixels, angles in radians; pixel centres are integers.

    labels: in the labelling. rect: (n, 4) upright rectangle x, y, width, height. centroid: (n, 2). box: (n, 5) rectangle
    of least area: centre x, y, long side, short side, angle of the long side. outside: pixels outside the mask or on the
    border, where they were counted. score: 0..1 where filters carry weights, else 0.
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
    outside: NDArray[np.uint32]
    score: NDArray[np.float32]

    def __len__(self) -> int:
        return len(self.labels)


Range = tuple[float, float]


def select_blobs(
    labelling: Labelling,
    image: Optional[ArrayLike] = None,
    *,
    gray_mode: bool = False,
    area: Optional[Range] = None,
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
    most: int = _MOST,
    pool: Optional[Pool] = None,
) -> Blobs:
    """Measures the domains of a labelling and keeps those within all ranges given, at most `most`, the best by `sort`.

    image: (height, width) uint8, for gray_mode: area and centroid weighted by gray value. Ranges are (least, largest),
    both included. outside_limit: most pixels where `mask` is 0, or without a mask on the border of the image. weights:
    filter to weight 0..1, for the score. sort: area, perimeter, circularity, rectangularity, x, y, box_angle, box_width,
    box_height, rect_x, rect_y, principal_angle or axis_ratio.

    >>> mask = np.zeros((8, 8), np.uint8); mask[1:4, 1:3] = 1; mask[6, 6] = 1
    >>> blobs = dax.select_blobs(dax.label(mask), area=(2, 100))
    >>> blobs.area, blobs.centroid
    (array([6.], dtype=float32), array([[1.5, 2. ]], dtype=float32))
    """
    arguments = locals()
    ranges = {name: arguments[name] for name in _FILTERS if arguments[name] is not None}
    if sort not in _KEYS:
        raise ValueError(f"sort: {sort!r}, possible are " + ", ".join(_KEYS))
    if order not in _ORDERS:
        raise ValueError(f"order: {order!r}, possible are " + ", ".join(_ORDERS))
    if gray_mode and image is None:
        raise ValueError("gray_mode: needs the image")
    cfg, inside = _configuration(ranges, weights or {}, outside_limit, mask, labelling)
    cfg.grayMode, cfg.maxCount, cfg.sortKey, cfg.sortOrder = int(gray_mode), most, _KEYS[sort], _ORDERS[order]
    return _select(labelling, image, cfg, pool)


def _configuration(ranges, weights, outside_limit, mask, labelling):
    """The record, and what has to live as long as it."""
    cfg = ffi.new("BlobSelectCfg*")
    for name, (low, high) in ranges.items():
        flag, field = _FILTERS[name]
        cfg.flags |= flag
        getattr(cfg, field).min, getattr(cfg, field).max = low, high
    for name, weight in weights.items():
        if name not in ranges:
            raise ValueError(f"weights: {name!r} is not among the ranges given")
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
            inside = _of_size("mask", mask, labelling)
            cfg.mask, cfg.maskStep = inside.pointer, inside.step
    elif mask is not None:
        raise ValueError("mask: goes with outside_limit")
    return cfg, inside


def _of_size(name, image, labelling):
    src = source(name, image, (np.dtype(np.uint8),))
    if src.array.shape != labelling.size[::-1]:
        raise ValueError(f"{name}: shape {src.array.shape}, that of the labelling is {labelling.size[::-1]}")
    return src


def _select(labelling, image, cfg, pool):
    count = len(labelling)
    records = ffi.new("BlobInfo[]", max(1, min(cfg.maxCount, count) if 0 < cfg.maxCount else 1))
    result = ffi.new("BlobSelectResult*", {"array": records})
    if count:
        if 0 < cfg.maxCount:
            cfg.maxCount = min(cfg.maxCount, count)
        blank = np.zeros(labelling.size[::-1], np.uint8) if image is None else image
        gray = _of_size("image", blank, labelling)
        threads, handle = handle_of(pool)
        work = buffer("DAXI_BlobSelectV3BufferSize_8u_MT", gray.size, threads)
        call(
            "DAXI_BlobSelectV3_8u_C1R_MT",
            *(gray.pointer, gray.step, gray.pointer, gray.step, gray.size, labelling._domains, count),
            *(result, cfg, work, threads, handle),
        )
    return _blobs(view("BlobInfo", records, result.count), cfg)


def _blobs(records, cfg):
    def columns(*names):
        return np.stack([records[name] for name in names], axis=-1)

    scored = cfg.flags and len(records)
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
        outside=records["borderPixels"].copy(),
        score=records["score"].copy() if scored else np.zeros(len(records), np.float32),
    )

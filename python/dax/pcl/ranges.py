"""Range images: records, files, and the way to points."""
import dataclasses
import os
from typing import Any, NamedTuple, Optional, Union

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .._arrays import Array, instance, numbers, of_shape, pointer, refuse_overlap, source, target, warn
from .._interface import ffi
from .._library import buffer, call, function, needed
from ..errors import Error
from ._range_chunks import not_finite, read_chunks, wrong_chunks

__all__ = [
    "Calibration",
    "Camera",
    "RangeImage",
    "depth_to_xyz",
    "range_from_rgbd",
    "range_to_xyz",
    "read_range",
    "remove_speckles",
    "write_range",
]

Triple = tuple[float, float, float]


class Camera(NamedTuple):
    """A pinhole camera: focal lengths and centre in pixels, radial k and tangential p distortion (Brown's model)."""

    fx: float
    fy: float
    cx: float
    cy: float
    k1: float = 0.0
    k2: float = 0.0
    p1: float = 0.0
    p2: float = 0.0
    k3: float = 0.0

    def check(self) -> None:
        """Raises dax.Error unless focal lengths and centre are above 0.

        >>> dax.Camera(500, 500, 320, 240).check()
        """
        call("DAX3DPCL_UTILS_Check_CamIntrins", ffi.new("double[4]", list(self[:4])))


@dataclasses.dataclass(frozen=True)
class Calibration:
    """Cameras of a range image. depth_to_rgb: (4, 4) rigid motion from the depth camera's frame to that of colour."""

    depth: Camera
    rgb: Camera
    depth_to_rgb: NDArray[np.float64]

    def check(self) -> None:
        """Raises dax.Error unless focal lengths and centres are above 0 and the motion is rigid.

        >>> dax.Calibration(dax.Camera(500, 500, 320, 240), dax.Camera(500, 500, 320, 240), np.eye(4)).check()
        """
        given, record = _calibration(self), ffi.new("DAX3D_RANGE_V4*")
        depth, rgb = ffi.addressof(given, "depth"), ffi.addressof(given, "rgb")
        call("DAX3DPCL_UTILS_Recover_RANGE_V4_Depth_Intrins", record, depth)
        call("DAX3DPCL_UTILS_Recover_RANGE_V4_RGB_Intrins", record, rgb, given.depthToRgb)


@dataclasses.dataclass(frozen=True)
class RangeImage:
    """What a 3D sensor delivers.

    values: (height, width) int16. mask: (height, width) uint8, 0 is invalid, or None. Pixel (c, r) of value v lies at
    (c, r, v) * scale + offset, in length units. colour: (height, width, 3) uint8 interleaved, or (3, height, width)
    planar, of any size, or None. calibration: of depth and colour camera, or None.
    """

    values: NDArray[np.int16]
    mask: Optional[NDArray[np.uint8]] = None
    scale: Triple = (1.0, 1.0, 1.0)
    offset: Triple = (0.0, 0.0, 0.0)
    colour: Optional[NDArray[np.uint8]] = None
    calibration: Optional[Calibration] = None

    def points(self, organized: bool = True) -> NDArray[np.float32]:
        """The pixels as points, as by `range_to_xyz`.

        >>> dax.RangeImage(np.array([[5]], np.int16), scale=(1, 1, 0.5)).points()
        array([[[0. , 0. , 2.5]]], dtype=float32)
        """
        return range_to_xyz(self.values, self.scale, self.offset, self.mask, organized)

    def check(self) -> None:
        """Raises dax.Error where the library would refuse the image: scales of 0, say.

        >>> dax.RangeImage(np.zeros((2, 2), np.int16)).check()
        """
        record, _kept = _record(self)
        call("DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4", record, int(self.colour is not None))

    def check_depth_camera(self) -> None:
        """Raises dax.Error unless scale and offset can be read as the viewing directions of a depth camera.

        >>> dax.RangeImage(np.zeros((2, 2), np.int16), scale=(0.01, 0.01, 1), offset=(-1, -1, 0)).check_depth_camera()
        """
        record, _kept = _record(self)
        call("DAX3DPCL_UTILS_Check_RANGE_V4_DepthIntrins", record)


Path = Union[str, "os.PathLike[str]"]


def _file_name(path: Path) -> bytes:
    name = os.fsencode(path)
    if b"\0" in name:
        raise ValueError(f"path: {path!r} holds a null character")
    return name


def _call_on(path: Path, name: str, *arguments: Any) -> None:
    """Calls a function for a file; a failure names it."""
    try:
        call(name, *arguments)
    except Error as error:
        error.args = (f"{os.fspath(path)}: {error}",)
        raise


_INTERLEAVED, _PLANAR = 201, 200


def write_range(path: Path, image: RangeImage, everything: bool = True) -> None:
    """Writes a range file. It is complete or not there: a failure leaves an older file as it was.

    image: sides up to 32767; a scale that `RangeImage.check` refuses, 0 or NaN, is not written. everything: with
    colour, calibration and kind; otherwise values, mask, scale and offset only, and there must be a mask.

    >>> import os, tempfile
    >>> folder = tempfile.TemporaryDirectory()
    >>> path = os.path.join(folder.name, "part.range")
    >>> dax.write_range(path, dax.RangeImage(np.array([[1, 2]], np.int16), scale=(0.1, 0.1, 0.5)))
    >>> dax.read_range(path).values
    array([[1, 2]], dtype=int16)
    >>> folder.cleanup()
    """
    instance("image", image, RangeImage, "a RangeImage; the path comes first")
    record, _kept = _record(image)
    file = _file_name(path)
    _call_on(path, "DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4", record, 0)
    for fault in not_finite(scale=image.scale, offset=image.offset):
        raise ValueError(f"{os.fspath(path)}: {fault}")
    name = "DAX3DPCL_UTILS_WRITE_RANGE_V4_V2" if everything else "DAX3DPCL_UTILS_WRITE_RANGE_V4"
    _call_on(path, name, file, record)


def read_range(path: Path) -> RangeImage:
    """Reads a range file. See `write_range` for an example; raises dax.Error for what is no such file, and ValueError
    where a part of it is shorter or longer than its image, with both sizes. A warning tells of scales and offsets that
    are no numbers, of which all points would be none.

    >>> dax.read_range("no.range")  # doctest: +ELLIPSIS
    Traceback (most recent call last):
    dax.errors.Error: no.range: DAX3DPCL_UTILS_READ_RANGE_V4 returned 0x10000025, ...: file not opened
    """
    record = ffi.new("DAX3D_RANGE_V4*")
    try:
        chunks = read_chunks(_file_name(path)) if os.path.isfile(path) else []
        faults = wrong_chunks(chunks)
        if faults:
            raise ValueError(f"{os.fspath(path)}: " + "; ".join(faults))
        _call_on(path, "DAX3DPCL_UTILS_READ_RANGE_V4", _file_name(path), record)
        if not record.range.image.plane[0]:
            raise ValueError(f"{os.fspath(path)}: no range values in the file")
        image = _image(record)
        for fault in not_finite(scale=image.scale, offset=image.offset):
            warn(f"{os.fspath(path)}: {fault}")
        return image
    finally:
        _release(record)


def range_from_rgbd(
    depth: ArrayLike, colour: ArrayLike, depth_scale: float, calibration: Optional[Calibration] = None
) -> RangeImage:
    """A range image from the depth and the colour image of an RGB-D camera.

    depth: (height, width) int16, 0 where there is none. colour: (height, width, 3) uint8, of any size. depth_scale:
    length units per count of depth. Scale and offset become the depth camera's viewing directions; without a
    calibration scale is (1, 1, depth_scale).

    >>> dax.range_from_rgbd(np.array([[0, 7]], np.int16), np.zeros((1, 2, 3), np.uint8), 0.5).mask
    array([[  0, 255]], dtype=uint8)
    """
    src = source("depth", depth, (np.dtype(np.int16),))
    pixels = _colour(colour)
    if pixels.shape[2] != 3:
        raise ValueError(f"colour: shape {pixels.shape}, needed is (height, width, 3)")
    record = ffi.new("DAX3D_RANGE_V4*")
    try:
        call(
            "DAX3DPCL_UTILS_Construct_RGBD_DAX3D_RANGE_V4",
            *(src.pointer, src.step, pointer(pixels, "uint8_t"), pixels.shape[1] * 3, src.size),
            {"width": pixels.shape[1], "height": pixels.shape[0]},
            *(depth_scale, _calibration(calibration) if calibration else ffi.NULL, record),
        )
        return _image(record)
    finally:
        _release(record)


def _colour(array: ArrayLike) -> Array:
    pixels = np.asarray(array)
    if pixels.dtype != np.uint8 or pixels.ndim != 3:
        raise TypeError(f"colour: {pixels.ndim} dimensions of {pixels.dtype}, needed are three of uint8")
    return np.require(pixels, None, ("C", "A"))


def _record(image: RangeImage) -> tuple[Any, list[Array]]:
    """The C record of an image, and the arrays that it points into."""
    values = _packed("values", image.values, np.int16)
    scale, offset = _values("scale", image.scale, 3), _values("offset", image.offset, 3)
    record = ffi.new("DAX3D_RANGE_V4*", {"type": int(image.mask is None), "scale": scale, "offset": offset})
    kept = [values]
    _slot(record.range, 3, values.shape, values.shape[1], [values])
    if image.mask is not None:
        mask = np.ascontiguousarray(of_shape("mask", image.mask, values.shape).array)
        _slot(record.mask, 1, mask.shape, mask.shape[1], [mask])
        kept.append(mask)
    if image.colour is not None:
        pixels = _colour(image.colour)
        kept.append(pixels)
        if pixels.shape[2] == 3:
            _slot(record.colour, _INTERLEAVED, pixels.shape[:2], 3 * pixels.shape[1], [pixels])
        elif pixels.shape[0] == 3:
            _slot(record.colour, _PLANAR, pixels.shape[1:], pixels.shape[2], list(pixels))
        else:
            raise ValueError(f"colour: shape {pixels.shape}, needed is (height, width, 3) or (3, height, width)")
    if image.calibration is not None:
        record.calib = _calibration(image.calibration)[0]
    return record, kept


def _values(name: str, values: ArrayLike, count: int) -> list[float]:
    """So many numbers, no fewer: a C record would take 0 for the others."""
    return [float(value) for value in numbers(name, values, (count,), np.float64)]


def _packed(name: str, array: ArrayLike, dtype: Any) -> Array:
    """An image without gaps between rows."""
    return np.ascontiguousarray(source(name, array, (np.dtype(dtype),)).array)


def _slot(slot: Any, code: int, shape: tuple[int, ...], step: int, planes: list[Array]) -> None:
    slot.image.format, slot.image.height, slot.image.width = code, shape[0], shape[1]
    for i, plane in enumerate(planes):
        slot.image.step[i] = step
        slot.image.plane[i] = slot.owner[i] = ffi.cast("void*", plane.ctypes.data)


def _calibration(calibration: Calibration) -> Any:
    record = ffi.new("DAX3D_RANGE_CALIB*")
    for name in ("depth", "rgb"):
        camera = getattr(record, name)
        for field, value in getattr(calibration, name)._asdict().items():
            setattr(camera, field, value)
    record.depthToRgb = numbers("depth_to_rgb", calibration.depth_to_rgb, (4, 4), np.float64).ravel().tolist()
    return record


def _image(record: Any) -> RangeImage:
    """A record's contents as arrays of their own."""
    mask = colour = calibration = None
    if record.mask.image.plane[0] and record.type == 0:
        mask = _plane(record.mask.image, 0, np.uint8)
    if record.colour.image.plane[0] and record.colour.image.format == _PLANAR:
        colour = np.stack([_plane(record.colour.image, i, np.uint8) for i in range(3)])
    elif record.colour.image.plane[0]:
        colour = _plane(record.colour.image, 0, np.uint8, 3)
    values = np.frombuffer(ffi.buffer(ffi.addressof(record, "calib")), np.float64)
    if values.any():
        depth, rgb = (
            Camera(*(getattr(camera, field) for field in Camera._fields))
            for camera in (record.calib.depth, record.calib.rgb)
        )
        calibration = Calibration(depth, rgb, np.array(list(record.calib.depthToRgb)).reshape(4, 4))
    scale, offset = ((triple.x, triple.y, triple.z) for triple in (record.scale, record.offset))
    return RangeImage(_plane(record.range.image, 0, np.int16), mask, scale, offset, colour, calibration)


def _plane(image: Any, number: int, dtype: Any, channels: int = 1) -> Array:
    shape = image.height, image.width * channels
    step = image.step[number] * np.dtype(dtype).itemsize
    rows = np.frombuffer(ffi.buffer(image.plane[number], shape[0] * step), np.uint8).reshape(shape[0], step)
    plane: Array = rows[:, : shape[1] * np.dtype(dtype).itemsize].copy().view(dtype)
    return plane.reshape(image.height, image.width, channels) if channels > 1 else plane


def _release(record: Any) -> None:
    """Frees what the library allocated in a record."""
    function("DAX3DPCL_UTILS_RELEASE_RANGE_V4")(record)
    for owner in record.colour.owner:
        function("ZUR_Free")(owner)


_MAPS = {"int16": "16s32f", "int32": "32s32f", "float32": "32f32f"}


def range_to_xyz(
    values: ArrayLike,
    scale: Triple = (1.0, 1.0, 1.0),
    offset: Triple = (0.0, 0.0, 0.0),
    mask: Optional[ArrayLike] = None,
    organized: bool = True,
) -> NDArray[np.float32]:
    """Points of a metric grid: pixel (c, r) of value v lies at (c, r, v) * scale + offset.

    values: (height, width) int16, int32 or float32. scale: pitches, not 0, negative ones mirror. mask: uint8 of the
    same shape, 0 is invalid. Returns (height, width, 3), NaN where invalid, or if not organized the (n, 3) valid ones.

    >>> values, mask = np.array([[4, 6]], np.int16), np.array([[0, 1]], np.uint8)
    >>> dax.range_to_xyz(values, (0.5, 1, 0.25), mask=mask, organized=False)
    array([[0.5, 0. , 1.5]], dtype=float32)
    """
    params = _values("scale", scale, 3) + _values("offset", offset, 3)
    return _to_xyz("Range2XYZ", values, params, mask, organized)


def depth_to_xyz(
    values: ArrayLike,
    camera: tuple[float, float, float, float],
    scale: float = 1.0,
    offset: float = 0.0,
    mask: Optional[ArrayLike] = None,
    organized: bool = True,
) -> NDArray[np.float32]:
    """Points that a pinhole camera without distortion sees: z = v scale + offset along the optical axis.

    camera: fx, fy, cx, cy in pixels; focal lengths above 0. scale: above 1e-7. Others as for `range_to_xyz`.

    >>> dax.depth_to_xyz(np.array([[2, 2]], np.int16), (1, 1, 0, 0), scale=0.5)
    array([[[0., 0., 1.],
            [1., 0., 1.]]], dtype=float32)
    """
    return _to_xyz("Depth2XYZ", values, [scale, offset, *_values("camera", camera, 4)], mask, organized)


def _to_xyz(kind: str, values: ArrayLike, params: list[float], mask: Optional[ArrayLike], organized: bool) -> Array:
    src = source("values", values, tuple(np.dtype(name) for name in _MAPS))
    heights = np.ascontiguousarray(src.array)
    valid = np.ones(heights.shape, np.uint8) if mask is None else of_shape("mask", mask, heights.shape).array
    valid = np.ascontiguousarray(valid)
    member = f"DAX3DPCL_PREP_CONVERT_{kind}_{{}}{_MAPS[heights.dtype.name]}"
    points = np.full(needed(member.format("ResultSize_"), src.size) // 4, np.nan, np.float32)
    area = ffi.new("DAX3DPCL_RANGE_MAP*", {"rows": heights.shape[0], "cols": heights.shape[1], "params": params})
    area.values, area.mask = ffi.cast("void*", heights.ctypes.data), pointer(valid, "uint8_t")
    start, size = ffi.new("float**"), ffi.new("DAX3DPCL_CLOUD_SIZE*")
    call(member.format(""), area, pointer(points, "void"), int(organized), start, size)
    count = size.width * size.height
    cloud = points[: 3 * count]
    return cloud.reshape(*heights.shape, 3) if organized else cloud.reshape(count, 3).copy()


def remove_speckles(
    values: ArrayLike,
    max_difference: int,
    max_size: int,
    invalid: int = 0,
    window: Optional[tuple[int, int, int, int]] = None,
    out: Optional[Array] = None,
) -> Array:
    """Sets small patches of similar values to `invalid`.

    values: (height, width) int16 or uint16. Neighbours along rows and columns belong to one patch when they differ by
    less than max_difference; patches of at most max_size pixels go. window: (left, top, right, bottom), right and
    bottom excluded: where pixels are cleared. `out` may be the image itself; its rows must have no gaps.

    >>> dax.remove_speckles(np.array([[5, 5, 0, 9]], np.int16), 2, 1)
    array([[5, 5, 0, 0]], dtype=int16)
    """
    src = source("values", values, (np.dtype(np.int16), np.dtype(np.uint16)))
    dst = target("out", out, src.array.shape, src.array.dtype, packed=True)
    refuse_overlap(("values", src), ("out", dst), in_place=True)
    heights = np.ascontiguousarray(src.array)
    limits = np.iinfo(src.array.dtype)
    if not limits.min <= invalid <= limits.max:
        raise ValueError(f"invalid: {invalid} is no {src.array.dtype}")
    left, top, right, bottom = window or (0, 0, src.size["width"], src.size["height"])
    work = buffer("DAX3DPCL_PREP_FILTER_Speckle_BufferSize", src.size)
    letter, ctype = ("S", "int16_t") if src.array.dtype == np.int16 else ("U", "uint16_t")
    call(
        f"DAX3DPCL_PREP_FILTER_Speckle_{letter}16",
        *(src.size, pointer(heights, ctype), dst.pointer, {"x": left, "y": top}, {"x": right, "y": bottom}),
        *(max_difference, max_size, invalid, work),
    )
    return dst.array

"""What dax.pose and dax.space return and take, and how they call the library."""
from typing import Any, NamedTuple, Optional, Union

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._arrays import Array, numbers, pointer
from ._interface import ffi
from ._library import call

Doubles = NDArray[np.float64]
Core = tuple[int, ...]


class Alignment(NamedTuple):
    """to = scale * from @ pose[:3, :3].T + pose[:3, 3]; rms: what is left; mirrored: a reflection would fit better."""

    pose: Doubles
    scale: float
    rms: float
    mirrored: bool


class Distance(NamedTuple):
    """How far two poses are apart; arrays of many."""

    translation: Union[float, Doubles]
    angle: Union[float, Doubles]


class Nearest(NamedTuple):
    """A distance, and where it is measured: the nearest point of a shape, or those of two lines."""

    distance: float
    foot: Doubles


class Line(NamedTuple):
    """Without end."""

    point: ArrayLike
    direction: ArrayLike


class Segment(NamedTuple):
    """From one end to the other."""

    start: ArrayLike
    end: ArrayLike


class Plane(NamedTuple):
    """normal . p + offset = 0."""

    normal: ArrayLike
    offset: float


class Sphere(NamedTuple):
    """The surface."""

    centre: ArrayLike
    radius: float


class Cylinder(NamedTuple):
    """The surface, without end."""

    point: ArrayLike
    direction: ArrayLike
    radius: float


class Circle(NamedTuple):
    """In the plane through its centre."""

    centre: ArrayLike
    normal: ArrayLike
    radius: float


class Triangle(NamedTuple):
    """With its inside."""

    a: ArrayLike
    b: ArrayLike
    c: ArrayLike


class Box(NamedTuple):
    """pose: its centre and, in columns, its axes; size: along them."""

    pose: ArrayLike
    size: ArrayLike


class Fit(NamedTuple):
    """A shape, the root mean square of the points' distances, and how many points counted."""

    shape: Any
    rms: float
    inliers: int


Shape = Union[Line, Segment, Plane, Sphere, Cylinder, Circle, Triangle, Box]
SIZES: dict[type, int] = {Line: 6, Segment: 6, Plane: 4, Sphere: 4, Cylinder: 7, Circle: 7, Triangle: 9, Box: 19}


def of_shape(shape: Any) -> Doubles:
    """The numbers of a shape, as the library takes them; of vectors themselves."""
    parts = shape if type(shape) in SIZES else (shape,)
    flat: Doubles = np.concatenate([np.asarray(part, np.float64).reshape(-1) for part in parts])
    wanted = SIZES.get(type(shape), 3)
    if len(flat) != wanted:
        raise ValueError(f"{type(shape).__name__}: {len(flat)} numbers, needed are {wanted}")
    return flat


def address(array: Array) -> Any:
    return pointer(array, "float" if array.dtype == np.float32 else "double")


def shape_address(shape: Any, flat: Doubles) -> Any:
    return pointer(flat, "Dax3dBox" if isinstance(shape, Box) else "double")


def cloud(name: str, points: ArrayLike, columns: int = 3) -> tuple[Array, str]:
    """(n, 3) numbers: single precision stays, all else becomes double."""
    array = np.asarray(points)
    single = array.dtype == np.float32
    return numbers(name, array, (None, columns), np.float32 if single else np.float64), "f32" if single else "f64"


def weights_of(weights: Optional[ArrayLike], points: Array) -> Any:
    """An array as long as the points, or nothing."""
    return None if weights is None else numbers("weights", weights, (len(points),), points.dtype)


def spread(arguments: tuple[tuple[ArrayLike, Core], ...]) -> tuple[tuple[int, ...], list[Array]]:
    """The leading axes of all arguments, broadcast, and each as (count, its own axes)."""
    arrays = [np.asarray(value) for value, _ in arguments]
    for array, (_, core) in zip(arrays, arguments):
        if array.dtype.kind not in "fiub":
            raise TypeError(f"of type {array.dtype}, needed are numbers")
        if array.shape[max(array.ndim - len(core), 0) :] != core:
            raise ValueError(f"shape {array.shape}, needed is (..., {', '.join(map(str, core))})")
    leading = np.broadcast_shapes(
        *(array.shape[: array.ndim - len(core)] for array, (_, core) in zip(arrays, arguments))
    )
    wide = [np.broadcast_to(array, leading + core).reshape(-1, *core) for array, (_, core) in zip(arrays, arguments)]
    return leading, [np.ascontiguousarray(array, np.float64) for array in wide]


def each(name: str, result: Core, *arguments: tuple[ArrayLike, Core], between: tuple[Any, ...] = ()) -> Doubles:
    """The function on each of the arguments' leading axes; `between` stands before the result."""
    leading, arrays = spread(arguments)
    values = np.empty((len(arrays[0]), *result))
    for row in range(len(values)):
        call(name, *(address(array[row]) for array in arrays), *between, address(values[row]))
    return values.reshape(leading + result)


def box_of(record: Any) -> Box:
    return Box(np.array(list(record.pose)).reshape(4, 4), np.array(list(record.size)))


def new_box() -> Any:
    return ffi.new("Dax3dBox*")

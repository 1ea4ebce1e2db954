"""NumPy arrays as what the C interface takes: pointers, steps and sizes."""
import os
import sys
import warnings
from numbers import Real
from typing import Any, Optional, Sequence, TypeVar, Union

import numpy as np
from numpy.typing import ArrayLike, DTypeLike, NDArray

from ._interface import ffi

Array = NDArray[Any]
Dtypes = Sequence["np.dtype[Any]"]
T = TypeVar("T")

# dtype: (suffix of the C names, C type of a pixel)
PIXELS: dict["np.dtype[Any]", tuple[str, str]] = {
    np.dtype(np.uint8): ("8u", "uint8_t"),
    np.dtype(np.uint16): ("16u", "uint16_t"),
    np.dtype(np.int16): ("16s", "int16_t"),
    np.dtype(np.int32): ("32s", "int32_t"),
    np.dtype(np.uint32): ("32u", "uint32_t"),
    np.dtype(np.float32): ("32f", "float"),
    np.dtype(np.float64): ("64f", "double"),
    np.dtype(np.complex64): ("32fc", "DaxComplex32f"),
    np.dtype(np.complex128): ("64fc", "DaxComplex64f"),
}
BYTES = (np.dtype(np.uint8),)


Window = Union[int, tuple[int, int]]


class Image:
    """An array seen as an image: pointer, step in elements, size, and its layout in the C names. The pixels of layout
    C1 are numbers, those of C3 and C4 the last axis, of three or four."""

    def __init__(self, name: str, array: Array) -> None:
        self.array = array
        self.suffix, self.ctype = pixel_type(name, array)
        self.layout = layout_of(array)
        self.pointer = pointer(array, self.ctype)
        # An empty or a one-row array may carry any stride.
        packed = int(np.prod(array.shape[1:]))
        self.step = array.strides[0] // array.itemsize if array.shape[0] > 1 else packed
        self.size = {"width": array.shape[1], "height": array.shape[0]}


def layout_of(array: Array) -> str:
    """C1, C3, C4, or nothing where an array is no image."""
    if array.ndim == 3 and array.shape[2] in (3, 4):
        return f"C{array.shape[2]}"
    return "C1" if array.ndim == 2 else ""


def pixel_type(name: str, array: Array) -> tuple[str, str]:
    if array.dtype not in PIXELS:
        raise TypeError(f"{name}: pixels of type {array.dtype}; known are " + ", ".join(str(dtype) for dtype in PIXELS))
    return PIXELS[array.dtype]


def pointer(array: Array, ctype: str) -> Any:
    """The address of an array, which the caller keeps alive."""
    return ffi.cast(f"{ctype}*", array.ctypes.data)


def source(name: str, array: ArrayLike, dtypes: Optional[Dtypes] = None, layouts: str = "C1") -> Image:
    """An input image. Rows that are not contiguous are copied: the library takes a step, not a stride in the row. Truth
    values are 0 and 255 where bytes are taken."""
    array = np.asarray(array)
    if array.dtype == bool and dtypes is not None and np.dtype(np.uint8) in dtypes:
        array = array.astype(np.uint8) * np.uint8(255)
    _check_image(name, array, dtypes, layouts)
    return Image(name, array if _addressable(array) else np.ascontiguousarray(array))


def target(name: str, array: Optional[Array], shape: tuple[int, ...], dtype: DTypeLike, packed: bool = False) -> Image:
    """An output image: a new one, or the caller's, which is written where it lies or refused. packed: functions without
    a step need rows without a gap."""
    if array is None:
        return Image(name, np.empty(shape, dtype))
    if not isinstance(array, np.ndarray):
        raise TypeError(f"{name}: an output is a NumPy array, not {type(array).__name__}")
    _check_image(name, array, (np.dtype(dtype),), "C1 C3 C4" if len(shape) == 3 else "C1")
    if array.shape != tuple(shape):
        raise ValueError(f"{name}: shape {array.shape}, needed is {tuple(shape)}")
    if not _addressable(array) or not array.flags.writeable or (packed and not array.flags.c_contiguous):
        gaps = ", without a gap between rows" if packed else ", one below the other"
        raise ValueError(f"{name}: needs writable rows of adjacent pixels{gaps} (strides {array.strides})")
    return Image(name, array)


def _check_image(name: str, array: Array, dtypes: Optional[Dtypes], layouts: str) -> None:
    if layout_of(array) not in layouts.split():
        if "C3" in layouts:
            raise ValueError(f"{name}: shape {array.shape}, an image is (height, width) or (height, width, 3)")
        hint = "; make a colour image grey first" if array.ndim == 3 else ""
        raise ValueError(f"{name}: an image has two dimensions, not {array.ndim}{hint}")
    if dtypes is not None and array.dtype not in dtypes:
        taken = ", ".join(str(dtype) for dtype in dtypes)
        raise TypeError(f"{name}: pixels of type {array.dtype}; taken are {taken}")
    if max(array.shape) > 2**31 - 1:
        raise ValueError(f"{name}: sides above 2^31 - 1")


def _addressable(array: Array) -> bool:
    """Whether the rows lie as the library reads them: adjacent aligned pixels, rows that do not overlap, downwards."""
    if not array.flags.aligned or not array.dtype.isnative:
        return False
    height, width = array.shape[:2]
    row, *inner = array.strides
    item = array.itemsize
    pixel = item * int(np.prod(array.shape[2:]))
    adjacent = (width <= 1 or inner[0] == pixel) and all(stride == item for stride in inner[1:])
    return adjacent and (height <= 1 or (row % item == 0 and width * pixel <= row < item * 2**31))


def refuse_overlap(*images: tuple[str, Image], in_place: bool = False) -> None:
    """For functions whose images must not overlap; or only as wholes, where they work in place."""
    for i, (name, image) in enumerate(images):
        for other_name, other in images[:i]:
            same = in_place and (image.pointer, image.step) == (other.pointer, other.step)
            if not same and _may_overlap(image.array, other.array):
                raise ValueError(f"{name} and {other_name} overlap")


def _may_overlap(one: Array, other: Array) -> bool:
    """Whether arrays share pixels, not only a canvas in which they lie side by side."""
    try:
        return np.may_share_memory(one, other) and np.shares_memory(one, other, max_work=10000)
    except RuntimeError:  # too hard to tell
        return True


def of_shape(name: str, array: ArrayLike, shape: tuple[int, ...], dtypes: Dtypes = BYTES, layouts: str = "C1") -> Image:
    """An input image that goes with another one."""
    image = source(name, array, dtypes, layouts)
    if image.array.shape != shape:
        raise ValueError(f"{name}: shape {image.array.shape}, needed is {shape}")
    return image


def numbers(name: str, values: ArrayLike, shape: tuple[Optional[int], ...], dtype: DTypeLike = np.float32) -> Array:
    """Input numbers as a packed array of one type; copied where they are not. None in the shape stands for any
    length."""
    array = np.asarray(values)
    if array.dtype.kind not in "fiub":
        raise TypeError(f"{name}: of type {array.dtype}, needed are numbers")
    if array.ndim != len(shape) or any(want not in (None, have) for want, have in zip(shape, array.shape)):
        wanted = ", ".join("n" if want is None else str(want) for want in shape)
        raise ValueError(f"{name}: shape {array.shape}, needed is ({wanted})")
    if max(array.shape, default=0) > 2**31 - 1:
        raise ValueError(f"{name}: longer than 2^31 - 1")
    with np.errstate(over="ignore"):  # what single precision cannot hold is infinite
        return np.require(array, dtype, ("C", "A"))


def choice(name: str, value: str, values: dict[str, T]) -> T:
    """What a word stands for."""
    if value not in values:
        raise ValueError(f"{name}: {value!r}, possible are " + ", ".join(values))
    return values[value]


def within(name: str, value: Any, low: float, high: float = np.inf) -> None:
    """Refuses a number outside low..high, and NaN."""
    if not low <= value <= high:
        limits = f"needed is at least {low:g}" if high == np.inf else f"possible are {low:g}..{high:g}"
        raise ValueError(f"{name}: {value!r}, {limits}")


def pair(name: str, value: Any, form: str) -> tuple[Any, Any]:
    """Two numbers."""
    if (
        not isinstance(value, (tuple, list, np.ndarray))
        or len(value) != 2
        or not all(isinstance(v, Real) for v in value)
    ):
        raise TypeError(f"{name}: {value!r}, needed is {form}")
    return value[0], value[1]


def as_size(window: Window) -> dict[str, int]:
    """An edge length, or (width, height), as the record of the C interface."""
    if isinstance(window, (int, np.integer)):
        window = window, window
    width, height = pair("window", window, "a whole number, or (width, height)")
    return {"width": width, "height": height}


def pixel_value(name: str, value: Any, image: Image) -> tuple[Any, ...]:
    """A pixel of an image's type as arguments: a number, real and imaginary part, or the address of as many as there
    are channels, which may all be given by one."""
    dtype = image.array.dtype
    if image.layout != "C1":
        values = numbers(name, np.broadcast_to(value, (3,)), (3,), np.float64)
        return (ffi.new(f"{image.ctype}[3]", [_number(name, each, dtype) for each in values]),)
    if dtype.kind == "c":
        return float(np.real(value)), float(np.imag(value))
    return (_number(name, value, dtype),)


def _number(name: str, value: complex, dtype: "np.dtype[Any]") -> float:
    if value.imag:
        raise ValueError(f"{name}: {value} is no {dtype}")
    if dtype.kind == "f":
        return float(value.real)
    limits = np.iinfo(dtype)
    if not limits.min <= value.real <= limits.max or value.real != int(value.real):
        raise ValueError(f"{name}: {value} is no {dtype}")
    return int(value.real)


def warn(text: str) -> None:
    """A warning at the line of the user that called the package."""
    package = os.path.dirname(__file__)
    depth, frame = 1, sys._getframe()
    while frame is not None and os.path.dirname(frame.f_code.co_filename).startswith(package):
        depth, frame = depth + 1, frame.f_back  # type: ignore[assignment]
    warnings.warn(text, stacklevel=max(depth - 1, 1) + 1)


def instance(name: str, value: Any, kind: type, source: str) -> None:
    """Refuses what is not of a kind of record."""
    if not isinstance(value, kind):
        raise TypeError(f"{name}: {type(value).__name__}, needed is {source}")

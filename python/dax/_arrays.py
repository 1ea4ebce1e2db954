"""NumPy arrays as what the C interface takes: pointers, steps and sizes."""
import numpy as np

from ._interface import ffi

# dtype: (suffix of the C names, C type of a pixel)
PIXELS = {
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


class Image:
    """A two-dimensional array seen as an image: pointer, step in elements, size."""

    def __init__(self, name, array):
        self.array = array
        self.suffix, ctype = pixel_type(name, array)
        self.pointer = pointer(array, ctype)
        # An empty or a one-row array may carry any stride.
        self.step = array.strides[0] // array.itemsize if array.shape[0] > 1 else array.shape[1]
        self.size = {"width": array.shape[1], "height": array.shape[0]}


def pixel_type(name, array):
    if array.dtype not in PIXELS:
        raise TypeError(f"{name}: pixels of type {array.dtype}; known are " + ", ".join(str(dtype) for dtype in PIXELS))
    return PIXELS[array.dtype]


def pointer(array, ctype):
    return ffi.cast(f"{ctype}*", array.ctypes.data)


def source(name, array, dtypes=None):
    """An input image. Rows that are not contiguous are copied: the library takes a step, not a stride in the row."""
    array = np.asarray(array)
    _check_image(name, array, dtypes)
    return Image(name, array if _addressable(array) else np.ascontiguousarray(array))


def target(name, array, shape, dtype):
    """An output image: a new one, or the caller's, which is written where it lies or refused."""
    if array is None:
        return Image(name, np.empty(shape, dtype))
    if not isinstance(array, np.ndarray):
        raise TypeError(f"{name}: an output is a NumPy array, not {type(array).__name__}")
    _check_image(name, array, (np.dtype(dtype),))
    if array.shape != tuple(shape):
        raise ValueError(f"{name}: shape {array.shape}, needed is {tuple(shape)}")
    if not _addressable(array) or not array.flags.writeable:
        raise ValueError(f"{name}: needs writable rows of adjacent pixels, one below the other (strides {array.strides})")
    return Image(name, array)


def _check_image(name, array, dtypes):
    if array.ndim != 2:
        raise ValueError(f"{name}: an image has two dimensions, not {array.ndim}")
    if dtypes is not None and array.dtype not in dtypes:
        raise TypeError(f"{name}: pixels of type {array.dtype}; taken are " + ", ".join(str(dtype) for dtype in dtypes))
    if max(array.shape) > 2**31 - 1:
        raise ValueError(f"{name}: sides above 2^31 - 1")


def _addressable(array):
    """Whether the rows lie as the library reads them: adjacent aligned pixels, rows that do not overlap, downwards."""
    if not array.flags.aligned or not array.dtype.isnative:
        return False
    height, width = array.shape
    row, pixel = array.strides
    item = array.itemsize
    return (width <= 1 or pixel == item) and (height <= 1 or (row % item == 0 and width * item <= row < item * 2**31))


def refuse_overlap(*images):
    """For functions that do not work in place."""
    for i, (name, image) in enumerate(images):
        for other_name, other in images[:i]:
            if np.may_share_memory(image.array, other.array):
                raise ValueError(f"{name} and {other_name} overlap")


def as_size(pair):
    """(width, height) as the record of the C interface."""
    width, height = pair
    return {"width": width, "height": height}

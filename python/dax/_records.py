"""C records as NumPy types, read from the interface itself."""
import functools
from typing import Any

import numpy as np

from ._arrays import Array
from ._interface import ffi

_KINDS = {"float": "f", "double": "f"}


@functools.lru_cache(maxsize=None)
def dtype_of(ctype: Any) -> "np.dtype[Any]":
    """The NumPy type of a C type: of a record one with its fields at their offsets; pointers as unsigned integers."""
    kind = ffi.typeof(ctype) if isinstance(ctype, str) else ctype
    if kind.kind == "struct":
        names, fields = zip(*kind.fields)
        return np.dtype(
            {
                "names": names,
                "formats": [dtype_of(field.type) for field in fields],
                "offsets": [field.offset for field in fields],
                "itemsize": ffi.sizeof(kind),
            }
        )
    if kind.kind == "array":
        return np.dtype((dtype_of(kind.item), kind.length))
    if kind.kind == "pointer":
        return np.dtype(np.uintp)
    letter = _KINDS.get(kind.cname) or ("i" if int(ffi.cast(kind, -1)) < 0 else "u")
    return np.dtype(f"{letter}{ffi.sizeof(kind)}")


def view(ctype: str, pointer: Any, count: int, owner: Any = None) -> Array:
    """`count` records at a pointer as an array that shares their memory, and holds it: through the pointer where that
    owns it, otherwise through `owner`."""
    dtype = dtype_of(ctype)
    if count == 0:
        return np.empty(0, dtype)
    held = pointer if owner is None else ffi.gc(pointer, lambda _, owner=owner: None)
    return np.frombuffer(ffi.buffer(held, count * dtype.itemsize), dtype)

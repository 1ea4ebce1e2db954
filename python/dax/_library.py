"""Loads the shared library and calls it."""
import os
import pathlib

from ._interface import ffi
from .errors import Error

NAME, HOST_NAME = "libdax.so.0", "libdaxhost.so.0"


def _open(name, variable):
    """The library that the environment names, or the one beside the package, or the system's."""
    beside = pathlib.Path(__file__).with_name(name)
    path = os.environ.get(variable) or (str(beside) if beside.exists() else name)
    # Global, so that the library finds the pool's functions; they are weak imports.
    # For good, since worker threads may outlive the last reference.
    return ffi.dlopen(path, ffi.RTLD_NOW | ffi.RTLD_GLOBAL | ffi.RTLD_NODELETE)


def _open_host():
    try:
        return _open(HOST_NAME, "DAX_HOST_LIBRARY")
    except OSError:
        return None


host = _open_host()  # before the library that imports from it
library = _open(NAME, "DAX_LIBRARY")


def text(status):
    """What the library says about a status."""
    return ffi.string(library.DAX_GetStatusText(status)).decode()


def call(name, *arguments):
    """Calls an exported function that returns a status; the interpreter lock is released meanwhile."""
    status = getattr(library, name)(*arguments)
    if status:
        raise Error(name, status, text(status))


def buffer(name, *arguments):
    """A work buffer of the size that a query tells."""
    size = ffi.new("uint64_t*")
    call(name, *arguments, size)
    return memory(size[0])


def memory(size):
    """That many bytes, aligned as by malloc and not cleared."""
    if size > 2**63 - 1:
        raise MemoryError(f"{size} bytes")
    return _allocate("char[]", max(int(size), 1))


_allocate = ffi.new_allocator(should_clear_after_alloc=False)


def version():
    """Version of the loaded library, "major.minor.patch"."""
    return ffi.string(library.DAX_GetVersion()).decode()

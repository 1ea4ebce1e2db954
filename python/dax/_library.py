"""Loads the shared library and calls it."""
import functools
import os
import pathlib
from typing import Any, Optional

try:
    from ._interface import ffi
except ModuleNotFoundError as error:
    if error.name != "dax._interface":
        raise
    raise ImportError(
        "this is the source of the package: build the project, and import it from python/ in the build"
    ) from None
from ._contracts import VERSION
from .errors import Error

NAME, HOST_NAME, CODECS_NAME = "libdax.so.0", "libdaxhost.so.0", "libdaxio.so.0"


def _open(name: str, variable: str) -> Any:
    """The library that the environment names, or the one beside the package, or that of the build or of the prefix in
    which the package lies, or the system's."""
    package = pathlib.Path(__file__).resolve().parent
    build = package.parents[1]
    places = [package, build, build / "host", build / "io"]
    if package.parent.name == "dist-packages":
        places.append(package.parents[2])  # lib of the prefix
    near = [place / name for place in places if (place / name).exists()]
    path = os.environ.get(variable) or (str(near[0]) if near else name)
    # Global, so that the library finds the pool's functions; they are weak imports.
    # For good, since worker threads may outlive the last reference.
    return ffi.dlopen(path, ffi.RTLD_NOW | ffi.RTLD_GLOBAL | ffi.RTLD_NODELETE)


def _open_host() -> Optional[Any]:
    try:
        return _open(HOST_NAME, "DAX_HOST_LIBRARY")
    except OSError:
        return None


host = _open_host()  # before the library that imports from it
try:
    _library = _open(NAME, "DAX_LIBRARY")
except OSError as error:
    raise ImportError(
        f"{error}; the environment variable DAX_LIBRARY names the library where it lies elsewhere"
    ) from None


@functools.lru_cache(maxsize=None)
def codecs() -> Any:
    """The library of PNG, JPEG and TIFF, which is looked for when it is first needed."""
    try:
        return _open(CODECS_NAME, "DAX_CODECS_LIBRARY")
    except OSError as error:
        raise ImportError(
            f"PNG, JPEG and TIFF files need libdaxio: {error}; the environment variable DAX_CODECS_LIBRARY names it "
            "where it lies elsewhere"
        ) from None


def function(name: str) -> Any:
    """An exported function."""
    return getattr(_library, name)


def has(name: str) -> bool:
    """Whether a function is exported."""
    return hasattr(_library, name)


def call(name: str, *arguments: Any) -> None:
    """Calls an exported function that returns a status; the interpreter lock is released meanwhile."""
    status = function(name)(*arguments)
    if status:
        raise Error(name, status, text(status))


def text(status: int) -> str:
    """What the library says about a status. Those of the solvers are small and negative."""
    if status < 0:
        status = function("DAX_ZurStatusToDaxAlgStatus")(status)
    return str(ffi.string(function("DAX_GetStatusText")(status)).decode())


def buffer(name: str, *arguments: Any) -> Any:
    """A work buffer of the size that a query tells."""
    return memory(needed(name, *arguments))


def needed(name: str, *arguments: Any) -> int:
    """The bytes that a query tells."""
    size = ffi.new("uint64_t*")
    call(name, *arguments, size)
    return int(size[0])



class Fixed:
    """Attributes are set once: what they say, memory was measured by."""

    def __setattr__(self, name: str, value: Any) -> None:
        if name in vars(self):
            raise AttributeError(f"{name} of a {type(self).__name__} cannot be changed: make a new one")
        super().__setattr__(name, value)


def memory(size: int) -> Any:
    """That many bytes, aligned as by malloc and not cleared."""
    if size > 2**63 - 1:
        raise MemoryError(f"{size} bytes")
    return _allocate("char[]", max(int(size), 1))


_allocate = ffi.new_allocator(should_clear_after_alloc=False)


def version() -> str:
    """Version of the loaded library, "major.minor.patch"."""
    return str(ffi.string(function("DAX_GetVersion")()).decode())


def _check_version() -> None:
    """Refuses a library whose records may be laid out in another way than in the headers that the package was made
    from."""
    if version().split(".")[:2] != VERSION.split(".")[:2]:
        raise ImportError(f"the library is of version {version()}, the package of {VERSION}")


_check_version()

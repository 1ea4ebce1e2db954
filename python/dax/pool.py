"""Threads for the functions that take a pool."""
from typing import Any, Optional

from ._interface import ffi
from ._library import host

__all__ = ["Pool"]


class Pool:
    """A pool of worker threads, the calling one among them.

    threads: how many; 0 for one per processor. Functions that take `pool` give the same result with and without one.
    A pool may serve several calls in turn, not at the same time. Use it as a context, or let it go.

    >>> import dax, numpy as np
    >>> with dax.Pool(2) as pool:
    ...     dax.median3x3(np.eye(3, dtype=np.uint8), pool=pool).sum()
    2
    """

    def __init__(self, threads: int = 0) -> None:
        if host is None:
            raise OSError("the library of the thread pool (libdaxhost) was not found")
        if not 0 <= threads <= 1024:
            raise ValueError(f"threads: {threads}, possible are 0..1024")
        handle = host.DAXHOST_CreatePool(threads)
        if not handle:
            raise MemoryError("no memory for a pool")
        self._handle = ffi.gc(handle, host.DAXHOST_DestroyPool)
        self.threads: int = host.DAX_THREADPOOL_GetThreadsCnt(handle)

    def close(self) -> None:
        """Ends the threads, after calls that still run on them. A second time does nothing."""
        self._handle = ffi.NULL  # calls hold the handle: the last of them, or this line, lets it go

    def __enter__(self) -> "Pool":
        return self

    def __exit__(self, *_: object) -> None:
        self.close()


def handle_of(pool: Optional[Pool]) -> tuple[int, Any]:
    """(threads, handle) of a pool, or of none."""
    if pool is None:
        return 1, ffi.NULL
    if not isinstance(pool, Pool):
        raise TypeError(f"pool: {type(pool).__name__}, needed is a Pool")
    if not pool._handle:
        raise ValueError("pool: it has been closed")
    return pool.threads, pool._handle

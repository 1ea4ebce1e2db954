"""Images read at places that maps tell."""
from typing import Any, Callable, Optional

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, Image, of_shape, source, target
from .._interface import ffi
from .._library import buffer, call, memory
from ..pool import Pool
from ._sampling import WARPED, Interpolation, WarpMode, configured, sampled

__all__ = ["PreparedMap", "map_compose", "map_from_function", "remap"]

_MAPS = (np.dtype(np.float32),)


def _maps(name: str, map_x: ArrayLike, map_y: ArrayLike) -> tuple[Image, Image]:
    x = source(f"{name}_x", np.asarray(map_x, np.float32), _MAPS)
    return x, of_shape(f"{name}_y", np.asarray(map_y, np.float32), x.array.shape, _MAPS)


class PreparedMap:
    """A map for streams: positions as whole numbers of 1/4096 pixel, which are read faster than floats.

    map_x, map_y: as of remap. Positions reach 2^19 - 1 pixels. `model` is the block of bytes, which may be saved;
    PreparedMap.load reads it again and refuses a damaged one.

    >>> half = dax.PreparedMap(np.array([[0.5, 1.5]]), np.array([[0, 0]]))
    >>> dax.remap(np.array([[0, 100, 50]], np.uint8), half)
    array([[50, 75]], dtype=uint8)
    """

    def __init__(self, map_x: ArrayLike, map_y: ArrayLike) -> None:
        x, y = _maps("map", map_x, map_y)
        self.shape: tuple[int, int] = (x.size["height"], x.size["width"])
        self._block = buffer("DAXI_RemapPrepareModelSize", x.size)
        call("DAXI_RemapPrepare", x.pointer, x.step, y.pointer, y.step, x.size, self._block)
        self.model = bytes(ffi.buffer(self._block))

    @classmethod
    def load(cls, model: bytes) -> "PreparedMap":
        made, size = cls.__new__(cls), ffi.new("DaxiSize*")
        made._block = memory(len(model))
        ffi.memmove(made._block, model, len(model))
        call("DAXI_RemapCheckModel", made._block, len(model), size)
        made.shape, made.model = (size.height, size.width), bytes(model)
        return made


def remap(
    image: ArrayLike,
    map_x: Any,
    map_y: Optional[ArrayLike] = None,
    *,
    interpolation: Interpolation = "linear",
    mode: WarpMode = "constant",
    value: float = 0,
    cubic_a: float = -0.5,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The image read at (map_x, map_y) for each pixel of the result.

    image: uint8, uint16, int16 or float32, (height, width) or (height, width, 3). map_x, map_y: float32 arrays of the
    shape of the result, or a PreparedMap in place of both. NaN gives `value`, in every mode but leave, where out stays
    as it is. The rest as of warp_affine.

    >>> dax.remap(np.array([[0, 100, 200]], np.uint8), np.array([[0.25, 2.0]]), np.array([[0, 0]]))
    array([[ 25, 200]], dtype=uint8)
    """
    src = source("image", image, WARPED, "C1 C3")
    cfg = configured("Remap", interpolation, mode, value, cubic_a)
    if isinstance(map_x, PreparedMap):
        model = map_x
        return sampled("RemapPrepared", src, model.shape, cfg, out, pool, model._block, len(model.model), whole=False)
    if map_y is None:
        raise TypeError("map_y: missing")
    x, y = _maps("map", map_x, map_y)
    shape = (x.size["height"], x.size["width"])
    return sampled("Remap", src, shape, cfg, out, pool, x.pointer, x.step, y.pointer, y.step, whole=False)


def map_from_function(
    function: Callable[[float, float], tuple[float, float]], shape: tuple[int, int]
) -> tuple[Array, Array]:
    """Maps of shape (rows, columns) from a function of (x, y) that returns the place in the source.

    >>> dax.map_from_function(lambda x, y: (2 * x, y + 0.5), (1, 3))[0]
    array([[0., 2., 4.]], dtype=float32)
    """
    raised: list[BaseException] = []

    def place(user: Any, x: float, y: float, source_x: Any, source_y: Any) -> int:
        source_x[0], source_y[0] = function(x, y)
        return 0

    def keep(kind: Any, error: BaseException, trace: Any) -> None:
        raised.append(error.with_traceback(trace))

    callback = ffi.callback("DaxiMapFunction", place, error=1, onerror=keep)
    x, y = target("map_x", None, shape, np.float32), target("map_y", None, shape, np.float32)
    try:
        call("DAXI_MapFromFunction", callback, ffi.NULL, x.pointer, x.step, y.pointer, y.step, x.size)
    except Exception:
        if raised:
            raise raised[0] from None
        raise
    return x.array, y.array


def map_compose(outer: tuple[ArrayLike, ArrayLike], inner: tuple[ArrayLike, ArrayLike]) -> tuple[Array, Array]:
    """The maps of remap by `outer` and then by `inner`, in one: outer read at inner, NaN outside of it.

    >>> flip = dax.map_from_function(lambda x, y: (3 - x, y), (1, 4))
    >>> dax.map_compose(flip, flip)[0]
    array([[0., 1., 2., 3.]], dtype=float32)
    """
    first, second = _maps("outer", *outer), _maps("inner", *inner)
    result = [target("out", None, second[0].array.shape, np.float32) for _ in range(2)]
    own = [part for each in (*second, *result) for part in (each.pointer, each.step)]
    of = [part for each in first for part in (each.pointer, each.step)]
    call("DAXI_MapCompose", *of, first[0].size, *own, second[0].size)
    return result[0].array, result[1].array

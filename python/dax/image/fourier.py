"""Fourier and cosine transforms."""
from typing import Any, Literal, Optional

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, Image, choice, refuse_overlap, source, target
from .._interface import ffi
from .._library import buffer, call, needed
from ..pool import Pool, handle_of

__all__ = ["DctPlan", "DftPlan", "dct", "dft", "dft_good_side", "dft_real", "idct", "idft", "idft_real"]

Scale = Literal["none", "backward", "unitary"]
_SCALES = {"none": 0, "backward": 1, "unitary": 2}
_REALS = tuple(np.dtype(each) for each in (np.float32, np.float64))
_COMPLEX = tuple(np.dtype(each) for each in (np.complex64, np.complex128))


class _Plan:
    _family = ""

    def __init__(self, shape: tuple[int, int], dtype: Any = np.float32) -> None:
        if np.dtype(dtype) not in _REALS:
            raise TypeError(f"dtype: {np.dtype(dtype)}, possible are float32 and float64")
        self.shape, self.dtype = (int(shape[0]), int(shape[1])), np.dtype(dtype)
        size = {"width": self.shape[1], "height": self.shape[0]}
        suffix = f"{8 * self.dtype.itemsize}f"
        self.bytes = needed(f"DAXI_{self._family}PlanModelSize_{suffix}", size)
        self._model = buffer(f"DAXI_{self._family}PlanModelSize_{suffix}", size)
        call(f"DAXI_{self._family}Plan_{suffix}", size, self._model)

    def _arguments(self, size: dict[str, int]) -> tuple[Any, ...]:
        work = buffer(f"DAXI_{self._family}BufferSize_{8 * self.dtype.itemsize}f", size)
        return self._model, self.bytes, work


class DftPlan(_Plan):
    """The tables of Fourier transforms of one shape and precision, for streams; transforms without one make their own.

    shape: that of the picture, (rows, columns); also of transforms of real pictures. dtype: float32 or float64.

    >>> plan = dax.DftPlan((1, 4))
    >>> dax.dft(np.ones((1, 4), np.complex64), plan=plan).real
    array([[4., 0., 0., 0.]], dtype=float32)
    """

    _family = "Dft"


class DctPlan(_Plan):
    """The tables of cosine transforms of one shape and precision, as a DftPlan has them.

    >>> dax.dct(np.ones((2, 2), np.float32), plan=dax.DctPlan((2, 2))).round(3)
    array([[2., 0.],
           [0., 0.]], dtype=float32)
    """

    _family = "Dct"


def dft_good_side(n: int) -> int:
    """The smallest number from n on without a prime factor above 7, whose transforms are fast.

    >>> dax.dft_good_side(1009)
    1024
    """
    side = ffi.new("int32_t*")
    call("DAXI_DftGoodSide", n, side)
    return int(side[0])


def _transformed(
    function: str,
    family: type[_Plan],
    src: Image,
    dst: Image,
    shape: tuple[int, int],
    scale: tuple[int, ...],
    plan: Optional[_Plan],
    pool: Optional[Pool],
) -> Array:
    dtype = np.zeros(0, src.array.dtype).real.dtype
    if plan is None:
        plan = family(shape, dtype)
    elif not isinstance(plan, family):
        raise TypeError(f"plan: {type(plan).__name__}, needed is a {family.__name__}")
    elif (plan.shape, plan.dtype) != (shape, dtype):
        raise ValueError(f"plan: of {plan.shape} {plan.dtype}, needed is {shape} {dtype}")
    size = {"width": shape[1], "height": shape[0]}
    arguments = (src.pointer, src.step, dst.pointer, dst.step, size, *scale, *plan._arguments(size))
    if pool is None:
        call(f"{function}_C1R", *arguments)
    else:
        threads, handle = handle_of(pool)
        call(f"{function}_C1R_MT", handle, threads, *arguments)
    return dst.array


def _shape(image: Image) -> tuple[int, int]:
    return image.size["height"], image.size["width"]


def _both_ways(
    name: str, image: ArrayLike, scale: Scale, out: Optional[Array], plan: Optional[DftPlan], pool: Optional[Pool]
) -> Array:
    array = np.asarray(image)
    if array.dtype in _REALS:
        array = array.astype(np.result_type(array.dtype, np.complex64))
    src = source("image", array, _COMPLEX)
    dst = target("out", out, src.array.shape, src.array.dtype)
    refuse_overlap(("image", src), ("out", dst), in_place=True)
    factor = (choice("scale", scale, _SCALES),)
    return _transformed(f"DAXI_{name}_{src.suffix}", DftPlan, src, dst, _shape(src), factor, plan, pool)


def dft(
    image: ArrayLike,
    *,
    scale: Scale = "backward",
    out: Optional[Array] = None,
    plan: Optional[DftPlan] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The Fourier transform of a picture (height, width), or of a signal as one row: sums of x e^(-2 pi i (u x / W +
    v y / H)), frequency 0 first.

    image: complex64 or complex128; float32 and float64 are taken as such. scale: none; backward divides idft's sums
    by the number of pixels; unitary divides those of both by its root. `out` may be the image.

    >>> dax.dft(np.array([[0, 1, 0, 0]], np.complex64))
    array([[ 1.+0.j,  0.-1.j, -1.+0.j,  0.+1.j]], dtype=complex64)
    """
    return _both_ways("Dft", image, scale, out, plan, pool)


def idft(
    image: ArrayLike,
    *,
    scale: Scale = "backward",
    out: Optional[Array] = None,
    plan: Optional[DftPlan] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """Back from what dft makes, with the same arguments.

    >>> dax.idft(dax.dft(np.array([[3, 1, 2, 5]], np.float32))).real
    array([[3., 1., 2., 5.]], dtype=float32)
    """
    return _both_ways("Idft", image, scale, out, plan, pool)


def dft_real(
    image: ArrayLike,
    *,
    scale: Scale = "backward",
    out: Optional[Array] = None,
    plan: Optional[DftPlan] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The columns 0..width / 2 of the Fourier transform of a real picture, float32 or float64; the others mirror them.

    >>> dax.dft_real(np.array([[3, 1, 2, 5]], np.float32))
    array([[11.+0.j,  1.+4.j, -1.+0.j]], dtype=complex64)
    """
    src = source("image", image, _REALS)
    height, width = src.array.shape
    dst = target("out", out, (height, width // 2 + 1), _COMPLEX[_REALS.index(src.array.dtype)])
    refuse_overlap(("image", src), ("out", dst))
    factor = (choice("scale", scale, _SCALES),)
    return _transformed(f"DAXI_DftReal_{src.suffix}", DftPlan, src, dst, _shape(src), factor, plan, pool)


def idft_real(
    spectrum: ArrayLike,
    width: Optional[int] = None,
    *,
    scale: Scale = "backward",
    out: Optional[Array] = None,
    plan: Optional[DftPlan] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The real picture of what dft_real makes.

    width: columns of the picture, 2 n - 1 or (the default) 2 n - 2 of n columns of the spectrum.

    >>> dax.idft_real(dax.dft_real(np.array([[3, 1, 2]], np.float64)), 3).round(9)
    array([[3., 1., 2.]])
    """
    src = source("spectrum", spectrum, _COMPLEX)
    height, columns = src.array.shape
    width = max(2 * columns - 2, 1) if width is None else width
    if width < 1 or width // 2 + 1 != columns:
        raise ValueError(f"width: {width}, possible are {2 * columns - 2} and {2 * columns - 1}")
    dst = target("out", out, (height, width), _REALS[_COMPLEX.index(src.array.dtype)])
    refuse_overlap(("spectrum", src), ("out", dst))
    factor = (choice("scale", scale, _SCALES),)
    return _transformed(f"DAXI_IdftReal_{dst.suffix}", DftPlan, src, dst, (height, width), factor, plan, pool)


def _cosine(
    name: str, image: ArrayLike, out: Optional[Array], plan: Optional[DctPlan], pool: Optional[Pool]
) -> Array:
    src = source("image", image, _REALS)
    dst = target("out", out, src.array.shape, src.array.dtype)
    refuse_overlap(("image", src), ("out", dst), in_place=True)
    return _transformed(f"DAXI_{name}_{src.suffix}", DctPlan, src, dst, _shape(src), (), plan, pool)


def dct(
    image: ArrayLike, *, out: Optional[Array] = None, plan: Optional[DctPlan] = None, pool: Optional[Pool] = None
) -> Array:
    """The orthonormal cosine transform (type II) of a picture, or of a signal as one row; float32 or float64.

    >>> dax.dct(np.array([[1, 1, 1, 1]], np.float64))
    array([[2., 0., 0., 0.]])
    """
    return _cosine("Dct", image, out, plan, pool)


def idct(
    image: ArrayLike, *, out: Optional[Array] = None, plan: Optional[DctPlan] = None, pool: Optional[Pool] = None
) -> Array:
    """Back from what dct makes (type III).

    >>> dax.idct(np.array([[2, 0, 0, 0]], np.float64))
    array([[1., 1., 1., 1.]])
    """
    return _cosine("Idct", image, out, plan, pool)

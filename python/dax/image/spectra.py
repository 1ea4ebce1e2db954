"""What is in spectra, filters of spectra, windows, and convolution by transforms."""
from typing import Any, Literal, Optional, Sequence

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import Array, choice, refuse_overlap, source, target
from .._interface import ffi
from .._library import buffer, call
from .._operation import apply
from ..pool import Pool, handle_of

__all__ = [
    "apply_window",
    "convolve_dft",
    "correlate_dft",
    "log_spectrum",
    "magnitude",
    "multiply_spectra",
    "phase",
    "shift_quadrants",
    "spectrum_band",
    "spectrum_notch",
    "window",
]

Window = Literal["hann", "hamming", "blackman", "tukey"]
_WINDOWS = {"hann": 0, "hamming": 1, "blackman": 2, "tukey": 3}
Part = Literal["full", "same", "valid"]
_PARTS = {"full": 0, "same": 1, "valid": 2}
_COMPLEX = tuple(np.dtype(each) for each in (np.complex64, np.complex128))
_REALS = tuple(np.dtype(each) for each in (np.float32, np.float64))


def _call(name: str, pool: Optional[Pool], *arguments: Any) -> None:
    if pool is None:
        call(name, *arguments)
    else:
        threads, handle = handle_of(pool)
        call(f"{name}_MT", handle, threads, *arguments)


def _number_by_number(name: str, spectrum: ArrayLike, out: Optional[Array], pool: Optional[Pool]) -> Array:
    function = f"DAXI_{name}_{{type}}_C1R"
    images = {"spectrum": spectrum}
    return apply(function, images, types="32fc32f 64fc64f", out=out, pooled=function + "_MT", pool=pool)


def magnitude(spectrum: ArrayLike, *, out: Optional[Array] = None, pool: Optional[Pool] = None) -> Array:
    """Absolute values of a complex picture, complex64 or complex128.

    >>> dax.magnitude(np.array([[3 + 4j, -2]], np.complex64))
    array([[5., 2.]], dtype=float32)
    """
    return _number_by_number("Magnitude", spectrum, out, pool)


def phase(spectrum: ArrayLike, *, out: Optional[Array] = None, pool: Optional[Pool] = None) -> Array:
    """Angles of a complex picture, in -pi..pi.

    >>> dax.phase(np.array([[1, 1j]], np.complex128)).round(4)
    array([[0.    , 1.5708]])
    """
    return _number_by_number("Phase", spectrum, out, pool)


def log_spectrum(spectrum: ArrayLike, *, out: Optional[Array] = None, pool: Optional[Pool] = None) -> Array:
    """ln(1 + |F|) of a complex picture, for pictures of spectra.

    >>> dax.log_spectrum(np.array([[0, 1000j]], np.complex64)).round(3)
    array([[0.   , 6.909]], dtype=float32)
    """
    return _number_by_number("LogSpectrum", spectrum, out, pool)


def multiply_spectra(
    first: ArrayLike,
    second: ArrayLike,
    *,
    conjugate: bool = False,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The product of two complex pictures of one type; conjugate: of the first and the conjugate second one.

    >>> dax.multiply_spectra(np.array([[1j]]), np.array([[2 + 1j]]), conjugate=True)
    array([[1.+2.j]])
    """
    function = "DAXI_MulConjSpectrum_{type}_C1R" if conjugate else "DAXI_MulSpectrum_{type}_C1R"
    images = {"first": first, "second": second}
    return apply(function, images, types="32fc 64fc", out=out, in_place=True, pooled=function + "_MT", pool=pool)


def shift_quadrants(
    image: ArrayLike, *, back: bool = False, out: Optional[Array] = None, pool: Optional[Pool] = None
) -> Array:
    """Moves frequency 0 from the corner of a spectrum to the middle, row height // 2, column width // 2; back: from
    there to the corner. uint8, float32, float64 or complex.

    >>> dax.shift_quadrants(np.array([[0, 1, 2, -2, -1]], np.float32))
    array([[-2., -1.,  0.,  1.,  2.]], dtype=float32)
    """
    function = "DAXI_ShiftQuadrants_{type}_C1R"
    types = "8u 32f 64f 32fc 64fc"
    return apply(function, {"image": image}, int(back), types=types, out=out, pooled=function + "_MT", pool=pool)


def spectrum_notch(
    spectrum: ArrayLike,
    notches: Sequence[tuple[float, float, float]],
    *,
    width: Optional[int] = None,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """Takes places out of a spectrum, and those opposite: times 1 - exp(-d^2 / 2 sigma^2) for each.

    notches: (u, v, sigma), columns and rows from frequency 0, which may be negative; frequency 0 itself stays. width:
    that of the picture where the spectrum is one of dft_real. `out` may be the spectrum.

    >>> dax.spectrum_notch(np.ones((1, 8), np.complex64), [(2, 0, 0.1)]).real
    array([[1., 1., 0., 1., 1., 1., 0., 1.]], dtype=float32)
    """
    src = source("spectrum", spectrum, _COMPLEX)
    dst = target("out", out, src.array.shape, src.array.dtype)
    refuse_overlap(("spectrum", src), ("out", dst), in_place=True)
    places = ffi.new("DaxiNotch[]", [{"u": u, "v": v, "sigma": sigma} for u, v, sigma in notches])
    work = buffer("DAXI_SpectrumNotchBufferSize", src.size, len(places))
    columns = src.size["width"] if width is None else width
    arguments = (src.pointer, src.step, dst.pointer, dst.step, src.size, columns, places, len(places), work)
    _call(f"DAXI_SpectrumNotch_{src.suffix}_C1R", pool, *arguments)
    return dst.array


def spectrum_band(
    spectrum: ArrayLike,
    centre: float = 0,
    sigma: float = 0.05,
    *,
    keep: bool = True,
    width: Optional[int] = None,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """Keeps the frequencies about `centre`, in periods a pixel, or takes them away: a Gaussian of that sigma. With
    centre 0 a low pass, or a high pass; frequency 0 always stays. width, out: as of spectrum_notch.

    >>> dax.spectrum_band(np.ones((1, 4), np.complex64), 0.25, 0.01, keep=False).real
    array([[1., 0., 1., 0.]], dtype=float32)
    """
    src = source("spectrum", spectrum, _COMPLEX)
    dst = target("out", out, src.array.shape, src.array.dtype)
    refuse_overlap(("spectrum", src), ("out", dst), in_place=True)
    cfg = ffi.new("DaxiBandCfg*")
    call("DAXI_BandDefaultCfg", cfg)
    cfg.centre, cfg.sigma, cfg.keep = centre, sigma, int(keep)
    columns = src.size["width"] if width is None else width
    arguments = (src.pointer, src.step, dst.pointer, dst.step, src.size, columns, cfg)
    _call(f"DAXI_SpectrumBand_{src.suffix}_C1R", pool, *arguments)
    return dst.array


def _window_cfg(kind: Window, symmetric: bool, alpha: float) -> Any:
    cfg = ffi.new("DaxiWindowCfg*")
    call("DAXI_WindowDefaultCfg", cfg)
    cfg.kind, cfg.symmetric, cfg.alpha = choice("kind", kind, _WINDOWS), int(symmetric), alpha
    return cfg


def window(
    count: int, kind: Window = "hann", *, symmetric: bool = False, alpha: float = 0.5, dtype: Any = np.float64
) -> Array:
    """`count` weights of a window: periodic, as transforms want them, or symmetric. alpha: of tukey, the share of the
    flanks. dtype: float32 or float64.

    >>> dax.window(4)
    array([0. , 0.5, 1. , 0.5])
    """
    weights = target("weights", None, (1, max(int(count), 1)), dtype)
    if weights.array.dtype not in _REALS:
        raise TypeError(f"dtype: {weights.array.dtype}, possible are float32 and float64")
    call(f"DAXI_Window_{weights.suffix}", count, _window_cfg(kind, symmetric, alpha), weights.pointer)
    row: Array = weights.array[0]
    return row


def apply_window(
    image: ArrayLike,
    kind: Window = "hann",
    *,
    symmetric: bool = False,
    alpha: float = 0.5,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """An image times the weights of its columns and of its rows: uint8, uint16 and float32 to float32, or float64.

    >>> dax.apply_window(np.full((4, 4), 100, np.uint8))[2]
    array([  0.,  50., 100.,  50.], dtype=float32)
    """
    function = "DAXI_ApplyWindow_{type}_C1R"
    form: dict[str, Any] = {"work": "DAXI_ApplyWindowBufferSize_{type}", "pooled": function + "_MT", "pool": pool}
    cfg = _window_cfg(kind, symmetric, alpha)
    return apply(function, {"image": image}, cfg, types="8u32f 16u32f 32f 64f", out=out, **form)


def _by_transforms(
    name: str, image: ArrayLike, kernel: ArrayLike, part: Part, out: Optional[Array], pool: Optional[Pool]
) -> Array:
    src = source("image", image, _REALS)
    weights = source("kernel", kernel, (src.array.dtype,))
    which, size = choice("part", part, _PARTS), ffi.new("DaxiSize*")
    call("DAXI_ConvolveDftSize", src.size, weights.size, which, size)
    dst = target("out", out, (size.height, size.width), src.array.dtype)
    refuse_overlap(("image", src), ("kernel", weights), ("out", dst))
    work = buffer(f"DAXI_ConvolveDftBufferSize_{src.suffix}", src.size, weights.size)
    sources = (src.pointer, src.step, src.size, weights.pointer, weights.step, weights.size)
    _call(f"DAXI_{name}_{src.suffix}_C1R", pool, *sources, dst.pointer, dst.step, which, work)
    return dst.array


def convolve_dft(
    image: ArrayLike,
    kernel: ArrayLike,
    part: Part = "full",
    *,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The convolution of an image and a kernel of any size, zeros outside, by transforms; float32 or float64, both of
    one type. part: all of it, what has the image's shape, or what needs nothing from outside.

    >>> dax.convolve_dft(np.array([[1, 2, 3]], np.float64), np.array([[1, 10]], np.float64)).round(9)
    array([[ 1., 12., 23., 30.]])
    """
    return _by_transforms("ConvolveDft", image, kernel, part, out, pool)


def correlate_dft(
    image: ArrayLike,
    kernel: ArrayLike,
    part: Part = "full",
    *,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The correlation of an image with a kernel of any size, as of convolve_dft.

    >>> dax.correlate_dft(np.array([[1, 2, 3]], np.float64), np.array([[1, 10]], np.float64), "valid").round(9)
    array([[21., 32.]])
    """
    return _by_transforms("CorrelateDft", image, kernel, part, out, pool)

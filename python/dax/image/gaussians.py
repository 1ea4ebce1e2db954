"""Gaussian smoothing and what is made of it."""
from typing import Any, Optional

from numpy.typing import ArrayLike

from .._arrays import Array, Window, as_size, choice
from .._filters import FILTER_BORDERS, FilterMode
from .._interface import ffi
from .._library import call
from .._operation import apply
from ..pool import Pool

__all__ = ["gauss", "gauss_recursive", "laplacian_of_gaussian", "unsharp"]


def _cfg(record: str, sigma: float, size: Optional[Window], mode: FilterMode, value: float) -> Any:
    cfg = ffi.new(f"Daxi{record}Cfg*")
    call(f"DAXI_{record}DefaultCfg", cfg)
    cfg.sigma = sigma
    if size is not None:
        cfg.size = as_size(size)
    cfg.border, cfg.value = choice("mode", mode, FILTER_BORDERS), value
    return cfg


def _apply(
    operation: str, image: ArrayLike, cfg: Any, types: str, out: Optional[Array], pool: Optional[Pool]
) -> Array:
    name = f"DAXI_{operation}_{{type}}_{{layout}}R"
    form: dict[str, Any] = {"work": f"DAXI_{operation}BufferSize_{{type}}", "measures": (cfg,), "pooled": name + "_MT"}
    return apply(name, {"image": image}, cfg, types=types, out=out, pool=pool, **form)


def gauss(
    image: ArrayLike,
    sigma: float = 1,
    size: Optional[Window] = None,
    *,
    mode: FilterMode = "replicate",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """Gaussian smoothing, within 0.51 levels of the real-valued filter, the same bits on every machine.

    image: (height, width) uint8, uint16, int16 or float32. sigma: pixels, 0.3 to 100. size: of the kernel, odd, pixels
    each way or (width, height), up to 801; None: 2 ceil(4 sigma) + 1. mode: what lies outside the image; value: of mode
    constant. pool: threads.

    >>> dax.gauss(np.array([[0, 0, 0, 200, 0, 0, 0]], np.uint8), 1)
    array([[ 1, 11, 48, 80, 48, 11,  1]], dtype=uint8)
    """
    return _apply("FilterGauss", image, _cfg("Gauss", sigma, size, mode, value), "8u 16u 16s 32f", out, pool)


def gauss_recursive(
    image: ArrayLike,
    sigma: float = 10,
    *,
    mode: FilterMode = "replicate",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """Gaussian smoothing at a cost that hardly depends on sigma, within 1e-3 of the range of the pixels.

    image: (height, width) uint8, uint16 or float32. sigma: pixels, 2 to 100. The rest as of gauss.

    >>> dax.gauss_recursive(np.full((2, 3), 7, np.uint8), 50)
    array([[7, 7, 7],
           [7, 7, 7]], dtype=uint8)
    """
    cfg = _cfg("GaussRecursive", sigma, None, mode, value)
    return _apply("FilterGaussRecursive", image, cfg, "8u 16u 32f", out, pool)


def laplacian_of_gaussian(
    image: ArrayLike,
    sigma: float = 1,
    size: Optional[Window] = None,
    *,
    mode: FilterMode = "replicate",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The second derivative of the smoothed image: negative at bright blobs, positive at dark ones of a radius of about
    1.4 sigma.

    image: (height, width) uint8, uint16 or float32; the result is float32. The rest as of gauss.

    >>> dax.laplacian_of_gaussian(np.array([[0, 0, 0, 100, 0, 0, 0]], np.uint8), 1, (7, 1)).round()
    array([[  4.,  16.,   0., -40.,   0.,  16.,   4.]], dtype=float32)
    """
    return _apply("LoG", image, _cfg("Gauss", sigma, size, mode, value), "8u32f 16u32f 32f", out, pool)


def unsharp(
    image: ArrayLike,
    sigma: float = 1,
    amount: float = 1,
    threshold: float = 0,
    size: Optional[Window] = None,
    *,
    mode: FilterMode = "replicate",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """Unsharp masking: what a Gaussian takes away is added, `amount` times, where it exceeds the threshold.

    image: (height, width) uint8, uint16 or float32. amount: -1 to 100. threshold: grey levels. The rest as of gauss.

    >>> dax.unsharp(np.array([[50, 50, 50, 90, 90, 90]], np.uint8), 1)
    array([[ 50,  48,  38, 102,  92,  90]], dtype=uint8)
    """
    cfg = _cfg("Unsharp", sigma, size, mode, value)
    cfg.amount, cfg.threshold = amount, threshold
    return _apply("Unsharp", image, cfg, "8u 16u 32f", out, pool)

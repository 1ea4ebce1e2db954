"""Derivatives of images, and edges."""
from typing import Any, Literal, NamedTuple, Optional

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import BYTES, Array, choice, refuse_overlap, source, target
from .._filters import FILTER_BORDERS, FilterMode
from .._interface import ffi
from .._library import buffer, call
from .._operation import apply
from ..pool import Pool, handle_of

__all__ = ["GradientImages", "canny", "gradient", "gradient_mag_dir", "laplace"]

Kernel = Literal["sobel", "prewitt", "scharr"]
_KERNELS = {"sobel": 0, "prewitt": 1, "scharr": 2}
_NORMS = {"l1": 0, "l2": 1}


def _derivative(
    operation: str,
    image: ArrayLike,
    window: int,
    mode: FilterMode,
    value: float,
    out: Optional[Array],
    pool: Optional[Pool],
) -> Array:
    name = f"DAXI_{operation}_{{type}}_{{layout}}R"
    border = choice("mode", mode, FILTER_BORDERS)
    form: dict[str, Any] = {"types": "8u16s 16u32f 32f", "out": out, "pooled": name + "_MT", "pool": pool}
    return apply(name, {"image": image}, window, border, value, **form)


def gradient(
    image: ArrayLike,
    axis: Literal["x", "y"],
    kernel: Kernel = "sobel",
    aperture: int = 3,
    *,
    mode: FilterMode = "replicate",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The derivative along an axis, positive where the image grows brighter along it; not normalised.

    image: (height, width) uint8, giving int16, or uint16 or float32, giving float32. aperture: of the window, 3 or 5;
    "scharr" with 5, which is normalised, has no int16. mode: what lies outside the image; value: of mode constant.
    pool: threads.

    >>> dax.gradient(np.array([[0, 0, 10, 10]], np.uint8), "x")
    array([[ 0, 40, 40,  0]], dtype=int16)
    """
    operation = choice("kernel", kernel, {"sobel": "Sobel", "prewitt": "Prewitt", "scharr": "Scharr"})
    operation += choice("axis", axis, {"x": "X", "y": "Y"})
    return _derivative(operation, image, aperture, mode, value, out, pool)


def laplace(
    image: ArrayLike,
    neighbours: int = 4,
    *,
    mode: FilterMode = "replicate",
    value: float = 0,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """The sum of the 4 or 8 neighbours, less as many times the pixel. Arguments as of gradient.

    >>> dax.laplace(np.array([[0, 0, 10, 0]], np.uint8))
    array([[  0,  10, -20,  10]], dtype=int16)
    """
    return _derivative("Laplace", image, neighbours, mode, value, out, pool)


class GradientImages(NamedTuple):
    """Length of the gradient, and its direction in radians, from x towards y; 0 where there is none."""

    magnitude: Array
    direction: Array


def gradient_mag_dir(
    image: ArrayLike,
    kernel: Kernel = "sobel",
    aperture: int = 3,
    *,
    mode: FilterMode = "replicate",
    value: float = 0,
    pool: Optional[Pool] = None,
) -> GradientImages:
    """Magnitude and direction of the gradient, float32, in one pass. Arguments as of gradient.

    >>> dax.gradient_mag_dir(np.array([[0, 0], [10, 10]], np.uint8)).direction.round(2)
    array([[1.57, 1.57],
           [1.57, 1.57]], dtype=float32)
    """
    one = source("image", image, tuple(np.dtype(each) for each in (np.uint8, np.uint16, np.float32)))
    results = [target("out", None, one.array.shape, np.float32) for _ in range(2)]
    arguments = [one.pointer, one.step]
    for result in results:
        arguments += [result.pointer, result.step]
    arguments += [one.size, choice("kernel", kernel, _KERNELS), aperture, choice("mode", mode, FILTER_BORDERS), value]
    suffix = one.suffix if one.suffix == "32f" else one.suffix + "32f"
    name = f"DAXI_GradientMagDir_{suffix}_C1R"
    if pool is not None:
        threads, handle = handle_of(pool)
        name, arguments = name + "_MT", [handle, threads, *arguments]
    call(name, *arguments)
    return GradientImages(*(result.array for result in results))


def canny(
    image: ArrayLike,
    low: float = 50,
    high: float = 100,
    sigma: float = 1,
    *,
    norm: Literal["l1", "l2"] = "l1",
    aperture: int = 3,
    out: Optional[Array] = None,
    pool: Optional[Pool] = None,
) -> Array:
    """Edges by Canny's method, 255 on 0.

    image: (height, width) uint8. low, high: magnitudes of Sobel's gradient, not normalised: of weak edges, which count
    where they are joined with strong ones. sigma: of the smoothing before, 0.3 to 100, or 0. norm: |gx| + |gy|, or the
    length. aperture: of the gradient, 3 or 5. pool: threads.

    >>> dax.canny(np.array([[0, 0, 0, 90, 90, 90]] * 3, np.uint8), sigma=0)[1]
    array([  0,   0, 255,   0,   0,   0], dtype=uint8)
    """
    cfg = ffi.new("DaxiCannyCfg*")
    call("DAXI_CannyDefaultCfg", cfg)
    cfg.low, cfg.high, cfg.sigma = low, high, sigma
    cfg.norm, cfg.aperture = choice("norm", norm, _NORMS), aperture
    one = source("image", image, BYTES)
    result = target("out", out, one.array.shape, np.uint8)
    refuse_overlap(("image", one), ("out", result))
    arguments = [one.pointer, one.step, result.pointer, result.step, one.size, cfg]
    arguments.append(buffer("DAXI_CannyBufferSize_8u", one.size, cfg))
    name = "DAXI_Canny_8u_C1R"
    if pool is not None:
        threads, handle = handle_of(pool)
        name, arguments = name + "_MT", [handle, threads, *arguments]
    call(name, *arguments)
    return result.array

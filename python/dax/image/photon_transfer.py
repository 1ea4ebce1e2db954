"""Photon transfer: the gain and the noise of a camera."""
from typing import NamedTuple, Optional, Sequence, Union

from numpy.typing import ArrayLike

from .._arrays import warn
from .._interface import ffi
from .._library import call
from .noise import limits_of, stack_of

__all__ = ["FrameNoise", "PhotonTransfer", "frame_noise", "photon_transfer"]

_WARNINGS = {
    1: "the noise in the dark is less than that of rounding: the read noise is at most what is told",
    2: "over 0.5 % of the dark pixels are black: the black level of the camera is too low",
    4: "no point is beyond the largest variance: saturation is at least what is told",
}


class FrameNoise(NamedTuple):
    """Of frames of one scene and one exposure: mean, variance over time, shares of pixels at the limits."""

    mean: float
    variance: float
    black: float = 0.0
    white: float = 0.0


class PhotonTransfer(NamedTuple):
    """What a curve tells, as EMVA 1288 defines it. gain: grey levels per electron, with its standard error. read_noise,
    full_well: electrons. dark_level, saturation: grey levels, saturation above the dark. dynamic_range: a ratio.
    responsivity, offset: the line of grey levels over exposures; linearity_error: the mean deviation from it in per
    cent, linearity_span half of what lies between the largest and the least; None without three exposures. saturated:
    the number of the point of saturation."""

    gain: float
    gain_error: float
    read_noise: float
    dark_level: float
    saturation: float
    full_well: float
    dynamic_range: float
    max_snr: float
    responsivity: Optional[float]
    offset: Optional[float]
    linearity_error: Optional[float]
    linearity_span: Optional[float]
    saturated: int


def frame_noise(
    frames: Sequence[ArrayLike], *, low: Optional[float] = None, high: Optional[float] = None
) -> FrameNoise:
    """Mean and variance over time of frames of one scene.

    frames: 2 to 1024 images of one shape, uint8, uint16, int16 or float32. A light that flickers is no noise. low,
    high: the ends of what the camera tells, by default of the type; for 12 bits in uint16 give high=4095.

    >>> dax.frame_noise([np.uint8([[1, 4]]), np.uint8([[3, 2]])])
    FrameNoise(mean=2.5, variance=2.0, black=0.0, white=0.0)
    """
    stack = stack_of(frames)
    src, noise = stack[0], ffi.new("DaxiFrameNoise*")
    pointers = ffi.new(f"{src.ctype}*[]", [each.pointer for each in stack])
    limits = limits_of(src, low, high)
    call(f"DAXI_FrameNoise_{src.suffix}_C1R", pointers, len(stack), src.step, src.size, *limits, noise)
    return FrameNoise(noise.mean, noise.variance, noise.black, noise.white)


def photon_transfer(
    bright: Sequence[FrameNoise],
    dark: Union[FrameNoise, Sequence[FrameNoise]],
    exposures: Optional[Sequence[float]] = None,
    *,
    quantisation: float = 1 / 12,
) -> PhotonTransfer:
    """Gain, read noise, saturation and linearity of a camera from how its noise grows with light.

    bright: what frame_noise() says of an evenly lit plane at each of several exposures up to saturation, at least 5 of
    them below 70 % of it. dark: the same without light, once or for each exposure time. exposures: proportional to the
    light, for the linearity. quantisation: the variance of rounding; 0 for images of floats that were never rounded.

    >>> curve = [dax.FrameNoise(10 + x, 4 + 0.5 * x) for x in range(100, 1100, 100)]
    >>> round(dax.photon_transfer([*curve, dax.FrameNoise(1090, 3)], dax.FrameNoise(10, 4)).gain, 6)
    0.5
    """
    darks = [dark] * len(bright) if isinstance(dark, FrameNoise) else list(dark)
    given = [0.0] * len(bright) if exposures is None else list(exposures)
    for name, count in (("dark", len(darks)), ("exposures", len(given))):
        if count != len(bright):
            raise ValueError(f"{name}: {count}, needed are {len(bright)}, one for each of bright")
    points = ffi.new("DaxiPhotonTransferPoint[]", max(len(bright), 1))
    for point, exposure, light, black in zip(points, given, bright, darks):
        point.exposure = exposure
        point.bright, point.dark = light._asdict(), black._asdict()
    found = ffi.new("DaxiPhotonTransfer*")
    call("DAXI_PhotonTransfer", points, len(bright), quantisation, found)
    for flag, text in _WARNINGS.items():
        if found.flags & flag:
            warn(text)
    has_line = not found.flags & 8
    return PhotonTransfer(
        found.gain,
        found.gainError,
        found.readNoise,
        found.darkLevel,
        found.saturation,
        found.fullWell,
        found.dynamicRange,
        found.maxSnr,
        found.responsivity if has_line else None,
        found.offset if has_line else None,
        found.linearityError if has_line else None,
        found.linearitySpan if has_line else None,
        found.saturated,
    )

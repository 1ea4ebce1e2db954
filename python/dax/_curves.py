"""What dax.equations returns, and how it calls the library."""
from typing import Any, Callable, NamedTuple, Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._arrays import Array, numbers, pointer
from ._interface import ffi
from ._library import buffer, call, function, text
from .errors import Error

Doubles = NDArray[np.float64]
_RAISED = 1  # status of a callback that raised an exception


class RealRoots(NamedTuple):
    """Different roots, ascending, how often each counts, and how many lie beyond the range of doubles."""

    x: Doubles
    multiplicity: NDArray[np.int32]
    at_infinity: int


class Roots(NamedTuple):
    """All roots, real ones without imaginary part; within the radius of each lies an exact one."""

    z: NDArray[np.complex128]
    radius: Doubles
    at_infinity: int


class Found(NamedTuple):
    """A place, and the function's value there."""

    x: float
    value: float


class Curve:
    """A piecewise cubic: called with places, it gives values, or derivatives of an order up to 3. slopes: those at the
    knots x."""

    def __init__(self, x: Doubles, y: Doubles, slopes: Doubles) -> None:
        self.x, self.y, self.slopes = x, y, slopes

    def __call__(self, at: ArrayLike, derivative: int = 0) -> Array:
        places, values = places_of(at)
        arrays = [doubles(each) for each in (self.x, self.y, self.slopes)]
        call("PRMT_EQ_Interpolate1_f64", *arrays, len(self.x), doubles(places), places.size, derivative,
             doubles(values))
        return values[()]


class Surface:
    """A piecewise bicubic: called with places, whose shapes are broadcast, it gives values, or derivatives of orders up
    to 3. derivatives[j, i]: those by x, by y and by both at (x[i], y[j])."""

    def __init__(self, x: Doubles, y: Doubles, z: Doubles, derivatives: Doubles) -> None:
        self.x, self.y, self.z, self.derivatives = x, y, z, derivatives

    def __call__(self, at_x: ArrayLike, at_y: ArrayLike, x_order: int = 0, y_order: int = 0) -> Array:
        wide, high = np.broadcast_arrays(at_x, at_y)
        (across, values), (along, _) = places_of(wide), places_of(high)
        call("PRMT_EQ_Interpolate2_f64", *grid_of(self.x, self.y, self.z), doubles(self.derivatives), doubles(across),
             doubles(along), across.size, x_order, y_order, doubles(values))
        return values[()]


class Polynomial:
    """A polynomial in powers of (x - centre) / half_width, ascending: called with places, it gives values, or
    derivatives of an order up to 3. rms: root of the weighted mean of the squared differences."""

    def __init__(self, coefficients: Doubles, centre: float = 0, half_width: float = 1, rms: float = 0) -> None:
        self.coefficients, self.centre, self.half_width, self.rms = coefficients, centre, half_width, rms

    def __call__(self, at: ArrayLike, derivative: int = 0) -> Array:
        places, values = places_of(at)
        where = ffi.new("PrmtRange*", (self.centre, self.half_width))
        call("PRMT_EQ_PolyValue_f64", doubles(self.coefficients), len(self.coefficients) - 1, where, doubles(places),
             places.size, derivative, doubles(values))
        return values[()]


class BSpline:
    """A B-spline over the pieces between breaks: called with places, it gives values, or derivatives of an order up to
    3. rms: root of the weighted mean of the squared differences."""

    def __init__(self, breaks: Doubles, coefficients: Doubles, degree: int, rms: float) -> None:
        self.breaks, self.coefficients, self.degree, self.rms = breaks, coefficients, degree, rms

    def __call__(self, at: ArrayLike, derivative: int = 0) -> Array:
        places, values = places_of(at)
        call("PRMT_EQ_BSplineValue_f64", doubles(self.breaks), len(self.breaks), self.degree,
             doubles(self.coefficients), doubles(places), places.size, derivative, doubles(values))
        return values[()]


def doubles(array: Array) -> Any:
    return pointer(array, "double")


def places_of(at: ArrayLike) -> tuple[Doubles, Doubles]:
    """Places of any shape as packed numbers, and room for as many values."""
    places = np.asarray(at)
    flat = numbers("at", places.reshape(-1), (None,), np.float64)
    return flat.reshape(places.shape), np.empty(places.shape)


def same_length(**given: ArrayLike) -> tuple[Doubles, ...]:
    """Vectors of one length."""
    vectors = tuple(numbers(name, each, (None,), np.float64) for name, each in given.items())
    for name, each in zip(given, vectors):
        if len(each) != len(vectors[0]):
            raise ValueError(f"{name}: {len(each)} numbers, needed are {len(vectors[0])}")
    return vectors


def points_of(x: ArrayLike, y: ArrayLike, weights: Optional[ArrayLike]) -> tuple[Doubles, Doubles, Optional[Doubles]]:
    """The points of a fit."""
    if weights is None:
        return (*same_length(x=x, y=y), None)  # type: ignore[return-value]
    return same_length(x=x, y=y, weights=weights)  # type: ignore[return-value]


def grid_of(x: Doubles, y: Doubles, z: Doubles) -> list[Any]:
    return [doubles(x), len(x), doubles(y), len(y), doubles(z), z.shape[1]]


def made(name: str, sizes: list[int], *arguments: Any) -> None:
    """A call with the buffer that its query tells."""
    call(f"PRMT_EQ_{name}_f64", *arguments, buffer(f"PRMT_EQ_{name}_BufferSize_f64", *sizes))


def search(name: str, f: Callable[[float], float], ends: tuple[float, float], *settings: Any) -> Found:
    """A search with a function of the user's; an exception in it ends the search and comes out of it."""
    raised: list[BaseException] = []

    def apply(x: float, user: Any, value: Any) -> int:
        value[0] = float(f(x))
        return 0

    def keep(kind: Any, error: BaseException, trace: Any) -> None:
        raised.append(error.with_traceback(trace))

    callback = ffi.callback("PrmtScalarFunction", apply, error=_RAISED, onerror=keep)
    x, value = ffi.new("double*"), ffi.new("double*")
    status = function(name)(*map(float, ends), callback, ffi.NULL, *settings, x, value)
    if raised:
        raise raised[0]
    if status:
        raise Error(name, status, text(status))
    return Found(x[0], value[0])

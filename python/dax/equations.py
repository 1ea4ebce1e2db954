"""Roots of polynomials and functions, minima, interpolation and curves through points.

Polynomials are coefficients of ascending powers, as in numpy.polynomial. All is computed in double precision, and the
results are the same bits on every machine. What has no answer raises dax.Error, and so do NaN and infinity.
"""
from typing import Callable, Literal, Optional

import numpy as np
from numpy.typing import ArrayLike

from ._arrays import choice, numbers
from ._curves import (
    BSpline,
    Curve,
    Doubles,
    Found,
    Polynomial,
    RealRoots,
    Roots,
    Surface,
    doubles,
    grid_of,
    made,
    points_of,
    same_length,
    search,
)
from ._interface import ffi
from ._library import call

NAMESPACE = True
__all__ = [
    "BSpline",
    "Curve",
    "Found",
    "Polynomial",
    "RealRoots",
    "Roots",
    "Surface",
    "akima",
    "akima_surface",
    "find_minimum",
    "find_root",
    "fit_bspline",
    "fit_polynomial",
    "real_roots",
    "roots",
    "spline",
    "spline_surface",
]

Ends = Literal["not-a-knot", "natural", "clamped", "periodic"]
_CONDITIONS = {"not-a-knot": 0, "natural": 1, "clamped": 2, "periodic": 3}


def real_roots(coefficients: ArrayLike) -> RealRoots:
    """The real roots of a polynomial up to the fourth degree, with their multiplicities.

    >>> dax.equations.real_roots([6, -17, 17, -7, 1])  # (x - 1)^2 (x - 2) (x - 3)
    RealRoots(x=array([1., 2., 3.]), multiplicity=array([2, 1, 1], dtype=int32), at_infinity=0)
    """
    given = numbers("coefficients", coefficients, (None,), np.float64)
    if not 1 <= len(given) <= 5:
        raise ValueError(f"coefficients: {len(given)}, possible are 1..5; roots() takes more")
    count = max(len(given), 3)
    padded = np.zeros(count)
    padded[: len(given)] = given
    result = ffi.new("PrmtRealRoots*")
    call(f"PRMT_EQ_{('Quadratic', 'Cubic', 'Quartic')[count - 3]}_f64", doubles(padded), result)
    x, multiplicity = np.array(list(result.root)), np.array(list(result.multiplicity), np.int32)
    return RealRoots(x[: result.count], multiplicity[: result.count], int(result.atInfinity))


def roots(coefficients: ArrayLike) -> Roots:
    """All roots of a polynomial, of any degree up to 512; multiple ones as often as they count.

    >>> dax.equations.roots([-1, 0, 0, 0, 1]).z.round(12)
    array([-1.+0.j,  0.+1.j,  0.-1.j,  1.+0.j])
    """
    given = numbers("coefficients", coefficients, (None,), np.float64)
    if not 1 <= len(given) <= 513:
        raise ValueError(f"coefficients: {len(given)}, possible are 1..513")
    padded = np.append(given, np.zeros(max(2 - len(given), 0)))
    degree = len(padded) - 1
    real, imaginary, radius = np.empty((3, degree))
    counts = ffi.new("int32_t[2]")
    made("Roots", [degree], doubles(padded), degree, doubles(real), doubles(imaginary), doubles(radius), counts,
         counts + 1)
    return Roots((real + 1j * imaginary)[: counts[0]], radius[: counts[0]], int(counts[1]))


def find_root(
    f: Callable[[float], float], a: float, b: float, *, tolerance: float = 0.0, max_iterations: int = 1000
) -> Found:
    """A root of a function between a and b, where it has different signs, by Brent's method.

    >>> round(dax.equations.find_root(lambda x: x**3 - 8, 0, 5).x, 12)
    2.0
    """
    return search("PRMT_EQ_BrentRoot_f64", f, (a, b), tolerance, max_iterations)


def find_minimum(
    f: Callable[[float], float], a: float, b: float, *, tolerance: float = 1e-9, max_iterations: int = 1000
) -> Found:
    """A local minimum of a function between a and b, by Brent's method; to about half the digits.

    >>> round(dax.equations.find_minimum(lambda x: (x - 2) ** 2 + 1, 0, 5).x, 6)
    2.0
    """
    return search("PRMT_EQ_BrentMin_f64", f, (a, b), tolerance, max_iterations)


def spline(x: ArrayLike, y: ArrayLike, ends: Ends = "not-a-knot", slopes: tuple[float, float] = (0, 0)) -> Curve:
    """The cubic spline through points with ascending x; slopes: those of clamped ends.

    >>> dax.equations.spline([0, 1, 2, 3], [0, 1, 8, 27])(1.5).round(12)
    3.375
    """
    x, y = same_length(x=x, y=y)
    made_slopes = np.empty(len(x))
    made("Spline1", [len(x)], doubles(x), doubles(y), len(x), _record(ends, slopes), doubles(made_slopes))
    return Curve(x, y, made_slopes)


def akima(x: ArrayLike, y: ArrayLike) -> Curve:
    """Akima's curve through points with ascending x: less smooth than a spline, but it does not swing at steps.

    >>> dax.equations.akima([0, 1, 2, 3, 4, 5], [0, 0, 0, 1, 1, 1])(0.5)
    0.0
    """
    x, y = same_length(x=x, y=y)
    slopes = np.empty(len(x))
    made("Akima1", [len(x)], doubles(x), doubles(y), len(x), doubles(slopes))
    return Curve(x, y, slopes)


def spline_surface(
    x: ArrayLike, y: ArrayLike, z: ArrayLike, x_ends: Ends = "not-a-knot", y_ends: Ends = "not-a-knot"
) -> Surface:
    """The bicubic spline through values z[j, i] at (x[i], y[j]). Clamped: level at the borders.

    >>> x, y = np.arange(4.0), np.arange(5.0)
    >>> dax.equations.spline_surface(x, y, x * y[:, None])(1.5, 2.5)
    3.75
    """
    x, y, z = _grid(x, y, z)
    derivatives = np.empty((*z.shape, 3))
    both = _record(x_ends, (0, 0)), _record(y_ends, (0, 0))
    made("Spline2", [len(x), len(y)], *grid_of(x, y, z), *both, doubles(derivatives))
    return Surface(x, y, z, derivatives)


def akima_surface(x: ArrayLike, y: ArrayLike, z: ArrayLike) -> Surface:
    """Akima's surface through values z[j, i] at (x[i], y[j]).

    >>> x, y = np.arange(4.0), np.arange(5.0)
    >>> dax.equations.akima_surface(x, y, x + y[:, None])(1.5, 2.5)
    4.0
    """
    x, y, z = _grid(x, y, z)
    derivatives = np.empty((*z.shape, 3))
    made("Akima2", [len(x), len(y)], *grid_of(x, y, z), doubles(derivatives))
    return Surface(x, y, z, derivatives)


def fit_polynomial(x: ArrayLike, y: ArrayLike, degree: int, weights: Optional[ArrayLike] = None) -> Polynomial:
    """The polynomial of a degree up to 20 with the smallest sum of weights * (p(x) - y)^2.

    >>> dax.equations.fit_polynomial([0, 1, 2], [1, 0, 3], 2)(3).round(12)
    10.0
    """
    x, y, factors = points_of(x, y, weights)
    coefficients, where, rms = np.empty(max(degree, 0) + 1), ffi.new("PrmtRange*"), ffi.new("double*")
    made("PolyFit", [len(x), degree], doubles(x), doubles(y), _weights(factors), len(x), degree,
         doubles(coefficients), where, rms)
    return Polynomial(coefficients, where.centre, where.halfWidth, rms[0])


def fit_bspline(
    x: ArrayLike, y: ArrayLike, breaks: ArrayLike, degree: int = 3, weights: Optional[ArrayLike] = None
) -> BSpline:
    """The spline of a degree 1..5 over the pieces between ascending breaks with the smallest sum of
    weights * (s(x) - y)^2. Points lie between the first break and the last.

    >>> x = np.linspace(0, 4, 30)
    >>> dax.equations.fit_bspline(x, np.maximum(x - 2, 0), [0, 2, 4], degree=1)([1, 3]).round(12) + 0
    array([0., 1.])
    """
    x, y, factors = points_of(x, y, weights)
    knots = numbers("breaks", breaks, (None,), np.float64)
    coefficients, rms = np.empty(max(len(knots) - 1 + degree, 1)), ffi.new("double*")
    made("BSplineFit", [len(knots), degree], doubles(x), doubles(y), _weights(factors), len(x), doubles(knots),
         len(knots), degree, doubles(coefficients), rms)
    return BSpline(knots, coefficients, degree, rms[0])


def _record(ends: str, slopes: tuple[float, float]) -> object:
    return ffi.new("PrmtSplineEnds*", (choice("ends", ends, _CONDITIONS), *slopes))


def _weights(weights: Optional[Doubles]) -> object:
    return ffi.NULL if weights is None else doubles(weights)


def _grid(x: ArrayLike, y: ArrayLike, z: ArrayLike) -> tuple[Doubles, Doubles, Doubles]:
    across, along = numbers("x", x, (None,), np.float64), numbers("y", y, (None,), np.float64)
    return across, along, numbers("z", z, (len(along), len(across)), np.float64)

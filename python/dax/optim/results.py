"""What solvers are told, and what they give back."""
import dataclasses
import functools
from typing import Any, Callable, Literal, NamedTuple, Optional

import numpy as np
from numpy.typing import NDArray

from .._arrays import warn
from .._interface import ffi

__all__ = ["Minimum", "Settings", "Solution"]

Vector = NDArray[np.float64]
DENSE_PARAMETERS, DENSE_ELEMENTS = 500, 10**7  # of a Jacobian of which the normal matrix is formed as a whole
Reason = Literal["energy", "step", "limit"]
_ACCEPTED_RISE = 2.220446049250313e-16  # of the energy, as in the solvers
_SLOW = 1e-3  # share by which a step from a minimum may still change energy or parameters


@dataclasses.dataclass(frozen=True)
class Settings:
    """When solvers end, and their damping.

    The search ends when a step is shorter than step_tolerance, when the energy changes by less than energy_tolerance,
    or after max_iterations. Damping starts at initial_damping; a step that was accepted divides it by damping_factor,
    down to smallest_damping, any other multiplies it. relative: tolerances are shares of the length of x and of the
    energy, damping is a share of the largest element of the normal matrix: for residuals of any scale. verbose: print
    the iterations.
    """

    step_tolerance: float = 1e-6
    energy_tolerance: float = 1e-6
    max_iterations: int = 500
    initial_damping: float = 0.01
    smallest_damping: float = 1e-6
    damping_factor: float = 10.0
    verbose: bool = False
    relative: bool = False

    def __post_init__(self) -> None:
        minima: dict[str, tuple[float, bool]] = {
            **{"step_tolerance": (0, True), "energy_tolerance": (0, True), "max_iterations": (1, True)},
            **{"initial_damping": (0, True), "smallest_damping": (0, True), "damping_factor": (1, False)},
        }
        for name, (low, included) in minima.items():
            value = getattr(self, name)
            if not (value > low or (included and value == low)):
                raise ValueError(f"{name}: {value}, needed is {'at least' if included else 'more than'} {low:g}")

    def _record(self) -> Any:
        return ffi.new(
            "PrmtLmParam*",
            {
                "stepTolerance": self.step_tolerance,
                "energyTolerance": self.energy_tolerance,
                "maxIterations": self.max_iterations,
                "smallestDamping": self.smallest_damping,
                "initialDamping": self.initial_damping,
                "dampingFactor": self.damping_factor,
                "verbose": int(self.verbose),
            },
        )

    def _at(self, energy: float, size: float, scale: float, iterations: int) -> "Settings":
        """Absolute tolerances and damping at a point."""
        return dataclasses.replace(
            self,
            step_tolerance=self.step_tolerance * size,
            energy_tolerance=self.energy_tolerance * energy,
            max_iterations=iterations,
            initial_damping=self.initial_damping * scale,
            smallest_damping=self.smallest_damping * scale,
        )


class Trace:
    """What one search does, as its callbacks see it."""

    def __init__(self) -> None:
        self.restart()

    def restart(self) -> None:
        self.iterations = self.accepted = 0
        self.energy = self.change = self.step = 0.0

    def stepped(self, step: Vector) -> None:
        self.iterations += 1
        self.step = float(np.sqrt(step @ step))

    def evaluated(self, energy: float) -> None:
        if self.iterations == 0:
            self.energy = energy
            return
        self.change = energy - self.energy
        if self.change < _ACCEPTED_RISE:
            self.energy = energy
            self.accepted += 1

    def reason(self, settings: Settings) -> Reason:
        if abs(self.change) <= settings.energy_tolerance:
            return "energy"
        return "step" if self.step <= settings.step_tolerance else "limit"


class Linear(NamedTuple):
    """The undamped normal equations at a point: gradient, diagonal of the matrix, and the matrix, or None where it is
    too large."""

    gradient: Vector
    diagonal: Vector
    normal: Optional[Vector]

    def settled(self, x: Vector, x0: Vector, energy: float) -> bool:
        """Whether the step without damping, or without the matrix each parameter's own, would change little. The steps
        of the search cannot tell: damping that is large beside the matrix makes them as short as one likes."""
        if self.normal is not None:
            step = np.linalg.lstsq(self.normal, self.gradient, rcond=None)[0]
        else:
            positive = self.diagonal > 0
            step = np.where(positive, self.gradient / np.where(positive, self.diagonal, 1), 0)
        length = max(float(np.linalg.norm(x)), float(np.linalg.norm(x - x0)))
        return bool(self.gradient @ step / 2 <= _SLOW * energy or np.linalg.norm(step) <= _SLOW * length)


At = Callable[[Vector], Linear]


class Outcome(NamedTuple):
    """How a search ended."""

    step_norm: float
    reason: Reason
    converged: bool
    iterations: int
    accepted: int


@dataclasses.dataclass(frozen=True)
class Minimum:
    """What a search found.

    x: (n,) parameters. energy: there, computed anew. evaluations: calls of the residual or energy function. reason: why
    the search ended: the "energy" changed by less than its tolerance, the "step" was shorter than its own, or the
    "limit" of iterations was reached.
    """

    x: Vector
    energy: float
    evaluations: int
    outcome: Outcome
    linear: At = dataclasses.field(repr=False)

    @property
    def step_norm(self) -> float:
        """Of the last accepted step, 0 without one."""
        return self.outcome.step_norm

    @property
    def reason(self) -> Reason:
        """Why the search ended."""
        return self.outcome.reason

    @property
    def converged(self) -> bool:
        """Whether x is a minimum: the search did not end by the limit, and a step from x without damping would change
        energy or x by less than a thousandth."""
        return self.outcome.converged

    @property
    def iterations(self) -> int:
        """Steps tried."""
        return self.outcome.iterations

    @property
    def accepted(self) -> int:
        """Steps that moved x."""
        return self.outcome.accepted

    @functools.cached_property
    def gradient_norm(self) -> float:
        """The largest derivative of the energy by a parameter at x; takes one more Jacobian."""
        return float(np.abs(self.linear(self.x.copy()).gradient).max(initial=0))


@dataclasses.dataclass(frozen=True)
class Solution(Minimum):
    """A `Minimum` of half the sum of squared residuals (with huber: of its function). residuals: (m,) at x."""

    residuals: Vector

    @functools.cached_property
    def covariance(self) -> Optional[Vector]:
        """(n, n) of the parameters: (J^T J)^-1 times the variance 2 energy / (m - n) of the residuals; None where x is
        not determined, or m <= n. For up to 500 parameters and 1e7 derivatives; takes one more Jacobian."""
        n, m = len(self.x), len(self.residuals)
        normal = self.linear(self.x.copy()).normal
        if normal is None or m <= n or np.linalg.matrix_rank(normal, hermitian=True) < n:
            return None
        return np.asarray(np.linalg.inv(normal) * (2 * self.energy / (m - n)))


def search(run: Callable[[Settings], float], trace: Trace, settings: Settings, x: Vector, linear: At) -> Outcome:
    """Runs a solver on x; with relative tolerances again and again, each time with those of the point reached. Warns
    where the outcome is no minimum."""
    x0 = x.copy()
    if settings.relative:
        scale = float(linear(x).diagonal.max(initial=0)) or 1.0
        step_norm, reason, iterations, accepted = _relative(run, trace, settings, x, scale)
    else:
        step_norm = run(settings)
        reason, iterations, accepted = trace.reason(settings), trace.iterations, trace.accepted
    if accepted == 0:
        warn(f"no step was accepted in {iterations} iterations: x is x0")
    converged = reason != "limit" and linear(x).settled(x, x0, trace.energy)
    if reason == "limit":
        warn(f"the limit of {settings.max_iterations} iterations was reached")
    elif not converged and accepted:
        tolerance = settings.energy_tolerance if reason == "energy" else settings.step_tolerance
        warn(
            f"ended by the {reason} tolerance of {tolerance:g}, but not at a minimum: scale, or Settings(relative=True)"
        )
    return Outcome(step_norm, reason, converged, iterations, accepted)


def _relative(
    run: Callable[[Settings], float], trace: Trace, settings: Settings, x: Vector, scale: float
) -> tuple[float, Reason, int, int]:
    step_norm = run(settings._at(0, 0, scale, 1))  # for the energy
    reason: Reason = trace.reason(settings._at(0, 0, scale, 1))
    iterations, accepted = trace.iterations, trace.accepted
    while iterations < settings.max_iterations:
        before = trace.energy
        inner = settings._at(before, float(np.linalg.norm(x)), scale, settings.max_iterations - iterations)
        step_norm = run(inner) or step_norm
        reason, iterations, accepted = trace.reason(inner), iterations + trace.iterations, accepted + trace.accepted
        if reason == "step" or before - trace.energy <= settings.energy_tolerance * before:
            break
    return step_norm, reason, iterations, accepted
